// What a definition declares, as plain data: for programs in C++ that write documents of their own.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "foundation/visibility.h"

namespace optxv {

class tzmaoptions;

/// One allowed value of an enumeration.
struct valuefacts {
  std::string value;
  std::int32_t helpcontext = 0;
  std::string help;
};

/// A second name of an option. The marks are those that the definition puts on this very name; the
/// text is that of its last mark.
struct synonymfacts {
  std::string name;  ///< as users see it
  bool deprecated = false, obsolete = false;
  std::string text;
};

/// One option. Numbers and texts are in the form in which a definition holds them: limits by their
/// names, texts with blanks or commas between double quotes.
struct optionfacts {
  std::string tablename;  ///< as the definition writes it; a dot option's begins with a dot
  std::string name;       ///< as users see it
  std::string kind;       ///< the type word
  std::string modifier;   ///< NV, OPT, TWO or nothing
  std::int32_t refnr = 0;
  std::int32_t helpcontext = 0;
  std::int32_t group = 0;
  std::string help;
  std::vector<std::string> longhelp;
  bool hasdefault = false;           ///< the kinds with scalar values
  std::string defaultvalue;          ///< of these
  std::string low, high;             ///< both empty for a kind without bounds
  std::vector<valuefacts> values;    ///< of an enumeration
  std::vector<std::string> members;  ///< table names of what a multilist or a macro sets
  std::string action;                ///< what an immediate option does: EolFlag, ReadFile...
  std::vector<synonymfacts> synonyms;
  bool deprecated = false, obsolete = false;  ///< of the option's own name
  std::string deprecatedtext;
  /// What a parameter file finds: one marked synonym counts for all synonyms of the option.
  bool synonymdeprecated = false, synonymobsolete = false;
  std::string synonymdeprecatedtext;

  /// Whether lists of options for users have it.
  bool listed() const { return helpcontext > 0 && group > 0; }
};

struct groupfacts {
  std::string name;
  std::int32_t number = 0;
  std::int32_t helpcontext = 0;
  std::string title;
};

struct tablefacts {
  std::vector<optionfacts> options;  ///< in table order
  std::vector<groupfacts> groups;    ///< in definition order; numbers may occur twice or be unused
  std::string indicatorkey;          ///< empty where the definition has none
};

/// The facts of a table. Synonyms and members whose target was not found are left out.
OPTXV_EXPORT tablefacts describe(const tzmaoptions& options);

/// A number in the form in which a definition holds it: a limit by its name, such as maxint.
OPTXV_EXPORT std::string numbertext(std::int32_t number);
OPTXV_EXPORT std::string numbertext(double number);

}  // namespace optxv
