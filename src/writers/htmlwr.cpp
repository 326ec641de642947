#include "writers/htmlwr.h"

#include <algorithm>
#include <array>

#include "foundation/strutilx.h"

namespace optxv {

namespace {

constexpr std::string_view opening = "<html>\n<body>\n";
constexpr std::string_view closing = "\n</body>\n</html>\n";

constexpr int firstnamed = 160;

/// The named characters of ISO 8859-1, in the order of their codes from firstnamed on.
constexpr std::array<std::string_view, 256 - firstnamed> latinnames = {
    "nbsp",   "iexcl",  "cent",   "pound",  "curren", "yen",    "brvbar",  "sect",   "uml",
    "copy",   "ordf",   "laquo",  "not",    "shy",    "reg",    "macr",    "deg",    "plusmn",
    "sup2",   "sup3",   "acute",  "micro",  "para",   "middot", "cedille", "sup1",   "ordm",
    "raquo",  "frac14", "frac12", "frac34", "iquest", "Agrave", "Aacute",  "Acirc",  "Atilde",
    "Auml",   "Aring",  "AElig",  "Ccedil", "Egrave", "Eacute", "Ecirc",   "Euml",   "Igrave",
    "Iacute", "Icirc",  "Iuml",   "ETH",    "Ntilde", "Ograve", "Oacute",  "Ocirc",  "Otilde",
    "Ouml",   "times",  "Oslash", "Ugrave", "Uacute", "Ucirc",  "Uuml",    "Yacute", "THORN",
    "szlig",  "agrave", "aacute", "acirc",  "atilde", "auml",   "aring",   "aelig",  "ccedil",
    "egrave", "eacute", "ecirc",  "euml",   "igrave", "iacute", "icirc",   "iuml",   "eth",
    "ntilde", "ograve", "oacute", "ocirc",  "otilde", "ouml",   "divide",  "oslash", "ugrave",
    "uacute", "ucirc",  "uuml",   "yacute", "thorn",  "yuml"};

/// What each byte of a text is called: empty for the bytes that stand for themselves.
constexpr auto htmlcharmap = [] {
  std::array<std::string_view, 256> map{};
  map['&'] = "amp";
  map['<'] = "lt";
  map['>'] = "gt";
  std::ranges::copy(latinnames, map.begin() + firstnamed);
  return map;
}();
static_assert(latinnames.back() == "yuml");

constexpr std::array<std::string_view, 3> align_text = {"Left", "Right", "Center"};

constexpr std::string_view entityof(char c) {
  return htmlcharmap[static_cast<unsigned char>(c)];
}

}  // namespace

thtmlwrite::thtmlwrite(std::string_view filename) : file_(filename) {
  file_.put(opening);
}

thtmlwrite::thtmlwrite(inmemory target) : file_(target) {
  file_.put(opening);
}

thtmlwrite::~thtmlwrite() {
  try {
    close();
  } catch (...) {
    // There is nobody left to report to; call close to know.
  }
}

void thtmlwrite::close() {
  if (!file_.opened()) return;
  try {
    file_.put(closing);
  } catch (...) {
    file_.abandon();
    throw;
  }
  file_.close();
}

// --- Text ----------------------------------------------------------------------------------------

void thtmlwrite::writehtmlstr(std::string_view text) {
  while (!text.empty()) {
    const auto plain = static_cast<std::size_t>(
        std::ranges::find_if(text, [](char c) { return !entityof(c).empty(); }) - text.begin());
    file_.put(text.substr(0, plain));
    text.remove_prefix(plain);
    if (text.empty()) return;
    file_.put("&", entityof(text.front()), ";");
    text.remove_prefix(1);
  }
}

void thtmlwrite::addtext(std::string_view text) {
  writehtmlstr(text);
  file_.put(" ");
}

void thtmlwrite::passhtml(std::string_view text) {
  file_.put(text, "\n");
}

void thtmlwrite::addbreak() {
  file_.put("<br>");
}

// --- Paragraphs and headings ---------------------------------------------------------------------

void thtmlwrite::startpara() {
  file_.put("<p>");
}

void thtmlwrite::endpara() {
  file_.put("</p>\n");
}

void thtmlwrite::addpara(std::string_view text) {
  startpara();
  addtext(text);
  endpara();
}

void thtmlwrite::addheading(std::int32_t level, htmlalignment align, std::string_view text) {
  const shortstring digit = inttostr(std::clamp(level, 1, 6));
  file_.put("\n<h", digit, " align=", align_text[align], ">");
  writehtmlstr(text);
  file_.put("</h", digit, ">\n");
}

// --- Links ---------------------------------------------------------------------------------------

void thtmlwrite::addanchor(std::string_view name) {
  file_.put("\n<a name=\"", name, "\">\n");
}

void thtmlwrite::addhyperlink(std::string_view file, std::string_view anchor,
                              std::string_view text) {
  file_.put("<a href=\"", file);
  if (!anchor.empty()) file_.put("#", anchor);
  file_.put("\">");
  writehtmlstr(text);
  file_.put("</a>");
}

// --- Tables --------------------------------------------------------------------------------------

void thtmlwrite::starttable(bool border) {
  file_.put("\n<table", border ? " border" : "", ">\n");
}

void thtmlwrite::endtable() {
  file_.put("</table>\n");
}

void thtmlwrite::startrow() {
  file_.put("\n<tr>\n");
}

void thtmlwrite::endrow() {
  file_.put("</tr>\n");
}

void thtmlwrite::startcell() {
  file_.put("<td> ");
}

void thtmlwrite::startcellaligned(htmlalignment align) {
  file_.put("<td align=", align_text[align], ">");
}

void thtmlwrite::startcellcolor(std::uint8_t r, std::uint8_t g, std::uint8_t b) {
  file_.put("<td ");
  writecolor("BGCOLOR", r, g, b);
}

void thtmlwrite::endcell() {
  file_.put(" </td>\n");
}

void thtmlwrite::addcell(std::string_view text) {
  startcell();
  writehtmlstr(text);
  endcell();
}

// --- Lists ---------------------------------------------------------------------------------------

void thtmlwrite::startbulletlist() {
  file_.put("<ul>");
}

void thtmlwrite::endbulletlist() {
  file_.put("</ul>\n");
}

void thtmlwrite::startnumberedlist() {
  file_.put("\n<ol>\n");
}

void thtmlwrite::endnumberedlist() {
  file_.put("\n</ol>\n");
}

void thtmlwrite::startlistitem() {
  file_.put("<li> ");
}

void thtmlwrite::endlistitem() {
  file_.put("</li>\n");
}

void thtmlwrite::addlistitem(std::string_view text) {
  startlistitem();
  writehtmlstr(text);
  endlistitem();
}

// --- Colours -------------------------------------------------------------------------------------

void thtmlwrite::fgcolor(std::uint8_t r, std::uint8_t g, std::uint8_t b) {
  writecolor("<COLOR", r, g, b);
}

void thtmlwrite::bgcolor(std::uint8_t r, std::uint8_t g, std::uint8_t b) {
  writecolor("<BGCOLOR", r, g, b);
}

void thtmlwrite::writecolor(std::string_view tag, std::uint8_t r, std::uint8_t g, std::uint8_t b) {
  file_.put(tag, "=\"");
  for (const std::uint8_t part : {r, g, b}) writehexbyte(part);
  file_.put("\">");
}

void thtmlwrite::writehexbyte(std::uint8_t b) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  file_.put(digits.substr(b >> 4, 1), digits.substr(b & 15, 1));
}

}  // namespace optxv
