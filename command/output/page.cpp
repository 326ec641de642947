#include "output/page.h"

#include <algorithm>
#include <array>
#include <map>
#include <string_view>
#include <vector>

#include "output/pageparts.h"
#include "text/textform.h"

namespace command {
namespace {

using optxv::groupfacts;
using optxv::optionfacts;
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
    {"multilist", "sets the options named, a value each"},
    {"strlist", "list of texts; each use adds one"},
    {"macro", "sets the options named, all to the same value"},
    {"immediate", "instruction to the reader of parameters"},
}};

constexpr std::array<wordrow, 3> modifiers = {{
    {"NV", "takes no value: to name it sets it"},
    {"OPT", "the value may be left out"},
    {"TWO", "takes two values"},
}};

template <std::size_t Count>
std::string_view meaning(const std::array<wordrow, Count>& rows, std::string_view word) {
  const auto row = std::ranges::find(rows, word, &wordrow::word);
  return row == rows.end() ? std::string_view() : row->meaning;
}

/// Text as it may stand between tags and in attributes.
std::string shown(std::string_view text) {
  constexpr std::array<wordrow, 5> entities = {
      {{"&", "&amp;"}, {"<", "&lt;"}, {">", "&gt;"}, {"\"", "&quot;"}, {"'", "&#39;"}}};
  std::string result;
  for (const char c : printable(text)) {
    const std::string_view entity = meaning(entities, std::string_view(&c, 1));
    result += entity.empty() ? std::string(1, c) : std::string(entity);
  }
  return result;
}

std::string code(std::string_view text) {
  return "<code>" + shown(text) + "</code>";
}

/// The place of an option of that name on the page. Bytes that are not those of an ordinary name
/// are spelt out.
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

/// The texts one behind the other with commas between.
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
std::string fact(std::string_view term, const std::string& markup, std::string_view style = {}) {
  if (markup.empty()) return {};
  const std::string mark = style.empty() ? "" : " class=\"" + std::string(style) + "\"";
  return "<dt>" + std::string(term) + "</dt><dd" + mark + ">" + markup + "</dd>\n";
}

std::string kindtext(const optionfacts& option) {
  const std::string_view modifier = meaning(modifiers, option.modifier);
  std::string text = code(option.kind) + " (" + shown(meaning(kinds, option.kind)) + ")";
  if (!modifier.empty()) text += "; " + shown(modifier);
  return text;
}

/// The lines of long help as paragraphs: an empty line parts them, and a line that begins with
/// blanks keeps its shape.
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

/// What a name on its way out comes to, with the text that goes with it.
std::string outgoing(std::string_view subject, bool deprecated, bool obsolete,
                     std::string_view text) {
  std::string all;
  const auto add = [&](bool marked, std::string_view word) {
    if (!marked) return;
    all += paragraph(
        std::string(subject) + std::string(word) + (text.empty() ? "" : " " + shown(text)), "note");
  };
  add(deprecated, " is deprecated: it still works, with a warning.");
  add(obsolete, " is obsolete: it no longer works.");
  return all;
}

std::string notes(const optionfacts& option) {
  std::string all =
      outgoing("This option", option.deprecated, option.obsolete, option.deprecatedtext) +
      outgoing("A synonym", option.synonymdeprecated, option.synonymobsolete,
               option.synonymdeprecatedtext);
  if (option.helpcontext == 0)
    all += paragraph("Hidden: the help listings leave this option out.", "note");
  if (option.tablename.starts_with('.'))
    all += paragraph("Dot option: it belongs to a symbol of the model, as in " +
                         code("x" + option.tablename + "('label') = value") + ".",
                     "soft");
  return all;
}

class pagewriter {
 public:
  pagewriter(const tablefacts& table, const std::string& source) : table_(table), source_(source) {
    for (std::size_t i = table.groups.size(); i-- > 0;) home_[table.groups[i].number] = i;
    for (const optionfacts& option : table.options) first_.emplace(option.tablename, &option);
  }
  std::string page() const;

 private:
  // A section is an index into the groups, or their number for the options without a group.
  // Sections without options are not shown.
  std::string place(std::size_t section) const;
  std::string place(const optionfacts& option) const;
  std::string title(std::size_t section) const;
  std::vector<const optionfacts*> optionsof(std::size_t section) const;
  std::string navigation() const;
  std::string sections() const;
  std::string article(const optionfacts& option) const;
  std::string facts(const optionfacts& option) const;
  std::string members(const optionfacts& option) const;
  std::string head() const;
  std::string summary() const;

  const tablefacts& table_;
  const std::string& source_;
  std::map<std::int32_t, std::size_t> home_;  ///< the first group of each number has its options
  std::map<std::string_view, const optionfacts*> first_;  ///< a faulty definition repeats names
};

std::string pagewriter::place(std::size_t section) const {
  if (section == table_.groups.size()) return "group-none";
  return "group-" + std::to_string(table_.groups[section].number);
}

/// A repeated name has its number behind it; no name has a point within.
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

std::vector<const optionfacts*> pagewriter::optionsof(std::size_t section) const {
  std::vector<const optionfacts*> result;
  for (const optionfacts& option : table_.options) {
    const auto home = home_.find(option.group);
    if ((home == home_.end() ? table_.groups.size() : home->second) == section)
      result.push_back(&option);
  }
  return result;
}

std::string pagewriter::members(const optionfacts& option) const {
  std::vector<std::string> links;
  for (const std::string& member : option.members)
    links.push_back(link(placeof(member), first_.at(member)->name));
  return listed(links);
}

std::string pagewriter::facts(const optionfacts& option) const {
  std::vector<std::string> synonyms;
  for (const std::string& synonym : option.synonyms) synonyms.push_back(shown(synonym));
  const std::string range = option.low.empty() ? "" : shown(option.low + " to " + option.high);
  return "<dl>\n" + fact("Kind", kindtext(option), "words") +
         (option.hasdefault ? fact("Default", shown(option.defaultvalue)) : "") +
         fact("Range", range) + fact("Sets", members(option)) +
         fact("Action", shown(option.action)) + fact("Synonyms", listed(synonyms)) + "</dl>\n";
}

std::string pagewriter::article(const optionfacts& option) const {
  const std::string id = place(option);
  return "<article id=\"" + id + "\" aria-labelledby=\"" + id + "-name\">\n<h3 id=\"" + id +
         "-name\">" + link(id, option.name) + "</h3>\n" + paragraph(shown(option.help)) +
         notes(option) + facts(option) + valuetable(option) + longhelp(option.longhelp) +
         "</article>\n";
}

std::string pagewriter::navigation() const {
  std::string items;
  for (std::size_t section = 0; section <= table_.groups.size(); ++section)
    if (const std::size_t count = optionsof(section).size(); count > 0)
      items += "<li><a href=\"#" + place(section) + "\">" + title(section) +
               "</a> <span class=\"soft\">(" + grouped(count) + ")</span></li>\n";
  return items.empty() ? "" : "<nav aria-label=\"Groups\">\n<ul>\n" + items + "</ul>\n</nav>\n";
}

std::string pagewriter::sections() const {
  std::string all;
  for (std::size_t section = 0; section <= table_.groups.size(); ++section) {
    const std::vector<const optionfacts*> options = optionsof(section);
    if (options.empty()) continue;
    const std::string id = place(section);
    all.append("<section id=\"").append(id).append("\" aria-labelledby=\"");
    all.append(id).append("-title\">\n<h2 id=\"").append(id).append("-title\">");
    all.append(title(section)).append("</h2>\n");
    if (section < table_.groups.size() && table_.groups[section].helpcontext == 0)
      all += paragraph("Hidden: the help listings leave this group out.", "note");
    for (const optionfacts* option : options) all += article(*option);
    all += "</section>\n";
  }
  return all;
}

std::string pagewriter::summary() const {
  const std::size_t synonyms = [&] {
    std::size_t count = 0;
    for (const optionfacts& option : table_.options) count += option.synonyms.size();
    return count;
  }();
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
         shown(source_) + "</h1>\n" + paragraph(summary(), "soft") +
         "<form id=\"search\" role=\"search\" hidden>\n<label for=\"search-box\">Search names and "
         "texts</label>\n<input id=\"search-box\" type=\"search\" autocomplete=\"off\" "
         "spellcheck=\"false\">\n<p id=\"search-state\" class=\"soft\" role=\"status\"></p>\n"
         "</form>\n</header>\n" +
         navigation() + "<main id=\"content\" tabindex=\"-1\">\n" + sections() +
         "</main>\n<script>" + std::string(pagescript) + "</script>\n</body>\n</html>\n";
}

}  // namespace

std::string referencepage(const tablefacts& table, const std::string& source) {
  return pagewriter(table, source).page();
}

}  // namespace command
