#include "analysis/codes.h"

#include <array>

#include "optxv/embedding.h"

namespace command {
namespace {

/// What a fault of the library is; its code is the library's own name for it.
struct faultrow {
  std::int32_t fault;
  severity level;
  std::string_view words;
};

// In the order of their numbers, without optxv_fault_none.
constexpr std::array<faultrow, optxv_faults - 1> faultrows = {{
    {optxv_fault_key_expected, severity::error, "An entry does not begin with a name"},
    {optxv_fault_bad_separator, severity::error, "Neither a blank nor = follows a name"},
    {optxv_fault_unknown_option, severity::error, "No option has this name"},
    {optxv_fault_value_expected, severity::error, "A value is missing"},
    {optxv_fault_remainder, severity::error, "Text follows an entry that is complete"},
    {optxv_fault_deprecated, severity::warning, "A name is deprecated, and still works"},
    {optxv_fault_obsolete, severity::warning, "A name is obsolete, and no longer works"},
    {optxv_fault_quote, severity::error, "A double quote is within a value, or is not closed"},
    {optxv_fault_integer_expected, severity::error, "A value is not a whole number"},
    {optxv_fault_real_expected, severity::error, "A value is not a number"},
    {optxv_fault_boolean_expected, severity::error, "A value is neither yes nor no"},
    {optxv_fault_range, severity::error, "A number is out of bounds"},
    {optxv_fault_unknown_value, severity::error, "An enumeration does not have this value"},
    {optxv_fault_list_overflow, severity::error,
     "There are more values than the multi-list has members"},
    {optxv_fault_nesting, severity::error, "Lists and macros are nested too deep"},
    {optxv_fault_handed_on, severity::error, "Macros hand values on too often in one entry"},
    {optxv_fault_own, severity::error, "The program or a parameter file tells this itself"},
    {optxv_fault_allowed_range, severity::error,
     "The bounds of a number, added to another message"},
    {optxv_fault_allowed_values, severity::error,
     "The values of an enumeration, added to another message"},
    {optxv_fault_system, severity::error, "The reason of the system, added to another message"},
    {optxv_fault_cannot_open, severity::error,
     "A file that is named in another one cannot be opened"},
    {optxv_fault_cannot_read, severity::error, "A file cannot be read to its end"},
    {optxv_fault_cannot_write, severity::error, "A file cannot be written"},
    {optxv_fault_file_nesting, severity::error,
     "Files read each other too deep, or too many are read"},
    {optxv_fault_queue_full, severity::error, "The queue of messages is full"},
    {optxv_fault_suffix_expected, severity::error, "No attribute follows the dot after a name"},
    {optxv_fault_unknown_suffix, severity::error, "No dot option has this attribute"},
    {optxv_fault_symbol_expected, severity::error,
     "The name of an equation or a variable is missing"},
    {optxv_fault_index_expected, severity::error, "An index is neither a text in quotes nor a *"},
    {optxv_fault_index_not_allowed, severity::error,
     "An index is of a kind that may not stand here"},
    {optxv_fault_index_too_long, severity::error, "An index is too long"},
    {optxv_fault_index_not_controlled, severity::error,
     "An index of the variable is not one of the equation"},
    {optxv_fault_too_many_indices, severity::error, "There are more than 20 indices"},
    {optxv_fault_bracket_expected, severity::error, "A bracket is not closed"},
    {optxv_fault_dollar_expected, severity::error, "No $ follows the equation of an indicator"},
    {optxv_fault_name_too_long, severity::error, "A name has more than 63 characters"},
    {optxv_fault_bad_field, severity::error, "A field of a record is missing or cannot be read"},
    {optxv_fault_default_range, severity::error, "A default is out of its bounds"},
    {optxv_fault_default_unknown, severity::error, "A default is no item of its enumeration"},
    {optxv_fault_duplicate_option, severity::error, "A name is declared twice"},
    {optxv_fault_duplicate_member, severity::error, "A multi-list or macro names a member twice"},
    {optxv_fault_duplicate_synonym, severity::error, "A synonym is declared twice"},
    {optxv_fault_duplicate_group, severity::error, "A group is declared twice"},
    {optxv_fault_duplicate_groupnumber, severity::error, "Two groups have the same number"},
    {optxv_fault_duplicate_indicator, severity::error,
     "The word of the indicators is declared twice"},
    {optxv_fault_unknown_type, severity::error, "No record has this type"},
    {optxv_fault_unknown_modifier, severity::error, "No type has this modifier"},
    {optxv_fault_modifier_not_allowed, severity::error, "A type takes no modifier"},
    {optxv_fault_unknown_member, severity::error,
     "A multi-list or macro names no option that is declared above"},
    {optxv_fault_unknown_target, severity::error,
     "A synonym names no option that is declared above"},
    {optxv_fault_unknown_marked, severity::error, "A mark names no option that is declared above"},
    {optxv_fault_unknown_action, severity::error, "No immediate option has this action"},
    {optxv_fault_unknown_lookup, severity::error, "No rule of lookup has this name"},
    {optxv_fault_comma, severity::error, "A comma stands among the members of a multi-list"},
    {optxv_fault_nearest, severity::error, "The nearest names, added to another message"},
}};
static_assert(faultrows.back().fault == optxv_faults - 1);

}  // namespace

std::vector<coderow> checkcodes() {
  std::vector<coderow> all;
  for (const faultrow& row : faultrows)
    all.push_back({optxv_fault_name(row.fault), row.level, row.words});
  all.insert(all.end(), owncodes().begin(), owncodes().end());
  return all;
}

}  // namespace command
