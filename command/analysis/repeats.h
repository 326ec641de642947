// Options that are set once more, so that what an earlier entry gave them has no effect.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "analysis/reading.h"
#include "analysis/symbols.h"

namespace command {

/// A value that leaves nothing of what an earlier entry gave the option.
struct repetition {
  std::int32_t option = 0;
  std::int32_t through = 0;  ///< the macro or multi-list that handed the value on; 0 if none
  place first = {};          ///< of the value without effect
  bool samefile = false;     ///< both are in one run through one file
  bool alone = false;        ///< in its line, no other entry is before that of `first`
};

/// Finds repetitions. To set again but one of two values is none, nor is an entry after a macro
/// that has set the same among others, nor what a list gains.
/// BORROWS: what it is made with, which stands before this in the hearing.
class repeats : public listener {
 public:
  repeats(const reading& at, const symbols& names) : at_(at), names_(names) {}

  /// What the last value that was stored repeats; nothing if it does not.
  const std::optional<repetition>& now() const { return now_; }

  void entered(const optxv_source& source) override;
  void left(const optxv_source& source, std::int32_t error) override;
  void key(const optxv_key& key) override;
  void stored(const optxv_store& store) override;

 private:
  /// The entries for an option in one source. A mask has bit 1 for the first value, 2 for the
  /// second.
  struct setbefore {
    std::size_t source = 0;
    std::size_t entry = 0;                   ///< the last one
    std::int32_t mask = 0;                   ///< what that gave
    std::int32_t earlier = 0;                ///< what the entries before it gave
    place where = {}, first = {};            ///< of the last one, and of the one before
    bool alone = false, firstalone = false;  ///< likewise, whether its line begins with it
    bool told = false;                       ///< that the last one comes on top of others
    std::int32_t outer = 0;  ///< what the last entry of another source gave, until told
    place elsewhere = {};    ///< of that
  };

  setbefore& before(std::int32_t option);
  std::optional<repetition> found(setbefore& last, std::int32_t bit) const;
  bool beginsline() const;

  const reading& at_;
  const symbols& names_;
  std::vector<std::size_t> sources_;  ///< the numbers of the sources being read, innermost last
  std::size_t lastsource_ = 0;
  std::size_t entry_ = 0;  ///< the entries so far
  std::vector<setbefore> before_;
  std::optional<repetition> now_;
};

/// What makes an entry without effect a comment: sure, unless its line may have other entries.
hint ascomment(std::string words, place entry, bool manyaline);

}  // namespace command
