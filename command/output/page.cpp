#include "output/page.h"

#include <algorithm>
#include <array>
#include <map>
#include <string_view>
#include <vector>

#include "output/pageparts.h"
#include "text/names.h"
#include "text/printable.h"

namespace command {
namespace {

using optxv::groupfacts;
using optxv::optionfacts;
using optxv::synonymfacts;
using optxv::tablefacts;
using optxv::valuefacts;

struct wordrow {
  std::string_view word, meaning;
};

constexpr std::array<wordrow, 10> kinds = {{
    {"integer", "whole number"},
    {"double", "real number"},
    {"string", "text"},
    {"boolean", "switch: 1 or 0, also yes or no"},
    {"enumstr", "one of a list of words"},
    {"enumint", "one of a list of numbers"},
    {"multilist", "sets the options named, each to its own value"},
    {"strlist", "list of texts; each use adds one"},
    {"macro", "sets the options named, all to the same value"},
    {"immediate", "instruction to the reader of parameters"},
}};

constexpr std::array<wordrow, 3> modifiers = {{
    {"NV", "takes no value: naming it sets it"},
    {"OPT", "the value may be left out"},
    {"TWO", "takes two values"},
}};

template <std::size_t Count>
std::string_view meaning(const std::array<wordrow, Count>& rows, std::string_view word) {
  const auto row = std::ranges::find(rows, word, &wordrow::word);
  return row == rows.end() ? std::string_view() : row->meaning;
}

/// Text in the form that is allowed between tags and in attributes.
std::string shown(std::string_view text) {
  constexpr std::array<wordrow, 5> entities = {
      {{"&", "&amp;"}, {"<", "&lt;"}, {">", "&gt;"}, {"\"", "&quot;"}, {"'", "&#39;"}}};
  std::string result;
  for (const char& c : printable(text)) {
    const std::string_view entity = meaning(entities, {&c, 1});
    result += entity.empty() ? std::string_view(&c, 1) : entity;
  }
  return result;
}

std::string code(std::string_view text) {
  return "<code>" + shown(text) + "</code>";
}

/// The address of an option of that name on the page. Bytes that ordinary names do not have are
/// written as numbers.
std::string placeof(std::string_view tablename) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string place = "option-";
  for (const char c : tablename) {
    const auto byte = static_cast<unsigned char>(c);
    place += isnamecharacter(c) || c == '.'
                 ? std::string(1, c)
                 : std::string{'-', digits[byte >> 4], digits[byte & 15]};
  }
  return place;
}

std::string link(std::string_view place, std::string_view text) {
  return "<a href=\"#" + shown(place) + "\">" + shown(text) + "</a>";
}

/// A second name, with what is to be known about it.
std::string synonymtext(const synonymfacts& synonym) {
  std::string text = "<span class=\"name\">" + shown(synonym.name) + "</span>";
  if (!synonym.deprecated && !synonym.obsolete) return text;
  const std::string_view word = synonym.obsolete ? "obsolete" : "deprecated";
  text += " <span class=\"words\"><span class=\"note\">(" + std::string(word) + ")</span>";
  return text + (synonym.text.empty() ? "" : " " + shown(synonym.text)) + "</span>";
}

/// The texts one after another, separated by commas.
std::string listed(const std::vector<std::string>& texts) {
  std::string all;
  for (const std::string& text : texts) all += (all.empty() ? "" : ", ") + text;
  return all;
}

std::string paragraph(std::string_view markup, std::string_view style = {}) {
  if (markup.empty()) return {};
  const std::string mark = style.empty() ? "" : " class=\"" + std::string(style) + "\"";
  return "<p" + mark + ">" + std::string(markup) + "</p>\n";
}

/// A term with its description, if there is one.
std::string fact(std::string_view term, std::string_view markup, std::string_view style = {}) {
  if (markup.empty()) return {};
  const std::string mark = style.empty() ? "" : " class=\"" + std::string(style) + "\"";
  return "<dt>" + std::string(term) + "</dt><dd" + mark + ">" + std::string(markup) + "</dd>\n";
}

std::string kindtext(const optionfacts& option) {
  const std::string_view modifier = meaning(modifiers, option.modifier);
  std::string text = code(option.kind) + " (" + shown(meaning(kinds, option.kind)) + ")";
  if (!modifier.empty()) text += "; " + shown(modifier);
  return text;
}

/// The lines of long help as paragraphs: an empty line separates them, and a line that begins with
/// blanks keeps them.
std::string longhelp(const std::vector<std::string>& lines) {
  std::string all, text;
  for (const std::string& line : lines) {
    if (line.find_first_not_of(" \t") == line.npos) {
      all += paragraph(text);
      text.clear();
    } else if (line.front() == ' ' || line.front() == '\t') {
      text += "<span class=\"kept\">" + shown(line) + "</span>";
    } else {
      text += (text.empty() ? "" : "\n") + shown(line);
    }
  }
  return all + paragraph(text);
}

std::string valuetable(const optionfacts& option) {
  if (option.values.empty()) return {};
  std::string rows;
  for (const valuefacts& each : option.values)
    rows += "<tr><th scope=\"row\">" + code(each.value) + "</th><td>" + shown(each.help) +
            "</td></tr>\n";
  return "<table>\n<caption>Values of " + shown(option.name) +
         "</caption>\n<thead><tr><th scope=\"col\">Value</th><th scope=\"col\">Meaning</th></tr>"
         "</thead>\n<tbody>\n" +
         rows + "</tbody>\n</table>\n";
}

std::string note(std::string_view sentence, std::string_view text = {}) {
  return paragraph(std::string(sentence) + (text.empty() ? "" : " " + shown(text)), "note");
}

/// What happens when an unmarked synonym is used while another one of the option is marked.
std::string synonymnote(const optionfacts& option) {
  const bool obsolete = option.synonymobsolete;
  const bool all = std::ranges::all_of(option.synonyms, [&](const synonymfacts& each) {
    return obsolete ? each.obsolete : each.deprecated;
  });
  if (all || (!obsolete && !option.synonymdeprecated)) return {};
  return paragraph(obsolete ? "As one synonym is obsolete, none of them works."
                            : "As one synonym is deprecated, each of them gives the warning.",
                   "soft");
}

std::string notes(const optionfacts& option) {
  std::string all;
  if (option.deprecated)
    all += note("Deprecated: it still works, with a warning.", option.deprecatedtext);
  if (option.obsolete) all += note("Obsolete: it no longer works.", option.deprecatedtext);
  if (option.helpcontext == 0) all += note("Hidden: the help listings leave this option out.");
  if (option.tablename.starts_with('.'))
    all += paragraph("Dot option: it belongs to a symbol of the model, as in " +
                         code("x" + option.tablename + "('label') = value") + ".",
                     "soft");
  return all;
}

class pagewriter {
 public:
  pagewriter(const tablefacts& table, const std::string& source);
  std::string page() const;

 private:
  using optionlist = std::vector<const optionfacts*>;

  // A section is an index into the groups, or their number for the options without a group.
  // Sections without options are not shown.
  std::string place(std::size_t section) const;
  std::string place(const optionfacts& option) const;
  std::string title(std::size_t section) const;
  std::string navigation() const;
  std::string sections() const;
  std::string section(std::size_t number) const;
  std::string article(const optionfacts& option) const;
  std::string facts(const optionfacts& option) const;
  std::string members(const optionfacts& option) const;
  std::string setters(const optionfacts& option) const;
  std::string head() const;
  std::string summary() const;

  const tablefacts& table_;
  const std::string& source_;
  std::vector<optionlist> contents_;                      ///< of each section
  std::map<std::string_view, const optionfacts*> first_;  ///< a faulty definition repeats names
  std::map<std::string_view, optionlist> setters_;        ///< the lists and macros with that member
};

pagewriter::pagewriter(const tablefacts& table, const std::string& source)
    : table_(table), source_(source), contents_(table.groups.size() + 1) {
  std::map<std::int32_t, std::size_t> home;  // the first group of each number has its options
  for (std::size_t i = 0; i < table.groups.size(); ++i) home.emplace(table.groups[i].number, i);
  for (const optionfacts& option : table.options) {
    const auto found = home.find(option.group);
    contents_[found == home.end() ? table.groups.size() : found->second].push_back(&option);
    first_.emplace(option.tablename, &option);
    for (const std::string& member : option.members)
      if (optionlist& setters = setters_[member]; setters.empty() || setters.back() != &option)
        setters.push_back(&option);
  }
}

std::string pagewriter::place(std::size_t section) const {
  if (section == table_.groups.size()) return "group-none";
  return "group-" + std::to_string(table_.groups[section].number);
}

/// A repeated name is followed by a point and its number; no name has a point inside.
std::string pagewriter::place(const optionfacts& option) const {
  const std::string place = placeof(option.tablename);
  return first_.at(option.tablename) == &option
             ? place
             : place + "." + std::to_string(&option - table_.options.data() + 1);
}

std::string pagewriter::title(std::size_t section) const {
  if (section == table_.groups.size()) return "Options without a group";
  const groupfacts& group = table_.groups[section];
  return shown(group.title.empty() ? group.name : group.title);
}

std::string pagewriter::members(const optionfacts& option) const {
  std::vector<std::string> links;
  for (const std::string& member : option.members)
    links.push_back(link(placeof(member), first_.at(member)->name));
  return listed(links);
}

std::string pagewriter::setters(const optionfacts& option) const {
  const auto found = setters_.find(option.tablename);
  if (found == setters_.end() || first_.at(option.tablename) != &option) return {};
  std::vector<std::string> links;
  for (const optionfacts* setter : found->second)
    links.push_back(link(place(*setter), setter->name));
  return listed(links);
}

std::string pagewriter::facts(const optionfacts& option) const {
  std::string synonyms;
  for (const synonymfacts& synonym : option.synonyms)
    synonyms += "<li>" + synonymtext(synonym) + "</li>\n";
  const std::string range = option.low.empty() ? "" : shown(option.low + " to " + option.high);
  return "<dl>\n" + fact("Kind", kindtext(option), "words") +
         (option.hasdefault ? fact("Default", shown(option.defaultvalue)) : "") +
         fact("Range", range) + fact("Sets", members(option)) + fact("Set by", setters(option)) +
         fact("Action", shown(option.action)) +
         fact("Synonyms", synonyms.empty() ? "" : "<ul>" + synonyms + "</ul>") + "</dl>\n";
}

std::string pagewriter::article(const optionfacts& option) const {
  const std::string id = place(option);
  return "<article id=\"" + id + "\" aria-labelledby=\"" + id + "-name\">\n<h3 id=\"" + id +
         "-name\">" + link(id, option.name) + "</h3>\n" + paragraph(shown(option.help)) +
         notes(option) + facts(option) + synonymnote(option) + valuetable(option) +
         longhelp(option.longhelp) + "</article>\n";
}

/// Many groups are shown as a plain list, which a browser need not lay out completely.
std::string pagewriter::navigation() const {
  constexpr std::size_t many = 200;
  std::string items;
  for (std::size_t section = 0; section < contents_.size(); ++section)
    if (const std::size_t count = contents_[section].size(); count > 0)
      items += "<li><a href=\"#" + place(section) + "\">" + title(section) +
               "</a> <span class=\"soft\">(" + grouped(count) + ")</span></li>\n";
  if (items.empty()) return {};
  const std::string mark = contents_.size() > many ? " class=\"many\"" : "";
  return "<nav aria-label=\"Groups\"" + mark + ">\n<ul>\n" + items + "</ul>\n</nav>\n";
}

std::string pagewriter::section(std::size_t number) const {
  const std::string id = place(number);
  std::string all = "<section id=\"" + id + "\" aria-labelledby=\"" + id + "-title\">\n<h2 id=\"" +
                    id + "-title\">" + title(number) + "</h2>\n";
  if (number < table_.groups.size() && table_.groups[number].helpcontext == 0)
    all += note("Hidden: the help listings leave this group out.");
  for (const optionfacts* option : contents_[number]) all += article(*option);
  return all + "</section>\n";
}

std::string pagewriter::sections() const {
  std::string all;
  for (std::size_t number = 0; number < contents_.size(); ++number)
    if (!contents_[number].empty()) all += section(number);
  return all;
}

std::string pagewriter::summary() const {
  std::size_t synonyms = 0;
  for (const optionfacts& option : table_.options) synonyms += option.synonyms.size();
  std::string text = counted(table_.options.size(), "option") + " in " +
                     counted(table_.groups.size(), "group") + ", " + counted(synonyms, "synonym") +
                     ", from " + code(source_) + ".";
  if (!table_.indicatorkey.empty())
    text += " A line that begins with " + code(table_.indicatorkey) + " is an indicator.";
  return text;
}

/// No request leaves the page, not even for an icon: the policy says so to the browser.
std::string pagewriter::head() const {
  return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
         "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
         "style-src 'unsafe-inline'; script-src 'unsafe-inline'; img-src data:; base-uri 'none'; "
         "form-action 'none'\">\n"
         "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
         "<link rel=\"icon\" href=\"data:,\">\n<title>Options of " +
         shown(source_) + "</title>\n<style>" + std::string(pagestyle) + "</style>\n</head>\n";
}

std::string pagewriter::page() const {
  return head() +
         "<body>\n<a class=\"skip\" href=\"#content\">Skip to the "
         "options</a>\n<header>\n<h1>Options of " +
         shown(source_) + "</h1>\n" + paragraph(summary(), "soft") + "</header>\n" +
         std::string(pagesearch) + navigation() + "<main id=\"content\" tabindex=\"-1\">\n" +
         std::string(pagefound) + "<div id=\"groups\">\n" + sections() +
         "</div>\n</main>\n<script>" + std::string(pagescript) + "</script>\n</body>\n</html>\n";
}

}  // namespace

std::string referencepage(const tablefacts& table, const std::string& source) {
  return pagewriter(table, source).page();
}

}  // namespace command
