// What no reader of text takes as it stands: cuts, and bytes that belong in no text.
#pragma once

#include "analysis/collector.h"
#include "analysis/reading.h"

namespace command {

/// Adds findings about what is cut off, about a definition that ends before its text does, and
/// about byte-order marks and zero bytes. Comments do not matter. BORROWS: what it is made with;
/// the reading stands before this in the hearing.
class textchecks : public listener {
 public:
  textchecks(const reading& at, collector& findings) : at_(at), findings_(findings) {}

  /// The text of the definition: set before it is read. BORROWS: the bytes, for the read.
  void define(std::string_view definition) { definition_ = definition; }

  void entered(const optxv_source& source) override;
  void line(const optxv_place& where, std::string_view text) override;
  void cut(const optxv_cut& cut) override;
  void ended(const optxv_place& where) override;

 private:
  void checkmark(const optxv_place& where, std::string_view text);

  const reading& at_;
  collector& findings_;
  std::string_view definition_;
  bool zerotold_ = false;  ///< a file with zero bytes is full of them
};

}  // namespace command
