#include "analysis/diagnostics.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "text/names.h"

namespace command {
namespace {

struct kindrow {
  severity level;
  std::string_view prefix;  ///< what the library puts in front
};

// By kind of message. Enter and leave are no findings; their rows serve the prefix alone.
constexpr std::array<kindrow, 10> kindrows = {{{severity::plain, ">> "},
                                               {severity::plain, ""},
                                               {severity::error, "*** Definition Error "},
                                               {severity::error, "*** Value Error "},
                                               {severity::warning, "*** Warning "},
                                               {severity::warning, "*** Warning "},
                                               {severity::plain, "Reading parameter(s) from "},
                                               {severity::plain, "Finished reading from "},
                                               {severity::error, ""},
                                               {severity::error, "*** Error "}}};

constexpr std::string_view cutmark = "...";

/// Takes the prefix off, if it is there.
bool skipprefix(std::string_view& text, std::string_view prefix) {
  if (!text.starts_with(prefix)) return false;
  text.remove_prefix(prefix.size());
  return true;
}

/// Takes "line N: " off; 0 if it is not there.
std::int32_t skipline(std::string_view& text) {
  std::string_view rest = text;
  std::int32_t line = 0;
  if (!skipprefix(rest, "line ")) return 0;
  const auto [end, fault] = std::from_chars(rest.data(), rest.data() + rest.size(), line);
  rest.remove_prefix(static_cast<std::size_t>(end - rest.data()));
  if (fault != std::errc() || !skipprefix(rest, ": ")) return 0;
  text = rest;
  return line;
}

std::string_view withoutquotes(std::string_view text) {
  if (text.starts_with('"')) text.remove_prefix(1);
  if (text.ends_with('"')) text.remove_suffix(1);
  return text;
}

std::string_view trimmed(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  return text;
}

constexpr std::array<std::string_view, 3> cannotopen = {
    "Cannot open parameter file ", "Cannot open option file ", "Cannot write parameter file "};

bool tellsopen(std::string_view text) {
  return std::ranges::any_of(cannotopen,
                             [&](std::string_view start) { return text.starts_with(start); });
}

/// Whether a message only adds to the one before: the values allowed behind a refused value, or
/// the cause behind a file that does not open.
bool continues(const diagnostic& before, const diagnostic& next) {
  if (before.kind != next.kind || before.file != next.file || before.line != next.line)
    return false;
  if (next.kind == optMsgValueError || next.kind == optMsgValueWarning)
    return next.text.starts_with("   ");
  return trimmed(next.text).starts_with("Error code = ") && tellsopen(before.text);
}

/// Turns messages into findings, one by one.
class collector {
 public:
  explicit collector(const std::string& file) : file_(file) {}

  void take(const message& next) {
    if (next.kind == optMsgFileEnter) {
      entered_.push_back(entered_.empty() ? file_ : nameof(next));
    } else if (next.kind == optMsgFileLeave) {
      if (!entered_.empty()) entered_.pop_back();
    } else {
      add(made(next));
    }
  }

  std::vector<diagnostic> found;

 private:
  static const kindrow& rowof(const message& each) {
    const auto kind = static_cast<std::size_t>(each.kind);
    return kind < kindrows.size() ? kindrows[kind] : kindrows.back();
  }

  static std::string nameof(const message& enter) {
    std::string_view text = enter.text;
    skipprefix(text, rowof(enter).prefix);
    return std::string(withoutquotes(text));
  }

  diagnostic made(const message& each) const {
    const kindrow& row = rowof(each);
    diagnostic result{
        .level = row.level, .kind = each.kind, .file = entered_.empty() ? file_ : entered_.back()};
    std::string_view text = each.text;
    if (row.level != severity::plain) {
      skipprefix(text, row.prefix);
      result.line = skipline(text);
    }
    result.text = text;
    if (row.level != severity::plain && each.text.size() >= optionset::longesttext)
      result.text += cutmark;
    return result;
  }

  void add(diagnostic next) {
    if (!found.empty() && continues(found.back(), next)) {
      found.back().notes.emplace_back(trimmed(next.text));
      return;
    }
    if (next.kind == optMsgTooManyMsgs)
      next.notes.emplace_back(
          "the file was read to its end, but nothing further can be told about it");
    found.push_back(std::move(next));
  }

  const std::string& file_;
  std::vector<std::string> entered_;
};

// --- Places

constexpr std::size_t nowhere = std::string_view::npos;

/// Names differ in how blanks are written, and in case.
bool samecharacter(char a, char b) {
  return folded(a == ' ' ? '_' : a) == folded(b == ' ' ? '_' : b);
}

/// Whether the text at [at, at + length) is no piece of a longer word.
bool standsalone(std::string_view line, std::size_t at, std::size_t length) {
  const std::size_t end = at + length;
  const bool before = at > 0 && isnamecharacter(line[at - 1]) && isnamecharacter(line[at]);
  const bool after =
      end < line.size() && isnamecharacter(line[end]) && isnamecharacter(line[end - 1]);
  return !before && !after;
}

std::size_t wordfrom(std::string_view line, std::string_view word, std::size_t from) {
  for (; from + word.size() <= line.size(); from++)
    if (std::ranges::equal(line.substr(from, word.size()), word, samecharacter) &&
        standsalone(line, from, word.size()))
      return from;
  return nowhere;
}

/// Where a word stands: nowhere unless it stands in one place alone, or in the expected one, which
/// is the first behind these characters.
std::size_t placeof(std::string_view line, std::string_view word, std::size_t from,
                    std::string_view skipped) {
  if (word.empty()) return nowhere;
  const std::size_t first = wordfrom(line, word, from);
  if (first == nowhere || first == line.find_first_not_of(skipped, from)) return first;
  return wordfrom(line, word, first + 1) == nowhere ? first : nowhere;
}

struct place {
  std::size_t at = nowhere, length = 0;
};

place placein(std::string_view line, const subject& about) {
  const std::size_t begin = line.find_first_not_of(" \t");
  if (about.name.empty() && begin != nowhere && line.substr(begin, 1) == about.value)
    return {begin, 1};  // a character that can begin no entry
  const std::size_t name = placeof(line, about.name, 0, " \t-/.");
  const std::size_t behind = name == nowhere ? 0 : name + about.name.size();
  const std::size_t value = placeof(line, about.value, behind, " \t=:\"");
  if (value != nowhere) return {value, about.value.size()};
  return {name, about.name.size()};
}

/// A nested file that does not open is told without its line: it is the one that names the file.
std::int32_t lineof(const textdocument& source, std::string_view name) {
  std::int32_t result = 0;
  for (std::int32_t number = 1; number <= source.linecount(); number++) {
    const std::string_view line = *source.line(number);
    if (line.starts_with('*') || line.find(name) == nowhere) continue;
    if (result != 0) return 0;
    result = number;
  }
  return result;
}

}  // namespace

std::string_view severityword(severity level) {
  constexpr std::array<std::string_view, 4> words = {"error", "warning", "note", ""};
  return words[static_cast<std::size_t>(level)];
}

std::vector<diagnostic> findings(const optionset& options, const std::string& file) {
  collector result(file);
  const std::int32_t last = options.messagecount();
  for (std::int32_t position = 1; position <= last; position++)
    result.take(options.messageat(position));
  return std::move(result.found);
}

subject subjectof(std::string_view text) {
  constexpr std::string_view seen = " saw \"";
  subject result;
  const std::size_t saw = text.find(seen);
  if (saw != nowhere && text.ends_with('"') && text.size() > saw + seen.size()) {
    result.value = text.substr(saw + seen.size());
    result.value.remove_suffix(1);
    text = text.substr(0, saw);
  }
  const std::size_t open = text.find('"');
  const std::size_t close = open == nowhere ? nowhere : text.find('"', open + 1);
  if (close != nowhere) result.name = text.substr(open + 1, close - open - 1);
  return result;
}

void locate(diagnostic& found, const textdocument& source) {
  const subject about = subjectof(found.text);
  if (found.line == 0 && found.kind == optMsgUserError && tellsopen(found.text) &&
      !about.name.empty())
    found.line = lineof(source, about.name);
  const std::optional<std::string_view> line = source.line(found.line);
  if (!line) return;
  const place at = placein(*line, about);
  if (at.at == nowhere) return;
  found.column = at.at + 1;
  found.length = at.length;
}

}  // namespace command
