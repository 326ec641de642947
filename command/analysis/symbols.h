// The names that a definition declares, and where parameter text uses them.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "analysis/reading.h"
#include "language/nearestnames.h"

namespace command {

using optxv::knownname;
using optxv::nearestnames;

/// An option as its record has it; the numbers of the record as they are written.
struct optionsymbol {
  std::string name = {};
  std::string type = {};  ///< the type word, in small letters, without its modifier
  place where = {};       ///< of the name; none for an option that no record declares
  std::string standard = {}, low = {}, high = {};
  std::string action = {};  ///< of an immediate option, in small letters
  std::vector<std::string> items = {};
  bool obsolete = false;  ///< its own name is marked so

  bool isnumber() const { return type == "integer" || type == "double" || type == "enumint"; }
};

/// A name that a definition declares, as written there.
struct declaredname {
  std::int32_t what = optxv_declared_option;  ///< optxv_declared_...
  std::int32_t number = 0;                    ///< of the option, or the position in its list
  std::int32_t option = 0;                    ///< the option that it is of or stands for
  std::string name = {};
  place where = {};
};

/// A use of an option in parameter text.
struct mention {
  std::int32_t option = 0;
  std::int32_t synonym = 0;  ///< its position, if one was used
  place where = {};
};

/// Gathers the names. What there is to know of the options is here at once; declarations and
/// mentions are kept on request, since they grow with the files.
/// BORROWS: the reading, which stands before this in the hearing.
class symbols : public listener {
 public:
  explicit symbols(const reading& at, bool keepall = false) : at_(at), keepall_(keepall) {}

  /// The option of a number; an empty one for a number that no record has.
  const optionsymbol& option(std::int32_t optnr) const;
  /// The number of the option of that name, or of that synonym, case ignored; 0 if none.
  std::int32_t find(std::string_view name) const;
  /// The characters that begin a comment at the end of a line; empty if there are none.
  const std::string& commentcharacters() const { return commentcharacters_; }
  /// The word that begins an indicator; empty if the definition has none.
  const std::string& indicatorword() const { return indicatorword_; }
  /// Whether the source that is being read has switched between one and many entries a line.
  bool modeswitched() const { return switched_.contains(at_.source().name); }
  /// How many options the records declare.
  std::size_t count() const { return count_; }

  /// Nobody reads more suggestions than that, and a file of unknown names takes its time.
  static constexpr std::size_t mostquestions = 5000;

  /// The names that may have been meant: of options and synonyms, with or without a dot in front;
  /// of the items of an option, after the last of them was declared; of the words for types. None
  /// from the 5,001st question on for names with a dot, and for those without.
  std::vector<std::string> nearest(std::string_view wrong);
  std::vector<std::string> nearestitem(std::int32_t optnr, std::string_view wrong);
  static std::vector<std::string> nearesttype(std::string_view wrong);

  const std::vector<declaredname>& declarations() const { return declarations_; }
  const std::vector<mention>& mentions() const { return mentions_; }

  /// Forgets what parameter text has used, and what was asked about it.
  void forgetuses();

  void declared(const optxv_declaration& declaration) override;
  void key(const optxv_key& key) override;

 private:
  /// Names that are asked about while more of them come.
  class growingnames {
   public:
    void add(knownname name);
    std::vector<std::string> nearest(std::string_view wrong);
    void startcount() { questions_ = 0; }

   private:
    std::vector<knownname> names_;
    std::optional<nearestnames> index_;
    std::size_t indexed_ = 0, times_ = 0;  ///< the names in it, and how often it was made
    std::size_t questions_ = 0;
    /// Answers of this index: a text that is read again asks much the same again.
    std::unordered_map<std::string, std::vector<std::string>> answers_;
  };

  optionsymbol& at(std::int32_t optnr);
  void addoption(const optxv_declaration& declaration);
  void addname(std::string_view name, std::int32_t owner);

  const reading& at_;
  bool keepall_;
  std::vector<optionsymbol> options_;
  std::string commentcharacters_;
  std::string indicatorword_;
  std::set<std::string> switched_;  ///< the sources that have switched the mode
  std::size_t count_ = 0;
  std::unordered_map<std::string, std::int32_t> numbers_;
  std::array<growingnames, 2> names_;  ///< without a dot, with one
  std::map<std::int32_t, nearestnames> nearitems_;
  std::vector<declaredname> declarations_;
  std::vector<mention> mentions_;
};

/// The form of a record: its type word, the names of the fields of its line, and those of each line
/// that continues it; empty if none may.
struct recordform {
  std::string_view word, fields, lines;
};
/// All records of the definition language.
const std::vector<recordform>& recordforms();
/// The form for a type word in small letters; nil if there is none.
const recordform* recordformof(std::string_view word);

}  // namespace command
