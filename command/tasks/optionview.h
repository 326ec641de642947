// What the subcommands that show values have in common: the options with their values, and where
// these come from; as words and as JSON.
#pragma once

#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/origins.h"
#include "output/jsonlists.h"

namespace command {

/// How much is told of where values come from.
enum class originwanted {
  last,  ///< of the value in effect
  all,   ///< and of those before it
};

/// One value with what there is to tell of it: of an option with two, and of a list, `name[1]`, ...
struct namedvalue {
  std::string name;      ///< printable
  optionvalue standard;  ///< its default
  valuehistory history;  ///< empty if it is not set
};

/// An option with what has been read into it. The defaults come from a second option set that has
/// read the definition and nothing else: there every value is the default.
/// BORROWS: what it is made with.
class optionview {
 public:
  optionview(const run& read, const optxv::options& fresh, const optxv::option& option)
      : read_(read), fresh_(fresh), option_(option) {}

  bool isset() const { return option_.defined != 0 || (islist() && option_.items > 0); }
  bool islist() const { return option_.kind == optxv_kind_list; }
  bool isimmediate() const { return option_.kind == optxv_kind_immediate; }
  bool istwo() const { return hastwovalues(option_); }
  /// Whether the option has a value of its own.
  bool isscalar() const { return hasvalue(option_); }
  std::int32_t number() const { return option_.number; }
  std::string name() const;

  /// integer, string.OPT, ...
  std::string kind() const;
  /// As they are shown: one, or the items of a list. Two values are one text.
  std::vector<std::string> values() const;
  std::string defaultvalue() const;
  std::string shown(const optionvalue& value) const { return shownvalue(option_.kind, value); }
  /// "set" or "-"; of two values also "first", "second" or "both".
  std::string_view whatisset() const;
  /// Where they come from, as many as values(); empty where that is the default. Two values may
  /// have two places.
  std::vector<std::string> places() const;
  /// Each value on its own, with its history; none of a list that is empty, or of a kind without
  /// values.
  std::vector<namedvalue> histories() const;
  nlohmann::ordered_json json(originwanted wanted) const;

 private:
  std::vector<std::string> items() const;
  std::string valueof(const optxv::options& from, std::int32_t which) const;
  nlohmann::ordered_json typed(const optxv::options& from, std::int32_t which) const;
  nlohmann::ordered_json originrows(originwanted wanted) const;
  nlohmann::ordered_json originrow(originwanted wanted, std::int32_t which) const;

  const run& read_;
  const optxv::options& fresh_;
  optxv::option option_;
};

/// The options of a run that are to be shown, in the order of the table: those that are set, or all
/// of them.
std::vector<optionview> chosen(const run& read, const optxv::options& fresh, bool all);

/// Whether a dot option is wanted, by the option of its attribute, or an indicator, by 0.
using entrywanted = std::function<bool(std::int32_t)>;
/// Adds the lists `dotoptions` and `indicators` of a run.
void addentries(jsonlists& json, const run& read, const entrywanted& wanted);

/// The number of the option of that name or synonym, also with blanks for underscores; 0 if there
/// is none.
std::int32_t optionof(const optxv::options& options, std::string name);

}  // namespace command
