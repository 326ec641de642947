// Parameter text goes into one object, and the parameter file that the library writes of it into a
// second: the second must hold what the first does, wherever the language can express it.
#include "grammar.h"
#include "richdefinition.h"
#include "support.h"

namespace optxv::fuzz {
namespace {

constexpr std::size_t longestline = 1020;

/// Whether the language has a form for a text: it has no way to write a double quote or blanks at
/// the ends, and reads a comment character or the signs of an assignment as such where no quotes
/// are needed.
/// `token`: read as one token, where ' is a quote as well.
bool writable(std::string_view text, bool token) {
  if (text.size() > 250) return false;
  constexpr std::string_view signs = "=: \t", blanks = " \t";
  if (!text.empty() &&
      (signs.find(text.front()) != signs.npos || blanks.find(text.back()) != blanks.npos))
    return false;
  return std::none_of(text.begin(), text.end(), [token](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 32 || c == '"' || c == '!' || c == '#' || (token && c == '\'');
  });
}

bool longlines(const std::string& text) {
  for (std::size_t at = 0, end; at < text.size(); at = end + 1) {
    end = std::min(text.find('\n', at), text.size());
    if (end - at > longestline) return true;
  }
  return false;
}

/// KEEP: an allowed value clears the mark of the other value of its option, so that a pair of one
/// value out of bounds and one within can be written without the switch that it needs.
bool pairinbounds(tzmaoptions& options, std::int32_t number) {
  std::int32_t a = 0, b = 0, low, high, unused;
  double x = 0, y = 0, dlow, dhigh, nothing;
  options.optgetintnr(number, a);
  options.optgetint2nr(number, b);
  options.optgetdblnr(number, x);
  options.optgetdbl2nr(number, y);
  if (options.optgetboundsint(number, low, high, unused) == 1)
    return a >= low && a <= high && b >= low && b <= high;
  return options.optgetboundsdbl(number, dlow, dhigh, nothing) == 0 ||
         (x >= dlow && x <= dhigh && y >= dlow && y <= dhigh);
}

void samevalues(tzmaoptions& one, tzmaoptions& other, std::int32_t number) {
  std::int32_t defined, recent, refnr, data, type, sub;
  one.optgetinfonr(number, defined, recent, refnr, data, type, sub);
  if (defined == 0 || type > optTypeEnumInt) return;
  const bool two = sub == optsub2Values;
  shortstring name, a, b;
  one.optgetnamenr(number, name);
  if (name.view().starts_with('.')) return;
  one.optgetstrnr(number, a);
  if (!writable(a, two)) return;
  if (two) {
    if (!pairinbounds(one, number)) return;
    one.optgetstr2nr(number, b);
    if (!writable(b, true)) return;
  }
  shortstring again;
  other.optgetstrnr(number, again);
  demand(a.view() == again.view(), concat("a value comes back: ", name));
  if (!two) return;
  other.optgetstr2nr(number, again);
  demand(b.view() == again.view(), concat("a second value comes back: ", name));
}

void samedots(tzmaoptions& one, tzmaoptions& other) {
  std::int32_t errors;
  const std::int32_t count = one.optdotoptcount(errors);
  demand(count == other.optdotoptcount(errors), "as many dot options come back");
  for (std::int32_t i = 1; i <= count; ++i) {
    shortstring name, again;
    std::int32_t number, number2, labels, labels2;
    double value, value2;
    one.optgetdotoptnr(i, name, number, labels, value);
    other.optgetdotoptnr(i, again, number2, labels2, value2);
    demand(name.view() == again.view() && number == number2 && labels == labels2,
           "a dot option comes back");
    demand(dbltostr(value).view() == dbltostr(value2).view(), "the value of a dot option");
    for (std::int32_t j = 1; j <= labels; ++j) {
      one.optgetdotoptuel(i, j, name);
      other.optgetdotoptuel(i, j, again);
      demand(name.view() == again.view(), "a label comes back");
    }
  }
}

void sameindicators(tzmaoptions& one, tzmaoptions& other) {
  std::int32_t errors;
  const std::int32_t count = one.optindicatorcount(errors);
  demand(count == other.optindicatorcount(errors), "as many indicators come back");
  for (std::int32_t i = 1; i <= count; ++i) {
    shortstring equation, variable, equation2, variable2;
    std::int32_t dims[2], dims2[2], mark, mark2;
    one.optgetindicatornr(i, equation, variable, dims[0], dims[1], mark);
    other.optgetindicatornr(i, equation2, variable2, dims2[0], dims2[1], mark2);
    demand(equation.view() == equation2.view() && variable.view() == variable2.view() &&
               dims[0] == dims2[0] && dims[1] == dims2[1] && mark == mark2,
           "an indicator comes back");
    for (std::int32_t j = 1; j <= 20; ++j) {
      one.optgetequindicatornr(i, j, equation);
      other.optgetequindicatornr(i, j, equation2);
      one.optgetvarindicatornr(i, j, variable);
      other.optgetvarindicatornr(i, j, variable2);
      demand(equation.view() == equation2.view() && variable.view() == variable2.view(),
             "a label comes back");
    }
  }
}

/// Whether an enumeration has the value; true for other kinds.
bool allowed(tzmaoptions& options, std::int32_t number, double value) {
  std::int32_t count = 0;
  if (options.optgetenumcount(number, count) == 0) return true;
  for (std::int32_t entry = 1; entry <= count; ++entry) {
    std::int32_t item;
    shortstring unused;
    options.optgetenumvalue(number, entry, item, unused);
    if (item == value) return true;
  }
  return false;
}

/// The lines of the file that stand for dot options carry no switch of the bounds.
bool dotsinbounds(tzmaoptions& options) {
  std::int32_t errors;
  const std::int32_t count = options.optdotoptcount(errors);
  for (std::int32_t i = 1; i <= count; ++i) {
    shortstring name;
    std::int32_t number, labels;
    double value;
    options.optgetdotoptnr(i, name, number, labels, value);
    if (value > maxdouble || value < -maxdouble || !allowed(options, number, value)) return false;
  }
  return true;
}

void run(unsigned way, const std::string& text) {
  static const memoryfile definition(richdefinition("Normal"));
  static memoryfile source, written;
  tzmaoptions one, other;
  one.optreaddefinition(definition.path());
  other.optreaddefinition(definition.path());
  one.opteolonlyset((way & 1) == 0);
  one.optnoboundsset((way & 2) != 0);
  if ((way & 4) == 0) {
    source.fill(text);
    one.optreadparameterfile(source.path());
  } else {
    one.optreadfrompchar(text.c_str());
  }
  checkstate(one);
  demand(one.optwriteparameterfile(written.path()) == 0, "the file can be written");
  demand(other.optreadparameterfile(written.path()) == 0, "what was written can be read");
  checkstate(other);
  if (longlines(written.content()) || !dotsinbounds(one)) return;
  const std::int32_t count = std::min(one.optcount(), other.optcount());
  for (std::int32_t number = 1; number <= count; ++number) samevalues(one, other, number);
  samedots(one, other);
  sameindicators(one, other);
}

}  // namespace
}  // namespace optxv::fuzz

OPTXV_FUZZ_GRAMMAR(1, optxv::fuzz::parameterwords)

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 0) optxv::fuzz::run(data[0], {reinterpret_cast<const char*>(data) + 1, size - 1});
  return 0;
}
