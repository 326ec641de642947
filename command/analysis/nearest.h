// The names that somebody may have meant who wrote one that does not exist.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace command {

/// A name, and what it names: of several names for one thing only the nearest is worth telling.
struct knownname {
  std::string name;
  std::int32_t owner = 0;
};

/// A fixed set of names that can be asked for the nearest ones to a wrong name. Case is ignored,
/// and a blank counts as '_'. Made for tables of thousands of names and thousands of questions:
/// most names are ruled out by length and letters alone.
class nearestnames {
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
  using letterset = std::uint64_t;
  struct entry {
    std::string shown, folded;
    std::int32_t owner;
    letterset letters;
    std::vector<std::size_t> words;  ///< positions in words_
  };
  struct word {
    std::string text;
    letterset letters;
  };
  struct candidate {
    std::size_t rank;  ///< smaller is nearer
    const entry* name;
  };
  using candidates = std::vector<candidate>;

  static letterset lettersof(std::string_view text);
  static std::size_t agreement(std::string_view wrong, letterset letters, const word& known);
  candidates byslips(std::string_view wrong) const;
  candidates bybeginning(std::string_view wrong) const;
  candidates bywords(std::string_view wrong) const;
  std::size_t addword(std::string_view text, std::map<std::string, std::size_t>& places);

  std::vector<entry> entries_;
  std::vector<word> words_;  ///< each word of the names once
};

/// That distance if it is at most `limit`, else a number above it.
/// REQUIRES: no text is longer than 255 bytes.
std::size_t slips(std::string_view left, std::string_view right, std::size_t limit);

}  // namespace command
