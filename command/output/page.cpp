#include "output/page.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include "output/pageparts.h"
#include "output/referenceplan.h"
#include "text/printable.h"

namespace command {
namespace {

using optxv::optionfacts;
using optxv::synonymfacts;
using optxv::tablefacts;
using optxv::valuefacts;

/// Text in the form that is allowed between tags and in attributes.
std::string shown(std::string_view text) {
  constexpr std::array<std::pair<char, std::string_view>, 5> entities = {
      {{'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'"', "&quot;"}, {'\'', "&#39;"}}};
  std::string result;
  for (const char& c : printable(text)) {
    const auto* row = std::ranges::find(entities, c, &std::pair<char, std::string_view>::first);
    result += row == entities.end() ? std::string_view(&c, 1) : row->second;
  }
  return result;
}

std::string code(std::string_view text) {
  return "<code>" + shown(text) + "</code>";
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
  const std::string_view modifier = modifiermeaning(option);
  std::string text = code(option.kind) + " (" + shown(kindmeaning(option)) + ")";
  if (!modifier.empty()) text += "; " + shown(modifier);
  return text;
}

std::string longhelp(const optionfacts& option) {
  std::string all;
  for (const std::vector<std::string_view>& lines : helpparagraphs(option)) {
    std::string text;
    for (const std::string_view each : lines) text += (text.empty() ? "" : "\n") + shown(each);
    all += paragraph(text);
  }
  return all;
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

std::string notes(const optionfacts& option) {
  std::string all;
  for (const notice& each : noticesof(option)) all += note(each.sentence, each.text);
  if (const std::string example = dotexample(option); !example.empty())
    all += paragraph(
        "Dot option: it belongs to a symbol of the model, as in " + code(example) + ".", "soft");
  return all;
}

class pagewriter {
 public:
  pagewriter(const tablefacts& table, const std::string& source)
      : table_(table), source_(source), plan_(table) {}
  std::string page() const;

 private:
  std::string navigation() const;
  std::string sections() const;
  std::string section(const referencesection& each) const;
  std::string article(const optionfacts& option) const;
  std::string facts(const optionfacts& option) const;
  std::string links(const optionlist& options) const;
  std::string head() const;
  std::string summary() const;

  const tablefacts& table_;
  const std::string& source_;
  referenceplan plan_;
};

std::string pagewriter::links(const optionlist& options) const {
  std::vector<std::string> all;
  for (const optionfacts* each : options) all.push_back(link(plan_.place(*each), each->name));
  return listed(all);
}

std::string pagewriter::facts(const optionfacts& option) const {
  std::string synonyms;
  for (const synonymfacts& synonym : option.synonyms)
    synonyms += "<li>" + synonymtext(synonym) + "</li>\n";
  const std::string range = option.low.empty() ? "" : shown(option.low + " to " + option.high);
  return "<dl>\n" + fact("Kind", kindtext(option), "words") +
         (option.hasdefault ? fact("Default", shown(option.defaultvalue)) : "") +
         fact("Range", range) + fact("Sets", links(plan_.members(option))) +
         fact("Set by", links(plan_.setters(option))) + fact("Action", shown(option.action)) +
         fact("Synonyms", synonyms.empty() ? "" : "<ul>" + synonyms + "</ul>") + "</dl>\n";
}

std::string pagewriter::article(const optionfacts& option) const {
  const std::string id = plan_.place(option);
  return "<article id=\"" + id + "\" aria-labelledby=\"" + id + "-name\">\n<h3 id=\"" + id +
         "-name\">" + link(id, option.name) + "</h3>\n" + paragraph(shown(option.help)) +
         notes(option) + facts(option) + paragraph(synonymnotice(option), "soft") +
         valuetable(option) + longhelp(option) + "</article>\n";
}

/// Many groups are shown as a plain list, which a browser need not lay out completely.
std::string pagewriter::navigation() const {
  constexpr std::size_t many = 200;
  std::string items;
  for (const referencesection& each : plan_.sections())
    items += "<li><a href=\"#" + each.place + "\">" + shown(each.title) +
             "</a> <span class=\"soft\">(" + grouped(each.options.size()) + ")</span></li>\n";
  if (items.empty()) return {};
  const std::string mark = table_.groups.size() >= many ? " class=\"many\"" : "";
  return "<nav aria-label=\"Groups\"" + mark + ">\n<ul>\n" + items + "</ul>\n</nav>\n";
}

std::string pagewriter::section(const referencesection& each) const {
  std::string all = "<section id=\"" + each.place + "\" aria-labelledby=\"" + each.place +
                    "-title\">\n<h2 id=\"" + each.place + "-title\">" + shown(each.title) +
                    "</h2>\n";
  if (each.hidden) all += note(hiddengroup);
  for (const optionfacts* option : each.options) all += article(*option);
  return all + "</section>\n";
}

std::string pagewriter::sections() const {
  std::string all;
  for (const referencesection& each : plan_.sections()) all += section(each);
  return all;
}

std::string pagewriter::summary() const {
  std::string text = plan_.counts() + ", from " + code(source_) + ".";
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
