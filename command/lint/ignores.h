// Comments that silence rules of the linter.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "lint/entryfacts.h"

namespace command {

/// Hears of comments such as
///
///   * optxv: ignore P101, D2 for what reason ever
///
/// which silence these rules, or those whose codes begin so: a comment of its own in the next line
/// that is no comment and not empty, one at the end of a line in that line.
/// BORROWS: the run, whose listener it is.
class ignores : public listener {
 public:
  explicit ignores(const run& of) : of_(of) {}

  /// Whether a comment silences that rule at that place. The comment then counts as used.
  bool silences(std::string_view code, const place& where);

  /// A word of such a comment.
  struct ignoredword {
    std::string word;
    place where = {};
    sharedline line = {};
    bool used = false;
  };
  /// All of them, in their order. One without letters stands for a comment that names no rule.
  const std::vector<ignoredword>& words() const { return words_; }

  void entered(const optxv_source& source) override;
  void left(const optxv_source& source, std::int32_t error) override;
  void line(const optxv_place& where, std::string_view text) override;
  void comment(const optxv_place& where) override;

 private:
  /// A source that is being read: its line, and the words that wait for one to silence.
  struct reader {
    std::int64_t line = 0;
    bool nothing = true;  ///< the line is empty or a comment
    std::vector<std::size_t> waiting = {};
  };

  void endline();
  void take(std::string_view text, const place& where, bool own);

  const run& of_;
  std::vector<reader> readers_;
  std::vector<ignoredword> words_;
  std::map<std::pair<std::string, std::int64_t>, std::vector<std::size_t>> targets_;
};

}  // namespace command
