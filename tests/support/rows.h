// Rows that read as what they test: the lines of a text, and beneath it what comes of it. They
// stand in the test, or in a file of rows beside it.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <sstream>
#include <string>

namespace optxv {

/// A text as a row means it: \n, \t and \s are a line end, a tab and a blank, ^M and ^Z are those
/// bytes, and <ab*30> is 30 times ab.
inline std::string meant(std::string text) {
  static const std::map<std::string, char> names = {
      {"\\n", '\n'}, {"\\t", '\t'}, {"\\s", ' '}, {"^M", '\r'}, {"^Z", '\x1a'}};
  for (const auto& [name, byte] : names)
    for (std::size_t at = 0; (at = text.find(name, at)) != std::string::npos; ++at)
      text.replace(at, name.size(), 1, byte);
  for (std::size_t at = 0; (at = text.find('<', at)) != std::string::npos; ++at) {
    const std::size_t end = text.find('>', at), star = text.rfind('*', end);
    const bool repeated = end != std::string::npos && star > at + 1 && star + 1 < end &&
                          text.find_first_not_of("0123456789", star + 1) == end;
    if (!repeated) continue;
    std::string all;
    for (int i = std::stoi(text.substr(star + 1)); i > 0; --i)
      all += text.substr(at + 1, star - at - 1);
    text.replace(at, end + 1 - at, all);
  }
  return text;
}

/// The other way: a letter that stands there many times, as <a*300>, and a blank at the end.
inline std::string shortened(const std::string& text) {
  std::string all;
  for (std::size_t at = 0, end = 0; at < text.size(); at = end) {
    end = std::min(text.find_first_not_of(text[at], at), text.size());
    const std::string run = text.substr(at, end - at);
    all += run.size() < 40 ? run : std::string("<") + run[0] + '*' + std::to_string(end - at) + '>';
  }
  if (all.ends_with(' ')) all.replace(all.size() - 1, 1, "\\s");
  return all;
}

/// The rows of a file in tests/.
inline std::string rowsof(const std::string& name) {
  std::ifstream file(OPTXV_TESTS "/" + name);
  EXPECT_TRUE(file.is_open()) << name;
  return {std::istreambuf_iterator<char>(file), {}};
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
    for (std::string line; std::getline(answer, line);)
      all += line.empty() ? ">\n" : "> " + shortened(line) + '\n';
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
