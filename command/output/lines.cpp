#include "output/lines.h"

#include <algorithm>
#include <array>

#include "text/printable.h"

namespace command {
namespace {

// The escape sequences for the parts of a finding (ECMA-48, select graphic rendition).
constexpr std::string_view plainstyle = "\x1B[0m";
constexpr std::string_view placestyle = "\x1B[1m";
constexpr std::array<std::string_view, 4> levelstyles = {"\x1B[1;31m", "\x1B[1;35m", "\x1B[1;36m",
                                                         "\x1B[1;32m"};

constexpr std::size_t widestexcerpt = 100;  // bytes of a source line that are shown
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
  const std::string after = printableline(line.substr(last, end - last));
  return {before + here + after + (end < line.size() ? "..." : ""), columns(before), columns(here)};
}

std::string placeof(const place& where) {
  std::string text = printable(where.file);
  if (where.line > 0) text += ':' + std::to_string(where.line);
  if (where.line > 0 && where.column > 0) text += ':' + std::to_string(where.column);
  return text + ": ";
}

class linereporter : public reporter {
 public:
  linereporter(std::FILE* out, bool colours) : out_(out), colours_(colours) {}

  void take(const finding& found) override {
    if (found.level == severity::plain) return put(out_, printableline(found.text) + '\n');
    std::string text = line(found.where, found.level, found.text) + excerptlines(found);
    for (const addition& each : additionsof(found)) text += line(each.where, each.level, each.text);
    put(out_, text);
  }

  void summary(const tally& total) override {
    if (total.omitted > 0) put(out_, counted(total.omitted, "more error") + " not shown\n");
    put(out_, summaryline(total) + '\n');
  }

 private:
  static std::string_view styleof(severity level) {
    return levelstyles[static_cast<std::size_t>(level)];
  }

  std::string styled(std::string_view style, std::string_view text) const {
    if (!colours_ || style.empty()) return std::string(text);
    return std::string(style) + std::string(text) + std::string(plainstyle);
  }

  std::string line(const place& where, severity level, std::string_view text) const {
    const std::string word = std::string(severityword(level)) + ':';
    return styled(placestyle, placeof(where)) + styled(styleof(level), word) + ' ' +
           printable(text) + '\n';
  }

  std::string excerptlines(const finding& found) const {
    if (!found.source || found.where.line == 0) return {};
    const std::string_view line = *found.source;
    const auto at = static_cast<std::size_t>(std::max<std::int64_t>(found.where.column - 1, 0));
    const bool placed = found.where.column > 0 && at <= line.size();
    const excerpt shown =
        excerptof(line, placed ? at : 0, placed ? static_cast<std::size_t>(found.where.length) : 0);
    const std::string number = std::to_string(found.where.line);
    const std::size_t width = std::max<std::size_t>(number.size() + 1, 5);
    std::string result =
        std::string(width - number.size(), ' ') + number + " | " + shown.text + '\n';
    if (!placed) return result;
    const std::string mark = '^' + std::string(std::max<std::size_t>(shown.length, 1) - 1, '~');
    return result + std::string(width, ' ') + " | " + std::string(shown.caret, ' ') +
           styled(styleof(found.level), mark) + '\n';
  }

  std::FILE* out_;
  bool colours_;
};

}  // namespace

std::unique_ptr<reporter> makelines(std::FILE* out, bool colours) {
  return std::make_unique<linereporter>(out, colours);
}

}  // namespace command
