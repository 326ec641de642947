// Rows that read as what they test: the lines of a text, and beneath it what comes of it.
#pragma once

#include <algorithm>
#include <functional>
#include <iterator>
#include <sstream>
#include <string>

namespace optxv {

/// A text as a row means it: \n, \t and \s are a line end, a tab and a blank, ^M and ^Z are those
/// bytes, and <a*300> is 300 times the a.
inline std::string meant(const std::string& text) {
  const std::string names[] = {"\\n", "\\t", "\\s", "^M", "^Z"};
  const char bytes[] = {'\n', '\t', ' ', '\r', '\x1a'};
  std::string all;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto* name = std::find(std::begin(names), std::end(names), text.substr(i, 2));
    if (name != std::end(names)) {
      all += bytes[name - names];
      ++i;
    } else if (text[i] == '<' && text[i + 2] == '*') {
      all += std::string(std::stoul(text.substr(i + 3)), text[i + 1]);
      i = text.find('>', i);
    } else {
      all += text[i];
    }
  }
  return all;
}

/// The rows again, with what `told` gives for their texts: each of its lines after "> ". Where the
/// test holds, these are the rows as they were. A text of one line comes without its line end.
inline std::string retold(const std::string& rows,
                          const std::function<std::string(const std::string& text)>& told) {
  std::istringstream in(rows);
  std::string all, text;
  const auto finish = [&] {
    if (text.find('\n') == text.size() - 1) text.pop_back();
    std::istringstream answer(told(meant(text)));
    for (std::string line; std::getline(answer, line);) all += "> " + line + '\n';
    text.clear();
  };
  bool after = false;
  for (std::string line; std::getline(in, line);) {
    const bool answer = line.starts_with('>');
    if (!answer && after) finish();
    if (!answer) {
      text += line + '\n';
      all += line + '\n';
    }
    after = answer;
  }
  finish();
  return all;
}

}  // namespace optxv
