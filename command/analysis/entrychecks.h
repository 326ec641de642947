// What the library takes as it is in parameter text, and is hardly meant.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "analysis/collector.h"
#include "analysis/reading.h"
#include "analysis/symbols.h"

namespace command {

/// Adds findings about entries: an option set again in the same file, a value given up, quotes that
/// are kept, marks that do not keep a value away, keys that make lists.
/// BORROWS: all it is made with; the reading and the symbols stand before this in the hearing.
class entrychecks : public listener {
 public:
  entrychecks(const reading& at, const symbols& names, trial& library, collector& findings)
      : at_(at), names_(names), library_(library), findings_(findings) {}

  /// Reads begin in the mode of many entries a line.
  void settokens() { tokens_ = true; }

  void entered(const optxv_source& source) override;
  void left(const optxv_source& source, std::int32_t error) override;
  void key(const optxv_key& key) override;
  void value(const optxv_value& value) override;
  void stored(const optxv_store& store) override;

 private:
  /// The entries for an option in one source. A mask has bit 1 for the first value, 2 for the
  /// second.
  struct setbefore {
    std::size_t source = 0;
    std::size_t entry = 0;         ///< the last one
    std::int32_t mask = 0;         ///< what that gave
    std::int32_t earlier = 0;      ///< what the entries before it gave
    place where = {}, first = {};  ///< of the last one, and of the one before
    bool told = false;             ///< that the last one comes on top of others
  };

  void checklist(const optxv_key& key);
  void checkagain(const optxv_store& store);
  void checkobsolete(const optxv_store& store);
  void checkquotes(const optxv_value& value);
  hint withoutfirst(place first) const;

  const reading& at_;
  const symbols& names_;
  trial& library_;
  collector& findings_;
  bool tokens_ = false;
  std::vector<std::size_t> sources_;  ///< the numbers of the sources being read, innermost last
  std::size_t lastsource_ = 0;
  std::size_t entry_ = 0;  ///< the entries so far
  std::vector<setbefore> before_;
};

}  // namespace command
