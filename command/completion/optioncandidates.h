// The names and values of options, as words that can stand on a command line.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "completion/candidates.h"
#include "optxv/optxv.hpp"
#include "writers/facts.h"

namespace command {

/// The candidates of one definition. Faults in it are nobody's concern while a command line is
/// typed: what could be read counts, and there are no candidates where nothing could.
class optioncandidates {
 public:
  /// Reads the definition; `~/` is the home of the user. Only a regular file of at most 32 MiB is
  /// read, since the user is waiting, and a pipe may be for somebody else.
  explicit optioncandidates(const std::string& file);

  /// The names of options and synonyms that begin with what was typed. What the help does not list,
  /// and what is deprecated or obsolete, counts only where nothing else does.
  std::vector<candidate> names(std::string_view typed) const;

  /// What can stand at the end of the command line of a program that reads its arguments by
  /// optxv_read_arguments: name=value, --name=value or --name value. The first word is the program,
  /// and the last one is what was typed.
  offer argument(std::span<const std::string> words) const;

 private:
  struct rankednames;

  const optxv::optionfacts* find(std::string_view name) const;
  const optxv::optionfacts* valued(std::span<const std::string> before) const;
  std::vector<candidate> values(const optxv::optionfacts& option) const;
  offer values(const optxv::optionfacts& option, std::string_view before,
               std::string_view typed) const;
  rankednames settings(bool dashed) const;

  optxv::options options_;
  optxv::tablefacts table_;
};

}  // namespace command
