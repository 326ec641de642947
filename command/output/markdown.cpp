#include "output/markdown.h"

#include <algorithm>
#include <vector>

#include "output/referenceplan.h"
#include "text/printable.h"

namespace command {
namespace {

using optxv::optionfacts;
using optxv::synonymfacts;
using optxv::tablefacts;
using optxv::valuefacts;

/// Text that stands for itself within a line: what would be markup has a backslash in front.
std::string shown(std::string_view text) {
  constexpr std::string_view markup = "\\`*_[]<>|&~$#";
  std::string result;
  for (const char c : printable(text)) {
    if (markup.find(c) != markup.npos) result += '\\';
    result += c;
  }
  return result;
}

/// The same at the beginning of a line, where a dash, a sign or a number with a dot begin a list or
/// a heading, and blanks have a meaning.
std::string shownline(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
  const std::string line = shown(text);
  const std::size_t digits = std::min(line.find_first_not_of("0123456789"), line.size());
  if (line.empty() ||
      std::string_view("-+=.)").find(line[digits == line.size() ? 0 : digits]) == line.npos)
    return line;
  return line.substr(0, digits) + '\\' + line.substr(digits);
}

/// The longest run of backquotes in a text.
std::size_t longestrun(std::string_view text) {
  std::size_t longest = 0, run = 0;
  for (const char c : text) {
    run = c == '`' ? run + 1 : 0;
    longest = std::max(longest, run);
  }
  return longest;
}

/// Text as code, also within a table, where a bar would end the cell.
std::string code(std::string_view text) {
  if (text.empty()) return {};
  const std::string fence(longestrun(text) + 1, '`');
  const bool apart = text.front() == '`' || text.back() == '`' || text.front() == ' ';
  const std::string margin = apart ? " " : "";
  std::string result = fence + margin;
  for (const char c : printable(text)) {
    if (c == '|') result += '\\';
    result += c;
  }
  return result + margin + fence;
}

std::string anchor(std::string_view place) {
  return "<a id=\"" + std::string(place) + "\"></a>\n\n";
}

std::string link(std::string_view place, std::string_view text) {
  return '[' + shown(text) + "](#" + std::string(place) + ')';
}

/// A row of a table; nothing without a second cell.
std::string row(std::string_view first, std::string_view second) {
  if (second.empty()) return {};
  return "| " + std::string(first) + " | " + std::string(second) + " |\n";
}

std::string paragraph(const std::string& markup) {
  return markup.empty() ? "" : markup + "\n\n";
}

std::string strong(std::string_view sentence, std::string_view text = {}) {
  return paragraph("**" + std::string(sentence) + "**" + (text.empty() ? "" : ' ' + shown(text)));
}

std::string kindtext(const optionfacts& option) {
  std::string text = code(option.kind) + " (" + shown(kindmeaning(option)) + ')';
  if (const std::string_view modifier = modifiermeaning(option); !modifier.empty())
    text += "; " + shown(modifier);
  return text;
}

std::string synonymtext(const synonymfacts& synonym) {
  std::string text = code(synonym.name);
  if (!synonym.deprecated && !synonym.obsolete) return text;
  text += synonym.obsolete ? " (obsolete)" : " (deprecated)";
  return text + (synonym.text.empty() ? "" : ' ' + shown(synonym.text));
}

std::string listed(const std::vector<std::string>& texts) {
  std::string all;
  for (const std::string& text : texts) all += (all.empty() ? "" : ", ") + text;
  return all;
}

std::string valuetable(const optionfacts& option) {
  if (option.values.empty()) return {};
  std::string text = "| Value | Meaning |\n|---|---|\n";
  for (const valuefacts& each : option.values)
    text += "| " + code(each.value) + " | " + shown(each.help) + " |\n";
  return text + '\n';
}

std::string longhelp(const optionfacts& option) {
  std::string all;
  for (const std::vector<std::string_view>& lines : helpparagraphs(option)) {
    std::string text;
    for (const std::string_view each : lines) text += (text.empty() ? "" : "\n") + shownline(each);
    all += paragraph(text);
  }
  return all;
}

std::string links(const referenceplan& plan, const optionlist& options) {
  std::vector<std::string> all;
  for (const optionfacts* each : options) all.push_back(link(plan.place(*each), each->name));
  return listed(all);
}

std::string facttable(const referenceplan& plan, const optionfacts& option) {
  std::vector<std::string> synonyms;
  for (const synonymfacts& each : option.synonyms) synonyms.push_back(synonymtext(each));
  return "| | |\n|---|---|\n" + row("Kind", kindtext(option)) +
         (option.hasdefault ? row("Default", code(option.defaultvalue)) : "") +
         (option.low.empty() ? "" : row("Range", code(option.low) + " to " + code(option.high))) +
         row("Sets", links(plan, plan.members(option))) +
         row("Set by", links(plan, plan.setters(option))) + row("Action", code(option.action)) +
         row("Synonyms", listed(synonyms)) + '\n';
}

std::string notices(const optionfacts& option) {
  std::string all;
  for (const notice& each : noticesof(option)) all += strong(each.sentence, each.text);
  if (const std::string example = dotexample(option); !example.empty())
    all +=
        paragraph("Dot option: it belongs to a symbol of the model, as in " + code(example) + '.');
  return all;
}

std::string article(const referenceplan& plan, const optionfacts& option) {
  return anchor(plan.place(option)) + "### " + shown(option.name) + "\n\n" +
         paragraph(shownline(option.help)) + notices(option) + facttable(plan, option) +
         paragraph(std::string(synonymnotice(option))) + valuetable(option) + longhelp(option);
}

std::string section(const referenceplan& plan, const referencesection& each) {
  std::string all = anchor(each.place) + "## " + shown(each.title) + "\n\n";
  if (each.hidden) all += strong(hiddengroup);
  for (const optionfacts* option : each.options) all += article(plan, *option);
  return all;
}

}  // namespace

std::string referencemarkdown(const tablefacts& table, const std::string& source) {
  const referenceplan plan(table);
  std::string text =
      "# Options of " + shown(source) + "\n\n" + plan.counts() + ", from " + code(source) + '.';
  if (!table.indicatorkey.empty())
    text += " A line that begins with " + code(table.indicatorkey) + " is an indicator.";
  text += "\n\n";
  for (const referencesection& each : plan.sections())
    text += "- " + link(each.place, each.title) + " (" + grouped(each.options.size()) + ")\n";
  text += '\n';
  for (const referencesection& each : plan.sections()) text += section(plan, each);
  text.erase(text.find_last_not_of('\n') + 1);
  return text + '\n';
}

}  // namespace command
