// Mutations that know what the languages are made of: lines, fields in them, the words that mean
// something, and numbers at the edges. A target names its language and how many bytes of choices
// stand before the text, and so gets the two functions that libFuzzer asks for.
#pragma once

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <cstring>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

namespace optxv::fuzz {

using vocabulary = std::span<const std::string_view>;

/// Parameter text, with the names of richdefinition.h.
inline constexpr auto parameterwords = std::to_array<std::string_view>({"step_limit",
                                                                        "steps",
                                                                        "span",
                                                                        "tolerance",
                                                                        "range",
                                                                        "logname",
                                                                        "pair",
                                                                        "flag",
                                                                        "verbose",
                                                                        "method",
                                                                        "level",
                                                                        "paths",
                                                                        "both",
                                                                        "fast",
                                                                        "no_bounds",
                                                                        "whole",
                                                                        "say",
                                                                        "stplim",
                                                                        "old",
                                                                        "gone",
                                                                        "dead",
                                                                        "indic",
                                                                        "Help",
                                                                        "x.scale",
                                                                        "x.prior",
                                                                        "y.on",
                                                                        "z.kind",
                                                                        ".scale",
                                                                        ".kind",
                                                                        "--",
                                                                        "=",
                                                                        ":=",
                                                                        ":",
                                                                        ",",
                                                                        "$",
                                                                        "(",
                                                                        ")",
                                                                        "*",
                                                                        "'a'",
                                                                        "\"two words\"",
                                                                        "auto",
                                                                        "primal_simplex",
                                                                        "yes",
                                                                        "off",
                                                                        "maxint",
                                                                        "mindouble",
                                                                        "minint",
                                                                        "maxdouble",
                                                                        "eq('i',j)$v(j)",
                                                                        "('a',*)",
                                                                        "* comment",
                                                                        "! comment",
                                                                        "# comment",
                                                                        "steplimit",
                                                                        "step-limit",
                                                                        "time_limit",
                                                                        "begin",
                                                                        "options",
                                                                        "list",
                                                                        "-7",
                                                                        "\t",
                                                                        "\x1a",
                                                                        "\xc3\xa4",
                                                                        "\xef\xbb\xbf"});

/// Definitions.
inline constexpr auto definitionwords =
    std::to_array<std::string_view>({"integer",
                                     "double",
                                     "string",
                                     "boolean",
                                     "enumstr",
                                     "enumint",
                                     "multilist",
                                     "strlist",
                                     "macro",
                                     "immediate",
                                     "synonym",
                                     "group",
                                     "deprecated",
                                     "obsolete",
                                     "indicator",
                                     "lookup",
                                     "eolcomm",
                                     "mark",
                                     "EolFlag",
                                     "NoBounds",
                                     "Message",
                                     "Help",
                                     "Minos",
                                     "Path",
                                     "Normal",
                                     ".NV",
                                     ".OPT",
                                     ".TWO",
                                     "integer.TWO",
                                     "double.OPT",
                                     "boolean.NV",
                                     "string.TWO",
                                     "maxint",
                                     "minint",
                                     "maxdouble",
                                     "mindouble",
                                     "1 0 0 9 1 1 Text",
                                     "1 1 Text",
                                     "\" two words \"",
                                     "a",
                                     "b",
                                     ".scale",
                                     " a 1 Item",
                                     " 0 1 Zero",
                                     " a",
                                     "g group 1 1 G",
                                     "a integer 1 5 0 9 1 1 A",
                                     "b enumstr 1 x 1 1 B\n x 1 X\n y 1 Y",
                                     "c multilist 1 1 1 C\n a\n b",
                                     "* comment",
                                     ",",
                                     "-",
                                     "\t",
                                     "\x1a",
                                     "\xc3\xa4"});

inline constexpr auto edgenumbers =
    std::to_array<std::string_view>({"0",           "1",
                                     "-1",          "+5",
                                     "2147483647",  "2147483648",
                                     "-2147483648", "-2147483649",
                                     "1e-320",      "1e308",
                                     "1.8e308",     "-1e-400",
                                     "0x7f",        "$ff",
                                     "1e",          ".5",
                                     "5.",          "1.5d3",
                                     "1e5",         "0.1",
                                     "1e37",        "99999999999999999999",
                                     "255",         "256",
                                     "1020",        "1021",
                                     "4.94e-324",   "inf",
                                     "nan"});

/// A text that is taken apart, changed, and put together.
class mutant {
 public:
  mutant(std::string_view text, vocabulary words, unsigned seed) : words_(words), random_(seed) {
    for (std::size_t at = 0; at <= text.size();) {
      const std::size_t end = std::min(text.find('\n', at), text.size());
      lines_.emplace_back(text.substr(at, end - at));
      at = end + 1;
    }
  }

  void change() {
    std::string& line = lines_[number(lines_.size())];
    switch (number(14)) {
      case 0:
        return copyline();
      case 1:
        return dropline();
      case 2:
        return std::swap(line, lines_[number(lines_.size())]);
      case 3:
        return joinlines();
      case 4:
        return exchange(line, [this](auto& fields) { someof(fields) = word(); });
      case 5:
        return exchange(line, [this](auto& fields) { someof(fields) = edge(); });
      case 6:
        return exchange(line, [this](auto& fields) { someof(fields).clear(); });
      case 7:
        return exchange(line, [this](auto& fields) { std::swap(someof(fields), someof(fields)); });
      case 8:
        return exchange(line, [this](auto& fields) {
          fields.insert(fields.begin() + static_cast<std::ptrdiff_t>(number(fields.size() + 1)),
                        word() + ' ');
        });
      case 9:
        return exchange(line, [this](auto& fields) { someof(fields) = elsewhere(); });
      case 10:
        return exchange(line, [this](auto& fields) { quote(someof(fields)); });
      case 11:
        return exchange(line, [this](auto& fields) { recase(someof(fields)); });
      case 12:
        return exchange(line, [this](auto& fields) { repeat(someof(fields)); });
      default:
        return splitline();
    }
  }
  /// Puts lines of another text among these.
  void splice(std::string_view text) {
    const mutant other(text, words_, random_());
    const std::size_t from = number(other.lines_.size());
    const std::size_t count = 1 + number(other.lines_.size() - from);
    const auto first = other.lines_.begin() + static_cast<std::ptrdiff_t>(from);
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(number(lines_.size() + 1)), first,
                  first + static_cast<std::ptrdiff_t>(count));
  }

  std::size_t number(std::size_t count) { return random_() % std::max<std::size_t>(count, 1); }

  std::string text() const {
    std::string all;
    for (const std::string& line : lines_) all += (&line == &lines_.front() ? "" : "\n") + line;
    return all;
  }

 private:
  using pieces = std::vector<std::string>;

  static bool isword(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '.' || c == '-';
  }
  /// Words, and what is between them.
  static pieces piecesof(const std::string& line) {
    pieces all;
    for (std::size_t i = 0; i < line.size(); i++) {
      if (i == 0 || isword(line[i]) != isword(line[i - 1])) all.emplace_back();
      all.back() += line[i];
    }
    if (all.empty()) all.emplace_back();
    return all;
  }
  template <class Change>
  void exchange(std::string& line, Change change) {
    pieces fields = piecesof(line);
    change(fields);
    line.clear();
    for (const std::string& each : fields) line += each;
  }
  std::string& someof(pieces& fields) { return fields[number(fields.size())]; }

  std::string word() { return std::string(words_[number(words_.size())]); }
  std::string edge() { return std::string(edgenumbers[number(edgenumbers.size())]); }
  std::string elsewhere() {
    pieces fields = piecesof(lines_[number(lines_.size())]);
    return someof(fields);
  }
  void quote(std::string& field) {
    const char mark = number(2) == 0 ? '"' : '\'';
    field = mark + field + (number(4) == 0 ? std::string() : std::string(1, mark));
  }
  void recase(std::string& field) {
    for (char& c : field)
      if (std::isalpha(static_cast<unsigned char>(c)) != 0 && number(2) == 0)
        c = static_cast<char>(c ^ 0x20);
  }
  void repeat(std::string& field) {
    const std::string once = field;
    for (std::size_t count = number(40); count > 0 && field.size() < 1100; count--) field += once;
  }

  void copyline() {
    const std::string line = lines_[number(lines_.size())];
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(number(lines_.size() + 1)), line);
  }
  void dropline() {
    if (lines_.size() > 1)
      lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(number(lines_.size())));
  }
  void joinlines() {
    const std::size_t at = number(lines_.size());
    if (at + 1 >= lines_.size()) return;
    lines_[at] += ' ' + lines_[at + 1];
    lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(at) + 1);
  }
  void splitline() {
    const std::size_t at = number(lines_.size());
    const std::size_t cut = number(lines_[at].size() + 1);
    const std::string rest = lines_[at].substr(cut);
    lines_[at].resize(cut);
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(at) + 1, rest);
  }

  vocabulary words_;
  std::minstd_rand random_;
  std::vector<std::string> lines_;
};

/// Puts a text after the bytes of choices; gives the size of all.
inline std::size_t placed(const std::string& text, std::uint8_t* data, std::size_t head,
                          std::size_t most) {
  const std::size_t size = std::min(text.size(), most - head);
  std::memcpy(data + head, text.data(), size);
  return head + size;
}

/// LLVMFuzzerCustomMutator: two in three times changes of the text; else of the bytes, those of the
/// choices among them.
inline std::size_t mutated(vocabulary words, std::size_t head, std::uint8_t* data, std::size_t size,
                           std::size_t most, unsigned seed) {
  if (size < head || most <= head || seed % 3 == 0) return LLVMFuzzerMutate(data, size, most);
  mutant text({reinterpret_cast<const char*>(data) + head, size - head}, words, seed / 3);
  for (std::size_t count = 1 + text.number(4); count > 0; count--) text.change();
  return placed(text.text(), data, head, most);
}

/// LLVMFuzzerCustomCrossOver: lines of the second input among those of the first.
inline std::size_t crossed(vocabulary words, std::size_t head, std::span<const std::uint8_t> one,
                           std::span<const std::uint8_t> two, std::span<std::uint8_t> out,
                           unsigned seed) {
  if (one.size() < head || two.size() < head || out.size() <= head) return 0;
  const auto textof = [&](std::span<const std::uint8_t> of) {
    return std::string_view(reinterpret_cast<const char*>(of.data()) + head, of.size() - head);
  };
  mutant text(textof(one), words, seed);
  text.splice(textof(two));
  std::memcpy(out.data(), one.data(), head);
  return placed(text.text(), out.data(), head, out.size());
}

}  // namespace optxv::fuzz

/// Gives a target both functions. `words` may depend on `data`, the bytes of choices.
#define OPTXV_FUZZ_GRAMMAR(head, words)                                                          \
  extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,           \
                                                 std::size_t most, unsigned seed) {              \
    return optxv::fuzz::mutated(words, head, data, size, most, seed);                            \
  }                                                                                              \
  extern "C" std::size_t LLVMFuzzerCustomCrossOver(                                              \
      const std::uint8_t* data, std::size_t size, const std::uint8_t* other, std::size_t length, \
      std::uint8_t* out, std::size_t most, unsigned seed) {                                      \
    return optxv::fuzz::crossed(words, head, {data, size}, {other, length}, {out, most}, seed);  \
  }
