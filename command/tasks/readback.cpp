#include "tasks/readback.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>

#include "tasks/entryforms.h"
#include "text/names.h"
#include "text/printable.h"

namespace command {
namespace {

constexpr std::string_view cameback = " comes back as ";

/// What an option holds, as it is told; empty if it is not set.
using holdings = std::vector<std::string>;

std::string scalarof(const optionset& options, std::int32_t optnr, std::int32_t type, bool second) {
  if (type == optTypeDouble) return realtext(second ? options.real2(optnr) : options.real(optnr));
  const std::string text = second ? options.value2(optnr) : options.value(optnr);
  return type == optTypeString || type == optTypeEnumStr ? inquotes(text) : text;
}

/// Of an option with two values, the pair is one of the texts.
holdings scalarsof(const optionset& options, std::int32_t optnr, const optioninfo& info) {
  if (info.defined == 0 || info.type >= optTypeMultiList) return {};
  std::string text = scalarof(options, optnr, info.type, false);
  if (info.sub == optsub2Values) text += ' ' + scalarof(options, optnr, info.type, true);
  return {text};
}

holdings heldby(const optionset& options, std::int32_t optnr) {
  const optioninfo info = options.info(optnr);
  if (info.type != optTypeStrList) return scalarsof(options, optnr, info);
  holdings items = options.items(optnr);
  for (std::string& each : items) each = inquotes(each);
  return items;
}

/// REQUIRES: they differ.
std::string difference(const std::string& name, const holdings& was, const holdings& is) {
  if (was.empty()) return name + " is not set, but comes back as " + is.front();
  if (is.empty()) return name + ": " + was.front() + " does not come back";
  const auto [left, right] = std::ranges::mismatch(was, is);
  if (was.size() == 1 && is.size() == 1)
    return name + ": " + *left + std::string(cameback) + *right;
  std::string text = name + ": ";
  if (was.size() != is.size())
    text += counted(was.size(), "item") + std::string(cameback) + grouped(is.size()) + ", from ";
  text += "item " + grouped(static_cast<std::size_t>(left - was.begin()) + 1);
  if (left != was.end()) text += ", " + *left;
  return text + (right == is.end() ? "" : std::string(cameback) + *right);
}

class comparison {
 public:
  comparison(const optionset& before, const optionset& after, std::int32_t declared)
      : before_(before), after_(after), declared_(declared) {}

  std::vector<std::string> losses() {
    for (std::int32_t optnr = 1; optnr <= declared_; optnr++) compare(optnr, optnr);
    comparelists();
    std::int32_t dropped = 0;
    compare(dotlines(before_, dropped), dotlines(after_, dropped));
    compare(indicatorlines(before_, dropped), indicatorlines(after_, dropped));
    return std::move(losses_);
  }

 private:
  /// A list that parameter text made, by its name and by how many of that name are before it.
  using newlists = std::map<std::pair<std::string, std::size_t>, std::int32_t>;

  newlists listsof(const optionset& options) const {
    newlists all;
    std::map<std::string, std::size_t> times;
    for (std::int32_t optnr = declared_ + 1; optnr <= options.count(); optnr++) {
      const std::string name = folded(options.tablename(optnr));
      all.emplace(std::pair(name, times[name]++), optnr);
    }
    return all;
  }

  void comparelists() {
    newlists now = listsof(after_);
    for (const auto& [name, optnr] : listsof(before_)) {
      const auto same = now.extract(name);
      compare(optnr, same.empty() ? 0 : same.mapped());
    }
    for (const auto& [name, optnr] : now) compare(0, optnr);
  }

  /// A number of 0 is an option that is not there. The value of an attribute is that of the dot
  /// option that was read last, and these are compared themselves.
  void compare(std::int32_t left, std::int32_t right) {
    const std::string name = left > 0 ? before_.name(left) : after_.name(right);
    if (name.starts_with('.')) return;
    const holdings was = left > 0 ? heldby(before_, left) : holdings();
    const holdings is = right > 0 ? heldby(after_, right) : holdings();
    if (was != is) losses_.push_back(difference(name, was, is));
  }

  /// Entries have no names: those that are in one set alone are told, in pairs where they pair up.
  void compare(std::vector<std::string> was, std::vector<std::string> is) {
    std::ranges::sort(was);
    std::ranges::sort(is);
    std::vector<std::string> lost, added;
    std::ranges::set_difference(was, is, std::back_inserter(lost));
    std::ranges::set_difference(is, was, std::back_inserter(added));
    if (lost.size() == added.size())
      for (std::size_t i = 0; i < lost.size(); i++)
        losses_.push_back(lost[i] + std::string(cameback) + added[i]);
    else
      tellapart(lost, added);
  }

  void tellapart(const std::vector<std::string>& lost, const std::vector<std::string>& added) {
    for (const std::string& each : lost) losses_.push_back(each + " does not come back");
    for (const std::string& each : added) losses_.push_back(each + " comes back beside the others");
  }

  const optionset& before_;
  const optionset& after_;
  std::int32_t declared_;  ///< options that the definition has
  std::vector<std::string> losses_;
};

}  // namespace

std::vector<std::string> readbacklosses(const run& read, std::string_view text) {
  optionset after;
  read.readdefinition(after);
  const std::int32_t declared = after.count();
  after.readparameters("", text);
  return comparison(read.options(), after, declared).losses();
}

}  // namespace command
