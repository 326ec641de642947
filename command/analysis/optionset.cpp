#include "analysis/optionset.h"

#include <algorithm>
#include <array>

#include "optxv/embedding.h"

namespace command {
namespace {

/// A bounded string as the library takes and gives it: a length byte and the bytes.
class bounded {
 public:
  bounded() = default;
  explicit bounded(std::string_view text) {
    const std::size_t length = std::min<std::size_t>(text.size(), optionset::longesttext);
    bytes_[0] = static_cast<unsigned char>(length);
    std::copy_n(text.begin(), length, bytes_.begin() + 1);
  }
  unsigned char* data() { return bytes_.data(); }
  const unsigned char* data() const { return bytes_.data(); }
  std::string text() const { return {bytes_.begin() + 1, bytes_.begin() + 1 + bytes_[0]}; }

 private:
  std::array<unsigned char, OPTXV_TEXT_SIZE> bytes_{};
};

template <class Function, class... Arguments>
std::string outtext(Function function, Arguments... arguments) {
  bounded text;
  function(arguments..., text.data());
  return text.text();
}

template <class Number, class Function>
Number outnumber(Function function, optHandle handle, std::int32_t optnr) {
  Number number{};
  function(handle, optnr, &number);
  return number;
}

template <class Function>
std::vector<std::string> labels(Function function, optHandle handle, std::int32_t position,
                                std::int32_t dimension) {
  std::vector<std::string> result;
  for (std::int32_t i = 1; i <= dimension; i++)
    result.push_back(outtext(function, handle, position, i));
  return result;
}

}  // namespace

std::int32_t optionset::readdefinition(const std::string& name, std::string_view text) {
  return optxv_read_definition_text(handle_, name.c_str(), text.data(), text.size());
}

std::int32_t optionset::readparameters(const std::string& name, std::string_view text) {
  return optxv_read_parameter_text(handle_, name.c_str(), text.data(), text.size());
}

void optionset::readline(std::string_view text) {
  optreadfromstr(handle_, bounded(text).data());
}

std::int32_t optionset::errorcount() const {
  std::int32_t errors = 0, warnings = 0;
  opterrorcount(handle_, &errors, &warnings);
  return errors;
}

std::string optionset::parametertext() const {
  std::string text;
  const auto take = [](void* into, const char* bytes, std::size_t size) -> std::int32_t {
    static_cast<std::string*>(into)->assign(bytes, size);
    return 0;
  };
  optxv_write_parameter_text(handle_, take, &text);
  return text;
}

void optionset::showhelp(std::string_view request) {
  optshowhelp(handle_, bounded(request).data());
}

message optionset::messageat(std::int32_t position) const {
  bounded text;
  message result;
  optgetmessage(handle_, position, text.data(), &result.kind);
  result.text = text.text();
  return result;
}

optioninfo optionset::info(std::int32_t optnr) const {
  optioninfo result;
  optgetinfonr(handle_, optnr, &result.defined, &result.recent, &result.refnr, &result.data,
               &result.type, &result.sub);
  return result;
}

std::string optionset::name(std::int32_t optnr) const {
  return outtext(optgetnamenr, handle_, optnr);
}

std::string optionset::tablename(std::int32_t optnr) const {
  bounded name, help;
  optgethelpnr(handle_, optnr, name.data(), help.data());
  return name.text();
}

std::string optionset::value(std::int32_t optnr) const {
  return outtext(optgetstrnr, handle_, optnr);
}

std::string optionset::value2(std::int32_t optnr) const {
  return outtext(optgetstr2nr, handle_, optnr);
}

std::int32_t optionset::integer(std::int32_t optnr) const {
  return outnumber<std::int32_t>(optgetintnr, handle_, optnr);
}

std::int32_t optionset::integer2(std::int32_t optnr) const {
  return outnumber<std::int32_t>(optgetint2nr, handle_, optnr);
}

double optionset::real(std::int32_t optnr) const {
  return outnumber<double>(optgetdblnr, handle_, optnr);
}

double optionset::real2(std::int32_t optnr) const {
  return outnumber<double>(optgetdbl2nr, handle_, optnr);
}

std::vector<std::string> optionset::items(std::int32_t optnr) const {
  std::vector<std::string> result;
  optxv_text item = {};
  for (std::int32_t i = 1; optxv_list_item(handle_, optnr, i, &item) == 1; i++)
    result.emplace_back(item.bytes, item.size);
  return result;
}

std::int32_t optionset::itemcount(std::int32_t optnr) const {
  return std::max(optxv_list_count(handle_, optnr), 0);
}

std::int32_t optionset::find(std::string_view name) const {
  std::int32_t optnr = 0, refnr = 0;
  optfindstr(handle_, bounded(name).data(), &optnr, &refnr);
  return optnr;
}

std::vector<dotoption> optionset::dotoptions(std::int32_t& dropped) const {
  std::vector<dotoption> result(static_cast<std::size_t>(optdotoptcount(handle_, &dropped)));
  std::int32_t position = 0;
  for (dotoption& each : result) {
    bounded symbol;
    std::int32_t dimension = 0;
    optgetdotoptnr(handle_, ++position, symbol.data(), &each.optnr, &dimension, &each.value);
    each.symbol = symbol.text();
    each.labels = labels(optgetdotoptuel, handle_, position, dimension);
  }
  return result;
}

std::vector<indicator> optionset::indicators(std::int32_t& dropped) const {
  std::vector<indicator> result(static_cast<std::size_t>(optindicatorcount(handle_, &dropped)));
  std::int32_t position = 0;
  for (indicator& each : result) {
    bounded equation, variable;
    std::int32_t equations = 0, variables = 0;
    optgetindicatornr(handle_, ++position, equation.data(), variable.data(), &equations, &variables,
                      &each.mark);
    each.equation = equation.text();
    each.variable = variable.text();
    each.equationlabels = labels(optgetequindicatornr, handle_, position, equations);
    each.variablelabels = labels(optgetvarindicatornr, handle_, position, variables);
  }
  return result;
}

std::string optionset::typeword(std::int32_t type) {
  return outtext(optgettypename, nullptr, type);
}

std::string optionset::constantname(std::int32_t group, std::int32_t index) {
  return outtext(optgetconstname, nullptr, group, index);
}

std::string optionset::auditline() {
  return outtext(optversion, nullptr);
}

}  // namespace command
