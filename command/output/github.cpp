#include "output/github.h"

#include "output/textcolumns.h"
#include "text/printable.h"

namespace command {
namespace {

/// The text with these characters written as %XX, as the commands of workflows want it.
std::string escaped(std::string_view text, std::string_view these) {
  constexpr std::string_view hexdigits = "0123456789ABCDEF";
  std::string result;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (these.find(c) == these.npos)
      result += c;
    else
      result += {'%', hexdigits[byte >> 4], hexdigits[byte & 15]};
  }
  return result;
}

std::string property(std::string_view text) {
  return escaped(printable(text), "%\r\n:,");
}

std::string_view command(severity level) {
  return level == severity::note ? "notice" : severityword(level);
}

class githubreporter : public reporter {
 public:
  explicit githubreporter(std::FILE* out) : out_(out) {}

  void take(const finding& found) override {
    if (found.level == severity::plain) return;
    std::string text = printable(found.text);
    for (const addition& each : additionsof(found)) text += '\n' + lineof(each);
    put(out_, "::" + std::string(command(found.level)) + ' ' + properties(found) +
                  "::" + escaped(text, "%\r\n") + '\n');
  }

  void summary(const tally& total) override {
    if (total.omitted > 0) put(out_, counted(total.omitted, "more error") + " not shown\n");
    put(out_, summaryline(total) + '\n');
  }

  listener* hears() override { return &columns_; }

 private:
  static std::string lineof(const addition& each) {
    const std::string where =
        each.elsewhere ? printable(each.where.file) + ':' + std::to_string(each.where.line) + ": "
                       : "";
    return where + std::string(severityword(each.level)) + ": " + printable(each.text);
  }

  std::string properties(const finding& found) const {
    std::string text = "file=" + property(found.where.file);
    if (found.where.line > 0) text += ",line=" + std::to_string(found.where.line);
    if (found.where.line > 0 && found.where.column > 0) {
      const unitrange units = columns_.units(found.where);
      text += ",col=" + std::to_string(units.begin) + ",endColumn=" + std::to_string(units.end);
    }
    return found.code.empty() ? text : text + ",title=" + property(found.code);
  }

  std::FILE* out_;
  textcolumns columns_;
};

}  // namespace

std::unique_ptr<reporter> makegithub(std::FILE* out) {
  return std::make_unique<githubreporter>(out);
}

}  // namespace command
