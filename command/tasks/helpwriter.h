// The help that a definition holds, laid out for a person.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "writers/facts.h"

namespace command {

/// Makes help from the facts of a table. All of it is printable, and broken at blanks where a width
/// is given. Options and groups with the help context 0, and options with the group 0, are hidden:
/// no listing has them, but their own block is there. BORROWS: the facts.
class helpwriter {
 public:
  /// `width`: the columns of the terminal, or 0 for a line of any length.
  helpwriter(const optxv::tablefacts& table, std::size_t width);

  /// The options with their synonyms, one line each, in their groups. Groups without options are
  /// left out; options whose group no record declares come last. Empty if there are no groups.
  std::string bygroup() const;
  /// The blocks of all options, by name.
  std::string byname() const;
  /// The block of one option: name and help; kind, range and default; what a sub-type means; the
  /// long help; values or members; synonyms and marks. REQUIRES: 1 to the number of options.
  std::string block(std::int32_t optnr) const;
  /// The options in whose names and texts all of the words are found, case ignored; those with all
  /// of them in their names come first. In names, '_' and '-' and a blank count as nothing.
  std::vector<std::int32_t> search(const std::vector<std::string>& words) const;
  /// The library's list of names for debugging, which it would print as they are.
  std::string debuglist() const;

 private:
  /// A line of a listing: an option under its own name or under a synonym.
  struct entry {
    std::string name;
    const optxv::optionfacts* option;
    const optxv::synonymfacts* synonym;  ///< nil for its own name
  };

  std::vector<entry> entries() const;
  std::string listing(const std::vector<const entry*>& entries, std::size_t indent) const;
  std::string line(const std::string& text) const;
  std::string kindlines(const optxv::optionfacts& option) const;
  std::string valuelines(const optxv::optionfacts& option) const;
  std::string memberlines(const optxv::optionfacts& option) const;
  std::string namelines(const optxv::optionfacts& option) const;

  const optxv::tablefacts& table_;
  std::size_t width_;
  std::unordered_map<std::string, const optxv::optionfacts*> named_;  ///< by the table's name
};

}  // namespace command
