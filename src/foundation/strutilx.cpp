#include "foundation/strutilx.h"

#include <cmath>
#include <cstring>
#include <limits>

#include "foundation/arithmetic.h"
#include "foundation/numtext.h"
#include "foundation/runtime.h"

namespace optxv {
namespace {

constexpr auto none = std::string_view::npos;

int position(std::size_t index) noexcept {
  return index == none ? 0 : static_cast<int>(index) + 1;
}
int lengthof(std::string_view s) noexcept {
  return static_cast<int>(s.size());
}

/// A byte as the unsigned value that comparisons count with.
int value(char c) noexcept {
  return static_cast<unsigned char>(c);
}

bool isdigit(char c) noexcept {
  return c >= '0' && c <= '9';
}

struct asis {
  char operator()(char c) const noexcept { return c; }
};
struct capital {
  char operator()(char c) const noexcept { return upcase(c); }
};

/// The first difference of the common length, 0 if there is none.
template <class Fold>
int firstdifference(std::string_view a, std::string_view b, Fold fold) noexcept {
  const std::size_t common = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < common; ++i)
    if (const int difference = value(fold(a[i])) - value(fold(b[i])); difference != 0)
      return difference;
  return 0;
}

template <class Fold>
int compare(std::string_view a, std::string_view b, Fold fold) noexcept {
  const int difference = firstdifference(a, b, fold);
  return difference != 0 ? difference : lengthof(a) - lengthof(b);
}

/// Nil below every string; compares the texts if both are there.
template <class Compare>
int comparenil(const unsigned char* p, const unsigned char* q, Compare texts) noexcept {
  if (p != nullptr && q != nullptr) return texts(getstring(p), getstring(q));
  return (p != nullptr ? 1 : 0) - (q != nullptr ? 1 : 0);
}

/// The first position from sp up whose byte the test accepts, 0 if none.
template <class Test>
int searchup(std::string_view s, int sp, Test test) noexcept {
  for (int i = std::max(sp, 1); i <= lengthof(s); ++i)
    if (test(s[static_cast<std::size_t>(i - 1)])) return i;
  return 0;
}

/// The first position from min(sp, length) down whose byte the test accepts, 0 if none.
template <class Test>
int searchdown(std::string_view s, int sp, Test test) noexcept {
  for (int i = std::min(sp, lengthof(s)); i >= 1; --i)
    if (test(s[static_cast<std::size_t>(i - 1)])) return i;
  return 0;
}

auto is(char ch) noexcept {
  return [ch](char c) { return c == ch; };
}
auto isletter(char ch) noexcept {
  return [ch = upcase(ch)](char c) { return upcase(c) == ch; };
}
auto isin(const charset& chset) noexcept {
  return [&chset](char c) { return chset.has(c); };
}

/// s, cut at 255 bytes, with each byte changed.
template <class Change>
shortstring changed(std::string_view s, Change change) noexcept {
  shortstring result = s;
  for (int i = 1; i <= result.length(); ++i) result[i] = change(result[i]);
  return result;
}

std::string_view without(std::string_view digits, char trailing) noexcept {
  const std::size_t last = digits.find_last_not_of(trailing);
  return digits.substr(0, last == none ? 0 : last + 1);
}

}  // namespace

// Parts of a text

std::string_view copy(std::string_view s, int start, int count) noexcept {
  if (start < 1 || start > lengthof(s) || count < 1) return {};
  return s.substr(static_cast<std::size_t>(start - 1), static_cast<std::size_t>(count));
}

int pos(std::string_view sub, std::string_view s) noexcept {
  return position(s.find(sub));
}

// Comparison

int strcmp(std::string_view a, std::string_view b) noexcept {
  return compare(a, b, asis{});
}
int strucmp(std::string_view a, std::string_view b) noexcept {
  return compare(a, b, capital{});
}

namespace {

bool sameeight(std::uint64_t worda, std::uint64_t wordb) noexcept {
  return worda == wordb || upcaseeight(worda) == upcaseeight(wordb);
}

}  // namespace

bool detail::foldedequal(const char* a, const char* b, std::size_t n) noexcept {
  constexpr std::size_t step = sizeof(std::uint64_t);
  for (std::size_t i = 0; i + step < n; i += step)
    if (!sameeight(bytesat<std::uint64_t>(a + i), bytesat<std::uint64_t>(b + i))) return false;
  return sameeight(lasteight(a, n), lasteight(b, n));
}

int _Q9stccmp(std::string_view s, char c) noexcept {
  if (s.empty()) return -1;
  const int difference = value(s[0]) - value(c);
  return difference != 0 || s.size() == 1 ? difference : 1;
}

namespace {

/// The byte of a number that is padded with leading blanks to a width.
int paddedvalue(std::string_view digits, std::size_t width, std::size_t index) noexcept {
  const std::size_t padding = width - digits.size();
  return index < padding ? value(' ') : value(digits[index - padding]);
}

int comparedigits(std::string_view a, std::string_view b) noexcept {
  const std::size_t width = std::max(a.size(), b.size());
  for (std::size_t i = 0; i < width; ++i)
    if (const int difference = paddedvalue(a, width, i) - paddedvalue(b, width, i); difference != 0)
      return difference;
  return 0;
}

std::size_t headlength(std::string_view s) noexcept {
  return static_cast<std::size_t>(searchdown(s, lengthof(s), [](char c) { return !isdigit(c); }));
}

}  // namespace

int strucmpnum(std::string_view a, std::string_view b) noexcept {
  const std::size_t heada = headlength(a);
  const std::size_t headb = headlength(b);
  const int difference = firstdifference(a.substr(0, heada), b.substr(0, headb), capital{});
  return difference != 0 ? difference : comparedigits(a.substr(heada), b.substr(headb));
}

// Heap strings

pstring newstring(std::string_view s) {
  if (s.empty()) return nullptr;
  const std::size_t length = std::min<std::size_t>(s.size(), shortstring::maximum);
  const pstring result = static_cast<pstring>(gettextmem(static_cast<std::int64_t>(length) + 1));
  *result = static_cast<unsigned char>(length);
  std::memcpy(result + 1, s.data(), length);
  return result;
}

void disposestring(pstring p) noexcept {
  if (p != nullptr) freemem(p, *p + 1);
}

void strassign(pstring& p, std::string_view s) {
  const pstring old = p;
  p = newstring(s);
  disposestring(old);
}

int pstrcmp(const unsigned char* p, const unsigned char* q) noexcept {
  return comparenil(p, q, [](std::string_view a, std::string_view b) { return strcmp(a, b); });
}

int pstrucmp(const unsigned char* p, const unsigned char* q) noexcept {
  return comparenil(p, q, strucmp);
}

bool pstrequal(const unsigned char* p, const unsigned char* q) noexcept {
  return p == nullptr || q == nullptr ? p == q : strequal(getstring(p), getstring(q));
}

bool pstruequal(const unsigned char* p, const unsigned char* q) noexcept {
  return p == nullptr || q == nullptr ? p == q : struequal(getstring(p), getstring(q));
}

// Search

int lchpos(char ch, std::string_view s) noexcept {
  return position(s.find(ch));
}
int lchpossp(char ch, std::string_view s, int sp) noexcept {
  return searchup(s, sp, is(ch));
}
int rchpos(char ch, std::string_view s) noexcept {
  return position(s.rfind(ch));
}
int rchpossp(char ch, std::string_view s, int sp) noexcept {
  return searchdown(s, sp, is(ch));
}
int lchupos(char ch, std::string_view s) noexcept {
  return lchupossp(ch, s, 1);
}
int lchupossp(char ch, std::string_view s, int sp) noexcept {
  return searchup(s, sp, isletter(ch));
}
int rchupos(char ch, std::string_view s) noexcept {
  return rchupossp(ch, s, lengthof(s));
}
int rchupossp(char ch, std::string_view s, int sp) noexcept {
  return searchdown(s, sp, isletter(ch));
}
int lchsetpos(const charset& chset, std::string_view s) noexcept {
  return searchup(s, 1, isin(chset));
}
int rchsetpos(const charset& chset, std::string_view s) noexcept {
  return searchdown(s, lengthof(s), isin(chset));
}
int lstrpos(std::string_view pat, std::string_view s) noexcept {
  return lstrpossp(pat, s, 1);
}
int lstrpossp(std::string_view pat, std::string_view s, int sp) noexcept {
  if (pat.empty() || sp < 1) return 0;
  return position(s.find(pat, static_cast<std::size_t>(sp - 1)));
}

// Case, removal, replacement

shortstring lowercase(std::string_view s) noexcept {
  return changed(s, lowcase);
}
shortstring uppercase(std::string_view s) noexcept {
  return changed(s, upcase);
}

shortstring deletechar(const charset& chset, std::string_view s) noexcept {
  shortstring result;
  for (const char c : s)
    if (!chset.has(c)) result.append(c);
  return result;
}

shortstring replacechar(const charset& chset, char ch, std::string_view s) noexcept {
  return changed(s, [&](char c) { return chset.has(c) ? ch : c; });
}

shortstring replacestr(std::string_view oldtext, std::string_view newtext,
                       std::string_view s) noexcept {
  if (oldtext.empty() || oldtext == newtext) return s;
  shortstring result;
  std::size_t start = 0;
  for (std::size_t k; (k = s.find(oldtext, start)) != none; start = k + oldtext.size())
    result.append(s.substr(start, k - start)).append(newtext);
  return result.append(s.substr(start));
}

// Trimming

std::string_view trimright(std::string_view text) noexcept {
  while (!text.empty() && isblank(text.back())) text.remove_suffix(1);
  return text;
}

std::string_view trim(std::string_view text) noexcept {
  while (!text.empty() && isblank(text.front())) text.remove_prefix(1);
  return trimright(text);
}

// Fill and padding

shortstring fillstr(char ch, int n) noexcept {
  shortstring result;
  result.setlength(n);
  std::memset(result.data(), ch, static_cast<std::size_t>(result.length()));
  return result;
}

shortstring blankstr(int n) noexcept {
  return copy(blanks255, 1, n);
}

namespace {

/// The blanks that s needs to reach n bytes; a width out of range counts as the nearest one in it.
shortstring padding(std::string_view s, int n) noexcept {
  return blankstr(std::clamp(n, 0, shortstring::maximum) - lengthof(s));
}

}  // namespace

shortstring padleft(std::string_view s, int n) noexcept {
  return concat(padding(s, n), s);
}

shortstring padright(std::string_view s, int n) noexcept {
  return concat(s, padding(s, n));
}

int padmodlength(std::string_view s, int m) noexcept {
  const int length = lengthof(s);
  if (m < 1 || length % m == 0) return length;
  return length - length % m + m;
}

shortstring padrightmod(std::string_view s, int m) noexcept {
  return padright(s, padmodlength(s, m));
}

// Tokens

shortstring extracttoken(std::string_view s, int& p) noexcept {
  if (p < 1 || p > lengthof(s)) return {};
  auto start = std::min(s.find_first_not_of(' ', static_cast<std::size_t>(p - 1)), s.size());
  char delimiter = ' ';
  if (start < s.size() && (s[start] == '\'' || s[start] == '"')) delimiter = s[start++];
  const auto end = std::min(s.find(delimiter, start), s.size());
  p = static_cast<int>(end) + (end < s.size() ? 2 : 1);
  return s.substr(start, end - start);
}

// Integers to text

namespace {

/// A text that is written from its last byte to its first.
class backwards {
 public:
  void put(char c) noexcept { text_[--start_] = c; }
  std::string_view view() const noexcept { return {text_ + start_, sizeof text_ - start_}; }

 private:
  char text_[32];  // 19 digits, 6 commas and a sign at most
  std::size_t start_ = sizeof text_;
};

std::uint64_t magnitude(std::int64_t n) noexcept {
  return n < 0 ? 0 - static_cast<std::uint64_t>(n) : static_cast<std::uint64_t>(n);
}

/// The digits of n in groups of three; `zero` plus or minus a digit is its character.
shortstring nicetext(std::int64_t n, int w, bool digitsbelowzero) noexcept {
  backwards text;
  std::uint64_t rest = magnitude(n);
  int digits = 0;
  do {
    if (digits != 0 && digits % 3 == 0) text.put(',');
    const int digit = static_cast<int>(rest % 10);
    text.put(static_cast<char>(digitsbelowzero ? '0' - digit : '0' + digit));
    rest /= 10;
    ++digits;
  } while (rest != 0);
  if (n < 0) text.put('-');
  return padleft(text.view(), w);
}

}  // namespace

int integerwidth(std::int32_t n) noexcept {
  return inttostr(n).length();
}

shortstring inttostr(std::int64_t n) noexcept {
  backwards text;
  std::uint64_t rest = magnitude(n);
  do {
    text.put(static_cast<char>('0' + rest % 10));
    rest /= 10;
  } while (rest != 0);
  if (n < 0) text.put('-');
  return text.view();
}

shortstring inttostrw(std::int64_t n, int w) noexcept {
  return padleft(inttostr(n), w);
}

shortstring inttostrex(std::int32_t n) noexcept {
  if (n == std::numeric_limits<std::int32_t>::max()) return "maxint";
  if (n == std::numeric_limits<std::int32_t>::min()) return "minint";
  return inttostr(n);
}

shortstring inttonicestr(std::int32_t n) noexcept {
  return inttonicestrw(n, 0);
}

shortstring inttonicestrw(std::int32_t n, int w) noexcept {
  return nicetext(n, w, n == std::numeric_limits<std::int32_t>::min());
}

shortstring int64tonicestr(std::int64_t n) noexcept {
  return int64tonicestrw(n, 0);
}

shortstring int64tonicestrw(std::int64_t n, int w) noexcept {
  return nicetext(n, w, n == std::numeric_limits<std::int64_t>::min());
}

// Reals to text

namespace {

/// The parts of a text such as -1.25000000000000E-05.
struct realparts {
  std::string_view sign;      ///< "-" or empty
  std::string_view first;     ///< the digit before the point
  std::string_view fraction;  ///< the digits after it, without trailing zeros
  std::string_view exponent;  ///< the digits of the exponent, without leading zeros
  bool smallexponent;         ///< the exponent has a minus sign
};

/// REQUIRES: text has an E, followed by a sign, at e.
realparts partsof(std::string_view text, std::size_t e) noexcept {
  const std::size_t signs = text[0] == '-' ? 1 : 0;
  const std::string_view exponent = text.substr(e + 2);
  return {text.substr(0, signs), text.substr(signs, 1),
          without(text.substr(signs + 2, e - signs - 2), '0'),
          exponent.substr(std::min(exponent.find_first_not_of('0'), exponent.size())),
          text[e + 1] == '-'};
}

/// The point and what comes after it; nothing at all if there are no digits.
shortstring pointand(std::string_view fraction) noexcept {
  return fraction.empty() ? shortstring() : concat('.', fraction);
}

/// With the point moved to where the exponent says.
shortstring plaintext(const realparts& x) noexcept {
  const int places = strasint(x.exponent);
  if (x.smallexponent) return concat(x.sign, "0.", fillstr('0', places - 1), x.first, x.fraction);
  const shortstring digits = concat(x.fraction, fillstr('0', places - lengthof(x.fraction)));
  return concat(x.sign, x.first, copy(digits, 1, places), pointand(copy(digits, places + 1, 255)));
}

shortstring exponenttext(const realparts& x) noexcept {
  shortstring result = concat(x.sign, x.first, pointand(x.fraction));
  if (x.exponent.empty()) return result;
  return result.append(x.smallexponent ? "E-" : "E").append(x.exponent);
}

bool isplain(double x) noexcept {
  return atmost(0.0001, std::fabs(x)) && isbelow(std::fabs(x), 1e15);
}

}  // namespace

shortstring dbltostr(double x) noexcept {
  if (iszero(x)) return "0";
  const shortstring padded = _Q9_Str_d0(x);
  std::string_view text = padded.view();
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  const std::size_t e = text.find('E');
  if (e == none) return text;  // INF or NAN
  const realparts parts = partsof(text, e);
  return isplain(x) ? plaintext(parts) : exponenttext(parts);
}

shortstring dbltostrex(double x) noexcept {
  if (samebits(x, maxdouble)) return "maxdouble";
  if (samebits(x, -maxdouble)) return "mindouble";
  return dbltostr(x);
}

// Text to numbers

namespace {

template <class Number>
struct namednumber {
  std::string_view name;
  Number number;
};

constexpr namednumber<std::int32_t> namedintegers[] = {
    {"maxint", std::numeric_limits<std::int32_t>::max()},
    {"minint", std::numeric_limits<std::int32_t>::min()},
};

constexpr namednumber<double> namedreals[] = {
    {"maxdouble", maxdouble},
    {"mindouble", -maxdouble},
    {"eps", 1e-20},
};

/// Finds a number by its name. Every name begins with an m or an e, as few texts do.
template <class Number, std::size_t N>
bool findnamed(const namednumber<Number> (&rows)[N], std::string_view s, Number& number) noexcept {
  if (s.empty() || (locase(s[0]) != 'm' && locase(s[0]) != 'e')) return false;
  for (const auto& row : rows) {
    if (!struequal(row.name, s)) continue;
    number = row.number;
    return true;
  }
  return false;
}

constexpr charset exponentletters("Dd");

}  // namespace

std::int32_t strasint(std::string_view s) noexcept {
  int code = 0;
  const std::int32_t result = _Q9_Val_SPD(s, code);
  return code == 0 ? result : 0;
}

bool strasintex(std::string_view s, std::int32_t& n) noexcept {
  int code = 0;
  n = _Q9_Val_SPD(s, code);
  return code == 0 || findnamed(namedintegers, s, n);
}

bool saturatedinteger(std::string_view s) noexcept {
  int code = 0;
  bool saturated = false;
  val_spd(s, code, saturated);
  return saturated && code == 0;
}

bool strasdoubleex(std::string_view s, double& x) noexcept {
  if (findnamed(namedreals, s, x)) return true;
  int code = 0;
  x = _Q9_Val_d(s, code);
  if (code != 0 && lchsetpos(exponentletters, s) != 0)
    x = _Q9_Val_d(replacechar(exponentletters, 'E', s), code);
  return isfinitereal(x) && code == 0;
}

bool strasintex2(std::string_view s, std::int32_t& n) noexcept {
  if (strasintex(s, n)) return true;
  n = 0;
  double d = 0;
  if (!strasdoubleex(s, d) || !iswhole(d)) return false;
  n = static_cast<std::int32_t>(d);
  return true;
}

}  // namespace optxv
