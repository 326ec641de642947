// Which option a name reaches when somebody writes it in parameter text: asked of the library.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "lint/declaredtable.h"

namespace command {

/// Reads names into an option set of its own, which has read the definition of a run.
class reach : public listener {
 public:
  explicit reach(const declaredtable& table);

  /// The option that a name of the table reaches, written as users write it; 0 if none.
  std::int32_t option(std::string_view name);
  /// Whether it was reached by a synonym, or may have been.
  bool bysynonym() const { return synonym_; }

  void key(const optxv_key& key) override;

 private:
  std::int32_t instruction(std::string_view name) const;

  optxv::options options_;
  bool blanks_;  ///< users write blanks for underscores
  std::int32_t option_ = 0;
  bool synonym_ = false;
  std::optional<hearing> hearing_;
};

}  // namespace command
