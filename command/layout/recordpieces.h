// A definition in pieces: what each line holds, by the places that its reader tells.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/hearing.h"
#include "layout/filelines.h"

namespace command {

/// A field within a line.
struct linedfield {
  std::int32_t field = 0;  ///< optxv_field_...
  piece where;
};

/// What there is to know of a line.
struct linedrecord {
  enum class kind : std::uint8_t {
    kept,     ///< it stays as it is
    blank,    ///< an empty line
    comment,  ///< a comment
    head,     ///< the first line of a record
    further   ///< a line that continues one
  };
  kind what = kind::kept;
  bool faulty = false;               ///< it stays, whatever it is
  piece rest = {};                   ///< what nobody reads, after the fields
  std::size_t first = 0, count = 0;  ///< of the fields
};

/// Hears a definition and takes it to pieces. A line whose bytes are not all accounted for stays as
/// it is.
/// BORROWS: the lines.
class recordpieces : public listener {
 public:
  explicit recordpieces(const std::vector<fileline>& lines);

  const linedrecord& line(std::size_t number) const { return lines_[number]; }
  const linedfield* fields(const linedrecord& line) const { return fields_.data() + line.first; }

  void left(const optxv_source& source, std::int32_t error) override;
  void line(const optxv_place& where, std::string_view text) override;
  void comment(const optxv_place& where) override;
  void cut(const optxv_cut& cut) override;
  void field(const optxv_field& field) override;
  void ended(const optxv_place& where) override;
  void message(const optxv_message& message) override;

 private:
  void keep(std::int64_t line);
  void finish();
  bool assemble(std::string_view body, linedrecord& line) const;

  const std::vector<fileline>& file_;
  std::size_t current_ = 0;  ///< number of the line that is being read, from 1; 0 before the first
  std::vector<linedrecord> lines_;
  std::vector<linedfield> fields_;
};

}  // namespace command
