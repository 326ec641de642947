#include "code/literals.h"

#include <array>
#include <charconv>
#include <limits>

#include "text/names.h"
#include "text/printable.h"

namespace command {
namespace {

constexpr std::size_t commentwidth = 92;

bool isplain(char c) {
  return c >= ' ' && c <= '~';
}

std::string octal(char c) {
  const auto byte = static_cast<unsigned char>(c);
  const auto digit = [&](int shift) { return static_cast<char>('0' + ((byte >> shift) & 7)); };
  return {'\\', digit(6), digit(3), digit(0)};
}

std::string hexadecimal(char c) {
  constexpr std::string_view digits = "0123456789abcdef";
  const auto byte = static_cast<unsigned char>(c);
  return {'\\', 'x', digits[byte >> 4], digits[byte & 15]};
}

/// A text between quotes, in which the named characters have a backslash before them and bytes that
/// are not plain are escaped.
std::string escaped(std::string_view text, char quote, std::string_view marked,
                    std::string (*escape)(char)) {
  std::string result(1, quote);
  for (const char c : text) {
    if (!isplain(c)) {
      result += escape(c);
      continue;
    }
    if (marked.find(c) != std::string_view::npos) result += '\\';
    result += c;
  }
  return result + quote;
}

/// A text in pieces between single quotes, where a quote is doubled and a byte that is not plain
/// stands outside.
class quotedpieces {
 public:
  quotedpieces(std::string_view between, std::string_view before, std::string_view after)
      : between_(between), before_(before), after_(after) {}

  void plain(char c) {
    if (!open_) begin("'");
    open_ = true;
    text_ += c;
    if (c == '\'') text_ += c;
  }
  void byte(char c) {
    close();
    begin(before_);
    text_ += std::to_string(static_cast<unsigned char>(c));
    text_ += after_;
  }
  /// Goes on in another piece.
  void close() {
    if (open_) text_ += '\'';
    open_ = false;
  }
  std::string text() {
    close();
    return text_.empty() ? "''" : text_;
  }

 private:
  void begin(std::string_view with) {
    if (!text_.empty()) text_ += between_;
    text_ += with;
  }

  std::string_view between_, before_, after_;
  std::string text_;
  bool open_ = false;
};

/// The pieces of a text. A piece has at most `most` characters, for lines have an end.
std::string inpieces(std::string_view text, quotedpieces pieces, std::size_t most) {
  std::size_t count = 0;
  for (const char c : text) {
    if (count++ % most == most - 1) pieces.close();
    isplain(c) ? pieces.plain(c) : pieces.byte(c);
  }
  return pieces.text();
}

/// Puts a blank between two characters that would mean something to the language.
std::string harmless(std::string text, std::string_view pairs) {
  for (; pairs.size() >= 2; pairs.remove_prefix(2))
    for (std::size_t at = 0; (at = text.find(pairs.substr(0, 2), at)) != std::string::npos; at++)
      text.insert(at + 1, 1, ' ');
  return text;
}

/// Adds a paragraph to lines, in which the words are parted by one blank.
void wrap(std::string_view paragraph, std::string_view indent, std::string& lines) {
  std::size_t column = 0;
  for (std::string_view word = nextword(paragraph); !word.empty(); word = nextword(paragraph)) {
    const bool fits = column == 0 || column + 1 + word.size() <= commentwidth;
    if (!fits) (lines += '\n').append(indent), column = 0;
    if (column > 0) lines += ' ';
    lines += word;
    column += word.size() + 1;
  }
}

}  // namespace

std::string plainreal(double number) {
  std::array<char, 40> digits{};
  const char* end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  const std::string_view text(digits.data(), static_cast<std::size_t>(end - digits.data()));
  const bool isreal = text.find_first_of(".en") != std::string_view::npos;
  return std::string(text) + (isreal ? "" : ".0");
}

std::string plaininteger(std::int32_t number) {
  return std::to_string(number);
}

std::string cinteger(std::int32_t number) {
  return number == std::numeric_limits<std::int32_t>::min() ? "(-2147483647 - 1)"
                                                            : plaininteger(number);
}

std::string ctext(std::string_view text) {
  return escaped(text, '"', "\"\\?", octal);
}

std::string pythonbytes(std::string_view text) {
  return 'b' + escaped(text, '\'', "'\\", hexadecimal);
}

std::string pythontext(std::string_view text) {
  for (const char c : text)
    if (!isplain(c)) return pythonbytes(text) + ".decode('utf-8', 'surrogateescape')";
  return escaped(text, '\'', "'\\", hexadecimal);
}

std::string fortrantext(std::string_view text) {
  return inpieces(text, {" // &\n", "achar(", ")"}, 60);
}

std::string pascaltext(std::string_view text) {
  return inpieces(text, {"", "#", ""}, text.size() + 1);
}

std::string fortranreal(double number) {
  return plainreal(number) + "_c_double";
}

std::string fortraninteger(std::int32_t number) {
  return number == std::numeric_limits<std::int32_t>::min() ? "-2147483647_c_int32_t - 1_c_int32_t"
                                                            : plaininteger(number) + "_c_int32_t";
}

std::string bytenumbers(std::string_view text) {
  std::string lines;
  std::size_t count = 0;
  for (const char c : text) {
    lines += std::to_string(static_cast<unsigned char>(c));
    lines += ++count % 24 == 0 ? ",\n" : ", ";
  }
  return lines;
}

std::string commentof(std::string_view paragraphs, const commentform& form) {
  std::string lines;
  while (!paragraphs.empty()) {
    const std::size_t end = std::min(paragraphs.find('\n'), paragraphs.size());
    if (!lines.empty()) (lines += '\n').append(form.next);
    const std::string text = printableline(paragraphs.substr(0, end));
    wrap(harmless(text, form.pairs), form.next, lines);
    paragraphs.remove_prefix(std::min(end + 1, paragraphs.size()));
  }
  if (lines.empty()) return lines;
  return std::string(form.first) + lines + std::string(form.last);
}

}  // namespace command
