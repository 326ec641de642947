#include "frame/api.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstring>
#include <new>
#include <string>

namespace optxv {
namespace {

// Stand-ins for methods: functions that need no object.
std::string seen;
void take(std::string_view text) {
  seen = text;
}
std::int32_t fill(std::int32_t number, shortstring& first, std::int32_t& out, double& real,
                  shortstring& second) {
  first.assign("first");
  out = number + 1;
  real = 0.5;
  second = std::string(255, 's');
  return number;
}
void leave(shortstring&) {}
void giveboth(shortstring& first, shortstring& second) {
  first.assign("1");
  second.assign("22");
}

TEST(TextIn, BoundedString) {
  unsigned char text[256];
  std::memset(text, 'x', sizeof text);
  for (const int length : {0, 1, 254, 255}) {
    text[0] = static_cast<unsigned char>(length);
    optcall<take>(nullptr, static_cast<const unsigned char*>(text));
    EXPECT_EQ(seen, std::string(static_cast<std::size_t>(length), 'x'));
  }
  optcall<take>(nullptr, static_cast<const unsigned char*>(nullptr));
  EXPECT_EQ(seen, "");
}

TEST(TextIn, ZeroTerminated) {
  const struct {
    const char* given;
    std::string taken;
  } rows[] = {{nullptr, ""}, {"", ""}, {"text", "text"}};
  for (const auto& row : rows) {
    coptcall<take>(nullptr, row.given);
    EXPECT_EQ(seen, row.taken);
  }
  for (const std::size_t length : {254, 255, 256, 300}) {
    const std::string text(length, 'x');
    coptcall<take>(nullptr, text.c_str());
    EXPECT_EQ(seen, length < 255 ? text : "PCharToStr Overflow") << length;
  }
}

// A caller's buffer with bytes behind it that nobody may touch.
template <class Char>
struct guarded {
  guarded() { std::memset(bytes, '#', sizeof bytes); }
  bool intact() const {
    return std::all_of(bytes + 256, bytes + sizeof bytes, [](Char c) { return c == '#'; });
  }
  Char bytes[512];
};

TEST(OutArguments, BothFormsGiveTheSame) {
  guarded<unsigned char> first, second;
  std::int32_t out = 0;
  double real = 0;
  EXPECT_EQ(optcall<fill>(nullptr, 7, first.bytes, &out, &real, second.bytes), 7);
  EXPECT_EQ(given(first.bytes).view(), "first");
  EXPECT_EQ(given(second.bytes).view(), std::string(255, 's'));
  EXPECT_EQ(out, 8);
  EXPECT_EQ(real, 0.5);
  EXPECT_TRUE(first.intact() && second.intact());

  guarded<char> cfirst, csecond;
  std::int32_t cout = 0;
  double creal = 0;
  EXPECT_EQ(coptcall<fill>(nullptr, 7, cfirst.bytes, &cout, &creal, csecond.bytes), 7);
  EXPECT_STREQ(cfirst.bytes, "first");
  EXPECT_EQ(csecond.bytes, std::string(255, 's'));
  EXPECT_EQ(cout, 8);
  EXPECT_EQ(creal, 0.5);
  EXPECT_TRUE(cfirst.intact() && csecond.intact());
}

TEST(OutArguments, UntouchedText) {
  unsigned char bounded[256] = "\3abc";
  optcall<leave>(nullptr, static_cast<unsigned char*>(bounded));
  EXPECT_EQ(given(static_cast<unsigned char*>(bounded)).view(), "abc");
  char terminated[256] = "abc";
  coptcall<leave>(nullptr, static_cast<char*>(terminated));
  EXPECT_STREQ(terminated, "");
}

TEST(OutArguments, CopiedOutInOrder) {
  char shared[256];
  coptcall<giveboth>(nullptr, static_cast<char*>(shared), static_cast<char*>(shared));
  EXPECT_STREQ(shared, "22");
}

void fail(std::string_view text) {
  if (text == "abort") throw eabort("not to be seen");
  if (text == "memory") throw std::bad_alloc();
  if (text == "foreign") throw 5;
  throw einouterror("the disk is full");
}

TEST(BoundaryDeathTest, NoExceptionCrosses) {
  const struct {
    const char* how;
    const char* output;
  } rows[] = {
      {"io", "Q9 Standard Exception Handler: the disk is full\n"},
      {"memory", "Q9 Standard Exception Handler: Out of Memory in New or GetMem. \n"},
      {"abort", ""},
      {"foreign", ""},
  };
  for (const auto& row : rows) {
    // The line goes to standard output, which a death test does not look at: send it where it does.
    const auto call = [&row] {
      dup2(STDERR_FILENO, STDOUT_FILENO);
      coptcall<fail>(nullptr, row.how);
    };
    EXPECT_EXIT(call(), ::testing::KilledBySignal(SIGABRT),
                ::testing::ResultOf([](const std::string& text) { return text; },
                                    ::testing::StrEq(row.output)))
        << row.how;
  }
}

TEST(Signatures, CodesFollowTheKinds) {
  const auto row = std::ranges::find(signatures, "optGetValuesNr", &signature::apiname);
  ASSERT_NE(row, signatures.end());
  EXPECT_EQ(row->arguments, 5);
  EXPECT_EQ(row->codes, (std::array<std::int32_t, 8>{3, 3, 12, 4, 14, 12, 0, 0}));
}

}  // namespace
}  // namespace optxv
