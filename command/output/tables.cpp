#include "output/tables.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <string_view>

#include "text/printable.h"

namespace command {
namespace {

std::vector<std::size_t> columnwidths(const table& content) {
  std::vector<std::size_t> widths;
  for (std::size_t i = 0; i < content.columns.size(); i++) {
    std::size_t width = columns(content.columns[i].heading);
    for (const auto& row : content.rows) width = std::max(width, columns(row[i]));
    widths.push_back(std::min(width, widestcolumn));
  }
  return widths;
}

void addcell(std::string& line, const std::string& cell, std::size_t width, bool rightaligned) {
  const std::size_t used = columns(cell);
  const std::string room(width > used ? width - used : 0, ' ');
  line += rightaligned ? room + cell : cell + room;
  line += "  ";
}

std::string rowtext(const table& content, const std::vector<std::string>& cells,
                    const std::vector<std::size_t>& widths) {
  std::string line;
  for (std::size_t i = 0; i < cells.size(); i++)
    addcell(line, cells[i], widths[i], content.columns[i].rightaligned);
  line.erase(line.find_last_not_of(' ') + 1);
  return line + '\n';
}

}  // namespace

std::string tabletext(const table& content) {
  const std::vector<std::size_t> widths = columnwidths(content);
  std::vector<std::string> headings;
  for (const table::column& each : content.columns) headings.push_back(each.heading);
  std::string text = rowtext(content, headings, widths);
  for (const auto& row : content.rows) text += rowtext(content, row, widths);
  return text;
}

std::size_t tablewidth(const table& content) {
  const std::string text = tabletext(content);
  std::size_t widest = 0;
  for (std::string_view rest = text; !rest.empty(); rest.remove_prefix(rest.find('\n') + 1))
    widest = std::max(widest, columns(rest.substr(0, rest.find('\n'))));
  return widest;
}

std::size_t terminalwidth(std::FILE* out) {
  if (const char* set = std::getenv("COLUMNS"); set != nullptr) {
    const std::string_view text(set);
    std::size_t width = 0;
    std::from_chars(text.data(), text.data() + text.size(), width);
    if (width > 0) return width;
  }
  struct winsize size = {};
  return ioctl(fileno(out), TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

}  // namespace command
