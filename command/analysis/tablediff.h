// What changed between two versions of a definition, and what of that breaks what worked.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/run.h"

namespace command {

/// The kinds of change. One is breaking if a parameter file that was good is refused now or says
/// something else, or if a program no longer gets what it asks for.
enum class tablechange {
  optiongone,
  obsoletegone,
  optionnew,
  optionrenamed,
  optionrenamedkept,
  typechanged,
  takeschanged,
  takesoptional,
  boundstighter,
  boundswider,
  defaultchanged,
  defaultsaid,
  itemgone,
  itemnew,
  memberschanged,
  actionchanged,
  usermapchanged,
  synonymgone,
  synonymnew,
  synonymchanged,
  deprecated,
  obsolete,
  markgone,
  hidden,
  listed,
  moved,
  helpchanged,
  groupgone,
  groupnew,
  groupchanged,
  commentchanged,
  lookupchanged,
  indicatorchanged,
  indicatornew,
};

/// What there is to say of a kind of change: a code for programs, and words after the name of what
/// has changed, in which OLD and NEW stand for what it was and is.
struct changerule {
  std::string_view code;
  bool breaking;
  std::string_view words;
};
/// All of them, in the order of tablechange.
std::span<const changerule> changerules();
const changerule& ruleof(tablechange what);

/// One change.
struct change {
  tablechange what;
  std::string name;      ///< of the option, the synonym, ... as it is shown
  std::string was = {};  ///< empty where the rule has no OLD
  std::string is = {};   ///< likewise NEW
  place where = {};      ///< in the new definition; of what is gone, in the old one

  bool breaking() const { return ruleof(what).breaking; }
  /// The words of the rule, with what it was and is.
  std::string text() const;
};

/// The changes, those that are breaking first, and then in the order of the old table and of the
/// new one. Help contexts do not count, except 0, nor does the order of the options.
/// REQUIRES: runs with .symbols among their parts that have read their definitions.
std::vector<change> tablechanges(const run& left, const run& right);

}  // namespace command
