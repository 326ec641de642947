#include "server/buffers.h"

#include <algorithm>

namespace command {

void buffers::open(const std::string& path, buffer opened) {
  opened.edition = ++editions_;
  all_.insert_or_assign(path, std::move(opened));
}

const buffer* buffers::find(const std::string& path) const {
  const auto found = all_.find(path);
  return found == all_.end() ? nullptr : &found->second;
}

/// A client whose positions are the wrong way round means what is between them.
void buffers::change(const std::string& path,
                     const std::optional<std::pair<position, position>>& range,
                     const std::string& text, encoding counts) {
  buffer& changed = all_.at(path);
  changed.edition = ++editions_;
  if (!range) {
    changed.text = linedtext(text);
    return;
  }
  const auto [from, to] = std::minmax(
      {changed.text.offset(range->first, counts), changed.text.offset(range->second, counts)});
  changed.text.replace(from, to, text);
}

}  // namespace command
