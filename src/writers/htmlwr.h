// A streaming writer of HTML text.
#pragma once

#include <cstdint>
#include <string_view>

#include "foundation/runtime.h"
#include "foundation/visibility.h"
#include "writers/outfile.h"

namespace optxv {

/// Where the text of a heading or of a cell stands.
enum htmlalignment : std::uint8_t { alignLeft, alignRight, alignCenter };

/// Writes one HTML document into one file, an operation for each piece of markup.
///
/// An operation writes its bytes at once; nothing keeps track of what is open, so a well-formed
/// document is up to the caller. KEEP: the line feeds and blanks around the tags differ from one
/// operation to the next, and stay byte for byte: readers compare these files.
///
/// Texts are escaped: `&`, `<` and `>` become entities, and so do the bytes 160 to 255, taken as
/// ISO 8859-1. KEEP: byte 184 is `&cedille;`. A double quote is written as it is. Names of anchors
/// and files, and what passhtml takes, go out raw.
///
/// Every operation raises einouterror if a write failed. Since text is held back in blocks, a
/// failure may be reported later than it happened, at the latest by close.
class OPTXV_EXPORT thtmlwrite : public tobject {
 public:
  /// Creates or empties the file and writes the opening tags. An empty name is standard output,
  /// which stays open at the end. Raises einouterror, and then leaves nothing but the file.
  explicit thtmlwrite(std::string_view filename);
  /// Writes to a text in memory.
  explicit thtmlwrite(inmemory target);
  /// Ends the document as close does, if close was not called; a failure is lost.
  ~thtmlwrite() override;
  thtmlwrite(const thtmlwrite&) = delete;
  thtmlwrite& operator=(const thtmlwrite&) = delete;

  /// Writes the closing tags and closes the file. Raises einouterror if anything could not be
  /// written; the file is closed all the same. A second call does nothing, and any other operation
  /// raises from here on.
  void close();

  // Text
  void writehtmlstr(std::string_view text);
  /// The text and a blank.
  void addtext(std::string_view text);
  /// Markup of the caller's own, as it is, on a line.
  void passhtml(std::string_view text);
  void addbreak();

  // Paragraphs and headings
  void startpara();
  void endpara();
  void addpara(std::string_view text);
  /// A level below 1 is 1, one above 6 is 6.
  void addheading(std::int32_t level, htmlalignment align, std::string_view text);

  // Links
  /// KEEP: the tag stays open.
  void addanchor(std::string_view name);
  /// A link to a place in a file, or to the file if anchor is empty.
  void addhyperlink(std::string_view file, std::string_view anchor, std::string_view text);

  // Tables
  void starttable(bool border);
  void endtable();
  void startrow();
  void endrow();
  void startcell();
  void startcellaligned(htmlalignment align);
  void startcellcolor(std::uint8_t r, std::uint8_t g, std::uint8_t b);
  void endcell();
  void addcell(std::string_view text);

  // Lists
  void startbulletlist();
  void endbulletlist();
  void startnumberedlist();
  void endnumberedlist();
  void startlistitem();
  void endlistitem();
  void addlistitem(std::string_view text);

  // Colours, each part 0 to 255
  void fgcolor(std::uint8_t r, std::uint8_t g, std::uint8_t b);
  void bgcolor(std::uint8_t r, std::uint8_t g, std::uint8_t b);
  /// The tag as it is, then the colour as its value.
  void writecolor(std::string_view tag, std::uint8_t r, std::uint8_t g, std::uint8_t b);
  /// Two digits, A to F in capitals.
  void writehexbyte(std::uint8_t b);

 private:
  outfile file_;
};

}  // namespace optxv
