// Numbers the names and the coefficients of a small table, and keeps the settings of the run with
// them, in the containers of the library.
#include <optxv/foundation/zmaobj.h>
#include <optxv/stores/zmaspecs.h>

#include <cstdio>
#include <string>
#include <string_view>

namespace {

struct term {
  std::string_view name;
  double coefficient;
};

// What a program might have read. Names that differ only in case mean different things.
const term terms[] = {{"flow", 1.5},           {"Flow", 0.25},        {"stock", 1.5},
                      {"flow", optxv::valpin}, {"price", 1.5},        {"stock", optxv::valeps},
                      {"price", 0.25},         {"flow", optxv::valna}};

const char* classof(double x) {
  static const char* const words[] = {"ordinary",      "undefined",      "not available",
                                      "plus infinity", "minus infinity", "epsilon",
                                      "acronym"};
  return words[optxv::mapval(x)];
}

std::string text(std::string_view s) {
  return std::string(s);
}

}  // namespace

int main() {
  optxv::txstrpool names;
  optxv::txconstpool coefficients;
  optxv::tbooleanbitarray special;  // by the number of the name
  for (const term& each : terms) {
    const std::int32_t name = names.add(each.name);
    const std::int32_t coefficient = coefficients.add(each.coefficient);
    if (optxv::mapval(each.coefficient) != 0) special.setbit(name, true);
    std::printf("%d %d %s\n", name, coefficient, classof(each.coefficient));
  }

  std::printf("%d names, %d coefficients\n", names.count(), coefficients.count());
  for (std::int32_t i = 0; i < names.count(); ++i)
    std::printf("%d %s%s\n", i, text(names.getname(i)).c_str(), special.getbit(i) ? " *" : "");

  optxv::txstrstrlist settings;
  settings.setasstring("Title", "spring");
  settings.setasinteger("limit", 40);
  settings.setasboolean("trace", true);
  settings.setasinteger("limit", settings.getasinteger("LIMIT") + 2);
  settings.setasboolean("Trace", false);  // what is false is not there
  for (std::int32_t i = 0; i < settings.count(); ++i)
    std::printf("%s = %s\n", text(settings.getname(i)).c_str(),
                text(settings.getobject(i)).c_str());
  return 0;
}
