// Number text in both directions, compared with the conversions of the C library in its default
// locale.
#include <cmath>
#include <cstring>

#include "foundation/numtext.h"
#include "foundation/strutilx.h"
#include "support.h"
#include "support/cnumbers.h"

namespace optxv::fuzz {
namespace {

using cnumbers::integerby;
using cnumbers::realby;

bool samereal(double a, double b) {
  return a == b || (std::isnan(a) && std::isnan(b));
}

void fromtext(const std::string& text) {
  int code = -1, wanted = -1;
  const std::int32_t n = integerby(text, wanted);
  demand(_Q9_Val_SPD(text, code) == n && code == wanted, "_Q9_Val_SPD is strtol");
  const double x = realby(text, wanted);
  demand(samereal(_Q9_Val_d(text, code), x) && code == wanted, "_Q9_Val_d is strtod");
  std::int32_t plain = 0, either = 0;
  double y = 0;
  const bool isplain = strasintex(text, plain), iseither = strasintex2(text, either);
  if (isplain)
    demand(iseither && either == plain, "every integer is one");
  else if (iseither)
    demand(strasdoubleex(text, y) && y == either, "an integer written as a real");
}

/// Compares with what printf makes of it, the first 255 bytes.
template <class... Value>
void likeprintf(std::string_view got, std::string_view rule, const char* format, Value... values) {
  char text[1024];
  std::snprintf(text, sizeof text, format, values...);
  demand(got == std::string_view(text).substr(0, 255), rule);
}

void totext(double x, int width, int decimals) {
  likeprintf(_Q9_Str_d0(x), "_Q9_Str_d0 is printf", "%23.14E", x);
  likeprintf(_Q9_Str_d1(x, width), "_Q9_Str_d1 is printf", "%*.*E", std::max(width, 10),
             std::clamp(width - 8, 2, 18), x);
  likeprintf(_Q9_Str_d2(x, width, decimals), "_Q9_Str_d2 is printf",
             std::fabs(x) > 1e37 ? "%*.*E" : "%*.*f", width, std::max(decimals, 0), x);
  const auto n = static_cast<std::int32_t>(width * 8191 + decimals);
  likeprintf(_Q9_Str_i0(n), "_Q9_Str_i0 is printf", "%d", n);
  likeprintf(_Q9_Str_i1(n, width), "_Q9_Str_i1 is printf", "%*d", width, n);
  // Next to the largest real, 15 digits can round up to a number that is too large.
  if (!std::isfinite(x) || std::fabs(x) > 1.7976931348623e308) return;
  // Next to 0.0001 they can round up to a number that is written in the other form.
  double again = 0, onceagain = 0;
  demand(strasdoubleex(dbltostr(x), again), "a real is read back");
  demand(strasdoubleex(dbltostr(again), onceagain) && onceagain == again, "15 digits come back");
}

}  // namespace
}  // namespace optxv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace optxv::fuzz;
  fromtext({reinterpret_cast<const char*>(data), std::min<std::size_t>(size, 255)});
  if (size < sizeof(double) + 2) return 0;
  double x;
  std::memcpy(&x, data, sizeof x);
  totext(x, data[8] - 60, data[9] - 10);
  return 0;
}
