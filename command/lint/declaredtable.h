// What a definition declares, with the places of it, as the rules of the linter look at it.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/run.h"

namespace command {

/// The item of a number, for which room is made.
template <class Item>
Item& grown(std::vector<Item>& items, std::int32_t number) {
  const auto index = static_cast<std::size_t>(number);
  if (index >= items.size()) items.resize(index + 1);
  return items[index];
}

struct declaredoption {
  std::int32_t number = 0;
  place where = {};               ///< of the name; no line for an option that no record declares
  place standard = {};            ///< of the default
  place low = {};                 ///< of the lower bound
  std::vector<place> items = {};  ///< of an enumeration
};

/// A line of a deprecated or obsolete record.
struct declaredmark {
  std::int32_t option = 0;
  std::int32_t synonym = 0;  ///< its position, if that is marked
  place where = {};
};

/// Gathers what a definition declares. Once it is read, what there is to know of an option beside
/// these places is asked from the handle. BORROWS: the run, whose listener it is.
class declaredtable : public listener {
 public:
  explicit declaredtable(run& of) : of_(of) {}

  optxv_handle handle() const { return of_.options().handle(); }
  run& reader() const { return of_; }

  /// The options whose records have no fault, and the same without what help does not list.
  std::vector<const declaredoption*> sound() const;
  std::vector<const declaredoption*> listed() const;
  /// What the library has of an option. BORROWS: texts of the handle.
  optxv_option info(const declaredoption& option) const;
  /// Whether no record has a fault, and none is cut off by an early end: the rules that miss
  /// something in the whole table ask for that.
  bool whole() const { return faulty_.empty() && !ended_; }
  /// Of a number; one without a place for an option that no record declares.
  const declaredoption& option(std::int32_t number) const;
  /// By position, from 1; no line where none was declared.
  place group(std::int32_t position) const;
  place synonym(std::int32_t position) const;
  const std::vector<declaredmark>& marks() const { return marks_; }
  /// Whether names are found as they are written, whole, and not by a rule that shortens them.
  bool wholenames() const { return lookup_ == 0; }
  /// Whether users write blanks where names have underscores.
  bool blanksinnames() const {
    constexpr std::int32_t minos = 2;
    return lookup_ == minos;
  }

  void declared(const optxv_declaration& declaration) override;
  void field(const optxv_field& field) override;
  void ended(const optxv_place& where) override;
  void message(const optxv_message& message) override;

 private:
  declaredoption& at(std::int32_t number);
  bool reading() const;

  run& of_;
  std::vector<declaredoption> options_;   ///< by number
  std::vector<place> groups_, synonyms_;  ///< by position, from 1
  std::vector<declaredmark> marks_;
  std::set<std::int64_t> faulty_;  ///< the lines of records with a fault
  std::int32_t lookup_ = 0;        ///< the rule, as the library numbers it
  bool ended_ = false;
};

}  // namespace command
