// Values, texts and comments as they stand in the source of a program.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace command {

/// A real in the fewest digits that give it back, with a point or an exponent: 3600.0, 1e-06.
std::string plainreal(double number);

/// Integers, of which the least is an expression where a literal would overflow before its sign.
std::string plaininteger(std::int32_t number);
std::string cinteger(std::int32_t number);

/// Texts as literals of a language, whatever their bytes. In Python, of bytes; the string has each
/// byte as the character of that number where it is no UTF-8.
std::string ctext(std::string_view text);
std::string pythonbytes(std::string_view text);
std::string pythontext(std::string_view text);
std::string fortrantext(std::string_view text);
std::string pascaltext(std::string_view text);

/// Fortran has reals and integers of the kinds of C.
std::string fortranreal(double number);
std::string fortraninteger(std::int32_t number);

/// The bytes of a text as numbers with commas, in lines.
std::string bytenumbers(std::string_view text);

/// How a language has comments.
struct commentform {
  std::string_view first;  ///< what begins the first line
  std::string_view next;   ///< and each further one
  std::string_view last;   ///< what ends the last line
  std::string_view pairs;  ///< pairs of characters that may not stand in a comment
};

/// Paragraphs as a comment of lines that are not too long, printable; empty if they are.
std::string commentof(std::string_view paragraphs, const commentform& form);

}  // namespace command
