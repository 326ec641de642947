// Findings from the text of a file alone.

#include <algorithm>
#include <array>

#include "analysis/diagnostics.h"
#include "text/names.h"
#include "text/printable.h"

namespace command {
namespace {

constexpr std::size_t longestline = 1020;  // what the library reads of a line
constexpr char endofinput = 26;            // the byte that it takes for the end of its input

bool iscomment(std::string_view line) {
  return line.starts_with('*');
}

// --- Lines of any text

/// A thing that a line may have. It is told where it stands first, with how many lines have it.
struct linetest {
  severity level;
  std::size_t (*place)(std::string_view line);  ///< npos if the line is free of it
  std::string (*text)(std::string_view line);
};

constexpr std::array<linetest, 3> linetests = {
    {{severity::warning, [](std::string_view line) { return line.find('\0'); },
      [](std::string_view) {
        return std::string("the line has a zero byte in it; is this a text file?");
      }},
     {severity::warning, [](std::string_view line) { return line.find(endofinput); },
      [](std::string_view) {
        return std::string("byte 26 stands for the end of the line: what follows it is not read");
      }},
     {severity::warning,
      [](std::string_view line) { return line.size() > longestline ? longestline : line.npos; },
      [](std::string_view line) {
        return "the line has " + grouped(line.size()) + " bytes, of which the first " +
               grouped(longestline) + " are read";
      }}}};

/// Where a test finds something in a line that matters; comments do not.
std::size_t placeof(const linetest& test, std::string_view line) {
  return iscomment(line) ? line.npos : test.place(line);
}

void addline(std::vector<diagnostic>& found, const std::string& file, const textdocument& source,
             const linetest& test) {
  std::size_t count = 0;
  for (std::int32_t number = 1; number <= source.linecount(); number++) {
    const std::string_view line = *source.line(number);
    const std::size_t place = placeof(test, line);
    if (place == line.npos || ++count > 1) continue;
    found.push_back({.level = test.level,
                     .file = file,
                     .line = number,
                     .column = place + 1,
                     .length = 1,
                     .text = test.text(line)});
  }
  if (count > 1) found.back().notes.push_back("so it is in " + counted(count - 1, "more line"));
}

// --- The first line

struct bytemark {
  std::string_view bytes, name;
};
constexpr std::array<bytemark, 3> bytemarks = {
    {{"\xEF\xBB\xBF", "UTF-8"}, {"\xFF\xFE", "UTF-16"}, {"\xFE\xFF", "UTF-16"}}};

void addmark(std::vector<diagnostic>& found, const std::string& file, const textdocument& source) {
  const std::string_view line = source.line(1).value_or("");
  for (const bytemark& mark : bytemarks) {
    if (!line.starts_with(mark.bytes)) continue;
    found.push_back({.level = severity::note,
                     .file = file,
                     .line = 1,
                     .column = 1,
                     .length = mark.bytes.size(),
                     .text = "the first line begins with a byte-order mark (" +
                             std::string(mark.name) + "), which the language does not know"});
    found.back().notes.emplace_back("save the file as plain text without the mark");
  }
}

// --- The end of a definition

/// The words that declare a record, and what may follow its line.
struct recordword {
  std::string_view word;
  enum { nothing, lines, filledlines } follows;
};
constexpr std::array<recordword, 17> recordwords = {{{"integer", recordword::lines},
                                                     {"double", recordword::lines},
                                                     {"string", recordword::nothing},
                                                     {"boolean", recordword::lines},
                                                     {"enumstr", recordword::filledlines},
                                                     {"enumint", recordword::filledlines},
                                                     {"multilist", recordword::lines},
                                                     {"strlist", recordword::nothing},
                                                     {"macro", recordword::lines},
                                                     {"immediate", recordword::nothing},
                                                     {"synonym", recordword::nothing},
                                                     {"group", recordword::nothing},
                                                     {"deprecated", recordword::lines},
                                                     {"obsolete", recordword::lines},
                                                     {"indicator", recordword::nothing},
                                                     {"lookup", recordword::nothing},
                                                     {"eolcomm", recordword::nothing}}};

bool isblank(std::string_view line) {
  return line.find_first_not_of(" \t") == line.npos;
}

bool beginsrecord(std::string_view line) {
  if (line.starts_with('.')) line.remove_prefix(1);
  return !line.empty() && isletter(line[0]);
}

/// The type word of a record line, without its modifier.
const recordword* recordwordof(std::string_view line) {
  const auto name =
      std::ranges::find_if_not(line, [](char c) { return isnamecharacter(c) || c == '.'; });
  line.remove_prefix(static_cast<std::size_t>(name - line.begin()));
  line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
  const std::string_view word = line.substr(0, line.find_first_of(" \t.,"));
  const auto row = std::ranges::find_if(
      recordwords, [&](const recordword& each) { return samename(each.word, word); });
  return row == recordwords.end() ? nullptr : &*row;
}

bool continuesrecord(std::string_view line, const recordword* record) {
  if (record == nullptr || !line.starts_with(' ')) return false;
  return record->follows == recordword::lines ||
         (record->follows == recordword::filledlines && !isblank(line));
}

/// The line at which a definition ends before the file does; 0 if it does not.
std::int32_t earlyend(const textdocument& source) {
  const recordword* record = nullptr;
  for (std::int32_t number = 1; number <= source.linecount(); number++) {
    const std::string_view line = *source.line(number);
    if (line.empty() || iscomment(line) || continuesrecord(line, record)) continue;
    if (!beginsrecord(line)) return number;
    record = recordwordof(line);
  }
  return 0;
}

/// Tells of an early end if records are lost by it: text of other kinds may well be meant to stand
/// behind a definition.
void addearlyend(std::vector<diagnostic>& found, const std::string& file,
                 const textdocument& source) {
  const std::int32_t end = earlyend(source);
  std::size_t lost = 0;
  for (std::int32_t number = end; end > 0 && number <= source.linecount(); number++) {
    const std::string_view line = *source.line(number);
    if (beginsrecord(line) && recordwordof(line) != nullptr) lost++;
  }
  if (lost == 0) return;
  found.push_back({.level = severity::warning,
                   .file = file,
                   .line = end,
                   .text = "the definition ends here, since the line neither begins a record nor "
                           "continues one"});
  found.back().notes.push_back(counted(lost, "record") + " further down " +
                               (lost == 1 ? "is" : "are") + " not read");
}

}  // namespace

std::vector<diagnostic> observations(const std::string& file, const textdocument& source,
                                     filerole role) {
  std::vector<diagnostic> found;
  if (source.text().empty())
    found.push_back({.level = severity::note, .file = file, .text = "the file is empty"});
  addmark(found, file, source);
  for (const linetest& test : linetests) addline(found, file, source, test);
  if (role == filerole::definition) addearlyend(found, file, source);
  return found;
}

}  // namespace command
