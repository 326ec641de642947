#include "code/skeleton.h"

#include <stdexcept>

namespace command {
namespace {

using linelist = std::vector<std::string_view>;

linelist linesof(std::string_view text) {
  linelist lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    lines.push_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

/// What is known at a line: the member of the innermost list, and what surrounds it.
struct scope {
  const datanode& data;
  const scope* around = nullptr;
  bool last = false;

  const std::string* text(std::string_view name) const {
    static const std::string comma = ",", none;
    if (name == "comma") return last ? &none : &comma;
    if (const auto found = data.texts.find(name); found != data.texts.end()) return &found->second;
    return around == nullptr ? nullptr : around->text(name);
  }
  const std::vector<datanode>* list(std::string_view name) const {
    if (const auto found = data.lists.find(name); found != data.lists.end()) return &found->second;
    return around == nullptr ? nullptr : around->list(name);
  }
  bool has(std::string_view name) const {
    const std::string* words = text(name);
    const std::vector<datanode>* members = list(name);
    return (words != nullptr && !words->empty()) || (members != nullptr && !members->empty());
  }
};

class filler {
 public:
  explicit filler(std::string_view skeleton) : lines_(linesof(skeleton)) {}

  std::string fill(const datanode& data) {
    block(0, lines_.size(), {data});
    return std::move(out_);
  }

 private:
  /// The position of the %end that belongs to a line.
  std::size_t endof(std::size_t line) const {
    for (std::size_t depth = 1; depth > 0;) {
      const std::string_view next = lines_.at(++line);
      if (next == "%end") depth--;
      if (next.starts_with('%') && next != "%end") depth++;
    }
    return line;
  }

  void block(std::size_t from, std::size_t to, const scope& known) {
    for (std::size_t i = from; i < to; i++) {
      const std::string_view line = lines_[i];
      if (!line.starts_with('%')) {
        plain(line, known);
        continue;
      }
      const std::size_t end = endof(i), space = line.find(' ');
      section(line.substr(1, space - 1), line.substr(space + 1), i + 1, end, known);
      i = end;
    }
  }

  void section(std::string_view word, std::string_view name, std::size_t from, std::size_t to,
               const scope& known) {
    if (word != "each") {
      if (known.has(name) == (word == "if")) block(from, to, known);
      return;
    }
    const std::vector<datanode>* members = known.list(name);
    if (members == nullptr) throw std::logic_error("no list " + std::string(name));
    for (const datanode& member : *members)
      block(from, to, {member, &known, &member == &members->back()});
  }

  static const std::string& textof(std::string_view name, const scope& known) {
    const std::string* text = known.text(name);
    if (text == nullptr) throw std::logic_error("no text " + std::string(name));
    return *text;
  }

  void plain(std::string_view line, const scope& known) {
    const std::size_t start = line.find("$(");
    if (start != std::string_view::npos && line.find_first_not_of(' ') == start &&
        line.find(')') + 1 == line.size())
      return indented(line.substr(0, start),
                      textof(line.substr(start + 2, line.size() - start - 3), known));
    while (!line.empty()) {
      const std::size_t next = std::min(line.find("$("), line.size());
      out_ += line.substr(0, next);
      line.remove_prefix(next);
      if (line.empty()) break;
      const std::size_t end = line.find(')');
      out_ += textof(line.substr(2, end - 2), known);
      line.remove_prefix(end + 1);
    }
    out_ += '\n';
  }

  void indented(std::string_view space, std::string_view text) {
    for (const std::string_view line : linesof(text)) {
      if (!line.empty()) out_ += space;
      out_.append(line) += '\n';
    }
  }

  linelist lines_;
  std::string out_;
};

}  // namespace

std::string filled(std::string_view skeleton, const datanode& data) {
  return filler(skeleton).fill(data);
}

}  // namespace command
