// The library's only reader of characters, tokens and lines. All definition files and all parameter
// text are read through it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

#include "foundation/boundedstring.h"
#include "foundation/lists.h"
#include "foundation/runtime.h"
#include "foundation/textfile.h"
#include "language/listener.h"
#include "language/places.h"

namespace optxv {

/// The bytes that may not begin an end-of-line comment: 0 to 32, quotes, +, -, the point, digits
/// and letters. The reader itself does not check this; the code that fills eolcommset does.
extern const charset invalideolcommchar;

/// What a read takes its lines from: the file of that name, or bytes in memory under that name.
/// BORROWS: both, for the read.
struct linesource {
  std::string_view name;
  std::optional<std::string_view> bytes = std::nullopt;
  bool nodevices = false;  ///< as textfile::reset
};

/// A key as tminiparser::nextkey reads it.
struct parsedkey {
  std::string_view text;    ///< good until the next line: it stands in the line, or in own
  textplace place;          ///< without the dashes
  std::int32_t dashes = 0;  ///< before the text
  shortstring own;          ///< a text that is not as it was written
};

/// Reads one source, line by line, with one character of look-ahead.
///
/// A reader is created, given exactly one source (fileopen, textopen, readfromstr, readfrompchar or
/// readfrombytes), and driven with nextline. Each grammar asks for the kind of thing that it
/// expects next; the result of each function says whether that was there. Nothing is raised and no
/// message is made.
///
/// ch() is the look-ahead. It is endofline (10) for one step after the last character of a line,
/// and endofinput (26) where nothing more can be read. It is endofinput before the first nextline,
/// and that mark stays until the next nextline. A blank is a space or a tab.
/// KEEP: a byte 26 in the text is taken for the mark of that value, and a byte 10 inside a string
/// ends the line for every function, though one more nextch steps past it.
///
/// Lines of a file: at most 1020 bytes; the rest is dropped, and only a listener hears of it. Empty
/// lines and lines that begin with * are skipped. A string is one line, in which * has no special
/// meaning; a text given by a character pointer has no limit of length.
///
/// Functions that fill a text with more than 255 bytes keep the first 254 of them and the last one
/// read: every further byte overwrites position 255.
///
/// No memory is allocated per line, except for what the echo list stores.
class tminiparser : public tobject {
 public:
  static constexpr char endofline = 10;
  static constexpr char endofinput = 26;

  /// BORROWS: echolist, which gets a copy of each line while the echo is on; it may be nil if the
  /// echo is never on. eolcommset, the characters that begin an end-of-line comment, is copied.
  tminiparser(txcustomstringlist* echolist, bool echoon, const charset& eolcommset);
  tminiparser(const tminiparser&) = delete;
  tminiparser& operator=(const tminiparser&) = delete;
  /// Closes the file, if there is one.
  ~tminiparser() override = default;

  /// Opens a file; an empty name is the standard input. Gives 0, or the system's error number: then
  /// nothing can be read.
  int fileopen(std::string_view name, bool nodevices = false);
  /// Reads bytes in memory, any number of them, as the lines of a file. BORROWS: the bytes, which
  /// must outlive the reading.
  void textopen(std::string_view bytes);
  /// Opens the bytes if there are any, or else the file. The result is that of fileopen.
  int open(const linesource& from);
  /// The system's error number of the read that failed and so ended the lines; 0 if none did.
  int failure() const { return srcfile_.failure(); }
  /// Reads a copy of the first 255 bytes of text.
  void readfromstr(std::string_view text);
  /// Reads a zero-terminated text, nil as an empty one. BORROWS: text, which must outlive the
  /// reading.
  void readfrompchar(const char* text);
  /// Reads bytes as one line; a zero byte is a byte like any other. BORROWS: the bytes, likewise.
  void readfrombytes(std::string_view bytes);
  /// Turns the echo on or off from the next line fetched.
  void echoset(bool on) { echoon_ = on; }
  /// Sets the listener to which lines, comments, separators and cuts are reported (nil for none),
  /// and the list that gets the places of echoed lines, with `number` as their source. To be called
  /// before the first line is read. BORROWS: both.
  void reportto(const listener* told, placelist* echoplaces, std::uint16_t number) {
    told_ = told;
    echoplaces_ = echoplaces;
    sourcenumber_ = number;
  }

  char ch() const { return ch_; }
  /// Physical lines read from the file so far; 0 for strings.
  std::int64_t linenr() const { return linenr_; }
  const charset& eolcommset() const { return eolcommset_; }
  /// ch() is endofline or endofinput.
  bool atmark() const { return ch_ == endofline || ch_ == endofinput; }

  // --- Places

  /// What is left of the line, from ch() to the last byte; on the mark at the end of the line, an
  /// empty place after that byte.
  textplace restplace() const {
    const std::int64_t position = chposition();
    return {placeline(), held(position), held(std::max<std::int64_t>(linelen_ - position + 1, 0))};
  }
  /// The place of a piece of the line that is being read. REQUIRES: it is not too long for a place.
  textplace placeof(std::string_view piece) const {
    return {placeline(), held(piece.data() - text_ + 1), static_cast<std::int32_t>(piece.size())};
  }
  /// What was read since `from` was the rest: up to ch(), or all of it if ch() is on another line.
  textplace since(const textplace& from) const {
    const bool left = placeline() != from.line || linelen_ < 0;
    return {from.line, from.column, left ? from.length : held(chposition()) - from.column};
  }

  /// Moves to the next line; false if there is none. A string has one line, so the second call
  /// gives false.
  bool nextline();
  /// Moves one character on; from the end-of-line mark of a file, to the next line.
  void nextch() {
    if (linepos_ < linelen_ && ch_ != endofinput)
      ch_ = text_[linepos_++];
    else
      leaveline();
  }
  /// Skips the rest of the line.
  /// KEEP: ch() stays as it is; the next nextch gives the end-of-line mark.
  void skiptoeol() {
    if (linepos_ < linelen_) skippedat_ = linepos_;
    linepos_ = linelen_;
  }

  /// Skips blanks, and a comment if one begins after them. True if something else follows on the
  /// line.
  bool skipbl() {
    while (ch_ == ' ' || ch_ == '\t') nextch();
    if (eolcommset_.has(ch_)) skipcomment();
    return !atmark();
  }
  /// Skips blanks, an optional = or :=, and blanks again. The result is that of the last skipbl;
  /// also false for a : without =, which is then skipped too.
  bool skipbecomes();
  /// Skips blanks, and then `wanted` if it comes next. True if it did.
  bool skiptochar(char wanted);
  /// The same for any member of a set. `found` becomes the character after the blanks, whether it
  /// is in the set or not.
  bool skiptochars(const charset& wanted, char& found);

  /// A token: up to a comma, a blank or the end of the line; or a text between double quotes. The
  /// closing quote is one that a comma or a blank follows and up to which, after the opening quote,
  /// there is an odd number of quotes; or one that is the last character of the line. Inner quotes
  /// stay. False with an empty text if there is nothing; false with the text if the closing quote
  /// is missing.
  /// KEEP: on a comma the token is empty, the result is true, and the comma is not passed.
  bool nexttoken(shortstring& text);
  /// The token at ch(), where it stands in the line; empty if nexttoken would give none, an empty
  /// one, one that was between quotes or one that was cut. Nothing is passed: see pass.
  /// BORROWS: good until the next line.
  std::string_view plaintoken() const;
  /// The same for a token of one to nine digits, whose number `value` becomes; for any other token
  /// it is empty, and value stays.
  std::string_view plaindigits(std::int32_t& value) const;
  /// A letter, then letters, digits and _. No blanks are skipped. False, with an empty text and
  /// nothing passed, if there is no letter.
  bool nextident(shortstring& text);
  /// The same without the _.
  bool nextidentx(shortstring& text);
  /// Passes any - and /, counts them, and then reads an identifier as nextident does; false if
  /// there is none.
  bool nextkey(parsedkey& key);
  /// An index of an index list: an identifier, *, or a text between two ' or two ", which keeps its
  /// quotes and loses trailing blanks. False with an empty text for anything else, which is not
  /// passed.
  /// KEEP: a missing closing quote is no error; the reader of a file is then on the next line.
  bool nextindex(shortstring& text);
  /// The identifier or the index at ch(), where it stands in the line: what nextident or nextindex
  /// would give for it. Empty if there is none, or one that is not given as it was written. Nothing
  /// is passed: see pass. BORROWS: good until the next line.
  std::string_view plainident() const;
  std::string_view plainindex() const;
  /// A token that is an integer (strasintex). A bad token is passed too.
  bool nextinteger(std::int32_t& value);
  /// A token that is a real (strasdoubleex). A bad token is passed too.
  bool nextdouble(double& value);
  /// What is left of the line after blanks, without its trailing blanks; empty if a comment begins
  /// there. Leaves the reader on the end-of-line mark.
  void restofline(shortstring& text);

  /// Appends ch() to text and moves on. REQUIRES: !atmark().
  void take(shortstring& text);
  /// Passes everything up to a mark or the first member of stop.
  void skipuntil(const charset& stop);
  /// What is left of the line, from ch() up to a mark; nothing is passed.
  /// BORROWS: good until the next line. REQUIRES: ch() is in the line (no skiptoeol before).
  std::string_view ahead() const;
  /// Passes count characters of what ahead() gave; passing all of them leads to the mark.
  void pass(std::size_t count) {
    if (count == 0) return;
    linepos_ += static_cast<std::int64_t>(count) - 1;
    nextch();
  }

  /// Passes all of what ahead() gave: a value, which ends at `end`, and after it a comment, which
  /// ends at `size`. The comment is reported.
  void passvalue(std::size_t end, std::size_t size) {
    if (told_ != nullptr && end < size)
      told_->tellplace(&optxv_listener::comment, restplace().after(end));
    pass(size);
  }

 private:
  static constexpr int slicelength = 255;
  static constexpr int slicecount = 4;

  enum class source : unsigned char { file, string, pchar };

  /// The position of ch() in its line, from 1; at the end of a file, that after its last line.
  std::int64_t chposition() const {
    return skippedat_ != 0 && (linepos_ == linelen_ || linelen_ < 0) ? skippedat_ : linepos_;
  }
  /// ch() is a character of the line, at its position.
  bool onbyte() const {
    return linepos_ >= 1 && linepos_ <= linelen_ && text_[linepos_ - 1] == ch_;
  }
  std::int64_t placeline() const { return source_ == source::file ? linenr_ : 1; }
  static std::int32_t held(std::int64_t number) {
    constexpr std::int64_t largest = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::min(number, largest));
  }

  void skipcomment();
  void tellseparator(std::int32_t length) const;
  void tellline(std::int64_t lost) const;
  void tellrest() const;
  void leaveline();
  int startlines(int error);
  void startstring(const char* text, std::int64_t length, source kind);
  void filllinebuf();
  void readphysical();
  void readslices();
  void flushecho();
  template <class Stop, class Use>
  void scan(Stop stop, Use use);
  template <class Stop>
  void collect(Stop stop, shortstring& text);
  void quotedtoken(shortstring& text);
  void quotedindex(shortstring& text);

  // The line is text_[0] to text_[linelen_ - 1]. linepos_ is the position of ch_, from 1, so that
  // text_ + linepos_ is the next character: -1 for a string not yet started, linelen_ + 1 on the
  // end-of-line mark. linelen_ is -1 at the end of a file. After skiptoeol linepos_ is linelen_,
  // and the position of ch_ is skippedat_, which is 0 if no characters were skipped in this way.
  // At the end of a file it is the position after the last line.
  const char* text_ = linebuf_;
  std::int64_t linepos_ = 0;
  std::int64_t linelen_ = 0;
  std::int64_t linenr_ = 0;
  std::int64_t skippedat_ = 0;
  char ch_ = endofinput;
  source source_ = source::file;
  bool echoon_;
  txcustomstringlist* echolist_;
  charset eolcommset_;
  const listener* told_ = nullptr;
  placelist* echoplaces_ = nullptr;
  std::uint16_t sourcenumber_ = 0;
  textfile srcfile_;
  // The four slices of a file line that is not read where it lies, one after another. A slice that
  // is not full ends the line.
  char linebuf_[slicecount * slicelength];
};

}  // namespace optxv
