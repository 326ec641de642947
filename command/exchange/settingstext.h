// Settings in JSON as parameter text.
#pragma once

#include <string>
#include <vector>

#include "analysis/symbols.h"
#include "exchange/madetext.h"
#include "exchange/settingsform.h"
#include "exchange/valuetext.h"

namespace command {

/// Makes parameter text of settings in the form of settingsform.h. All that is wrong is told, each
/// fault on its own. Values are judged by whoever reads the text, and compare() then says what did
/// not come through.
///
///   madetext made("p.json", json, tell);
///   settingstext settings(options, names, {}, made);
///   settings.read(json);
///   options.read_text("", made.text());      a listener passes findings through made.origin()
///   settings.compare();
///   use(made.product());
///
/// BORROWS: all it is made with.
class settingstext {
 public:
  /// The text is for token mode, or for end-of-line mode. With `nobounds`, values that are out of
  /// bounds get entries around them that let them in.
  struct settings {
    bool tokens = false, nobounds = false;
  };
  settingstext(const optxv::options& options, symbols& names, const settings& form, madetext& to);

  /// Adds the lines for the settings.
  void read(std::string_view json);
  /// Tells of members that the options have another value for, now that they have read the text.
  void compare() const;

 private:
  /// A member that was written, with its lines and what should come of it.
  struct madename {
    std::string name;
    textspan where;
    std::size_t first, last;
    ordered_json wanted;
  };

  void readmember(const jsonmember& member);
  void readoption(const optxv::option& option, const jsonmember& member);
  ordered_json readvalue(const optxv::option& option, const jsonmember& member);
  ordered_json readflag(const optxv::option& option, const jsonmember& member);
  ordered_json readone(const optxv::option& option, const jsonmember& member);
  ordered_json readpair(const optxv::option& option, const jsonmember& member);
  ordered_json readlist(const std::string& key, const jsonmember& member);
  valuetext itemof(const jsonvalue& item) const;
  void unknownmember(const jsonmember& member) const;
  void unusable(const optxv::option& option, const jsonmember& member) const;
  void addentry(const std::string& entry, textspan where, bool outside, bool blankends);
  std::string keyof(const optxv::option& option) const;
  bool isgood(const jsonmember& member, const valuetext& value, textspan where) const;
  bool iswrong(const jsonmember& member, bool good, const std::string& taken) const;
  void told(const jsonfault& fault) const;

  const optxv::options& options_;
  symbols& names_;
  madetext& to_;
  bool tokens_;
  std::string nobounds_;    ///< the option that lets in what is out of bounds; empty if none is to
  std::string wholelines_;  ///< the one that switches the mode; empty if there is none
  std::vector<madename> made_;
};

}  // namespace command
