#include "lint/rules.h"

#include <algorithm>
#include <array>

#include "lint/entryrules.h"
#include "lint/tablerules.h"

namespace command {
namespace {

using enum severity;

// By code. D1 texts, D2 names, D3 values, D4 marks; P1 values and their effect, P2 spelling.
constexpr std::array rows = std::to_array<lintrule>({
    {"D101", warning, "An option without a help text", optionswithouttext},
    {"D102", warning, "An enumeration with items without a text", itemswithouttext},
    {"D103", warning, "A group that no option is in", unusedgroups},
    {"D104", warning, "A group without a heading", groupswithouttext},
    {"D201", warning, "A name that is read as another one under `Minos` lookup", namesbehindothers},
    {"D202", warning, "A name that nobody can reach under `Minos` or `Path` lookup",
     namesoutofreach},
    {"D203", warning, "A synonym that is never used, since its name finds an option first",
     hiddensynonyms},
    {"D204", note, "A name in another style than four of five are", namesofotherstyle},
    {"D205", note, "Two names that only underscores tell apart", namesalike},
    {"D301", warning, "A range of one value, or an enumeration of one item", choicesofone},
    {"D302", warning, "A default that parameter text cannot give", defaultsthatnobodycanwrite},
    {"D303", note, "A default at the negative edge of its range, such as -1, that no help explains",
     unexplaineddefaults},
    {"D304", warning,
     "A text with single or curly quotes round it, or a comma or semicolon after it", foreignmarks},
    {"D401", warning, "A deprecated or obsolete name without a text", markswithouttext},
    {"D402", note, "A deprecated or obsolete option whose text names no other option",
     markswithoutreplacement},
    {"D403", warning, "A deprecated or obsolete name whose text names only marked options",
     markedreplacements},
    {ignoreunused, warning, "A comment that silences nothing", {}},
    {ignoreunknown, warning, "A comment that would silence a rule that there is none of", {}},
    {"P101", note, "A value that is the default, and changes nothing", equalsdefault},
    {"P102", warning, "An entry without effect, since the same file sets the option again",
     overridden},
    {"P103", note, "An entry without effect, since another file sets the option again",
     overriddenelsewhere},
    {"P104", warning, "A deprecated name", deprecatedname},
    {"P105", warning, "An obsolete name, whose value is dropped", obsoletename},
    {"P106", note, "An entry that the other reading mode reads in another way", modedependent},
    {"P107", note, "A text that a list gets twice", listedtwice},
    {"P108", note, "Bounds that are off when the file ends, and so for the rest of the run",
     boundsleftoff},
    {"P201", note, "A name in another case than the definition has it", namecase},
    {"P202", note, "An item in another case than the definition has it", itemcase},
});
static_assert(std::ranges::is_sorted(rows, {}, &lintrule::code));

/// The bytes of the longest word that a code begins with; -1 if there is none.
int longest(const std::vector<std::string>& words, std::string_view code) {
  int result = -1;
  for (const std::string& each : words)
    if (code.starts_with(each)) result = std::max(result, static_cast<int>(each.size()));
  return result;
}

}  // namespace

finding said(const place& where, std::string text) {
  finding result;
  result.where = where;
  result.text = std::move(text);
  return result;
}

std::span<const lintrule> lintrules() {
  return rows;
}

bool namesrules(std::string_view word) {
  const auto begins = [&](const lintrule& row) { return row.code.starts_with(word); };
  return !word.empty() && std::ranges::any_of(rows, begins);
}

const std::string* unknownrule(const std::vector<std::string>& words) {
  const auto found = std::ranges::find_if_not(words, namesrules);
  return found == words.end() ? nullptr : &*found;
}

/// A comment matters where the rule that it silences is wanted, so that it needs no word.
ruleset::ruleset(std::string_view usual, std::vector<std::string> select,
                 std::vector<std::string> ignore)
    : select_(std::move(select)), ignore_(std::move(ignore)) {
  if (select_.empty())
    for (const char family : usual) select_.emplace_back(1, family);
  select_.emplace_back("I");
}

bool ruleset::has(std::string_view code) const {
  return longest(select_, code) > longest(ignore_, code);
}

bool ruleset::hasany(std::string_view word) const {
  return std::ranges::any_of(
      rows, [&](const lintrule& row) { return row.code.starts_with(word) && has(row.code); });
}

}  // namespace command
