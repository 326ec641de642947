// What an entry of parameter text has done, as the rules of the linter look at it.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "lint/declaredtable.h"

namespace command {

/// A line of text that outlives its file.
using sharedline = std::shared_ptr<const std::string>;

/// A value that an entry gave an option, by whatever road.
struct storedvalue {
  std::int32_t option = 0;
  std::int32_t road = optxv_road_none;
  bool standard = false;  ///< it is the default, and so was the value before
};

/// An entry that took a value from an earlier one.
struct takenvalue {
  repetition what = {};
  place again = {};      ///< of the value that took its place
  sharedline line = {};  ///< of the first value
};

/// An entry that was read without a fault. BORROWS: the run.
struct entryfacts {
  run* reader = nullptr;
  readentry entry = {};
  std::string marktext = {};  ///< what the library says of a marked name
  std::vector<storedvalue> stored = {};
  std::vector<takenvalue> taken = {};
  bool tokens = false;         ///< it was read in the mode of many entries a line
  bool manyaline = false;      ///< its file has lines with many entries
  bool crowded = false;        ///< another entry stands before it in its line
  bool listedtwice = false;    ///< the list has that text already
  bool blanksinnames = false;  ///< users write blanks where names have underscores

  const optionsymbol& option() const { return reader->names().option(entry.option); }
};

/// What a parameter file leaves behind for those after it. BORROWS: the run.
struct leavingfacts {
  run* reader = nullptr;
  place boundsoff = {};  ///< of the entry that let values out of bounds in to the end; or no line
  sharedline line = {};
};

/// Gathers entries, and hands each on when it is over: at the next key or line.
/// BORROWS: the run, whose listener it is, and the table, which stands before this in the hearing.
class entrygathering : public listener {
 public:
  using takeentry = std::function<void(const entryfacts&, const sharedline&)>;
  using takeleaving = std::function<void(const leavingfacts&)>;
  entrygathering(run& of, const declaredtable& table, takeentry entry, takeleaving leaving)
      : of_(of), table_(table), takeentry_(std::move(entry)), takeleaving_(std::move(leaving)) {}

  void entered(const optxv_source& source) override;
  void left(const optxv_source& source, std::int32_t error) override;
  void line(const optxv_place& where, std::string_view text) override;
  void key(const optxv_key& key) override;
  void value(const optxv_value& value) override;
  void stored(const optxv_store& store) override;
  void message(const optxv_message& message) override;

 private:
  /// A source that is being read.
  struct reader {
    std::string text;   ///< of the line
    sharedline line;    ///< the same, once it was asked for
    entryfacts facts;   ///< of the entry that is being read
    bool open = false;  ///< there is one
    bool faulty = false;
    bool tokens = false, switched = false;
    std::size_t plain = 0;  ///< the entries for options in the line so far
  };

  void finish();
  const sharedline& lineof(reader& now);
  void instruct(const optxv_value& value);
  bool isstandard(std::int32_t option, std::int32_t which) const;

  run& of_;
  const declaredtable& table_;
  takeentry takeentry_;
  takeleaving takeleaving_;
  std::vector<reader> readers_;
  std::vector<char> changed_;      ///< by option: bit 1, 2 for a value that is not the default
  std::vector<sharedline> lines_;  ///< by option: of the entry that set it last
  std::set<std::pair<std::int32_t, std::string>> listed_;  ///< the texts of lists
  leavingfacts leaving_;
};

}  // namespace command
