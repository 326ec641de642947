#include "output/gcc.h"

#include <algorithm>

#include "text/printable.h"

namespace command {
namespace {

class gccreporter : public reporter {
 public:
  explicit gccreporter(std::FILE* out) : out_(out) {}

  void take(const finding& found) override {
    if (found.level == severity::plain) return;
    const std::string code = found.code.empty() ? "" : " [" + std::string(found.code) + ']';
    std::string text = line(found.where, found.level, printable(found.text) + code);
    for (const addition& each : additionsof(found))
      text += line(each.where, severity::note, printable(each.text));
    put(out_, text);
  }

  void summary(const tally& total) override {
    if (total.omitted > 0) put(out_, counted(total.omitted, "more error") + " not shown\n");
  }

 private:
  static std::string line(const place& where, severity level, std::string_view text) {
    return printable(where.file) + ':' + std::to_string(std::max<std::int64_t>(where.line, 1)) +
           ':' + std::to_string(std::max<std::int64_t>(where.column, 1)) + ": " +
           std::string(severityword(level)) + ": " + std::string(text) + '\n';
  }

  std::FILE* out_;
};

}  // namespace

std::unique_ptr<reporter> makegcc(std::FILE* out) {
  return std::make_unique<gccreporter>(out);
}

}  // namespace command
