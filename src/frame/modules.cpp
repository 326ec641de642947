#include "frame/modules.h"

#include "foundation/zdlaudit.h"
#include "listing/zmaheap.h"
#include "options/zmaoptions.h"
#include "platform/arguments.h"
#include "platform/q9platform.h"
#include "platform/q9process.h"

namespace optxv {

namespace {

void initialiseoptions() {
  zdlsetauditlinelib(zdlbuildauditline());
  initzmaoptions(osfiletype);
}

constexpr moduleentry loadorder[] = {
    {"q9platform", initq9platform, nullptr},
    {"system_q9", initarguments, nullptr},
    {"q9private", nullptr, nullptr},
    {"q9utils", nullptr, nullptr},
    {"q9process", nullptr, finalq9process},
    {"q9library", nullptr, nullptr},
    {"q9ieeefp", nullptr, nullptr},
    {"pchutil", nullptr, nullptr},
    {"strutilx", nullptr, nullptr},
    {"zmaobj", nullptr, nullptr},
    {"zmaspecs", nullptr, nullptr},
    {"dynstr", nullptr, nullptr},
    {"zmalist", nullptr, nullptr},
    {"zmaheap", initzmaheap, nullptr},
    {"datastorage", nullptr, nullptr},
    {"miniparser", nullptr, nullptr},
    {"htmlwr", nullptr, nullptr},
    {"zdlaudit", initzdlaudit, nullptr},
    {"zmaoptions", initialiseoptions, nullptr},
};

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
