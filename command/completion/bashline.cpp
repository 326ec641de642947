#include "completion/bashline.h"

#include <algorithm>

namespace command {
namespace {

bool isone(std::string_view characters, char c) {
  return characters.find(c) != characters.npos;
}

class linereader {
 public:
  linereader(std::string_view line, std::size_t replacedfrom)
      : line_(line), replacedfrom_(replacedfrom) {}

  bashline read();

 private:
  void plain(char c);
  void quoted(char c);
  void escaped();
  void endword();
  void redirect();

  std::string_view line_;
  std::size_t replacedfrom_, next_ = 0;
  std::string word_;
  bool inword_ = false;
  bashline result_;
};

bashline linereader::read() {
  while (next_ < line_.size()) {
    if (next_ <= replacedfrom_) result_.kept = word_.size();
    const char c = line_[next_++];
    if (result_.quote != 0)
      quoted(c);
    else
      plain(c);
  }
  if (next_ <= replacedfrom_) result_.kept = word_.size();
  result_.words.push_back(word_);
  return std::move(result_);
}

void linereader::plain(char c) {
  if (isone(" \t\n", c)) return endword();
  if (isone("<>", c)) return redirect();
  inword_ = true;
  if (isone("'\"", c))
    result_.quote = c;
  else if (c == '\\')
    escaped();
  else
    word_ += c;
}

void linereader::quoted(char c) {
  if (c == result_.quote)
    result_.quote = 0;
  else if (c == '\\' && result_.quote == '"' && next_ < line_.size() &&
           isone("$`\"\\", line_[next_]))
    escaped();
  else
    word_ += c;
}

void linereader::escaped() {
  if (next_ < line_.size()) word_ += line_[next_++];
}

void linereader::endword() {
  if (!inword_) return;
  if (!result_.redirected) result_.words.push_back(word_);
  word_.clear();
  result_.kept = 0;
  inword_ = result_.redirected = false;
}

/// The digits in front of the character are the number of a file, no word.
void linereader::redirect() {
  if (word_.find_first_not_of("0123456789&") == word_.npos)
    word_.clear();
  else
    endword();
  result_.kept = 0;
  inword_ = false;
  result_.redirected = true;
  while (next_ < line_.size() && isone("<>&|", line_[next_])) next_++;
}

}  // namespace

bashline readbashline(std::string_view line, std::string_view replaced) {
  const std::size_t size = line.ends_with(replaced) ? replaced.size() : 0;
  return linereader(line, line.size() - size).read();
}

std::string bashquoted(std::string_view text, char quote) {
  constexpr std::string_view special = " \t\"'\\$`&;|<>()*?[]{}!#~^";
  std::string result;
  for (const char c : text) {
    if (quote == '\'')
      result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    else if (quote == '"' && c == '!')
      result += "\"'!'\"";  // the history is searched for it even behind a backslash
    else
      result += (isone(quote == '"' ? "\"\\$`" : special, c) ? "\\" : "") + std::string(1, c);
  }
  return result;
}

}  // namespace command
