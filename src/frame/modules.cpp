#include "frame/modules.h"

#include <array>

#include "foundation/zdlaudit.h"
#include "options/zmaoptions.h"
#include "platform/q9platform.h"

namespace optxv {

namespace {

void initialiseoptions() {
  zdlsetauditlinelib(zdlbuildauditline());
  initzmaoptions(osfiletype);
}

constexpr std::array<moduleentry, 8> loadorder = {{
    {"q9platform", nullptr, nullptr},
    {"q9private", nullptr, nullptr},
    {"pchutil", nullptr, nullptr},
    {"strutilx", nullptr, nullptr},
    {"zmaobj", nullptr, nullptr},
    {"miniparser", nullptr, nullptr},
    {"zdlaudit", initzdlaudit, nullptr},
    {"zmaoptions", initialiseoptions, nullptr},
}};

}  // namespace

std::span<const moduleentry> modules() noexcept {
  return loadorder;
}

void initialisemodules(std::span<const moduleentry> table) {
  for (const moduleentry& module : table)
    if (module.initialise != nullptr) module.initialise();
}

void finalisemodules(std::span<const moduleentry> table) {
  for (auto module = table.rbegin(); module != table.rend(); ++module)
    if (module->finalise != nullptr) module->finalise();
}

}  // namespace optxv
