// Special values inside ordinary reals, and the names of the types of variables.
//
// Programs around a solver write undefined, not available, the infinities, epsilon and acronyms as
// huge reals: whole multiples of valund. An older scale, of 1e30, is still met and converted.
#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <string_view>

#include "foundation/visibility.h"

namespace optxv {

// The special values -----------------------------------------------------------------------------

OPTXV_EXPORT extern const double valund;    ///< undefined: 1e300
OPTXV_EXPORT extern const double valna;     ///< not available: 2e300
OPTXV_EXPORT extern const double valpin;    ///< plus infinity: 3e300
OPTXV_EXPORT extern const double valmin;    ///< minus infinity: 4e300
OPTXV_EXPORT extern const double valeps;    ///< epsilon: 5e300
OPTXV_EXPORT extern const double valacr;    ///< 1e301; an acronym is a whole multiple of it
OPTXV_EXPORT extern const double valiup;    ///< 100, not a special value
OPTXV_EXPORT extern const double valbig;    ///< the largest ordinary value: 1e299
OPTXV_EXPORT extern const double valsmall;  ///< the smallest ordinary value: -1e299

// The same under a second set of names.
OPTXV_EXPORT extern const double xvalund;
OPTXV_EXPORT extern const double xvalna;
OPTXV_EXPORT extern const double xvalpin;
OPTXV_EXPORT extern const double xvalmin;
OPTXV_EXPORT extern const double xvaleps;
OPTXV_EXPORT extern const double xvalacr;
OPTXV_EXPORT extern const double xvaliup;

// In the old scale: 1e30 to 5e30, and 1e31.
OPTXV_EXPORT extern const double old_valund;
OPTXV_EXPORT extern const double old_valna;
OPTXV_EXPORT extern const double old_valpin;
OPTXV_EXPORT extern const double old_valmin;
OPTXV_EXPORT extern const double old_valeps;
OPTXV_EXPORT extern const double old_valacr;

// Classes ----------------------------------------------------------------------------------------

/// The class of a real: 0 ordinary, 1 undefined, 2 not available, 3 plus infinity, 4 minus
/// infinity, 5 epsilon, 6 acronym.
///
/// Everything below valund is ordinary, however far below zero; from valacr on everything is an
/// acronym, and so is a multiple of valund between epsilon and valacr. A value on no multiple, to
/// within 1e-5 of valund, is undefined. A not-a-number is an acronym.
OPTXV_EXPORT std::int32_t mapval(double x) noexcept;

/// The same with three ordinary classes first: 0 negative, 1 zero of either sign, 2 positive, or
/// a not-a-number; then 3 undefined to 8 acronym.
OPTXV_EXPORT std::int32_t xmapval(double x) noexcept;

/// A real of the old scale in the present one: an ordinary value as it is; acronym number n, the
/// nearest if it is on none, as n * valacr; what is on no multiple of old_valund, on a multiple
/// above epsilon, or not a number as valund.
OPTXV_EXPORT double old_new_val(double x) noexcept;

// Types of variables -----------------------------------------------------------------------------

/// Their names, each padded with blanks to 8 characters: unknown, binary, integer, positive,
/// negative, free, sos1, sos2, semicont and semiint.
OPTXV_EXPORT extern const std::array<std::string_view, 10> varstyptxt;
OPTXV_EXPORT extern const std::bitset<10> varstypx;  ///< positive, negative and free
OPTXV_EXPORT extern const std::bitset<10> varstypi;  ///< binary, integer and the last four

}  // namespace optxv
