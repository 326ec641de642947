// Names of options and words of the languages: their characters, and when two are the same.
#pragma once

#include <string>
#include <string_view>

namespace command {

/// Equality and search without regard to the case of A to Z; no other letter has two cases.
char folded(char c);
std::string folded(std::string_view text);
bool samename(std::string_view left, std::string_view right);

/// The characters that make up names of options: A to Z in either case, 0 to 9, the underscore.
bool isletter(char c);
bool isdigit(char c);
bool isnamecharacter(char c);

/// Takes the blanks in front and the first word off a text, and gives the word; empty if there is
/// none. A word ends at a blank or a tab.
std::string_view nextword(std::string_view& text);

}  // namespace command
