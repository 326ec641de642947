#include "lint/ignores.h"

#include <algorithm>

#include "text/names.h"

namespace command {
namespace {

constexpr std::string_view blanks = " \t";

bool skip(std::string_view& text, std::string_view word) {
  if (!text.starts_with(word)) return false;
  text.remove_prefix(word.size());
  return true;
}

void skipblanks(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
}

/// What follows the mark of a comment and `optxv: ignore`; nil without these.
std::string_view directiveof(std::string_view comment) {
  const auto letter = std::ranges::find_if(comment, isletter);
  comment.remove_prefix(static_cast<std::size_t>(letter - comment.begin()));
  if (!skip(comment, "optxv:")) return {};
  skipblanks(comment);
  if (!skip(comment, "ignore")) return {};
  return comment.empty() || blanks.find(comment[0]) != blanks.npos ? comment : std::string_view();
}

}  // namespace

bool ignores::silences(std::string_view code, const place& where) {
  if (targets_.empty()) return false;
  const auto found = targets_.find({where.file, where.line});
  if (found == targets_.end()) return false;
  bool silenced = false;
  for (const std::size_t index : found->second) {
    ignoredword& each = words_[index];
    if (each.word.empty() || !code.starts_with(each.word)) continue;
    each.used = silenced = true;
  }
  return silenced;
}

void ignores::entered(const optxv_source&) {
  readers_.emplace_back();
}

void ignores::left(const optxv_source&, std::int32_t) {
  endline();
  readers_.pop_back();
}

/// Once all comments of a line are known, those of their own before it apply to it, unless there is
/// nothing in it.
void ignores::endline() {
  reader& now = readers_.back();
  if (now.nothing || now.waiting.empty()) return;
  const std::string& file = words_[now.waiting.front()].where.file;
  std::vector<std::size_t>& here = targets_[{file, now.line}];
  here.insert(here.end(), now.waiting.begin(), now.waiting.end());
  now.waiting.clear();
}

void ignores::line(const optxv_place& where, std::string_view text) {
  endline();
  reader& now = readers_.back();
  now.line = where.line;
  now.nothing = text.find_first_not_of(blanks) == text.npos;
}

void ignores::comment(const optxv_place& where) {
  const std::string_view text = of_.at().ahead(where.column);
  const std::string_view before = std::string_view(of_.at().source().text)
                                      .substr(0, static_cast<std::size_t>(where.column - 1));
  const bool own = before.find_first_not_of(blanks) == before.npos;
  if (own) readers_.back().nothing = true;
  const std::string_view words = directiveof(text);
  if (words.data() == nullptr) return;
  place rest(where);
  rest.column += words.data() - text.data();
  take(words, rest, own);
}

/// Takes the words with commas between them; what follows is for people.
void ignores::take(std::string_view text, const place& where, bool own) {
  const char* const start = text.data();
  const auto line = std::make_shared<const std::string>(of_.at().source().text);
  do {
    skipblanks(text);
    const auto end = std::ranges::find_if_not(text, isnamecharacter);
    const std::string_view word(text.begin(), end);
    place at = where;
    at.column += word.data() - start;
    at.length = static_cast<std::int64_t>(word.size());
    if (!own) targets_[{where.file, where.line}].push_back(words_.size());
    if (own) readers_.back().waiting.push_back(words_.size());
    words_.push_back({std::string(word), at, line});
    text.remove_prefix(word.size());
    skipblanks(text);
  } while (skip(text, ","));
}

}  // namespace command
