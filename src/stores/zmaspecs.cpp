#include "stores/zmaspecs.h"

#include <cmath>

#include "foundation/arithmetic.h"
#include "foundation/numtext.h"
#include "foundation/strutilx.h"

namespace optxv {

const double valund = 1e300;
const double valna = 2e300;
const double valpin = 3e300;
const double valmin = 4e300;
const double valeps = 5e300;
const double valacr = 1e301;
const double valiup = 100;
const double valbig = maxdouble;
const double valsmall = -maxdouble;

const double xvalund = valund;
const double xvalna = valna;
const double xvalpin = valpin;
const double xvalmin = valmin;
const double xvaleps = valeps;
const double xvalacr = valacr;
const double xvaliup = valiup;

const double old_valund = 1e30;
const double old_valna = 2e30;
const double old_valpin = 3e30;
const double old_valmin = 4e30;
const double old_valeps = 5e30;
const double old_valacr = 1e31;

namespace {

constexpr std::int32_t undefinedclass = 1;
constexpr std::int32_t epsilonclass = 5;
constexpr std::int32_t acronymclass = 6;

constexpr std::int64_t onnone = -1;

/// Which multiple of unit a real is, onnone if it is too far from any. A not-a-number is 0 of it.
std::int64_t multipleof(double x, double unit) noexcept {
  constexpr double tolerance = 1e-5;
  const plainarithmetic plain;
  const volatile double dividend = x, v = dividend / unit;
  const volatile std::int64_t k = round(v);
  const volatile double distance = static_cast<double>(k) - v;
  return isbelow(tolerance, std::fabs(distance)) ? onnone : k;
}

/// The acronym of today for one of old.
double presentacronym(double x) noexcept {
  const plainarithmetic plain;
  const volatile double dividend = x, quotient = dividend / old_valacr;
  const volatile double which = static_cast<double>(round(quotient));
  const volatile double result = which * valacr;
  return result;
}

}  // namespace

std::int32_t mapval(double x) noexcept {
  if (isbelow(x, valund)) return 0;
  if (atmost(valacr, x)) return acronymclass;
  const std::int64_t k = multipleof(x, valund);
  if (k == onnone) return undefinedclass;
  return k >= undefinedclass && k <= epsilonclass ? static_cast<std::int32_t>(k) : acronymclass;
}

std::int32_t xmapval(double x) noexcept {
  if (atmost(valund, x)) return mapval(x) + 2;
  if (isbelow(x, 0)) return 0;
  return iszero(x) ? 1 : 2;
}

double old_new_val(double x) noexcept {
  const double present[] = {valund, valund, valna, valpin, valmin, valeps};
  if (isbelow(x, old_valund)) return x;
  if (atmost(old_valacr, x)) return presentacronym(x);
  const std::int64_t k = multipleof(x, old_valund);
  return k == onnone || k > epsilonclass ? valund : present[k];
}

const std::array<std::string_view, 10> varstyptxt = {"unknown ", "binary  ", "integer ", "positive",
                                                     "negative", "free    ", "sos1    ", "sos2    ",
                                                     "semicont", "semiint "};
const std::bitset<10> varstypx = 0b0000111000;
const std::bitset<10> varstypi = 0b1111000110;

}  // namespace optxv
