#include "output/reporter.h"

#include <unistd.h>

#include <cstdlib>

#include "text/printable.h"

namespace command {
namespace {

bool isset(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

}  // namespace

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

std::string advice(const hint& each) {
  if (each.write.empty()) return each.words;
  return "write " + inquotes(each.write) + (each.words.empty() ? "" : ' ' + each.words);
}

std::string question(const std::vector<std::string>& names) {
  std::string text = "did you mean ";
  for (std::size_t i = 0; i < names.size(); i++) {
    if (i > 0) text += i + 1 == names.size() ? " or " : ", ";
    text += inquotes(names[i]);
  }
  return text + '?';
}

std::vector<addition> additionsof(const finding& found) {
  std::vector<addition> all;
  for (const note& each : found.notes) {
    const bool elsewhere = each.where.line > 0;
    all.push_back({severity::note, each.text, elsewhere ? each.where : found.where, elsewhere});
  }
  if (!found.nearest.empty())
    all.push_back({.text = question(found.nearest), .where = found.where});
  for (const hint& each : found.hints) all.push_back({severity::plain, advice(each), found.where});
  return all;
}

void put(std::FILE* out, std::string_view text) {
  std::fwrite(text.data(), 1, text.size(), out);
}

}  // namespace command
