// One run over a definition and its parameter files, with all that is found in them.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/collector.h"
#include "analysis/entrychecks.h"
#include "analysis/hearing.h"
#include "analysis/reading.h"
#include "analysis/recordchecks.h"
#include "analysis/settings.h"
#include "analysis/symbols.h"
#include "analysis/textchecks.h"
#include "analysis/trial.h"
#include "optxv/optxv.hpp"
#include "text/shelf.h"

namespace command {

/// Texts to be read in place of what is in the files of these names.
using drafttexts = std::map<std::string, std::string>;

/// What is to be read; "-" is standard input.
struct readsettings {
  std::string definition;
  std::vector<std::string> parameters = {};
  bool tokens = false;                 ///< reads begin in token mode
  bool nobounds = false;               ///< values out of bounds are taken, with a warning
  const drafttexts* drafts = nullptr;  ///< of the parameter files, if any. BORROWS: for the run
};

/// What a run is for, beyond the values.
struct runparts {
  bool checks = false;   ///< warns of what the library takes as it is, and is hardly meant
  bool symbols = false;  ///< keeps all declarations and mentions
  bool origins = false;  ///< keeps all settings, not only the last of each option
};

/// A file that was read, or that a file of the run names.
struct enteredfile {
  std::string name;
  std::int32_t level = 1;  ///< 1 for a file that was asked for
  place from = {};         ///< where it is named; no line on level 1
  identity id = {};        ///< no file if it is none, or is gone
};

/// Reads texts and says what is found in them, in the order of the text, while it reads. It does
/// not read the library's queue of messages, which is emptied after each file; so nothing is lost
/// where that is full, and memory does not grow with the number of findings.
///
///   run reading(taker);
///   if (reading.read({.definition = "s.def", .parameters = {"p.opt"}})) use(reading.options());
///   return reading.total().status();
///
/// OWNS: the options, and the texts that it has read.
class run {
 public:
  explicit run(findingtaker take, const runparts& parts = {});

  /// Reads everything, once. False if the definition could not be read or declares no option;
  /// nothing else is read then. Throws std::bad_alloc, with the options in their last good state.
  bool read(const readsettings& what);

  optxv::options& options() { return options_; }
  const optxv::options& options() const { return options_; }
  /// The counts, with those of the dot options and indicators.
  tally total() const;
  /// Names declared and used.
  symbols& names() { return names_; }
  const symbols& names() const { return names_; }
  /// Where each option got its value.
  const settings& values() const { return settings_; }
  /// The files that were entered, in that order.
  const std::vector<enteredfile>& files() const { return files_.all; }
  /// The definition as it was read; empty if it could not be read.
  std::string_view definitiontext() const {
    return definition_ == nullptr ? std::string_view() : definition_->text();
  }
  /// Reads the definition of the run into another option set, which then has the defaults.
  void readdefinition(optxv::options& into) const;

 private:
  struct filelist : listener {
    void entered(const optxv_source& source) override;
    std::vector<enteredfile> all;
    identity given = {};  ///< of the text on level 1
  };

  std::vector<listener*> listeners(bool checks);
  bool readdefinition(const readsettings& what);
  void readparameters(const std::string& file);
  const textdocument* document(const std::string& file);
  void unreadable(const std::string& file, const std::string& why);
  void finish(const std::string& file, std::int32_t error);

  optxv::options options_;
  shelf shelf_;
  const textdocument* definition_ = nullptr;
  const drafttexts* drafts_ = nullptr;
  trial trial_;
  reading at_;
  symbols names_;
  settings settings_;
  filelist files_;
  collector findings_;
  textchecks textchecks_;
  entrychecks entrychecks_;
  recordchecks recordchecks_;
  hearing hearing_;
};

}  // namespace command
