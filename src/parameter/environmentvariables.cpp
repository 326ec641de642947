#include "parameter/environmentvariables.h"

#include <algorithm>
#include <string>
#include <vector>

#include "parameter/outersettings.h"

namespace optxv {

namespace {

std::string_view nameof(std::string_view variable) {
  return variable.substr(0, variable.find('='));
}

/// Those with the prefix and a name after it, sorted.
std::vector<std::string_view> variableswith(std::string_view prefix, const char* const* variables) {
  std::vector<std::string_view> found;
  for (; variables != nullptr && *variables != nullptr; ++variables) {
    const std::string_view variable = *variables;
    const std::string_view name = nameof(variable);
    if (name.size() > prefix.size() && name.size() < variable.size() && name.starts_with(prefix))
      found.push_back(variable);
  }
  std::stable_sort(found.begin(), found.end(),
                   [](std::string_view a, std::string_view b) { return nameof(a) < nameof(b); });
  return found;
}

void readvariable(tzmaoptions& options, std::string_view variable, std::size_t prefix) {
  const std::string_view name = nameof(variable);
  const bool empty = name.size() + 1 == variable.size();
  const outersetting setting = {
      {optxv_source_variable, "variable " + std::string(name), empty ? name : variable},
      prefix,
      name.size() - prefix};
  const foundoption found = findouter(options, setting.name());
  if (found.option == nullptr)
    reportunknown(options, setting, optMsgValueWarning);
  else if (!empty || found.option->subtype == optsubNoValue)
    readouter(options, setting, found, {});
}

}  // namespace

void readenvironment(tzmaoptions& options, std::string_view prefix, const char* const* variables) {
  for (const std::string_view variable : variableswith(prefix, variables))
    readvariable(options, variable, prefix.size());
}

}  // namespace optxv
