// The names that somebody may have meant who wrote one that does not exist.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "foundation/visibility.h"

namespace optxv {

/// A name, and what it names: of several names for one thing only the nearest is worth telling.
struct knownname {
  std::string name;
  std::int32_t owner = 0;
};

/// A fixed set of names that can be asked for the nearest ones to a wrong name. Case is ignored,
/// and a blank counts as '_'. Made for tables of tens of thousands of names and as many questions:
/// a question costs no more than a fixed amount of work, whatever the table holds. In a table so
/// large that this cuts a search short, what it has found until then counts.
class OPTXV_EXPORT nearestnames {
 public:
  static constexpr std::size_t maximum = 3;

  explicit nearestnames(const std::vector<knownname>& names);

  /// At most `maximum` names, the nearest first, as they were given, and one for each owner; none
  /// if nothing is near. The first of these ways that finds a name decides:
  ///  1. few slips: the least number of letters put in, left out, changed, or swapped with their
  ///     neighbour (the distance of Damerau and Levenshtein, each place touched once), and at most
  ///     one slip more than the best;
  ///  2. the name goes on where the wrong name ends;
  ///  3. words between underscores: most of them are shared, with a slip in each allowed.
  std::vector<std::string> nearest(std::string_view wrong) const;

 private:
  struct entry {
    std::string shown, folded;
    std::int32_t owner = 0;
    std::size_t position = 0;             ///< among the names as they were given
    std::vector<std::size_t> words = {};  ///< positions in words_
  };
  struct word {
    std::string text;
    std::vector<std::size_t> entries = {};  ///< that have it
  };
  struct candidate {
    std::size_t rank;  ///< smaller is nearer
    const entry* name;
  };
  using candidates = std::vector<candidate>;
  /// The known words that agree with a word, by position, and how well.
  using agreements = std::vector<std::pair<std::size_t, std::size_t>>;

  void addwords();
  candidates byslips(std::string_view wrong) const;
  candidates bybeginning(std::string_view wrong) const;
  candidates bywords(std::string_view wrong) const;
  agreements agreeing(std::string_view wrong) const;
  std::vector<std::size_t> sharing(const std::vector<agreements>& all) const;

  std::vector<entry> entries_;  ///< sorted by the folded name
  std::vector<word> words_;     ///< each word of the names once, sorted
};

/// That distance if it is at most `limit`, else a number above it.
std::size_t slips(std::string_view left, std::string_view right, std::size_t limit);

}  // namespace optxv
