#include "output/changeforms.h"

#include <algorithm>

#include "output/originforms.h"
#include "output/styles.h"
#include "text/printable.h"

namespace command {
namespace {

std::size_t countbreaking(const std::vector<change>& all) {
  return static_cast<std::size_t>(std::ranges::count_if(all, &change::breaking));
}

}  // namespace

std::string changeline(const change& made, bool colours) {
  const std::string where = placewords(made.where);
  std::string line = where.empty() ? "" : styled(colours, placestyle, where + ": ");
  line += made.breaking() ? styled(colours, errorstyle, "breaking:")
                          : styled(colours, notestyle, "change:");
  return line + ' ' + printable(made.name) + ": " + printable(made.text()) + " [" +
         std::string(ruleof(made.what).code) + "]\n";
}

std::string changesummary(const std::vector<change>& all) {
  const std::size_t breaking = countbreaking(all);
  return counted(breaking, "breaking change") + ", " + counted(all.size() - breaking, "other") +
         '\n';
}

nlohmann::ordered_json countsjson(const std::vector<change>& all) {
  const std::size_t breaking = countbreaking(all);
  return {{"breaking", breaking}, {"others", all.size() - breaking}};
}

nlohmann::ordered_json changejson(const change& made) {
  nlohmann::ordered_json row = {{"code", ruleof(made.what).code},
                                {"breaking", made.breaking()},
                                {"name", made.name},
                                {"text", made.text()}};
  if (!made.was.empty()) row["old"] = made.was;
  if (!made.is.empty()) row["new"] = made.is;
  if (made.where.line > 0) row.update(placejson(made.where));
  return row;
}

}  // namespace command
