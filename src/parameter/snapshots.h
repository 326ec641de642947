// All values of an object as they are at a moment, and the way back to them.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "options/origins.h"
#include "options/zmaoptions.h"

namespace optxv {

/// The values of all options, which are set and recently set and where they came from, the items of
/// lists, the dot options and the indicators. It takes memory for what is set.
///
/// It knows its object by a number, and may outlive it.
class valuesnapshot {
 public:
  explicit valuesnapshot(const tzmaoptions& options);

  /// Makes all of this as it was; false for another object. Nothing is told to a listener. Where
  /// memory runs out (std::bad_alloc), the object is as before.
  bool restore(tzmaoptions& options) const;

 private:
  template <class Value>
  using both = std::array<Value, 2>;

  /// An option that is set.
  struct setoption {
    std::int32_t position;
    std::uint8_t defined, recent, outofbounds;
    valueorigin origin;
    std::variant<std::monostate, both<std::int32_t>, both<double>, both<std::string>,
                 std::vector<std::string>>
        value;
  };
  /// The new contents of an option with texts, made before anything changes.
  struct madetexts {
    heapstring first, second;
    txstrings items;
  };

  static setoption taken(const toption& option, const valueorigin& origin);
  static std::unique_ptr<madetexts> made(const setoption& set);
  static void put(toption& option, const setoption& set, madetexts* texts) noexcept;

  std::uint64_t identity_;
  std::vector<setoption> set_;  ///< in table order
  std::unique_ptr<txstringlistobj> dotoptions_;
  std::unique_ptr<txlistobj> indicators_;  ///< nil if the object had no list of them
  std::int32_t dotoptionerrors_, indicatorerrors_;
};

}  // namespace optxv
