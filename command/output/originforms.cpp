#include "output/originforms.h"

#include <array>

#include "text/printable.h"

namespace command {
namespace {

using nlohmann::ordered_json;

// In the order of optxv_road_...: for programs, and in words before the name of what handed it on.
constexpr std::array<std::string_view, 6> roadnames = {"none",      "entry", "macro",
                                                       "multilist", "dot",   "call"};

std::string_view roadname(std::int32_t road) {
  return roadnames[static_cast<std::size_t>(road)];
}

ordered_json pastjson(std::int32_t kind, const pastvalue& past) {
  ordered_json row = {{"value", valuejson(kind, past.value)}};
  row.update(originjson(past.from));
  return row;
}

}  // namespace

std::string placewords(const place& where) {
  if (where.line == 0) return {};
  return printable(where.file) + ':' + std::to_string(where.line) + ':' +
         std::to_string(where.column);
}

std::string roadwords(const origin& from) {
  std::string words;
  if (!from.through.empty())
    words = std::string(roadname(from.road)) + ' ' + printable(from.through);
  for (const place& each : from.from)
    words += (words.empty() ? "read at " : ", read at ") + placewords(each);
  return words;
}

ordered_json valuejson(std::int32_t kind, const optionvalue& value) {
  const auto* integer = std::get_if<std::int32_t>(&value);
  if (integer != nullptr && kind == optxv_kind_boolean && (*integer == 0 || *integer == 1))
    return *integer == 1;
  return std::visit([](const auto& plain) { return ordered_json(plain); }, value);
}

ordered_json placejson(const place& where) {
  return {{"file", where.file},
          {"line", where.line},
          {"column", where.column},
          {"length", where.length}};
}

ordered_json originjson(const origin& from) {
  if (from.road == optxv_road_none) return nullptr;
  ordered_json row = placejson(from.where);
  row["road"] = roadname(from.road);
  if (!from.through.empty()) row["through"] = from.through;
  for (const place& each : from.from) row["from"].push_back(placejson(each));
  return row;
}

ordered_json historyjson(std::int32_t kind, const valuehistory& history) {
  if (history.settings.empty()) return nullptr;
  ordered_json row = originjson(history.settings.front().from);
  row["overrode"] = ordered_json::array();
  for (std::size_t i = 1; i < history.settings.size(); i++)
    row["overrode"].push_back(pastjson(kind, history.settings[i]));
  if (history.forgotten > 0) row["forgotten"] = history.forgotten;
  return row;
}

}  // namespace command
