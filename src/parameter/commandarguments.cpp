#include "parameter/commandarguments.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "foundation/strutilx.h"
#include "language/words.h"
#include "options/optionkinds.h"
#include "parameter/outersettings.h"

namespace optxv {

namespace {

constexpr std::string_view dashes = "--";

constexpr charset makeletters() {  // unreached: the compiler runs it
  charset set("_");
  set.addrange('A', 'Z');
  set.addrange('a', 'z');
  return set;
}
constexpr charset makenamebytes() {  // unreached: the compiler runs it
  charset set = makeletters();
  set.addrange('0', '9');
  set.add('.');
  set.add('-');
  return set;
}
constexpr charset letters = makeletters();
constexpr charset namebytes = makenamebytes();

outertext argument(std::size_t index, std::string_view text) {
  return {optxv_source_argument, "argument " + std::to_string(index), text};
}

/// An argument as a setting; nothing if it has the form of none.
std::optional<outersetting> settingin(std::size_t index, std::string_view text) {
  const std::size_t before = text.starts_with(dashes) ? dashes.size() : 0;
  const std::string_view rest = text.substr(before);
  const auto end =
      std::find_if_not(rest.begin(), rest.end(), [](char c) { return namebytes.has(c); });
  const auto size = static_cast<std::size_t>(end - rest.begin());
  if (size == 0 || !letters.has(rest.front())) return std::nullopt;
  if (size < rest.size() ? rest[size] != '=' : before == 0) return std::nullopt;
  return outersetting{argument(index, text), before, size, static_cast<std::int32_t>(before)};
}

/// How many of the arguments that follow a name are values of its option.
std::size_t valuesamong(const toption& option, std::span<char* const> following) {
  if (option.subtype == optsubNoValue || option.subtype == optsubOptional) return 0;
  const bool two = option.subtype == optsub2Values;
  if (option.opttype == optTypeBoolean && !two)
    return !following.empty() && checkboolean(following[0]) <= 1 ? 1 : 0;
  std::size_t count = 0;
  while (count < (two ? 2U : 1U) && count < following.size() &&
         !std::string_view(following[count]).starts_with(dashes))
    ++count;
  return count;
}

}  // namespace

std::vector<char*> readarguments(tzmaoptions& options, std::span<char* const> arguments,
                                 bool keepunknown) {
  std::vector<char*> kept(arguments.begin(), arguments.begin() + 1);
  std::size_t next = 1;
  for (; next < arguments.size() && arguments[next] != dashes; ++next) {
    const std::optional<outersetting> setting = settingin(next, arguments[next]);
    const foundoption found =
        setting ? findouter(options, setting->name()) : foundoption{nullptr, {}};
    if (found.option != nullptr) {
      const auto following = arguments.subspan(next + 1);
      const std::size_t count = setting->hasvalue() ? 0 : valuesamong(*found.option, following);
      std::vector<outertext> values;
      for (std::size_t i = 1; i <= count; ++i)
        values.push_back(argument(next + i, arguments[next + i]));
      readouter(options, *setting, found, values);
      next += count;
    } else if (setting && !keepunknown) {
      reportunknown(options, *setting, optMsgUserError);
    } else {
      kept.push_back(arguments[next]);
    }
  }
  if (next < arguments.size()) ++next;  // the -- that ends the options
  for (; next < arguments.size(); ++next) kept.push_back(arguments[next]);
  return kept;
}

}  // namespace optxv
