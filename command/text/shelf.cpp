#include "text/shelf.h"

#include <unistd.h>

namespace command {
const readresult& shelf::input(const std::string& name) {
  if (const auto known = readings_.find(name); known != readings_.end()) return known->second;
  const readresult& fresh = readings_.emplace(name, read(name)).first->second;
  const auto* text = std::get_if<textdocument>(&fresh);
  if (text != nullptr && files_.emplace(text->id(), text).second) left_ -= text->text().size();
  return fresh;
}

readresult shelf::read(const std::string& name) const {
  const textdocument* same = sameas(name);
  return same != nullptr ? same->named(name) : textdocument::read(name, left_);
}

/// The document on the shelf of the same file; nil if there is none.
const textdocument* shelf::sameas(const std::string& name) const {
  struct stat status = {};
  if ((name == "-" ? fstat(STDIN_FILENO, &status) : stat(name.c_str(), &status)) != 0)
    return nullptr;
  const auto same = files_.find(identityof(status));
  return same == files_.end() ? nullptr : same->second;
}

}  // namespace command
