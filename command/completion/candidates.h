// What can stand at the end of a command line: words that begin with what has been typed of it.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace command {

/// A word, and a line about it, which may be empty and have any bytes. A word that ends with = is
/// to be continued.
struct candidate {
  std::string word, text = {};
};

/// What a shell is to offer. Files come from the shell itself, which knows its user's ways.
struct offer {
  enum class kind { words, files, folders };

  std::vector<candidate> candidates = {};
  kind otherwise = kind::words;  ///< what is offered where there is no candidate
  std::string before = {};       ///< of what was typed, the part before the name of a file
};

/// When a word begins with what was typed.
enum class likeness {
  values,    ///< the case of letters does not count
  arguments  ///< nor does it matter whether - or _ is between words, as in names of arguments
};

/// Those of the words that begin with what was typed; where there are none, those that do so by
/// that likeness, with the typed letters as they are, since a shell keeps what was typed. Words
/// that cannot be shown as they are, because of a control character or a byte that is no UTF-8, are
/// left out, and so are empty ones.
std::vector<candidate> beginning(std::span<const candidate> words, std::string_view typed,
                                 likeness like = likeness::values);

/// Adds a text in front of each word.
std::vector<candidate> after(std::string_view before, std::vector<candidate> words);

}  // namespace command
