// Where the options got their values.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

#include "analysis/optionvalues.h"
#include "analysis/reading.h"

namespace command {

/// How an option got a value: the place of the value, the road (optxv_road_...), the macro or
/// multi-list that handed it on, and what was there before.
struct setting {
  std::int32_t road = optxv_road_none;
  std::int32_t through = 0;
  place where = {};
  place overridden = {};  ///< of the value that it took the place of; no line if of none
  std::size_t times = 0;  ///< how often the option was set
};

/// A piece of a text by the read that it was met in, which is a position in the files of the run:
/// smaller than a place, since there may be a million of them.
struct spot {
  std::size_t source = 0;
  std::int64_t line = 0, column = 0, length = 0;
};

/// One of the times that an option got a value.
struct settingstep {
  optionvalue value;
  std::int32_t road = optxv_road_none;
  std::int32_t through = 0;
  spot at = {};
};

/// Gathers the last setting of each option, either value on its own. On request it keeps those
/// before them too, with their values, and where the dot options and the indicators stand.
/// BORROWS: the handle.
class settings : public listener {
 public:
  explicit settings(optxv_handle options, bool keepall = false)
      : options_(options), keepall_(keepall) {}

  /// The settings that are kept, over all options: the last ones. Older ones are counted only, so
  /// that memory does not grow with the files.
  static constexpr std::size_t mostkept = 1'000'000;

  /// which: 1 or 2. A setting without a road for an option that was not set.
  const setting& of(std::int32_t optnr, std::int32_t which = 1) const;
  /// The setting that is in effect, with its value, whether all are kept or not. Nothing for an
  /// option that was not set.
  std::optional<settingstep> last(std::int32_t optnr, std::int32_t which = 1) const;
  /// All times that a value was set, the last one first: that alone unless all are kept. of()
  /// counts also those that are not. A list of texts has a step for each of its items.
  std::vector<settingstep> history(std::int32_t optnr, std::int32_t which = 1) const;
  /// Where each dot option and each indicator begins, by its position from 0; empty unless all are
  /// kept.
  const std::vector<spot>& dotoptions() const { return dotoptions_; }
  const std::vector<spot>& indicators() const { return indicators_; }

  void entered(const optxv_source& source) override;
  void left(const optxv_source& source, std::int32_t error) override;
  void stored(const optxv_store& store) override;
  void dotoption(const optxv_entry& entry) override;
  void indicator(const optxv_entry& entry) override;

 private:
  /// A step, and the one before it for the same value: steps are numbered from 1, 0 is none.
  struct linkedstep {
    settingstep step;
    std::size_t before = 0;
  };
  struct lastsetting : setting {
    spot at = {};
    std::size_t step = 0;
  };

  const lastsetting* find(std::int32_t optnr, std::int32_t which) const;
  std::size_t keep(const optxv_store& store, const spot& at, std::size_t before);
  spot spotof(const optxv_place& where) const;

  optxv_handle options_;
  bool keepall_;
  std::vector<std::array<lastsetting, 2>> settings_;  ///< by the option's number
  std::deque<linkedstep> steps_;                      ///< the last ones
  std::size_t dropped_ = 0;                           ///< steps before those
  std::vector<std::size_t> sources_;                  ///< being read, innermost last
  std::size_t entered_ = 0;                           ///< sources so far
  std::vector<spot> dotoptions_, indicators_;
};

}  // namespace command
