// The library's handle as an object of C++, with text as std::string.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "optxv/optxv.h"

namespace command {

/// A message as the library gives it.
struct message {
  std::int32_t kind = 0;
  std::string text;
};

/// What an option is, and which of its values are set (bit 1 the first, bit 2 the second).
struct optioninfo {
  std::int32_t defined = 0;
  std::int32_t recent = 0;
  std::int32_t refnr = 0;
  std::int32_t data = 0;
  std::int32_t type = 0;
  std::int32_t sub = 0;
};

struct dotoption {
  std::string symbol;
  std::int32_t optnr = 0;  ///< the attribute's option
  std::vector<std::string> labels;
  double value = 0;
};

struct indicator {
  std::string equation, variable;
  std::vector<std::string> equationlabels, variablelabels;
  std::int32_t mark = 0;
};

/// One set of options. OWNS: the handle. Option numbers and all positions count from 1. It goes
/// through the functions for bounded strings, so that text with any byte in it comes through whole.
/// REQUIRES: no text that is handed in is longer than `longesttext` bytes.
class optionset {
 public:
  static constexpr std::size_t longesttext = 255;

  optionset() { xcreate(&handle_); }
  ~optionset() { xfree(&handle_); }
  optionset(const optionset&) = delete;
  optionset& operator=(const optionset&) = delete;

  /// These two read a text as a file of that name, and give 0 or a system error number.
  std::int32_t readdefinition(const std::string& name, std::string_view text);
  std::int32_t readparameters(const std::string& name, std::string_view text);
  /// What is set, as a parameter file.
  std::string parametertext() const;
  /// Reads one line of parameter text.
  void readline(std::string_view text);
  void showhelp(std::string_view request);
  /// Whether reads begin in the mode of one option a line; on at first.
  void setlinemode(bool on) { opteolonlyset(handle_, on ? 1 : 0); }
  void setnobounds(bool on) { optnoboundsset(handle_, on ? 1 : 0); }

  std::int32_t messagecount() const { return optmessagecount(handle_); }
  message messageat(std::int32_t position) const;
  std::int32_t errorcount() const;
  void clearmessages() { optclearmessages(handle_); }

  std::int32_t count() const { return optcount(handle_); }
  optioninfo info(std::int32_t optnr) const;
  /// The name as it is shown, and as it stands in the table: they differ where a table's
  /// underscores are shown as blanks.
  std::string name(std::int32_t optnr) const;
  std::string tablename(std::int32_t optnr) const;
  std::string value(std::int32_t optnr) const;
  std::string value2(std::int32_t optnr) const;
  std::int32_t integer(std::int32_t optnr) const;
  std::int32_t integer2(std::int32_t optnr) const;
  double real(std::int32_t optnr) const;
  double real2(std::int32_t optnr) const;
  /// The items of a list of texts; none for another kind of option.
  std::vector<std::string> items(std::int32_t optnr) const;
  std::int32_t itemcount(std::int32_t optnr) const;
  /// The number of the option of that name or synonym; -1 if there is none.
  std::int32_t find(std::string_view name) const;

  /// The entries, and how many were dropped for their faults.
  std::vector<dotoption> dotoptions(std::int32_t& dropped) const;
  std::vector<indicator> indicators(std::int32_t& dropped) const;

  /// The definition language's word for a kind of option; empty for what is none.
  static std::string typeword(std::int32_t type);
  /// The name of a constant of the header, empty for what is none.
  static std::string constantname(std::int32_t group, std::int32_t index);
  static std::string auditline();

  /// The library's handle; for its C++ classes, the address of its option object. BORROWS: this
  /// object's.
  void* handle() const { return handle_; }

 private:
  optHandle handle_ = nullptr;
};

}  // namespace command
