// The modules of the library in the order in which they are initialised.
#pragma once

#include <span>
#include <string_view>

namespace optxv {

/// One module; nil for a step in which it has nothing to do.
struct moduleentry {
  std::string_view name;
  void (*initialise)();
  void (*finalise)();
};

/// The table. The order is that of dependency: an initialiser may use the modules that stand before
/// its own.
std::span<const moduleentry> modules() noexcept;

/// Runs the initialisers in the order of the table.
void initialisemodules(std::span<const moduleentry> table);

/// Runs the finalisers in the reverse order.
void finalisemodules(std::span<const moduleentry> table);

}  // namespace optxv
