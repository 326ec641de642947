// What a reference of a table's options has in it, whatever it is written as.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "writers/facts.h"

namespace command {

using optionlist = std::vector<const optxv::optionfacts*>;

/// The options of a group, or those without one.
struct referencesection {
  std::string title;
  std::string place;    ///< its address in the document; of letters, digits and hyphens
  bool hidden = false;  ///< the help listings leave it out
  optionlist options;
};

/// The table by sections, with the ways from option to option. BORROWS: the table.
class referenceplan {
 public:
  explicit referenceplan(const optxv::tablefacts& table);

  /// Those that have options, in the order of the definition; options without a group come last.
  const std::vector<referencesection>& sections() const { return sections_; }
  /// The address of an option, its own even where a faulty definition repeats a name. It is made of
  /// the characters of names, points and hyphens.
  std::string place(const optxv::optionfacts& option) const;
  /// What a multi-list or a macro sets.
  optionlist members(const optxv::optionfacts& option) const;
  /// The lists and macros that set an option.
  optionlist setters(const optxv::optionfacts& option) const;
  /// "19 options in 5 groups, 3 synonyms".
  std::string counts() const;

 private:
  const optxv::tablefacts& table_;
  std::vector<referencesection> sections_;
  std::map<std::string_view, const optxv::optionfacts*> first_;  ///< by table name
  std::map<std::string_view, optionlist> setters_;
};

/// What a kind means for somebody who sets the option, and its modifier; empty if it has none.
std::string_view kindmeaning(const optxv::optionfacts& option);
std::string_view modifiermeaning(const optxv::optionfacts& option);

/// A sentence that should not be missed, and what the definition says about it.
struct notice {
  std::string_view sentence;
  std::string_view text;
};
/// That an option is deprecated, obsolete or hidden.
std::vector<notice> noticesof(const optxv::optionfacts& option);
/// The same of a group that is hidden.
inline constexpr std::string_view hiddengroup = "Hidden: the help listings leave this group out.";

/// What happens when an unmarked synonym is used while another one of the option is marked; empty
/// if there is nothing to tell.
std::string_view synonymnotice(const optxv::optionfacts& option);
/// How a dot option is set; empty for other options.
std::string dotexample(const optxv::optionfacts& option);

/// The long help in paragraphs of at least one line; empty lines separate them.
std::vector<std::vector<std::string_view>> helpparagraphs(const optxv::optionfacts& option);

}  // namespace command
