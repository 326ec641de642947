#include "platform/q9ieeefp.h"

#include <cfenv>

namespace optxv {

namespace {

/// A flag of ours and that of the processor, whose numbers are its own.
struct flagrow {
  std::uint8_t ours;
  int native;
};

constexpr flagrow flagrows[] = {
    {exinvalidop, FE_INVALID},   {exzerodivide, FE_DIVBYZERO}, {exoverflow, FE_OVERFLOW},
    {exunderflow, FE_UNDERFLOW}, {exprecision, FE_INEXACT},
};
static_assert((exinvalidop | exzerodivide | exoverflow | exunderflow | exprecision) == exallflags);

}  // namespace

void clearexceptionflags(std::uint8_t flags) noexcept {
  int native = 0;
  for (const flagrow& row : flagrows)
    if ((flags & row.ours) != 0) native |= row.native;
  std::feclearexcept(native);
}

std::uint8_t getexceptionflags() noexcept {
  const int raised = std::fetestexcept(FE_ALL_EXCEPT);
  unsigned set = 0;
  for (const flagrow& row : flagrows)
    if ((raised & row.native) != 0) set |= row.ours;
  return static_cast<std::uint8_t>(set);
}

}  // namespace optxv
