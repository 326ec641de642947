// A text laid out anew: columns aligned, blanks in order, and everything said as it was said
// before. These are plain functions, of a text in memory and without a file: a text that an editor
// holds can be laid out as well as one that was read.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace command {

/// How to lay a text out.
struct layoutsettings {
  bool tokens = false;    ///< parameter text begins in token mode
  bool nobounds = false;  ///< values out of bounds are no errors
  bool bygroup = false;   ///< entries of parameter text are sorted by the groups of the definition
  std::size_t width = 100;  ///< columns of a terminal that a line of long help may take
};

/// A text that was laid out.
struct laidout {
  std::string text;
  bool refused = false;  ///< it would have been read differently, and so is as it was: our fault
};

/// Lays parameter text out.
///
/// - Entries that follow one another without an empty line between them are a paragraph. In a
///   paragraph the separators, the values and the comments are aligned; what is very wide stays out
///   of that. One entry a line in end-of-line mode; a line of many entries in token mode stays one.
/// - All comments and empty lines are kept, and the order is, unless it is sorted.
/// - A line stays as it is, byte for byte, if it has an error, or if the library reads less of it
///   than is there: more than 1,020 bytes, a byte 26, a value that is cut. So does a line with a
///   carriage return or a zero byte within it, and an entry that goes on in the next line.
/// - The ends of lines stay what they are, also that of the last line.
///
/// What is read is the same before and after, entry by entry and message by message; and a text
/// that was laid out is not changed again. The definition may be faulty. No file is opened: an
/// entry that has another file read is laid out and not followed.
laidout layoutparameters(std::string_view definition, std::string_view text,
                         const layoutsettings& settings);

/// Lays a definition out.
///
/// - The fields of records that follow one another without an empty line are aligned by what they
///   are, and so are those of the lines that continue a record, which are indented by one blank.
/// - Long help that is wider than settings.width is wrapped, if it is prose: not if it is indented
///   further, is an item of a list, or has two blanks in a row. Nothing else changes what a program
///   reads.
/// - Lines with an error, lines that are not read whole and lines after the end of the definition
///   stay, as above.
laidout layoutdefinition(std::string_view text, const layoutsettings& settings);

}  // namespace command
