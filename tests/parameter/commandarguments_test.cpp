#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "optxv/embedding.h"
#include "support/everykind.h"
#include "support/optiontable.h"
#include "support/rows.h"

namespace optxv {
namespace {

/// The words of a line, cut at blanks but for what stands in single quotes, as a shell has them.
lines wordsof(const std::string& line) {
  lines words;
  bool quoted = false, open = false;
  for (const char each : line) {
    if (each == ' ' && !quoted) {
      open = false;
      continue;
    }
    if (!open) words.emplace_back();
    open = true;
    if (each == '\'')
      quoted = !quoted;
    else
      words.back() += each;
  }
  return words;
}

/// Arguments as a program has them.
class programarguments {
 public:
  explicit programarguments(const std::string& line) : texts_(wordsof("program " + line)) {
    for (std::string& text : texts_) vector_.push_back(text.data());
    vector_.push_back(nullptr);
    count_ = static_cast<int>(texts_.size());
  }
  std::int32_t read(tzmaoptions& options, std::uint32_t flags = 0) {
    return optxv_read_arguments(&options, &count_, vector_.data(), flags);
  }
  std::string left() const {
    EXPECT_EQ(vector_[static_cast<std::size_t>(count_)], nullptr);
    return joined({vector_.begin() + 1, vector_.begin() + count_}, " ");
  }

 private:
  lines texts_;
  std::vector<char*> vector_;
  int count_ = 0;
};

TEST(Arguments, AreTakenAsParameterTextIs) {
  const std::string rows = rowsof("parameter/arguments.rows");
  const std::string definition = everykind() + "print_level integer 28 1 0 9 1 1 Level\n";
  const auto told = [&](const std::string& line) {
    optiontable table(definition);
    programarguments given(line);
    EXPECT_EQ(given.read(*table), optxv_ok);
    return table.told() + (given.left().empty() ? "" : "\nleft: " + given.left());
  };
  EXPECT_EQ(retold(rows, told), rows);
}

TEST(Arguments, ThatAreUnknownMayStay) {
  optiontable table(everykind());
  programarguments given("--other --steplim 7 --nosuch=1 x=1");
  EXPECT_EQ(given.read(*table, optxv_arguments_keep_unknown), optxv_ok);
  EXPECT_EQ(table.told(), "steplim=7");
  EXPECT_EQ(given.left(), "--other --nosuch=1 x=1");
  EXPECT_EQ(given.read(*table, 2), optxv_bad_argument);
}

std::string placed(const optxv_place& place) {
  return std::string(place.file) + " " + std::to_string(place.line) + ":" +
         std::to_string(place.column) + "+" + std::to_string(place.length);
}

TEST(Arguments, ArePlacesOfTheirOwn) {
  optiontable table(everykind());
  std::string told;
  optxv_listener calls = {};
  calls.size = sizeof calls;
  calls.context = &told;
  const auto add = [](void* to, const std::string& text) {
    *static_cast<std::string*>(to) += text + "\n";
  };
  static const auto append = add;
  calls.entered = [](void* to, const optxv_source* e) { append(to, std::string("in ") + e->name); };
  calls.left = [](void* to, const optxv_source* e, std::int32_t) {
    append(to, std::string("out ") + e->name);
  };
  calls.key = [](void* to, const optxv_key* e) { append(to, "key " + placed(e->place)); };
  calls.value = [](void* to, const optxv_value* e) { append(to, "value " + placed(e->place)); };
  calls.stored = [](void* to, const optxv_store* e) { append(to, "stored " + placed(e->place)); };
  calls.message = [](void* to, const optxv_message* e) {
    append(to, "message " + placed(e->place));
  };
  optxv_listen(&*table, &calls);
  programarguments given("--steplim=\"5\" --steplim 7000");
  given.read(*table);
  EXPECT_EQ(told, R"(in argument 1
key argument 1 1:3+7
value argument 1 1:12+1
stored argument 1 1:12+1
out argument 1
in argument 2
key argument 2 1:3+7
out argument 2
in argument 3
value argument 3 1:1+4
message argument 3 1:1+4
message argument 3 1:1+4
out argument 3
)");
  optxv_place place;
  std::int32_t road = 0;
  ASSERT_EQ(optxv_value_place(&*table, table.number("steplim"), &place, &road, nullptr), 1);
  EXPECT_EQ(placed(place), "argument 1 1:12+1");
  ASSERT_EQ(optxv_message_place(&*table, 1, &place), 1);
  EXPECT_EQ(placed(place), "argument 3 1:1+4");
  optxv_message message;
  ASSERT_EQ(optxv_message_info(&*table, 1, &message), optxv_ok);
  EXPECT_EQ(std::string(message.text.bytes, message.text.size),
            "Integer range error for option \"steplim\" saw \"7000\"");
}

}  // namespace
}  // namespace optxv
