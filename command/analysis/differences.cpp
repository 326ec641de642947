#include "analysis/differences.h"

#include <algorithm>
#include <map>
#include <utility>

#include "analysis/entryforms.h"
#include "text/names.h"
#include "text/wording.h"

namespace command {
namespace {

/// A list that parameter text made, by its name and by how many of that name are before it.
using newlists = std::map<std::pair<std::string, std::size_t>, std::int32_t>;

newlists listsof(const optxv::options& options, std::int32_t declared) {
  newlists all;
  std::map<std::string, std::size_t> times;
  const auto count = static_cast<std::int32_t>(options.table().size());
  for (std::int32_t optnr = declared + 1; optnr <= count; optnr++) {
    const std::string name = folded(options.describe(optnr).name);
    all.emplace(std::pair(name, times[name]++), optnr);
  }
  return all;
}

bool same(const heldvalue& left, const heldvalue& right) {
  return left.value == right.value;
}

/// Whether the name alone says something, with or without a value.
bool maybealone(const optxv::option& option) {
  return option.takes == optxv_takes_none || option.takes == optxv_takes_optional;
}

/// The last value of an attribute is that of a dot option, which is compared itself.
bool isentryvalue(const optxv::option& option, const heldvalue& held) {
  return option.name.starts_with('.') &&
         (held.from.road == optxv_road_none || held.from.road == optxv_road_dot);
}

/// Leaves what differs.
void trim(std::vector<heldvalue>& was, std::vector<heldvalue>& is) {
  const auto [left, right] = std::ranges::mismatch(was, is, same);
  was.erase(was.begin(), left);
  is.erase(is.begin(), right);
  while (!was.empty() && !is.empty() && same(was.back(), is.back())) {
    was.pop_back();
    is.pop_back();
  }
}

/// The entries of one kind, by what is before their equals sign.
using entrymap = std::map<std::string, std::vector<heldvalue>>;

entrymap dotoptionsof(const run& read) {
  const originteller teller(read);
  entrymap all;
  std::size_t position = 0;
  for (const optxv::dot_option& each : read.options().dot_options())
    all[formof(read.options(), each).name].push_back({each.value, teller.ofdotoption(position++)});
  return all;
}

entrymap indicatorsof(const run& read) {
  const originteller teller(read);
  entrymap all;
  std::size_t position = 0;
  for (const optxv::indicator& each : read.options().indicators())
    all[formof(each).name].push_back({each.mark, teller.ofindicator(position++)});
  return all;
}

class comparison {
 public:
  comparison(const run& left, const run& right) : left_(left), right_(right) {
    left_.readdefinition(fresh_);
  }

  std::vector<difference> all() {
    const auto declared = static_cast<std::int32_t>(fresh_.table().size());
    for (const optionpair& each : pairedoptions(left_.options(), right_.options(), declared))
      compare(each);
    compare(differing::dotoption, dotoptionsof(left_), dotoptionsof(right_));
    compare(differing::indicator, indicatorsof(left_), indicatorsof(right_));
    return std::move(found_);
  }

 private:
  void compare(const optionpair& which) {
    const bool left = which.left > 0;
    const optxv::options& options = (left ? left_ : right_).options();
    const std::int32_t optnr = left ? which.left : which.right;
    const optxv::option option = options.describe(optnr);
    difference made{
        .which = which, .kind = option.kind, .name = shownname(options.handle(), optnr)};
    if (option.kind == optxv_kind_list) {
      made.was = itemsof(left_, which.left);
      made.is = itemsof(right_, which.right);
      return add(std::move(made));
    }
    for (std::int32_t value = 1; hasvalue(option) && value <= (hastwovalues(option) ? 2 : 1);
         value++)
      comparevalue(made, option, value);
  }

  void comparevalue(difference made, const optxv::option& option, std::int32_t value) {
    heldvalue was = heldby(left_, option.number, value), is = heldby(right_, option.number, value);
    if (isentryvalue(option, was) && isentryvalue(option, is)) return;
    const bool named = was.from.road != is.from.road &&
                       (was.from.road == optxv_road_none || is.from.road == optxv_road_none);
    if (same(was, is) && !(maybealone(option) && named)) return;
    if (hastwovalues(option)) made.value = value;
    made.standard = valuenow(fresh_.handle(), option.number, value);
    made.was.push_back(std::move(was));
    made.is.push_back(std::move(is));
    found_.push_back(std::move(made));
  }

  void compare(differing what, entrymap was, entrymap is) {
    for (auto& [name, values] : was) {
      difference made{.what = what, .name = name, .was = std::move(values)};
      if (auto other = is.extract(name)) made.is = std::move(other.mapped());
      add(std::move(made));
    }
    for (auto& [name, values] : is)
      add({.what = what, .name = name, .was = {}, .is = std::move(values)});
  }

  /// Adds what differs of some values, if anything does.
  void add(difference made) {
    trim(made.was, made.is);
    if (!made.was.empty() || !made.is.empty()) found_.push_back(std::move(made));
  }

  static heldvalue heldby(const run& read, std::int32_t optnr, std::int32_t value) {
    return {valuenow(read.options().handle(), optnr, value),
            originteller(read).lastof(optnr, value)};
  }

  static std::vector<heldvalue> itemsof(const run& read, std::int32_t optnr) {
    std::vector<heldvalue> all;
    if (optnr == 0) return all;
    std::vector<origin> from = originteller(read).ofitems(optnr);
    for (const std::string_view item : read.options().list(optnr)) {
      origin& at = from[all.size()];
      all.push_back({std::string(item), std::move(at)});
    }
    return all;
  }

  const run& left_;
  const run& right_;
  optxv::options fresh_;
  std::vector<difference> found_;
};

}  // namespace

std::vector<optionpair> pairedoptions(const optxv::options& left, const optxv::options& right,
                                      std::int32_t declared) {
  std::vector<optionpair> all;
  for (std::int32_t optnr = 1; optnr <= declared; optnr++) all.push_back({optnr, optnr});
  newlists others = listsof(right, declared);
  for (const auto& [name, optnr] : listsof(left, declared)) {
    const auto same = others.extract(name);
    all.push_back({optnr, same.empty() ? 0 : same.mapped()});
  }
  for (const auto& [name, optnr] : others) all.push_back({0, optnr});
  return all;
}

std::vector<difference> differences(const run& left, const run& right) {
  return comparison(left, right).all();
}

}  // namespace command
