// Repairs. The first byte chooses how the text is read; the rest is the text. Repairs are made as
// the command makes them, until none is left; the text then says what it said, or more.
#include <set>

#include "analysis/hints.h"
#include "analysis/run.h"
#include "grammar.h"
#include "richdefinition.h"
#include "support.h"
#include "text/edited.h"

namespace optxv::fuzz {
namespace {

using command::editedtext;
using command::finding;
using command::hint;
using command::textchange;

/// As many rounds as the command makes.
constexpr int mostrounds = 10;

/// What is set: both values, and the lines where they were given. A list has items, which more can
/// be added to in any place.
struct setvalue {
  std::string text;
  std::set<std::string> lines = {};
  std::vector<std::string> items = {};
};

/// What a reading of the text gives.
struct reading {
  std::set<std::string> faulty = {};            ///< the lines with errors
  std::map<std::string, setvalue> values = {};  ///< by the names of their options
  std::vector<textchange> changes = {};         ///< the sure repairs
};

std::string lineof(std::string_view text, std::int64_t number) {
  for (; number > 1; number--) text.remove_prefix(std::min(text.find('\n'), text.size() - 1) + 1);
  return std::string(text.substr(0, text.find('\n')));
}

/// An item without the quotes that a repair takes from it.
std::string bare(std::string_view item) {
  while (command::withoutforeignquotes(item)) continue;
  return std::string(item);
}

std::map<std::string, setvalue> valuesof(const command::run& read, std::string_view text) {
  std::map<std::string, setvalue> values;
  const optxv_handle handle = read.options().handle();
  const std::int32_t count = optxv_option_count(handle);
  for (std::int32_t option = 1; option <= count; option++) {
    optxv_option info{};
    optxv_option_info(handle, option, &info);
    if (info.defined == 0 || info.runtime != 0) continue;
    char shown[256];
    setvalue& value = values[{info.name.bytes, info.name.size}];
    for (std::int32_t which = 1; which <= 2; which++) {
      if (optxv_show_value(handle, option, which, shown) == 0)
        value.text += std::string(shown) + '\n';
      const auto& set = read.values().of(option, which).where;
      if (set.line > 0) value.lines.insert(lineof(text, set.line));
    }
    for (std::int32_t item = 1; info.kind == optxv_kind_list && item <= info.items; item++) {
      optxv_text piece{};
      if (optxv_list_item(handle, option, item, &piece) == 1)
        value.items.push_back(bare({piece.bytes, piece.size}));
    }
  }
  return values;
}

reading readingof(const command::readsettings& what, const std::string& text) {
  reading result;
  command::run run(
      [&](const finding& found) {
        if (found.level == command::severity::error && found.where.line > 0)
          result.faulty.insert(lineof(text, found.where.line));
        for (const hint& each : found.hints) {
          if (!each.sure) continue;
          textchange change;
          for (const command::edit& one : each.edits)
            change.push_back({one.where.line, one.where.column, one.where.length, one.text});
          return result.changes.push_back(std::move(change));
        }
      },
      {.checks = true});
  run.read(what);
  result.values = valuesof(run, text);
  return result;
}

/// Whether all items are there still, in their order.
bool holds(const std::vector<std::string>& all, const std::vector<std::string>& items) {
  auto at = all.begin();
  for (const std::string& item : items) {
    at = std::find(at, all.end(), item);
    if (at == all.end()) return false;
    ++at;
  }
  return true;
}

/// The lines that repairs have made.
std::set<std::string> madelines(const editedtext& edited) {
  std::set<std::string> lines;
  const std::string difference = edited.difference("text");
  for (std::string_view rest = difference; !rest.empty();) {
    const std::string_view line = rest.substr(0, rest.find('\n'));
    if (line.starts_with('+')) lines.emplace(line.substr(1));
    rest.remove_prefix(std::min(line.size() + 1, rest.size()));
  }
  return lines;
}

/// What was set is set still, and to what it was, unless a line that was repaired says otherwise.
void compare(const reading& before, const reading& after, const std::set<std::string>& made) {
  for (const std::string& line : after.faulty)
    demand(before.faulty.contains(line) || made.contains(line),
           "only a line that was repaired has new errors");
  for (const auto& [name, value] : before.values) {
    const auto found = after.values.find(name);
    demand(found != after.values.end(), "what was set is set still");
    demand(holds(found->second.items, value.items), "a list keeps its items");
    const bool repaired = std::ranges::any_of(
        found->second.lines, [&](const std::string& line) { return made.contains(line); });
    demand(repaired || found->second.text == value.text,
           "only a line that was repaired sets anything else");
  }
}

void run(unsigned way, const std::string& text) {
  static const memoryfile normal(richdefinition("Normal")), minos(richdefinition("Minos"));
  static memoryfile file;
  file.fill(text);
  command::drafttexts drafts;
  const command::readsettings what = {.definition = ((way & 4) != 0 ? minos : normal).path(),
                                      .parameters = {file.path()},
                                      .tokens = (way & 1) != 0,
                                      .nobounds = (way & 2) != 0,
                                      .drafts = &drafts};
  const reading before = readingof(what, text);
  editedtext edited(text);
  reading now = before;
  for (int round = 1; !now.changes.empty() && edited.apply(now.changes) > 0; round++) {
    demand(round < mostrounds, "repairs come to an end");
    drafts[file.path()] = edited.text();
    now = readingof(what, drafts[file.path()]);
  }
  compare(before, now, madelines(edited));
}

}  // namespace
}  // namespace optxv::fuzz

OPTXV_FUZZ_GRAMMAR(1, optxv::fuzz::parameterwords)

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 0) optxv::fuzz::run(data[0], {reinterpret_cast<const char*>(data) + 1, size - 1});
  return 0;
}
