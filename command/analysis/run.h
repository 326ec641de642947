// One run over a definition and its parameter files, with all that is found in them.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/collector.h"
#include "analysis/entrychecks.h"
#include "analysis/hearing.h"
#include "analysis/reading.h"
#include "analysis/recordchecks.h"
#include "analysis/repeats.h"
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
  const drafttexts* drafts = nullptr;  ///< of the files, if any. BORROWS: for the run
};

class run;

/// What a run is for, beyond the values.
struct runparts {
  bool checks = false;       ///< warns of what the library takes as it is, and is hardly meant
  bool symbols = false;      ///< keeps all declarations and mentions
  bool origins = false;      ///< keeps all settings, not only the last of each option
  listener* also = nullptr;  ///< hears each call before all others do. BORROWS: for the run
  /// Gives further listeners for a run, which hear each call after those of the run itself, and
  /// before its messages become findings. Asked when the run is made, and again for each text that
  /// is read again. BORROWS: the listeners, until it is asked again or the run ends.
  std::function<std::vector<listener*>(run&)> join = {};
};

/// A file that was read, or that a file of the run names.
struct enteredfile {
  std::string name;
  std::int32_t level = 1;  ///< 1 for a file that was asked for
  place from = {};         ///< where it is named; no line on level 1
  identity id = {};        ///< no file if it is none, or is gone, or is not known
  int unknown = 0;         ///< the system's error number if it does not tell which file it is
};

/// Reads texts and says what is found in them, in the order of the text, while it reads. It does
/// not read the library's queue of messages, which is emptied after each file; so nothing is lost
/// where that is full, and memory does not grow with the number of findings.
///
///   run reading(taker);
///   if (reading.read({.definition = "s.def", .parameters = {"p.opt"}})) use(reading.options());
///   return reading.total().status();
///
/// For parameter text that changes, the definition is read once and kept, with its names and its
/// trial of hints; what belongs to the parameter text is made anew for each read, so that nothing
/// of an earlier one is left:
///
///   run reading(taker, {.checks = true});
///   if (reading.readdefinition(text, tokens)) reading.readagain(parameters);  // again and again
///
/// OWNS: the options, and the texts that it has read.
class run {
 public:
  explicit run(findingtaker take, const runparts& parts = {});

  /// Reads everything, once. False if the definition could not be read or declares no option;
  /// nothing else is read then. Throws std::bad_alloc, with the options in their last good state.
  bool read(const readsettings& what);

  /// Reads a definition, for readagain. True if it declares an option. To be called once.
  bool readdefinition(const textdocument& definition, bool tokens, bool nobounds = false);
  /// Reads parameter text as if nothing had been read after the definition. False, with nothing
  /// done, if the table has grown so much by lists of earlier texts that a new run should take
  /// over. REQUIRES: readdefinition gave true.
  bool readagain(const textdocument& parameters);

  optxv::options& options() { return options_; }
  const optxv::options& options() const { return options_; }
  /// The counts, with those of the dot options and indicators.
  tally total() const;
  /// Names declared and used.
  symbols& names() { return names_; }
  const symbols& names() const { return names_; }
  /// Where each option got its value.
  const settings& values() const { return parts_->values; }
  /// Where the reader stands.
  const reading& at() const { return at_; }
  /// What the value that was stored last repeats, while a listener that has joined hears of it.
  const repeats& again() const { return parts_->again; }
  /// Whether reads begin in the mode of many entries a line.
  bool tokens() const { return tokens_; }
  /// Adds a finding of a listener that has joined, or of after the read.
  void tell(finding found);
  /// The files that were entered, in that order.
  const std::vector<enteredfile>& files() const { return parts_->files.all; }
  /// The definition as it was read; empty if it could not be read.
  std::string_view definitiontext() const {
    return definition_ ? definition_->text() : std::string_view();
  }

  /// For a task that makes parameter text of something else, after read(): a file of the run, nil
  /// if it cannot be read, which is told; and the text that was made of it.
  const textdocument* open(const std::string& file) { return document(file); }
  void readmade(const std::string& name, std::string_view text);
  /// Reads the definition of the run into another option set, which then has the defaults.
  void readdefinition(optxv::options& into) const;

 private:
  struct filelist : listener {
    void entered(const optxv_source& source) override;
    std::vector<enteredfile> all;
    identity given = {};  ///< of the text on level 1
  };

  /// What is made anew for each text that is read again.
  struct readparts {
    explicit readparts(run& of);
    std::vector<listener*> listeners(run& of);

    settings values;
    repeats again;
    filelist files;
    collector findings;
    textchecks texts;
    entrychecks entries;
    recordchecks records;
    hearing heard;
  };

  void setswitches(bool tokens, bool nobounds);
  bool readdefinition(const readsettings& what);
  bool take(const textdocument& definition, bool tokens);
  void telluseless(bool swapped);
  void readparameters(const std::string& file);
  void startover();
  const textdocument* document(const std::string& file);
  textdocument drafted(const textdocument& document) const;
  void begin(const textdocument& text);
  void unreadable(const std::string& file, const std::string& why);
  void finish(const std::string& file, std::int32_t error);

  findingtaker take_;
  runparts asked_;
  optxv::options options_;
  shelf shelf_;
  std::optional<textdocument> definition_;
  bool tokens_ = false, nobounds_ = false;
  std::int32_t declared_ = 0;             ///< options in the table once the definition is read
  std::optional<optxv::snapshot> start_;  ///< the values then
  const drafttexts* drafts_ = nullptr;
  trial trial_;
  reading at_;
  symbols names_;
  std::optional<readparts> parts_;
};

}  // namespace command
