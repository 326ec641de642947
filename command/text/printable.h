// Bytes of unknown origin as text for people: what may be printed, and how wide it is. Whatever a
// file, a name or an argument contains goes to a terminal only through here.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace command {

/// The text with every byte that could act on a terminal, is invisible or is not a character
/// written as \xNN: control characters, also the tab and the line feed, bytes that are not UTF-8,
/// and characters that isshown (characters.h) refuses. Everything else stays, even a backslash.
std::string printable(std::string_view text);

/// As printable, but each tab becomes a blank: for lines that were written to be read, such as
/// those of a help text or of a source.
std::string printableline(std::string_view line);

/// A text of many lines: each as printableline, and its line feed as it is.
std::string printablelines(std::string_view text);

/// JSON with all characters in it that could act on a terminal or hide from the eye as \uNNNN,
/// which says the same. REQUIRES: good UTF-8.
std::string printablejson(std::string_view json);

/// The columns of a terminal that a printable text takes. Wide characters of East Asia count two,
/// combining ones none.
std::size_t columns(std::string_view text);

/// Printable text between double quotes.
std::string inquotes(std::string_view text);

/// A value as it would be in a parameter file: in double quotes if it is empty or has a blank, a
/// tab or a comma in it. Printable.
std::string externalform(std::string_view value);

/// "1 error", "2 errors".
std::string counted(std::size_t count, std::string_view noun);

/// The number in decimal with a comma between thousands.
std::string grouped(std::size_t number);

}  // namespace command
