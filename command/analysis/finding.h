// What there is to say about the files of a run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "optxv/embedding.h"

namespace command {

enum class severity {
  error,
  warning,
  note,
  plain,  ///< a line that somebody asked for, as help is; it says nothing about the file
};

/// The word of a severity; "help" for plain.
std::string_view severityword(severity level);

/// A piece of text in a file. Lines and columns count from 1, columns and lengths in bytes. A line
/// of 0 is the file as a whole; a length of 0 is a place between two bytes.
struct place {
  std::string file = {};
  std::int64_t line = 0;
  std::int64_t column = 0;
  std::int64_t length = 0;

  place() = default;
  place(std::string_view name) : file(name) {}
  place(const optxv_place& told)
      : file(told.file), line(told.line), column(told.column), length(told.length) {}
  bool operator==(const place&) const = default;
};

/// More about a finding. A note without a line stands where the finding does.
struct note {
  std::string text;
  place where = {};
};

/// Other text for a piece of a line. The text may have line feeds in it.
struct edit {
  place where = {};
  std::string text = {};
  bool operator==(const edit&) const = default;
};

/// What would do instead: text as it is to be written, and words about it; one may be empty.
struct hint {
  std::string write = {};
  std::string words = {};
  std::vector<edit> edits = {};  ///< that make it so, all or none; empty if it takes a person
  bool sure = false;             ///< nothing else can be meant, and nothing is lost by it
  bool operator==(const hint&) const = default;
};

/// One finding. Its line is shared with the other findings there, and is as the library reads it:
/// of at most 1,020 bytes, or, of a string, as long as that is.
struct finding {
  static constexpr std::int32_t ownkind = -1;

  severity level = severity::error;
  std::int32_t kind = ownkind;  ///< optMsg... of a message of the library; else ownkind
  std::string_view code = {};   ///< what is wrong, for programs; of static storage
  place where = {};
  std::string text = {};
  std::vector<note> notes = {};
  std::vector<hint> hints = {};
  std::vector<std::string> nearest = {};  ///< names that may have been meant, the likeliest first
  std::shared_ptr<const std::string> source = {};  ///< the line; nil if it is not known
};

/// Takes findings as they are made.
using findingtaker = std::function<void(const finding&)>;

/// The exit status of a run with errors in its files, and of one whose files or words are unusable.
inline constexpr int statuserrors = 1;
inline constexpr int statusunusable = 2;

/// What the findings and files of a run come to.
struct tally {
  std::size_t errors = 0;
  std::size_t warnings = 0;
  std::size_t files = 0;       ///< that the command was given
  std::size_t unreadable = 0;  ///< of these
  std::size_t dotoptions = 0;
  std::size_t indicators = 0;
  std::size_t omitted = 0;  ///< of the errors: those that are counted but not shown

  tally& operator+=(const tally& other);

  /// The exit status: 2 if a file could not be read, else 1 if there are errors, or warnings where
  /// these count as errors, else 0.
  int status(bool strict = false) const {
    if (unreadable > 0) return statusunusable;
    return errors + (strict ? warnings : 0) > 0 ? statuserrors : 0;
  }
};

/// The findings that the command makes itself, of what the library takes as it is.
enum class ownfinding {
  unreadable,       ///< a file that cannot be read
  emptyfile,        ///< a file without a byte
  bytemark,         ///< a byte-order mark
  zerobyte,         ///< a zero byte
  restunread,       ///< byte 26, which ends the line
  linecut,          ///< a line of more than 1,020 bytes
  namecut,          ///< a name of more than 255 bytes
  valuecut,         ///< a value of more than 255 bytes
  saturated,        ///< a number beyond the limit of its type
  settwice,         ///< an option that is set again in the same file
  valuedropped,     ///< a value given up for its open quote
  foreignquotes,    ///< quotes of other kinds, kept in a text
  obsoleteset,      ///< an obsolete option that is set all the same
  newlist,          ///< a key with two dashes that looks like an option
  slashes,          ///< a key behind two slashes that looks like a comment
  definitionended,  ///< a definition that ends before its file does
  nooption,         ///< a definition without an option
  usermaptwice,     ///< a number of the program that two options have
  nogroup,          ///< a group that no record declares
  itemtwice,        ///< an item that an enumeration has twice
  booleandefault,   ///< a default of a boolean that is neither 0 nor 1
  booleanbounds,    ///< numbers where a boolean has no fields for them
  namesmeet,        ///< two names that are one in a programming language
  notinschema,      ///< what a schema cannot say
  badjson,          ///< a text that is no JSON
  nomember,         ///< a member of settings that is no option
  membertwice,      ///< one that is there twice
  wrongvalue,       ///< a value of another type than the option's
  notexpressible,   ///< a value that the form to be written cannot hold
  badtable,         ///< a table for a definition that is none
  badcell,          ///< a cell of it that no record can be made of
  notindefinition,  ///< what the definition that is made of it does not say
};

/// A code with which findings are told, and what it stands for.
struct coderow {
  std::string_view code;
  severity level;          ///< what such findings mostly are
  std::string_view words;  ///< one sentence without the full stop
};
const coderow& ruleof(ownfinding what);
/// All of these, in the order of ownfinding.
std::span<const coderow> owncodes();
/// A finding of that code and severity.
finding own(ownfinding what, const place& where, std::string text);

}  // namespace command
