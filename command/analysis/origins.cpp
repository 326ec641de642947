#include "analysis/origins.h"

#include <algorithm>

#include "text/wording.h"

namespace command {
namespace {

/// Where a file is named, and the file with that in it, and so on. The one that names a file is the
/// last before it that is one level up.
std::vector<place> ledto(const std::vector<enteredfile>& files, std::size_t source) {
  std::vector<place> all;
  while (source < files.size() && files[source].level > 1) {
    all.push_back(files[source].from);
    const std::int32_t level = files[source].level;
    while (source > 0 && files[source].level >= level) source--;
  }
  return all;
}

}  // namespace

origin originteller::originof(const spot& at, std::int32_t road, std::int32_t through) const {
  const std::vector<enteredfile>& files = read_.files();
  origin result{.road = road};
  if (through > 0) result.through = shownname(read_.options().handle(), through);
  if (at.source >= files.size()) return result;
  result.where = place(files[at.source].name);
  result.where.line = at.line;
  result.where.column = at.column;
  result.where.length = at.length;
  result.from = ledto(files, at.source);
  return result;
}

valuehistory originteller::historyof(std::int32_t optnr, std::int32_t which) const {
  valuehistory result;
  for (settingstep& each : read_.values().history(optnr, which))
    result.settings.push_back({std::move(each.value), originof(each.at, each.road, each.through)});
  result.forgotten = read_.values().of(optnr, which).times - result.settings.size();
  return result;
}

origin originteller::lastof(std::int32_t optnr, std::int32_t which) const {
  const std::optional<settingstep> last = read_.values().last(optnr, which);
  return last ? originof(last->at, last->road, last->through) : origin();
}

std::vector<origin> originteller::ofitems(std::int32_t optnr) const {
  std::vector<origin> all;
  for (pastvalue& each : historyof(optnr).settings) all.push_back(std::move(each.from));
  all.resize(static_cast<std::size_t>(read_.options().describe(optnr).items));
  std::ranges::reverse(all);
  return all;
}

origin originteller::ofdotoption(std::size_t position) const {
  const std::vector<spot>& spots = read_.values().dotoptions();
  return position < spots.size() ? originof(spots[position], optxv_road_dot, 0) : origin();
}

origin originteller::ofindicator(std::size_t position) const {
  const std::vector<spot>& spots = read_.values().indicators();
  return position < spots.size() ? originof(spots[position], optxv_road_entry, 0) : origin();
}

}  // namespace command
