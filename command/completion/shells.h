// The shells in which words are completed: the script that each runs, and how it is answered. A
// script only asks the command at each TAB, so that there is one place that knows what can stand
// where.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "completion/candidates.h"

namespace command {

/// The program whose words are completed.
struct completedprogram {
  std::string name;
  std::string definition = {};  ///< of its options: the whole path; empty for optxv itself
};

/// Finds what can stand at the end of a command line: the words of it, of which the last is what
/// was typed of it, and may be empty. There is at least one more, the program.
using offermaker = std::function<offer(std::span<const std::string> words)>;

/// One shell.
struct shell {
  std::string_view name;
  std::string_view skeleton;
  /// A text as one word of a script.
  std::string (*quoted)(std::string_view text);
  /// The answer to what the script hands over, as the script reads it.
  std::string (*answer)(std::span<const std::string> handed, const offermaker& find);
};

/// The names of all shells.
std::span<const std::string_view> shellnames();
/// The one of that name. REQUIRES: there is one.
const shell& shellof(std::string_view name);

/// The script for a program. REQUIRES: names without a line feed.
std::string scriptof(const shell& row, const completedprogram& program);

}  // namespace command
