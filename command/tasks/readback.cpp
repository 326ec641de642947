#include "tasks/readback.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "analysis/differences.h"
#include "analysis/entryforms.h"
#include "text/entrytext.h"
#include "text/printable.h"
#include "text/wording.h"

namespace command {
namespace {

constexpr std::string_view cameback = " comes back as ";

/// What an option holds, as it is told; empty if it is not set.
using holdings = std::vector<std::string>;

std::string scalarof(const optxv::options& options, const optxv::option& option,
                     std::int32_t position) {
  if (option.data == optxv_data_real) return realtext(options.get<double>(option.number, position));
  if (option.data == optxv_data_text)
    return inquotes(options.get<std::string>(option.number, position));
  return options.shown(option.number, position);
}

/// Of an option with two values, the pair is one of the texts.
holdings scalarsof(const optxv::options& options, const optxv::option& option) {
  if (option.defined == 0 || option.kind >= optxv_kind_multilist) return {};
  std::string text = scalarof(options, option, 1);
  if (option.takes == optxv_takes_two) text += ' ' + scalarof(options, option, 2);
  return {text};
}

holdings heldby(const optxv::options& options, std::int32_t optnr) {
  const optxv::option option = options.describe(optnr);
  if (option.kind != optxv_kind_list) return scalarsof(options, option);
  auto items = options.get<holdings>(optnr);
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
  comparison(const optxv::options& before, const optxv::options& after, std::int32_t declared)
      : before_(before), after_(after), declared_(declared) {}

  std::vector<std::string> losses() {
    for (const optionpair& each : pairedoptions(before_, after_, declared_))
      compare(each.left, each.right);
    compare(dotlines(before_), dotlines(after_));
    compare(indicatorlines(before_), indicatorlines(after_));
    return std::move(losses_);
  }

 private:
  /// A number of 0 is an option that is not there. The value of an attribute is that of the dot
  /// option that was read last, and these are compared themselves.
  void compare(std::int32_t left, std::int32_t right) {
    const std::string name =
        left > 0 ? shownname(before_.handle(), left) : shownname(after_.handle(), right);
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

  const optxv::options& before_;
  const optxv::options& after_;
  std::int32_t declared_;  ///< options that the definition has
  std::vector<std::string> losses_;
};

}  // namespace

std::vector<std::string> readbacklosses(const run& read, std::string_view text) {
  optxv::options after;
  read.readdefinition(after);
  const auto declared = static_cast<std::int32_t>(after.table().size());
  after.read_text("", text);
  return comparison(read.options(), after, declared).losses();
}

}  // namespace command
