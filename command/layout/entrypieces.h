// Parameter text in pieces: what each line holds, by the places that its reader tells.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/hearing.h"
#include "layout/filelines.h"
#include "optxv/optxv.hpp"

namespace command {

/// What begins an entry.
enum class entryform : std::uint8_t {
  plain,     ///< a key
  dot,       ///< a symbol with a dot
  indicator  ///< the word for it
};

/// An entry within a line. The head is all in front of the separator and the values.
struct linedentry {
  entryform form = entryform::plain;
  std::int32_t option = 0;  ///< that the key names; 0 for other forms
  bool aftercomma = false;  ///< a comma parts it from the one before
  piece head, separator;
  std::array<piece, 2> values = {};
  bool oneblank = false;  ///< between the two values there is a blank or more
};

/// What there is to know of a line.
struct linedtext {
  enum class kind : std::uint8_t {
    kept,     ///< it stays as it is
    blank,    ///< nothing but blanks
    comment,  ///< nothing but a comment
    entries   ///< with a comment after them, or without
  };
  kind what = kind::kept;
  bool faulty = false;    ///< it stays, whatever it is
  bool tokens = false;    ///< it begins in token mode
  bool switched = false;  ///< there is a switch of the mode in it
  piece comment = {};
  std::size_t first = 0, count = 0;  ///< of the entries
};

/// The words that instruct the reader, by the numbers of their options: which of them choose the
/// mode, which do anything else.
struct instructions {
  std::set<std::int32_t> modes, others;
};

/// Hears one parameter text and takes it to pieces. A line whose bytes are not all accounted for
/// stays as it is.
/// BORROWS: the lines and the instructions.
class entrypieces : public listener {
 public:
  entrypieces(const std::vector<fileline>& lines, const instructions& words, bool tokens);

  const linedtext& line(std::size_t number) const { return lines_[number]; }
  const linedentry* entries(const linedtext& line) const { return entries_.data() + line.first; }

  void left(const optxv_source& source, std::int32_t error) override;
  void line(const optxv_place& where, std::string_view text) override;
  void comment(const optxv_place& where) override;
  void cut(const optxv_cut& cut) override;
  void key(const optxv_key& key) override;
  void separator(const optxv_place& where) override;
  void value(const optxv_value& value) override;
  void dotoption(const optxv_entry& entry) override;
  void indicator(const optxv_entry& entry) override;
  void message(const optxv_message& message) override;

 private:
  enum class told : std::uint8_t { key, word, dot, symbol, separator, value };
  struct part {
    told what;
    std::int32_t option;
    piece where;
  };

  bool add(told what, const optxv_place& where, std::int32_t option = 0);
  void keep(std::int64_t from);
  void finish();
  bool assemble(std::string_view body, linedtext& line);
  bool begin(std::string_view body, const part& next, std::size_t& end, bool first);
  bool extend(std::string_view body, const part& next, std::size_t& end);
  bool endswell(std::string_view body, linedtext& line, std::size_t end) const;
  bool isno(std::string_view word);

  const std::vector<fileline>& file_;
  const instructions& words_;
  bool tokens_;
  std::size_t current_ = 0;  ///< number of the line that is being read, from 1; 0 before the first
  std::int32_t lastkey_ = 0;
  std::vector<part> parts_;  ///< of that line
  std::vector<linedtext> lines_;
  std::vector<linedentry> entries_;
  std::optional<optxv::options> judge_;  ///< knows which words mean no
};

}  // namespace command
