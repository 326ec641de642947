#include "layout/prose.h"

#include <algorithm>

#include "text/names.h"
#include "text/printable.h"

namespace command {
namespace {

constexpr std::size_t mostbytes = 250;
constexpr std::size_t tabwidth = 8;

/// Whether a text begins as an item of a list does: with a mark and a blank, or a number.
bool isitem(std::string_view text) {
  const std::string_view mark = text.substr(0, text.find_first_of(" \t"));
  const std::size_t digits = std::min(mark.find_first_not_of("0123456789"), mark.size());
  if (digits > 0) return mark.size() == digits + 1;
  return mark.size() <= 2 && mark.find_first_not_of("-*+.:#>=|") == mark.npos;
}

}  // namespace

std::size_t indentation(std::string_view body) {
  std::size_t width = 0;
  for (const char c : body.substr(0, body.size() - trimmedleft(body).size()))
    width += c == '\t' ? tabwidth - width % tabwidth : 1;
  return width;
}

bool prose::flows(const fileline& line) const {
  const std::string_view text = trimmedright(trimmedleft(line.body));
  return !text.empty() && indentation(line.body) == margin_ && !isitem(text) &&
         text.find('\t') == text.npos && text.find("  ") == text.npos;
}

/// How many bytes of a text fit into a line: up to a blank, but one word at least.
std::size_t prose::fitting(std::string_view text) const {
  if (text.size() <= mostbytes && columns(text) < width_) return text.size();
  std::size_t fits = std::min(text.find(' '), text.size());
  for (std::size_t next = fits; next < text.size();) {
    next = std::min(text.find(' ', next + 1), text.size());
    if (next > mostbytes || columns(text.substr(0, next)) >= width_) break;
    fits = next;
  }
  return fits;
}

/// Writes the lines of a text but the last one, which is what is left of it.
std::string_view prose::wrap(std::string& to, std::string_view text,
                             std::string_view ending) const {
  for (std::size_t fits = fitting(text); fits < text.size(); fits = fitting(text)) {
    to.append(1, ' ').append(text.substr(0, fits)).append(ending);
    text.remove_prefix(fits + 1);
  }
  return text;
}

void prose::write(std::string& to) const {
  std::string carried;  // what did not fit into the lines above
  for (std::size_t i = 0; i < lines_.size(); i++) {
    const std::string_view body = trimmedright(trimmedleft(lines_[i].body));
    const std::string_view ending = lines_[i].ending;
    if (body.empty()) {
      to.append(1, ' ').append(ending);
      continue;
    }
    if (!flows(lines_[i])) {
      to.append(indentation(lines_[i].body) - margin_ + 1, ' ').append(body).append(ending);
      continue;
    }
    std::string text = carried.empty() ? std::string(body) : carried + ' ' + std::string(body);
    carried.clear();
    const std::string_view left = wrap(to, text, innerending(ending));
    const bool goeson = left.size() < text.size() && i + 1 < lines_.size() && flows(lines_[i + 1]);
    if (goeson)
      carried = left;
    else
      to.append(1, ' ').append(left).append(ending);
  }
}

}  // namespace command
