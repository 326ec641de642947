// Whether the library would take a line: asked of the library itself.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/hearing.h"
#include "optxv/optxv.hpp"

namespace command {

/// Tries lines of parameter text on an option set of its own, which reads the definition when the
/// first line comes.
class trial {
 public:
  /// The definition, and whether lines are read in the mode of many entries a line: set before the
  /// first question. BORROWS: the bytes, as long as this lives.
  void define(std::string_view definition, bool tokens) {
    definition_ = definition;
    tokens_ = tokens;
  }

  /// Whether a line has no error in it. Not so for a text that is longer than the library takes.
  bool accepts(std::string_view line);
  /// Whether the line that was tried last has an instruction to the reader in it, which may change
  /// what other lines mean.
  bool instructs() const { return heard_.instruction; }

 private:
  /// What a line does.
  struct effects : listener {
    void key(const optxv_key& key) override;
    void stored(const optxv_store& store) override { set.push_back(store.option); }
    void dotoption(const optxv_entry&) override { entries++; }
    void indicator(const optxv_entry&) override { entries++; }

    optxv_handle handle = nullptr;
    bool instruction = false;
    std::vector<std::int32_t> set = {};  ///< the options, until they are reset
    std::size_t entries = 0;             ///< since all were reset
  };

  void open();
  void undo();

  std::string_view definition_;
  bool tokens_ = false;
  std::optional<optxv::options> options_;
  effects heard_;
  std::optional<hearing> hearing_;
};

}  // namespace command
