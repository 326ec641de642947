#include "options/nameindex.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace optxv {
namespace {

char folded(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}

/// The first name equal to the text, case ignored, by walking; an empty text equals nothing.
std::int32_t walked(const std::vector<std::string>& names, const std::string& text) {
  for (std::size_t i = 0; i < names.size(); ++i)
    if (!text.empty() && std::equal(text.begin(), text.end(), names[i].begin(), names[i].end(),
                                    [](char a, char b) { return folded(a) == folded(b); }))
      return static_cast<std::int32_t>(i);
  return -1;
}

/// Texts that differ little: few letters, both cases, and the bytes next to the letters, with and
/// without the high bit.
std::string sometext(std::mt19937& random, std::size_t longest) {
  static const std::string bytes("aAbBzZ@[`{_-\0\x7f\xe1\xc1\xfa\xda\xe0\xfb", 20);
  std::string text(random() % (longest + 1), ' ');
  for (char& c : text) c = bytes[random() % bytes.size()];
  return text;
}

TEST(NameIndex, FindsWhatAWalkFinds) {
  std::mt19937 random(20);
  for (const std::size_t longest : {1U, 2U, 9U, 17U, 40U}) {
    txstringlist list;
    nameindex index(list);
    std::vector<std::string> names;
    for (int round = 0; round < 300; ++round) {
      names.push_back(sometext(random, longest));
      index.add(list.add(names.back()));
      for (int query = 0; query < 5; ++query) {
        std::string text = query < 3 ? names[random() % names.size()] : sometext(random, longest);
        if (query == 2 && !text.empty())  // one byte off by the bit that tells the case of letters
          text[random() % text.size()] ^= 0x20;
        ASSERT_EQ(index.find(text), walked(names, text)) << text;
      }
    }
  }
}

}  // namespace
}  // namespace optxv
