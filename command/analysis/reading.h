// Where the reader stands: in which file, in which line, in which entry or record.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/finding.h"
#include "analysis/hearing.h"

namespace command {

/// A value of an entry. The text is without its quotes.
struct readvalue {
  std::string text;
  place where, written;
  std::int32_t quotes = optxv_quotes_none;
  bool good = true;
};

/// What was read of an entry of parameter text.
struct readentry {
  std::string key;
  place where;               ///< of the key
  std::int32_t option = 0;   ///< that the key names; 0 if none
  std::int32_t synonym = 0;  ///< that was used
  std::int32_t dashes = 0;   ///< in front of the key
  std::vector<readvalue> values = {};
  std::int32_t mark = 0;  ///< optxv_fault_deprecated or _obsolete once such a message came
};

/// A field of a record.
struct readfield {
  std::int32_t field = optxv_field_none;
  std::int32_t option = 0;  ///< that the record is about to declare
  bool good = false;
  std::string text;
  place where;
};

/// A record of the definition language: its type word in small letters, without its modifier, and
/// the fields of its first line so far.
struct readrecord {
  std::string type;
  std::vector<readfield> fields = {};

  /// A field that was read; nil if it was not.
  const readfield* find(std::int32_t field) const;
};

/// A file that is being read, or a string.
struct readsource {
  std::int32_t kind = optxv_source_parameters;
  std::string name;
  place line = {};        ///< all of the line that was read last
  std::string text = {};  ///< of that line
  readentry entry = {};
  std::size_t keys = 0;  ///< how many keys were read
};

/// Follows the calls, so that a listener that stands after it in a hearing finds here what they
/// belong to.
class reading : public listener {
 public:
  /// The innermost file. REQUIRES: one is being read.
  const readsource& source() const { return sources_.back(); }
  bool idle() const { return sources_.empty(); }
  std::size_t depth() const { return sources_.size(); }
  const readrecord& record() const { return record_; }

  /// The line of a place: the one that was read last, or the first of the record. Nil for others.
  std::shared_ptr<const std::string> lineof(const place& where);
  /// What stands in the line that was read last from a column on.
  std::string_view ahead(std::int64_t column) const;

  void entered(const optxv_source& source) override;
  void left(const optxv_source& source, std::int32_t error) override;
  void line(const optxv_place& where, std::string_view text) override;
  void field(const optxv_field& field) override;
  void key(const optxv_key& key) override;
  void value(const optxv_value& value) override;
  void message(const optxv_message& message) override;

 private:
  struct textline {
    place where = {};
    std::string text = {};
    std::shared_ptr<const std::string> shared = {};
  };

  std::vector<readsource> sources_;
  readrecord record_;
  textline head_;    ///< the first line of the record
  textline recent_;  ///< the last line that was asked for
};

}  // namespace command
