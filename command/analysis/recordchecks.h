// What the library takes as it is in a definition, and is hardly meant.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <unordered_map>

#include "analysis/collector.h"
#include "analysis/reading.h"

namespace command {

/// Adds findings about records: numbers of the program that two options have, groups that no record
/// declares, items twice, booleans with defaults and bounds that mean nothing.
/// BORROWS: all it is made with; the reading stands before this in the hearing.
class recordchecks : public listener {
 public:
  recordchecks(reading& at, collector& findings) : at_(at), findings_(findings) {}

  void left(const optxv_source& source, std::int32_t error) override;
  void declared(const optxv_declaration& declaration) override;
  void field(const optxv_field& field) override;

 private:
  /// A group number as options name it: where first, and how often.
  struct groupuse {
    place where = {};
    std::shared_ptr<const std::string> line = {};
    std::size_t options = 0;
  };

  void checkusermap(const optxv_field& field);
  void checkboolean(const optxv_field& field);
  void takegroup(const optxv_field& field);
  void checkgroups();

  reading& at_;
  collector& findings_;
  std::unordered_map<std::int32_t, std::pair<std::string, place>> usermaps_;
  std::map<std::int32_t, groupuse> groups_;
  std::set<std::int32_t> declaredgroups_;
  std::unordered_map<std::string, place> items_;  ///< of the enumeration that is being read
  std::int32_t itemsof_ = 0;                      ///< its option
};

}  // namespace command
