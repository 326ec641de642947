// api: the library's version and the signatures of its functions.

#include <array>
#include <nlohmann/json.hpp>

#include "optxv/optxv.h"
#include "output/reporter.h"
#include "output/tables.h"
#include "tasks/tasks.h"
#include "text/wording.h"

namespace command {
namespace {

/// A function of the library's own table: its result and arguments by the words of their kinds.
struct function {
  std::string_view name, result, arguments;
  bool twin;  ///< whether there is a form for zero-terminated text
};

/// The first of a list of words, and what follows it.
constexpr std::size_t firstend(std::string_view words) {
  return std::min(words.find(','), words.size());
}
constexpr function made(std::string_view name, std::string_view words, bool twin) {
  const std::size_t end = firstend(words);
  const std::size_t rest = std::min(words.find_first_not_of(", ", end), words.size());
  return {name, words.substr(0, end), words.substr(rest), twin};
}

constexpr auto functions = std::to_array<function>({
#define OPTXV_TWIN(api, linkage, ...) made(#api, #__VA_ARGS__, true),
#define OPTXV_PLAIN(api, linkage, ...) made(#api, #__VA_ARGS__, false),
#include "frame/api.def"
});

std::string twinname(const function& each) {
  return each.twin ? "copt" + std::string(each.name.substr(3)) : std::string();
}

std::string astable() {
  table content{
      .columns = {{"Function"}, {"Zero-terminated"}, {"Result"}, {"Arguments behind the handle"}},
      .rows = {}};
  for (const function& each : functions)
    content.rows.push_back({std::string(each.name), twinname(each), std::string(each.result),
                            each.arguments.empty() ? "none" : std::string(each.arguments)});
  return "API version " + std::to_string(OPTXV_API_VERSION) + '\n' + auditline() + "\n\n" +
         tabletext(content);
}

std::vector<std::string> listed(std::string_view words) {
  std::vector<std::string> result;
  while (!words.empty()) {
    const function next = made({}, words, false);
    result.emplace_back(next.result);
    words = next.arguments;
  }
  return result;
}

std::string asjson() {
  using nlohmann::ordered_json;
  ordered_json rows = ordered_json::array();
  for (const function& each : functions) {
    ordered_json row = {{"name", each.name}, {"result", each.result}};
    row["arguments"] = listed(each.arguments);
    row["twin"] = each.twin ? ordered_json(twinname(each)) : ordered_json();
    rows.push_back(std::move(row));
  }
  const ordered_json all = {
      {"version", OPTXV_API_VERSION}, {"audit", auditline()}, {"functions", rows}};
  return all.dump(2) + '\n';
}

}  // namespace

int api(const request& given) {
  put(stdout, given.json ? asjson() : astable());
  return 0;
}

}  // namespace command
