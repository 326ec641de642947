// The one character, token and line reader of the library. Definition files and parameter text are
// read through it and through nothing else.
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
/// and letters. The reader itself never asks; who fills eolcommset does.
extern const charset invalideolcommchar;

/// What a read of lines reads: the file of a name, or bytes in memory that go under the name.
/// BORROWS: both, for the read.
struct linesource {
  std::string_view name;
  std::optional<std::string_view> bytes = std::nullopt;
  bool nodevices = false;  ///< as textfile::reset
};

/// Reads one source, line by line, with one character of look-ahead.
///
/// A reader is created, given exactly one source (fileopen, textopen, readfromstr or
/// readfrompchar), and driven with nextline. Each grammar asks for the kind of thing it expects
/// next; a reader says by its result whether that was there. Nothing is raised and no message is
/// made.
///
/// ch() is the look-ahead. It is endofline (10) for one step behind the last character of a line,
/// and endofinput (26) where nothing more can be read; it is endofinput before the first nextline,
/// and the mark sticks until the next nextline. A blank is a space or a tab.
/// KEEP: a byte 26 in the text is taken for the mark of that value, and a byte 10 inside a string
/// ends the line for every reader, though a further nextch steps past it.
///
/// File lines: at most 1020 bytes, the rest is lost in silence. Empty lines and lines that begin
/// with * are passed over. A string is one line, in which * means nothing, and there is no limit of
/// length under a character pointer.
///
/// Readers that fill a text keep its first 254 bytes and the last one read if there are more than
/// 255: position 255 is overwritten by every further byte.
///
/// Nothing is allocated per line but what the echo list stores.
class tminiparser : public tobject {
 public:
  static constexpr char endofline = 10;
  static constexpr char endofinput = 26;

  /// BORROWS: echolist, which gets a copy of each line while the echo is on; it may be nil if the
  /// echo is never on. eolcommset is copied: the characters that begin an end-of-line comment.
  tminiparser(txcustomstringlist* echolist, bool echoon, const charset& eolcommset);
  tminiparser(const tminiparser&) = delete;
  tminiparser& operator=(const tminiparser&) = delete;
  /// Closes the file, if there is one.
  ~tminiparser() override = default;

  /// Opens a file; an empty name is the standard input. 0, or the system's error number: then
  /// nothing can be read.
  int fileopen(std::string_view name, bool nodevices = false);
  /// Reads bytes in memory, any number of them, as the lines of a file. BORROWS: the bytes, which
  /// must outlive the reading.
  void textopen(std::string_view bytes);
  /// Opens what there is: the bytes, or else the file. The result is that of fileopen.
  int open(const linesource& from);
  /// The system's number of the read that failed, which ended the lines; 0 if none did.
  int failure() const { return srcfile_.failure(); }
  /// Reads a copy of the first 255 bytes of text.
  void readfromstr(std::string_view text);
  /// Reads a zero-terminated text, nil as an empty one. BORROWS: text, which must outlive the
  /// reading.
  void readfrompchar(const char* text);
  /// Turns the echo on or off from the next line fetched.
  void echoset(bool on) { echoon_ = on; }
  /// Whom the reader tells of lines, comments, separators and cuts, nil for nobody, and the list
  /// that gets the places of echoed lines, by the number of the source. Set before the first line.
  /// BORROWS: both.
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

  /// What is left of the line, from ch() to the last byte; empty, after that byte, on a mark there.
  textplace restplace() const {
    const std::int64_t position = chposition();
    return {placeline(), held(position), held(linelen_ - position + 1)};
  }
  /// What was read since `from` was the rest: up to ch(), or all of it if ch() is on another line.
  textplace since(const textplace& from) const {
    const bool left = placeline() != from.line || linelen_ < 0;
    return {from.line, from.column, left ? from.length : held(chposition()) - from.column};
  }

  /// Moves to the next line; false if there is none. A string has one line: the second call ends
  /// it.
  bool nextline();
  /// Moves one character on. On the end-of-line mark it crosses to the next line of a file.
  void nextch() {
    if (linepos_ < linelen_ && ch_ != endofinput)
      ch_ = text_[linepos_++];
    else
      leaveline();
  }
  /// Gives up the rest of the line.
  /// KEEP: ch() stays as it is; the nextch behind it gives the end-of-line mark.
  void skiptoeol() {
    if (linepos_ < linelen_) skippedat_ = linepos_;
    linepos_ = linelen_;
  }

  /// Passes blanks, and a comment if one begins behind them. True if something else follows on the
  /// line.
  bool skipbl() {
    while (ch_ == ' ' || ch_ == '\t') nextch();
    if (eolcommset_.has(ch_)) skipcomment();
    return !atmark();
  }
  /// Passes blanks, an optional = or :=, and blanks again. The result is that of the last skipbl;
  /// false as well for a : without =, which is then gone.
  bool skipbecomes();
  /// Passes blanks, then wanted if it is there.
  bool skiptochar(char wanted);
  /// The same for any member of a set. found becomes the character that stood there, in the set or
  /// not.
  bool skiptochars(const charset& wanted, char& found);

  /// A token: up to a comma, a blank or the end of the line; or one between double quotes, where a
  /// quote closes that is followed by a comma or a blank while an odd number of quotes was seen
  /// since the opening one, or that is the last character of the line. Inner quotes stay. False
  /// with an empty text if there is nothing; false with the text if the closing quote is missing.
  /// KEEP: on a comma the token is empty, good, and the comma is not passed.
  bool nexttoken(shortstring& text);
  /// A letter, then letters, digits and _. No blanks are skipped. False, with an empty text and
  /// nothing passed, if there is no letter.
  bool nextident(shortstring& text);
  /// The same without the _.
  bool nextidentx(shortstring& text);
  /// Passes any - and /, which dashes counts, then an identifier as nextident.
  bool nextkey(shortstring& text, std::int32_t& dashes);
  /// An index of an index list: an identifier, *, or a text between ' or ", which keeps its quotes
  /// and loses trailing blanks. False with an empty text for anything else, which is not passed.
  /// KEEP: a missing closing quote is no error; the reader of a file then stands on the next line.
  bool nextindex(shortstring& text);
  /// A token that is an integer (strasintex). On a bad one the token is gone.
  bool nextinteger(std::int32_t& value);
  /// A token that is a real (strasdoubleex). On a bad one the token is gone.
  bool nextdouble(double& value);
  /// What is left of the line behind blanks, less its trailing blanks; empty if a comment begins
  /// there. Leaves the reader on the end-of-line mark.
  void restofline(shortstring& text);

  /// Appends ch() to text and moves on. REQUIRES: !atmark().
  void take(shortstring& text);
  /// Passes everything up to a mark or the first member of stop.
  void skipuntil(const charset& stop);
  /// What is left of the line, from ch() up to a mark; nothing is passed.
  /// BORROWS: good until the next line. REQUIRES: ch() stands in the line (no skiptoeol before).
  std::string_view ahead() const;
  /// Passes count characters of what ahead() gave; all of them lead to the mark.
  void pass(std::size_t count) {
    if (count == 0) return;
    linepos_ += static_cast<std::int64_t>(count) - 1;
    nextch();
  }

  /// The same for a value that ends there, and for the comment between that and `size`, the end of
  /// what ahead() gave.
  void passvalue(std::size_t end, std::size_t size) {
    if (told_ != nullptr && end < size)
      told_->tellplace(&optxv_listener::comment, restplace().after(end));
    pass(size);
  }

 private:
  static constexpr int slicelength = 255;
  static constexpr int slicecount = 4;

  enum class source : unsigned char { file, string, pchar };

  /// The position of ch() in its line, from 1.
  std::int64_t chposition() const {
    return skippedat_ != 0 && linepos_ == linelen_ ? skippedat_ : linepos_;
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
  // end-of-line mark. linelen_ is -1 at the end of a file. After skiptoeol ch_ does not stand at
  // linepos_, which is then linelen_, but at skippedat_; that is 0 while there was no such skip.
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
  // The four slices of a file line, one behind the other. A slice that is not full ends the line.
  char linebuf_[slicecount * slicelength];
};

}  // namespace optxv
