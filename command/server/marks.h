// What the readers met in the texts of a read, and where: keys, values, comments, fields.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "analysis/hearing.h"

namespace command {

enum class markkind : std::uint8_t {
  comment,
  key,        ///< that names an option
  wrongkey,   ///< that names none
  separator,  ///< = or :=
  value,      ///< number: which one, 1 or 2
  symbol,     ///< of the program's model: before an attribute, or of an indicator
  attribute,  ///< of a dot option, with its dot
  word,       ///< that begins an indicator
  handed,     ///< a value that a macro or a multi-list hands on to the option; number: that one
  field,      ///< of a definition; number: optxv_field_...
  declared,   ///< a name that a definition declares; number: optxv_declared_...
  reference,  ///< a name of an option or a synonym in a definition, other than its own
};

/// One of them. The line and the column count from 1, the length in bytes.
struct mark {
  markkind kind = markkind::comment;
  std::int32_t number = 0;
  std::int32_t option = 0;   ///< that it is about; 0 if none
  std::int32_t synonym = 0;  ///< the position of the synonym that was used or declared; 0 if none
  std::int32_t line = 0, column = 0, length = 0;
  bool good = true;  ///< it is what was expected there

  std::int32_t end() const { return column + length; }
  /// Whether a place is in it or at one of its ends.
  bool touches(std::int64_t atline, std::int64_t atcolumn) const {
    return line == atline && column <= atcolumn && atcolumn <= end();
  }
};

/// The marks of one text, in the order of their lines and columns; of two at the same place the one
/// that was told first comes first. `options` has the option that each record declares.
using textmarks = std::vector<mark>;

/// The marks of some line. They lie between these two.
std::pair<textmarks::const_iterator, textmarks::const_iterator> marksin(const textmarks& all,
                                                                        std::int64_t line);

/// Where an option got its value last.
struct laststore {
  std::string file = {};
  std::int32_t line = 0, column = 0, length = 0, through = 0;
};

/// Gathers the marks of all texts of a read, by the names of the files.
class marklist : public listener {
 public:
  /// The marks of one file; none for a file that was not read.
  const textmarks& of(const std::string& file) const;
  const std::map<std::string, textmarks>& all() const { return files_; }
  /// The names of files that were to be opened, whether they could be or not.
  const std::vector<std::string>& wanted() const { return wanted_; }

  /// Forgets everything.
  void clear();
  /// Puts the marks in order. To be called after the read.
  void sort();

  void entered(const optxv_source& source) override;
  void left(const optxv_source& source, std::int32_t error) override;
  void comment(const optxv_place& where) override;
  void declared(const optxv_declaration& declaration) override;
  void field(const optxv_field& field) override;
  void key(const optxv_key& key) override;
  void separator(const optxv_place& where) override;
  void value(const optxv_value& value) override;
  void stored(const optxv_store& store) override;
  void dotoption(const optxv_entry& entry) override;
  void indicator(const optxv_entry& entry) override;
  void message(const optxv_message& message) override;
  std::optional<std::string_view> opening(const char* name) override;

 private:
  mark& add(markkind kind, const optxv_place& where);
  void addsuffix(const optxv_place& where, bool alone);

  std::map<std::string, textmarks> files_;
  std::vector<textmarks*> reading_;  ///< those of the sources being read, innermost last
  std::vector<std::string> wanted_;
  mark target_;  ///< the last target of a synonym
};

}  // namespace command
