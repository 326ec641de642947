// Number text in both directions beside the C library, over texts without end: reals of all bits,
// the shortest text of each, points halfway between two reals, digits by the hundred, numbers at
// every edge, what the writers write, and texts that are hardly numbers.
//
//   numbers_prove COUNT [SEED]
//
// Tries so many texts on all processors, and prints how many of which kind; or the first that
// differs, with the status 1.
#include <array>
#include <atomic>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "foundation/numtext.h"
#include "foundation/strutilx.h"
#include "support/cnumbers.h"

namespace optxv {
namespace {

using cnumbers::integerby;
using cnumbers::realby;

/// The same bits, or both no number.
bool same(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) ||
         (std::isnan(a) && std::isnan(b));
}

/// One row of texts: its own generator, and what it found.
class prover {
 public:
  prover(std::uint64_t seed, std::atomic<bool>& stop) : random_(seed), stop_(stop) {}

  void run(std::uint64_t count) {
    for (std::uint64_t i = 0; i < count && !stop_; i++) step(i);
  }
  const std::array<std::uint64_t, 3>& counts() const { return counts_; }

 private:
  enum kind { toreal, tointeger, totext };

  void step(std::uint64_t i) {
    switch (i % 16) {
      case 0:
        return real(shortest(bits()));
      case 1:
        return real(printed("%.*e", static_cast<int>(below(20)), bits()));
      case 2:
        return real(shortest(std::bit_cast<double>(random_() & 0x800FFFFFFFFFFFFF)));
      case 3:
        return real(edge());
      case 4:
        return real(nearinteger());
      case 5:
        return real(oddtext("0123456789.eE+-dDxX$ ", 14));
      case 6:
        return real(oddtext("0123456789", below(64) == 0 ? 400 : 25));
      case 7:
        return below(8) == 0 ? real(halfway()) : real(oddtext("0129.", 30));
      case 8:
        return integer(std::to_string(static_cast<std::int64_t>(random_()) >> below(63)));
      case 9:
        return integer(oddtext("0123456789abcdefxX$+- ", 10));
      case 10:
        return integer(hexadecimal());
      case 11:
        return whole(oddtext("0123456789.eE+-dD", 9));
      case 12:
        return text(bits());
      case 13:
        return text(std::ldexp(std::round(bits01() * 1e6) / 64, static_cast<int>(below(60)) - 30));
      case 14:
        return text(decimal());
      default:
        return written();
    }
  }

  // Numbers

  std::uint64_t below(std::uint64_t count) { return random_() % count; }
  double bits() { return std::bit_cast<double>(random_()); }
  double bits01() { return static_cast<double>(random_() >> 11) / 9007199254740992.0; }
  /// As people write them: few digits.
  double decimal() {
    return static_cast<double>(below(1000000)) * std::pow(10, static_cast<double>(below(40)) - 20) *
           (below(2) == 0 ? 1 : -1);
  }

  // Texts

  static std::string shortest(double value) {
    std::array<char, 64> buffer;
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
    return {buffer.data(), end};
  }
  template <class... Value>
  static std::string printed(const char* format, Value... values) {
    std::array<char, 1600> buffer;
    const int size = std::snprintf(buffer.data(), buffer.size(), format, values...);
    return {buffer.data(), std::min(static_cast<std::size_t>(size), buffer.size() - 1)};
  }
  std::string oddtext(const char* alphabet, std::size_t most) {
    std::string all(below(most + 1), ' ');
    const std::size_t letters = std::strlen(alphabet);
    for (char& c : all) c = alphabet[below(letters)];
    return all;
  }
  /// At the ends of the reals.
  std::string edge() {
    const bool large = below(2) == 0;
    return oddtext("0123456789", 20) + '.' + oddtext("0123456789", 20) + (large ? "e" : "E-") +
           std::to_string((large ? 285 : 300) + below(45));
  }
  std::string nearinteger() {
    const auto near = static_cast<double>(static_cast<std::int64_t>(random_()) >> below(63));
    const double to = below(2) == 0 ? HUGE_VAL : -HUGE_VAL;
    return below(2) == 0 ? shortest(std::nextafter(near, to))
                         : printed("%.*f", static_cast<int>(below(20)), std::nextafter(near, to));
  }
  /// All digits of the point between a real and the next, or a little beside it.
  std::string halfway() {
    const double low = std::fabs(below(4) == 0 ? std::bit_cast<double>(random_() >> 12) : bits());
    if (!std::isfinite(low) || low > 1e308) return "0";
    const long double middle =
        (static_cast<long double>(low) + static_cast<long double>(std::nextafter(low, HUGE_VAL))) /
        2;
    std::string all = printed("%.800Le", middle);
    const std::size_t last = all.find('e') - 1 - below(3) * 300;
    if (below(3) == 0) all[last] = static_cast<char>('0' + below(10));
    return all;
  }
  std::string hexadecimal() {
    static constexpr std::array<const char*, 4> marks = {"$", "0x", "0X", "$0x"};
    return (below(3) == 0 ? "-" : "") + std::string(marks[below(4)]) +
           printed("%llx", static_cast<unsigned long long>(random_() >> below(64)));
  }

  // Comparisons

  void real(const std::string& text) {
    counts_[toreal]++;
    int code = -1, wanted = -1;
    const double value = realby(text, wanted);
    if (!same(_Q9_Val_d(text, code), value) || code != wanted) differs("_Q9_Val_d", text);
    // Of the symbols and of D for E, the unit tests have the rows.
    double again = 0;
    if (text.find_first_of("dD") != text.npos) return;
    if (strasdoubleex(text, again) != (wanted == 0 && std::isfinite(value)) || !same(again, value))
      differs("strasdoubleex", text);
  }
  void integer(const std::string& text) {
    counts_[tointeger]++;
    int code = -1, wanted = -1;
    const std::int32_t value = integerby(text, wanted);
    std::int32_t again = 0;
    if (_Q9_Val_SPD(text, code) != value || code != wanted) differs("_Q9_Val_SPD", text);
    if (strasintex(text, again) != (wanted == 0) || again != value) differs("strasintex", text);
  }
  /// An integer that is written in either form.
  void whole(const std::string& text) {
    counts_[tointeger]++;
    int code = -1;
    std::int32_t got = 0, plain = integerby(text, code);
    if (code != 0) {
      std::string with = text;
      for (char& c : with)
        if (c == 'd' || c == 'D') c = 'E';
      const double value = realby(with, code);
      const bool is =
          code == 0 && value >= INT32_MIN && value <= INT32_MAX && value == std::trunc(value);
      code = is ? 0 : 1;
      plain = is ? static_cast<std::int32_t>(value) : 0;
    }
    if (strasintex2(text, got) != (code == 0) || got != plain) differs("strasintex2", text);
  }
  void alike(const char* what, std::string_view got, const std::string& wanted) {
    if (got != std::string_view(wanted).substr(0, 255)) differs(what, wanted);
  }
  void text(double value) {
    counts_[totext]++;
    const int width = static_cast<int>(below(60)) - 20, decimals = static_cast<int>(below(30));
    alike("_Q9_Str_d0", _Q9_Str_d0(value), printed("%23.14E", value));
    alike("_Q9_Str_d1", _Q9_Str_d1(value, width),
          printed("%*.*E", std::max(width, 10), std::clamp(width - 8, 2, 18), value));
    alike("_Q9_Str_d2", _Q9_Str_d2(value, width, decimals),
          printed(std::fabs(value) > 1e37 ? "%*.*E" : "%*.*f", width, decimals, value));
    const auto n = static_cast<std::int32_t>(random_() >> below(32));
    alike("_Q9_Str_i1", _Q9_Str_i1(n, width), printed("%*d", width, n));
    if (!std::isfinite(value)) return;
    // Without what is superfluous it is still the number of fifteen digits.
    const std::string tidy(dbltostr(value).view());
    if (std::strtod(tidy.c_str(), nullptr) != std::strtod(printed("%.14E", value).c_str(), nullptr))
      differs("dbltostr", tidy);
  }
  /// What the writers write.
  void written() {
    const double value = below(2) == 0 ? bits() : decimal();
    if (!std::isfinite(value)) return text(value);
    real(std::string(dbltostr(value).view()));
  }

  void differs(const char* what, const std::string& text) {
    stop_ = true;
    std::printf("%s differs for \"%s\"\n", what, text.c_str());
    std::fflush(stdout);
  }

  std::mt19937_64 random_;
  std::atomic<bool>& stop_;
  std::array<std::uint64_t, 3> counts_{};
};

int prove(std::uint64_t count, std::uint64_t seed) {
  std::atomic<bool> stop = false;
  const unsigned threads = std::max(std::thread::hardware_concurrency(), 1U);
  std::vector<prover> all;
  std::vector<std::thread> running;
  for (unsigned i = 0; i < threads; i++) all.emplace_back(seed + i, stop);
  for (prover& each : all)
    running.emplace_back([&each, share = count / threads + 1] { each.run(share); });
  for (std::thread& each : running) each.join();
  std::array<std::uint64_t, 3> total{};
  for (const prover& each : all)
    for (std::size_t i = 0; i < total.size(); i++) total[i] += each.counts()[i];
  std::printf("%llu to reals, %llu to integers, %llu from numbers\n",
              static_cast<unsigned long long>(total[0]), static_cast<unsigned long long>(total[1]),
              static_cast<unsigned long long>(total[2]));
  return stop ? 1 : 0;
}

}  // namespace
}  // namespace optxv

int main(int count, char** words) {
  if (count < 2) return 2;
  return optxv::prove(std::strtoull(words[1], nullptr, 10),
                      count > 2 ? std::strtoull(words[2], nullptr, 10) : 1);
}
