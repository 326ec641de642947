#include "options/tablememory.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace optxv {
namespace {

// Texts and objects in turn, over many blocks: each stays what it was, and objects stay aligned.
TEST(TableMemory, KeepsTextsAndObjectsApart) {
  tablememory memory;
  std::vector<std::pair<kepttext, std::string>> texts;
  std::vector<std::pair<char*, std::string>> objects;
  for (std::size_t i = 0; i < 3000; ++i) {
    const std::string bytes(i % 300, static_cast<char>('a' + i % 26));
    texts.emplace_back(memory.keep(bytes), bytes.substr(0, 255));
    objects.emplace_back(static_cast<char*>(memory.take(bytes.size())), bytes);
    bytes.copy(objects.back().first, bytes.size());
  }
  for (const auto& [text, bytes] : texts) EXPECT_EQ(text.view(), bytes);
  for (const auto& [object, bytes] : objects) {
    EXPECT_EQ(std::string(object, bytes.size()), bytes);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(object) % tablememory::alignment, 0U);
  }
  EXPECT_EQ(memory.keep("").asheapstring(), nullptr);
  const std::string large(10000, 'x');
  EXPECT_EQ(memory.keep(large).view(), large.substr(0, 255));
  std::memset(memory.take(large.size()), 0, large.size());
}

}  // namespace
}  // namespace optxv
