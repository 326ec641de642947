// The kinds of message: how each is shown and counted. The queue itself is
// tzmaoptions::messagelist, and its operations are methods of tzmaoptions; their bodies are in
// messages.cpp.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "language/places.h"
#include "optxv/embedding.h"

namespace optxv {

/// The kind of a message; the numbers are part of the exported interface.
enum messagekind : std::uint8_t {
  optMsgInputEcho,     ///< a line of input
  optMsgHelp,          ///< a line of help
  optMsgDefineError,   ///< a fault in a definition
  optMsgValueError,    ///< a refused value
  optMsgValueWarning,  ///< a value that was taken though it is out of bounds
  optMsgDeprecated,    ///< use of a marked name
  optMsgFileEnter,     ///< a read begins
  optMsgFileLeave,     ///< a read ends
  optMsgTooManyMsgs,   ///< the queue is full
  optMsgUserError,     ///< a fault in parameter text, or the caller's own
};

/// What a message counts as for the caller.
enum class severity : std::uint8_t { none, warning, error };

/// What the queue knows about a kind.
struct messagerow {
  std::string_view constantname;
  std::string_view prefix;  ///< put before the text when the message is fetched
  bool quotes;              ///< the text is shown between double quotes
  bool located;             ///< "line N: " is put before it once a line of a file has been read
  bool counted;             ///< errorcount counts it
  severity reported;        ///< what optErrorCount counts it as
};

/// KEEP: help lines count in errorcount but not for the caller: the first is asked whether an
/// operation added anything, the second how many faults there were.
inline constexpr std::array<messagerow, 10> messagekinds = {{
    {"optMsgInputEcho", ">> ", false, false, false, severity::none},
    {"optMsgHelp", "", false, false, true, severity::none},
    {"optMsgDefineError", "*** Definition Error ", false, true, true, severity::error},
    {"optMsgValueError", "*** Value Error ", false, true, true, severity::error},
    {"optMsgValueWarning", "*** Warning ", false, true, false, severity::warning},
    {"optMsgDeprecated", "*** Warning ", false, true, false, severity::warning},
    {"optMsgFileEnter", "Reading parameter(s) from ", true, false, false, severity::none},
    {"optMsgFileLeave", "Finished reading from ", true, false, false, severity::none},
    {"optMsgTooManyMsgs", "", false, false, true, severity::error},
    {"optMsgUserError", "*** Error ", false, true, true, severity::error},
}};

/// What a message says, as data: the program's listener gets it together with the text.
struct messagefacts {
  std::int32_t fault = optxv_fault_none;
  /// Where the fault is; if unknown, the place of the value that is being assigned is taken.
  textplace place = {};
  std::int32_t option = 0;      ///< the number of the option that it is about
  std::string_view about = {};  ///< the name, key, file or word at fault
  std::string_view seen = {};   ///< what was found where something else was expected
  std::int32_t field = optxv_field_none;
  bool detail = false;  ///< it adds to the message before it
};

/// What a message of the queue says as data, beside its text and its place.
struct messagedetail {
  std::int32_t index = 0;  ///< 0-based, of the message
  std::int32_t fault = optxv_fault_none;
  std::int32_t option = 0;
  std::int32_t field = optxv_field_none;
  std::int32_t skipped = 0;  ///< how many bytes of the queue's text are its line number
  bool detail = false;
  std::string about = {};
  std::string seen = {};
};

/// The details of the entries of the queue, for those entries that have some.
/// INVARIANT: sorted by index.
class detaillist {
 public:
  /// REQUIRES: no entry behind this one has details.
  void add(std::int32_t index, std::size_t skipped, const messagefacts& facts);
  /// Forgets the entries from a 0-based position on.
  void truncate(std::int32_t index);
  /// The details of an entry; those of no fault if it has none. BORROWS: good until the next add.
  const messagedetail& get(std::int32_t index) const;

 private:
  std::vector<messagedetail> details_;
};

/// The name of a fault, nil for a bad number.
const char* faultname(std::int32_t fault);
/// The name of a field of a definition's record, nil for a bad number.
const char* fieldname(std::int32_t field);

/// How many messages the queue takes before it closes with one marker.
inline constexpr std::int32_t maximummessages = 5000;

}  // namespace optxv
