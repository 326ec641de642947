#include "output/manpage.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "output/referenceplan.h"
#include "text/characters.h"
#include "text/printable.h"

namespace command {
namespace {

using optxv::optionfacts;
using optxv::synonymfacts;
using optxv::tablefacts;
using optxv::valuefacts;

// ASCII that roff reads as something else, or shows as another character.
constexpr std::array<std::pair<char, std::string_view>, 7> glyphs = {{{'\\', "\\e"},
                                                                      {'-', "\\-"},
                                                                      {'\'', "\\(aq"},
                                                                      {'`', "\\(ga"},
                                                                      {'^', "\\(ha"},
                                                                      {'~', "\\(ti"},
                                                                      {'"', "\\(dq"}}};

std::string unicodeglyph(std::uint32_t code) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string number;
  for (int shift = code < 0x10000 ? 12 : 20; shift >= 0; shift -= 4)
    number += digits[code >> shift & 15];
  number.erase(0, std::min(number.find_first_not_of('0'), number.size() - 4));
  return "\\[u" + number + ']';
}

/// Text that stands for itself, in a line of text or as an argument of a macro between quotes. Only
/// at the beginning of a line a dot needs more: see line().
std::string shown(std::string_view text) {
  const std::string clean = printable(text);
  std::string result;
  for (std::string_view rest = clean; !rest.empty();) {
    const character next = firstcharacter(rest);
    const auto* glyph =
        std::ranges::find(glyphs, rest.front(), &std::pair<char, std::string_view>::first);
    if (next.bytes > 1)
      result += unicodeglyph(next.code);
    else
      result += glyph == glyphs.end() ? rest.substr(0, 1) : glyph->second;
    rest.remove_prefix(next.bytes);
  }
  return result;
}

/// A line of text, of which nothing is a request and no blank in front breaks the line before.
std::string line(std::string roff) {
  roff.erase(0, std::min(roff.find_first_not_of(' '), roff.size()));
  if (roff.empty()) return {};
  return (roff.front() == '.' ? "\\&" : "") + roff + '\n';
}

std::string request(std::string_view name, std::string_view argument) {
  return '.' + std::string(name) + " \"" + shown(argument) + "\"\n";
}

std::string bold(std::string_view text) {
  return "\\fB" + shown(text) + "\\fR";
}

/// A fact in a line of its own.
std::string fact(std::string_view term, const std::string& roff) {
  if (roff.empty()) return {};
  return ".br\n" + std::string(term) + ": " + roff + '\n';
}

std::string kindtext(const optionfacts& option) {
  std::string text = bold(option.kind) + " (" + shown(kindmeaning(option)) + ')';
  if (const std::string_view modifier = modifiermeaning(option); !modifier.empty())
    text += "; " + shown(modifier);
  return text;
}

std::string names(const optionlist& options) {
  std::string all;
  for (const optionfacts* each : options) all += (all.empty() ? "" : ", ") + bold(each->name);
  return all;
}

std::string synonymtexts(const optionfacts& option) {
  std::string all;
  for (const synonymfacts& each : option.synonyms) {
    all += (all.empty() ? "" : ", ") + bold(each.name);
    if (each.deprecated || each.obsolete) all += each.obsolete ? " (obsolete)" : " (deprecated)";
    if ((each.deprecated || each.obsolete) && !each.text.empty()) all += ' ' + shown(each.text);
  }
  return all;
}

std::string facts(const referenceplan& plan, const optionfacts& option) {
  const std::string range = option.low.empty() ? "" : bold(option.low) + " to " + bold(option.high);
  return fact("Kind", kindtext(option)) +
         (option.hasdefault ? fact("Default", bold(option.defaultvalue)) : "") +
         fact("Range", range) + fact("Sets", names(plan.members(option))) +
         fact("Set by", names(plan.setters(option))) +
         (option.action.empty() ? "" : fact("Action", bold(option.action))) +
         fact("Synonyms", synonymtexts(option));
}

std::string notices(const optionfacts& option) {
  std::string all;
  for (const notice& each : noticesof(option))
    all += ".br\n" + bold(each.sentence) + (each.text.empty() ? "" : ' ' + shown(each.text)) + '\n';
  if (const std::string example = dotexample(option); !example.empty())
    all += ".br\nDot option: it belongs to a symbol of the model, as in " + bold(example) + ".\n";
  return all;
}

std::string values(const optionfacts& option) {
  if (option.values.empty()) return {};
  std::string text = ".RS\n";
  for (const valuefacts& each : option.values) {
    const std::string help = line(shown(each.help));
    text += ".TP\n" + line(bold(each.value)) + (help.empty() ? "\\&\n" : help);
  }
  return text + ".RE\n";
}

std::string longhelp(const optionfacts& option) {
  std::string all;
  for (const std::vector<std::string_view>& lines : helpparagraphs(option)) {
    all += ".IP\n";
    for (const std::string_view each : lines) all += line(shown(each));
  }
  return all;
}

std::string article(const referenceplan& plan, const optionfacts& option) {
  const std::string_view more = synonymnotice(option);
  return ".TP\n" + line(bold(option.name)) + line(shown(option.help)) + notices(option) +
         facts(plan, option) + (more.empty() ? "" : ".br\n" + shown(more) + '\n') + values(option) +
         longhelp(option);
}

std::string section(const referenceplan& plan, const referencesection& each) {
  std::string all = request("SH", each.title.empty() ? "Options" : each.title);
  if (each.hidden) all += bold(hiddengroup) + '\n';
  for (const optionfacts* option : each.options) all += article(plan, *option);
  return all;
}

/// The name of a file without its ending.
std::string stemof(const std::string& source) {
  const std::size_t dot = source.rfind('.');
  return dot == 0 || dot == source.npos ? source : source.substr(0, dot);
}

}  // namespace

std::string referencemanpage(const tablefacts& table, const std::string& source) {
  const referenceplan plan(table);
  const std::string name = stemof(source);
  std::string text = ".TH \"" + shown(name) + "\" 5 \"\" \"" + shown(source) + "\" \"Options\"\n" +
                     ".SH NAME\n" + line(shown(name) + " \\- options of " + shown(source)) +
                     ".SH DESCRIPTION\n" + plan.counts() + ", from\n" + line(bold(source) + '.');
  if (!table.indicatorkey.empty())
    text += "A line that begins with " + bold(table.indicatorkey) + " is an indicator.\n";
  for (const referencesection& each : plan.sections()) text += section(plan, each);
  return text;
}

}  // namespace command
