// Bytes of unknown origin as text for a person: what may be printed, and how wide it is.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace command {

/// The text with every byte that could act on a terminal, or that is no character, written as \xNN:
/// control bytes, bytes that are not UTF-8, and the characters of Unicode that control lines or the
/// direction of writing. Everything else stays, and so does a backslash. The result has no line
/// feed.
std::string printable(std::string_view text);

/// As printable, but tabs and all bytes above 126 stay as they are, save 127.
std::string withoutcontrols(std::string_view text);

/// The columns that a printable text takes: one a character.
std::size_t columns(std::string_view text);

/// Printable text between double quotes.
std::string inquotes(std::string_view text);

/// A value as a parameter file would hold it: in double quotes if it is empty or has a blank, a tab
/// or a comma in it. Printable.
std::string externalform(std::string_view value);

/// "1 error", "2 errors".
std::string counted(std::size_t count, std::string_view noun);

/// The number in decimal with a comma between thousands.
std::string grouped(std::size_t number);

/// Equality and search without regard to the case of A to Z; no other letter has two cases.
char folded(char c);
std::string folded(std::string_view text);
bool samename(std::string_view left, std::string_view right);

/// The characters that make up names of options.
bool isletter(char c);
bool isdigit(char c);
bool isnamecharacter(char c);

}  // namespace command
