// One run over a definition and its parameter files, with all that is found in them.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "analysis/diagnostics.h"
#include "analysis/nearest.h"
#include "analysis/optionset.h"
#include "text/shelf.h"
#include "text/source.h"

namespace command {

/// What the subcommands that read have in common.
struct readsettings {
  std::string definition;
  std::vector<std::string> parameters = {};
  bool tokens = false;    ///< reads begin in token mode
  bool nobounds = false;  ///< values out of bounds are taken, with a warning
};

/// The names of the options and their synonyms: those with a dot in front, or those without.
std::vector<knownname> optionnames(const optionset& options, bool dotted);

/// Reads files into an option set and hands what is found to a reporter, file by file: the queue is
/// emptied behind each, so that every file has its full length to itself.
/// BORROWS: the option set and the reporter.
class session {
 public:
  session(optionset& options, reporter& report) : options_(options), report_(report) {}

  /// Reads everything. False if the definition could not be read; nothing else is read then.
  bool read(const readsettings& settings);
  const tally& total() const { return total_; }
  /// Counts the dot options and indicators and reports what everything comes to.
  void summarize();

 private:
  bool readdefinition(const std::string& file);
  void readparameters(const std::string& file);
  const textdocument* opens(const std::string& file);
  const textdocument& source(const std::string& file);
  void unreadable(const std::string& file, const std::string& why);
  void takefindings(const std::string& file, filerole role);
  void take(const diagnostic& found);
  void suggest(diagnostic& found);
  const nearestnames& names(bool dotted);

  optionset& options_;
  reporter& report_;
  tally total_;
  shelf sources_;
  std::optional<nearestnames> plainnames_, dottednames_;
};

}  // namespace command
