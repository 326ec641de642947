#include "output/differenceforms.h"

#include <algorithm>
#include <array>

#include "output/originforms.h"
#include "output/styles.h"
#include "output/tables.h"
#include "text/printable.h"
#include "text/wording.h"

namespace command {
namespace {

using nlohmann::ordered_json;

std::string labelof(const difference& found) {
  const std::string name = printable(found.name);
  return found.value == 0 ? name : name + '[' + std::to_string(found.value) + ']';
}

std::string valueof(const difference& found, const heldvalue& held) {
  return shownvalue(found.kind, held.value);
}

std::size_t widthof(const difference& found) {
  std::size_t width = 0;
  for (const std::vector<heldvalue>* side : {&found.was, &found.is})
    for (const heldvalue& each : *side) width = std::max(width, columns(valueof(found, each)));
  return std::min(width, widestcolumn);
}

/// "night.opt:3:9, macro all_cuts".
std::string originwords(const origin& from) {
  if (from.road == optxv_road_none) return "default";
  const std::string how = roadwords(from);
  return placewords(from.where) + (how.empty() ? "" : ", " + how);
}

std::string sidelines(const difference& found, char mark, bool colours) {
  const std::size_t width = widthof(found);
  std::string text;
  for (const heldvalue& each : mark == '-' ? found.was : found.is) {
    const std::string value = valueof(found, each);
    const std::size_t used = columns(value);
    text += styled(colours, mark == '-' ? redstyle : greenstyle,
                   std::string("  ") + mark + ' ' + value) +
            std::string(width - std::min(used, width) + 2, ' ') + originwords(each.from) + '\n';
  }
  return text;
}

ordered_json heldjson(const difference& found, const heldvalue& held) {
  return {{"value", valuejson(found.kind, held.value)}, {"origin", originjson(held.from)}};
}

ordered_json sidejson(const difference& found, const std::vector<heldvalue>& side) {
  if (found.standard) return heldjson(found, side.front());
  ordered_json rows = ordered_json::array();
  for (const heldvalue& each : side) rows.push_back(heldjson(found, each));
  return rows;
}

}  // namespace

std::string differencetext(const difference& found, bool colours) {
  std::string text = styled(colours, placestyle, labelof(found));
  if (found.standard) text += " (default " + shownvalue(found.kind, *found.standard) + ')';
  return text + '\n' + sidelines(found, '-', colours) + sidelines(found, '+', colours);
}

ordered_json differencejson(const difference& found) {
  constexpr std::array<std::string_view, 3> words = {"option", "dotoption", "indicator"};
  ordered_json row = {{"what", words[static_cast<std::size_t>(found.what)]}, {"name", found.name}};
  if (found.what == differing::option) {
    row["number"] = found.which.left > 0 ? found.which.left : found.which.right;
    row["kind"] = kindword(found.kind);
  }
  if (found.value > 0) row["position"] = found.value;
  if (found.standard) row["default"] = valuejson(found.kind, *found.standard);
  row["old"] = sidejson(found, found.was);
  row["new"] = sidejson(found, found.is);
  return row;
}

}  // namespace command
