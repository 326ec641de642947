#include "output/reporter.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "text/printable.h"

namespace command {
namespace {

// The escape sequences for the parts of a finding (ECMA-48, select graphic rendition).
constexpr std::string_view plainstyle = "\x1B[0m";
constexpr std::string_view placestyle = "\x1B[1m";
constexpr std::array<std::string_view, 4> levelstyles = {"\x1B[1;31m", "\x1B[1;35m", "\x1B[1;36m",
                                                         ""};

constexpr std::size_t widestexcerpt = 100;  // columns of a source line that are shown
constexpr std::size_t leadexcerpt = 50;     // of these at most, before the caret of a longer line

/// A piece of a source line as it is shown, and where the caret goes in it.
struct excerpt {
  std::string text;
  std::size_t caret = 0, length = 0;
};

/// The line, or the part round the place if it is long. Bytes are escaped before and behind the
/// place on their own, so that the caret stands right whatever they are.
excerpt excerptof(std::string_view line, std::size_t at, std::size_t length) {
  const std::size_t start = line.size() <= widestexcerpt || at < leadexcerpt ? 0 : at - leadexcerpt;
  const std::size_t end = std::min(line.size(), start + widestexcerpt);
  const std::size_t last = std::min(end, at + length);
  const std::string before =
      (start > 0 ? "..." : "") + printableline(line.substr(start, at - start));
  const std::string here = printableline(line.substr(at, last - at));
  const std::string behind = printableline(line.substr(last, end - last));
  return {before + here + behind + (end < line.size() ? "..." : ""), columns(before),
          columns(here)};
}

class linereporter : public reporter {
 public:
  explicit linereporter(std::FILE* out) : out_(out), colours_(wantscolour(out)) {}

  void take(const diagnostic& found, const textdocument& source) override {
    if (found.level == severity::plain) {
      put(out_, printableline(found.text) + '\n');
      return;
    }
    const std::string where = placeof(found);
    put(out_, finding(where, found.level, found.text) + excerptlines(found, source));
    for (const std::string& text : found.notes) put(out_, finding(where, severity::note, text));
    if (!found.nearest.empty()) put(out_, finding(where, severity::note, question(found.nearest)));
  }

  void summary(const tally& total) override {
    if (total.omitted > 0) put(out_, counted(total.omitted, "more error") + " not shown\n");
    put(out_, summaryline(total) + '\n');
  }

 private:
  std::string styled(std::string_view style, std::string_view text) const {
    if (!colours_ || style.empty()) return std::string(text);
    return std::string(style) + std::string(text) + std::string(plainstyle);
  }

  static std::string placeof(const diagnostic& found) {
    std::string place = printable(found.file);
    if (found.line > 0) place += ':' + std::to_string(found.line);
    if (found.line > 0 && found.column > 0) place += ':' + std::to_string(found.column);
    return place + ": ";
  }

  std::string finding(const std::string& where, severity level, std::string_view text) const {
    const std::string word = std::string(severityword(level)) + ':';
    return styled(placestyle, where) + styled(levelstyles[static_cast<std::size_t>(level)], word) +
           ' ' + printable(text) + '\n';
  }

  std::string excerptlines(const diagnostic& found, const textdocument& source) const {
    const auto line = source.line(found.line);
    if (!line) return {};
    const bool placed = found.column > 0 && found.column <= line->size();
    const excerpt shown =
        excerptof(*line, placed ? found.column - 1 : 0, placed ? found.length : 0);
    const std::string number = std::to_string(found.line);
    const std::size_t width = std::max<std::size_t>(number.size() + 1, 5);
    std::string result =
        std::string(width - number.size(), ' ') + number + " | " + shown.text + '\n';
    if (!placed) return result;
    const std::string mark = '^' + std::string(std::max<std::size_t>(shown.length, 1) - 1, '~');
    return result + std::string(width, ' ') + " | " + std::string(shown.caret, ' ') +
           styled(levelstyles[static_cast<std::size_t>(found.level)], mark) + '\n';
  }

  std::FILE* out_;
  bool colours_;
};

using nlohmann::ordered_json;

class jsonreporter : public reporter {
 public:
  explicit jsonreporter(std::FILE* out) : out_(out) {}

  void take(const diagnostic& found, const textdocument& source) override {
    ordered_json row = {
        {"file", found.file},
        {"severity", found.level == severity::plain ? "help" : severityword(found.level)}};
    if (found.line > 0) row["line"] = found.line;
    if (found.line > 0 && found.column > 0) {
      row["column"] = found.column;
      row["length"] = found.length;
    }
    row["kind"] = kindname(found.kind);
    row["text"] = found.text;
    if (!found.notes.empty()) row["notes"] = found.notes;
    if (!found.nearest.empty()) row["nearest"] = found.nearest;
    if (const auto line = source.line(found.line)) row["source"] = std::string(*line);
    rows_.push_back(std::move(row));
  }

  void summary(const tally& total) override {
    const ordered_json result = {{"diagnostics", rows_},
                                 {"summary",
                                  {{"errors", total.errors},
                                   {"warnings", total.warnings},
                                   {"files", total.files},
                                   {"unreadable", total.unreadable},
                                   {"dotoptions", total.dotoptions},
                                   {"indicators", total.indicators},
                                   {"omitted", total.omitted}}}};
    put(out_, result.dump(2, ' ', false, ordered_json::error_handler_t::replace) + '\n');
  }

 private:
  /// The constant of the library's message, null for the command's own findings.
  static ordered_json kindname(std::int32_t kind) {
    constexpr std::int32_t messagekinds = 4;
    if (kind == diagnostic::ownkind) return nullptr;
    const std::string name = optionset::constantname(messagekinds, kind);
    return name.empty() ? "optMsgUserError" : name;  // the one whose name is not given out
  }

  std::FILE* out_;
  ordered_json rows_ = ordered_json::array();
};

bool isset(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

}  // namespace

std::unique_ptr<reporter> makelines(std::FILE* out) {
  return std::make_unique<linereporter>(out);
}

std::unique_ptr<reporter> makejson(std::FILE* out) {
  return std::make_unique<jsonreporter>(out);
}

bool wantscolour(std::FILE* out) {
  const char* terminal = std::getenv("TERM");
  const bool dumb = terminal != nullptr && std::string_view(terminal) == "dumb";
  return isatty(fileno(out)) == 1 && !isset("NO_COLOR") && !dumb;
}

std::string summaryline(const tally& total) {
  std::string text;
  const auto add = [&](std::string_view piece) {
    text += (text.empty() ? "" : ", ") + std::string(piece);
  };
  if (total.errors > 0) add(counted(total.errors, "error"));
  if (total.warnings > 0) add(counted(total.warnings, "warning"));
  if (text.empty()) text = "no errors";
  text += " in " + counted(total.files, "file");
  if (total.unreadable > 0) add(grouped(total.unreadable) + " not read");
  if (total.dotoptions > 0) add(counted(total.dotoptions, "dot option"));
  if (total.indicators > 0) add(counted(total.indicators, "indicator"));
  return text;
}

std::string question(const std::vector<std::string>& names) {
  std::string text = "did you mean ";
  for (std::size_t i = 0; i < names.size(); i++) {
    if (i > 0) text += i + 1 == names.size() ? " or " : ", ";
    text += inquotes(names[i]);
  }
  return text + '?';
}

void put(std::FILE* out, std::string_view text) {
  std::fwrite(text.data(), 1, text.size(), out);
}

}  // namespace command
