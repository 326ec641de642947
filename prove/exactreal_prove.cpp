// Both roads from text to a real, against each other and against strtod, on random texts. The
// arguments: how many texts, and where the random numbers begin. The last line has the figures.

#include <bit>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

#include "foundation/exactreal.h"
#include "foundation/numtext.h"

namespace {

std::mt19937_64 randomness;

std::size_t below(std::size_t limit) {
  return randomness() % limit;
}

std::string digits(std::size_t count) {
  std::string text;
  for (; count > 0; --count) text += static_cast<char>('0' + below(10));
  return text;
}

/// A number as people and programs write it, or with far more digits than anybody does.
std::string anynumber() {
  std::string text = digits(below(40) == 0 ? 1 + below(900) : 1 + below(22));
  text.insert(below(text.size() + 1), ".");
  if (below(8) == 0) text.insert(text.size() - 1, std::string(below(400), '0'));
  return text + 'e' + std::to_string(static_cast<int>(below(below(2) == 0 ? 44 : 720)) - 360);
}

/// A real in as many digits as keep it, or with one more or one less in the last place.
std::string anyreal(double real) {
  char text[64];
  std::snprintf(text, sizeof text, "%.*e", static_cast<int>(14 + below(5)), real);
  return text;
}

/// What lies half between a real and the next, or a little above or below that.
std::string anyhalf(std::uint64_t bits) {
  char text[1200];
  const long double half = (static_cast<long double>(std::bit_cast<double>(bits)) +
                            static_cast<long double>(std::bit_cast<double>(bits + 1))) /
                           2;
  std::snprintf(text, sizeof text, "%.*Le", static_cast<int>(below(2) == 0 ? 780 : 20), half);
  const std::string all = text;
  const std::size_t mark = all.find('e');
  return all.substr(0, mark) + (below(2) == 0 ? digits(below(30)) : "") + all.substr(mark);
}

std::string anytext() {
  constexpr std::uint64_t largest = 0x7FEFFFFFFFFFFFFE;
  const std::uint64_t bits = below(6) == 0 ? below(std::uint64_t{1} << 53) : below(largest);
  switch (below(4)) {
    case 0:
      return anyhalf(bits);
    case 1:
      return anyreal(std::bit_cast<double>(bits));
    default:
      return anynumber();
  }
}

bool agrees(const std::string& text) {
  const std::size_t mark = text.find('e');
  const double expected = std::strtod(text.c_str(), nullptr);
  const double exact =
      optxv::exactreal(std::string_view(text).substr(0, mark), std::atol(text.c_str() + mark + 1));
  int code = -1;
  const auto bits = std::bit_cast<std::uint64_t>(expected);
  return std::bit_cast<std::uint64_t>(exact) == bits &&
         std::bit_cast<std::uint64_t>(optxv::_Q9_Val_d(text, code)) == bits && code == 0;
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 3) return 2;
  randomness.seed(std::strtoull(arguments[2], nullptr, 10));
  long faults = 0;
  const long texts = std::atol(arguments[1]);
  for (long i = 0; i < texts; ++i) {
    const std::string text = anytext();
    if (agrees(text)) continue;
    if (++faults <= 10) std::printf("differs: %s\n", text.c_str());
  }
  std::printf("%ld texts as reals by two roads and by strtod, %ld faults\n", texts, faults);
  return faults == 0 ? 0 : 1;
}
