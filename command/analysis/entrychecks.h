// What the library takes as it is in parameter text, and is hardly meant.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "analysis/collector.h"
#include "analysis/reading.h"
#include "analysis/repeats.h"
#include "analysis/symbols.h"

namespace command {

/// Adds findings about entries: an option set again in the same file, a value given up, quotes that
/// are kept, marks that do not keep a value away, keys that make lists.
/// BORROWS: all it is made with; the reading, the symbols and the repeats stand before this in the
/// hearing.
class entrychecks : public listener {
 public:
  entrychecks(const reading& at, const symbols& names, const repeats& again, trial& library,
              collector& findings)
      : at_(at), names_(names), again_(again), library_(library), findings_(findings) {}

  /// Reads begin in the mode of many entries a line.
  void settokens() { tokens_ = true; }

  void key(const optxv_key& key) override;
  void value(const optxv_value& value) override;
  void stored(const optxv_store& store) override;

 private:
  void checklist(const optxv_key& key);
  void checkagain(const optxv_store& store);
  void checkobsolete(const optxv_store& store);
  void checkquotes(const optxv_value& value);

  const reading& at_;
  const symbols& names_;
  const repeats& again_;
  trial& library_;
  collector& findings_;
  bool tokens_ = false;
};

}  // namespace command
