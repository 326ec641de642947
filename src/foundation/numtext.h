// The text form of numbers, in both directions, and the text of system errors.
//
// Everything here has exactly the results of the C library's conversions in its default locale
// (strtol, strtod, printf of ISO C), whatever locale the host program has set: it is built on
// std::from_chars, std::to_chars and exactreal, which know no locale. Nor does it depend on the
// mode of arithmetic (rounding, denormals taken for 0), which stays as it was. The trimmed and
// symbolic forms that users see are made of these in strutilx.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "foundation/boundedstring.h"
#include "foundation/visibility.h"

namespace optxv {

/// An integer text: blanks, a sign, then decimal digits, or hexadecimal ones after 0x, 0X or $.
/// code becomes 0, or the position (from 1) of the first bad byte; an empty text is bad at 1. The
/// result is the value of the digits before the bad byte, 0 if there are none.
/// KEEP: a number too large is no error: it saturates at 2147483647 or -2147483648.
/// KEEP: a leading zero does not mean octal, but a 0 that neither ends the text nor comes before a
/// digit, x or X is itself the bad byte ("0 " is bad at 1).
/// KEEP: after a $ that a hexadecimal digit follows, the conversion is strtol's with base 16, which
/// takes a further 0x ("$0x1F" is 31); a $ without such a digit is bad at the position after it.
std::int32_t _Q9_Val_SPD(std::string_view s, int& code);
/// The same; saturated becomes whether the number was too large.
std::int32_t val_spd(std::string_view s, int& code, bool& saturated);

/// A real text: blanks, a sign, digits with at most one point, an exponent with e or E. code is as
/// for _Q9_Val_SPD. Too large a number gives an infinity with code 0, too small a one a zero or a
/// denormal: the caller judges.
/// KEEP: a lone point, signed or not, is a good zero. A point before e or E counts as 0.
/// KEEP: a first digit followed by x or X is bad at the x with value 0, whatever the digit.
/// KEEP: D and d never belong to a number here; "inf" and "nan" are bad.
double _Q9_Val_d(std::string_view s, int& code);

/// The real that a whole text is: a minus or none, digits with at most one point, an exponent with
/// e or E or none. Nothing for any other text. Beyond the reals, an infinity or a 0.
OPTXV_EXPORT std::optional<double> realfromtext(std::string_view s);

/// printf's "%d".
shortstring _Q9_Str_i0(std::int32_t value);

/// printf's "%<width>d"; a negative width pads after the number instead of before it.
shortstring _Q9_Str_i1(std::int32_t value, int width);

/// printf's "%23.14E": the default text of a real, with 15 significant digits. Infinities and
/// not-a-numbers are INF and NAN, with a - if the sign bit is set.
shortstring _Q9_Str_d0(double value);

/// printf's "%<width>.<width - 8>E" with at most 18 decimals; a width below 10 counts as "%10.2E".
shortstring _Q9_Str_d1(double value, int width);

/// printf's "%<width>.<decimals>f", with E for f when the magnitude is above 1e37; so an infinity
/// is INF and a not-a-number nan. A negative width pads after the number; negative decimals count
/// as 0. The result is the first 255 bytes.
shortstring _Q9_Str_d2(double value, int width, int decimals);

/// The nearest integer, halves away from zero: adds a half to the magnitude and truncates.
/// Saturates at the limits of the result; a not-a-number gives 0.
/// KEEP: the sum is rounded too, so that the largest real below 0.5 gives 1.
std::int64_t round(double value);

/// The class of a real by its bits (IEEE 754 binary64): 0 signaling NaN, 1 quiet NaN, 2 negative
/// and 3 positive infinity, 4 and 5 denormalized, 6 and 7 zero, 8 and 9 normalized, the negative
/// first in each pair.
OPTXV_EXPORT int fpclass(double value);

/// The words for a result of fpclass; empty for any other number.
OPTXV_EXPORT std::string_view fpclasstext(int realclass);

/// What strerror says of a system error number in the default locale, cut at 255 bytes.
shortstring syserrormessage(int number);

}  // namespace optxv
