#include "foundation/textfile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "foundation/runtime.h"

namespace optxv {
namespace {

using namespace std::string_literals;

class TextFile : public testing::Test {
 protected:
  void SetUp() override {
    char name[] = "/tmp/optxvtextXXXXXX";
    ASSERT_NE(mkdtemp(name), nullptr);
    folder_ = name;
    file_ = folder_ + "/file";
    ioresult();
  }
  void TearDown() override { std::filesystem::remove_all(folder_); }

  void put(const std::string& content) { std::ofstream(file_, std::ios::binary) << content; }
  std::string content() const {
    std::ostringstream all;
    all << std::ifstream(file_, std::ios::binary).rdbuf();
    return all.str();
  }
  // All lines of a file, each in pieces of at most maximum bytes; "|" stands for a line's end.
  static std::vector<std::string> pieces(textfile& file, int maximum) {
    std::vector<std::string> all;
    while (!file.eof()) {
      std::string piece(static_cast<std::size_t>(maximum), '?');
      const int count = file.readstring(piece.data(), maximum);
      all.push_back(piece.substr(0, static_cast<std::size_t>(count)));
      if (count == 0) file.readln(), all.back() = "|";
    }
    return all;
  }

  std::string folder_, file_;
};

TEST_F(TextFile, ReadsLinesInPieces) {
  using rows = std::vector<std::string>;
  const struct {
    std::string content;
    int maximum;
    rows expected;
  } table[] = {
      {"", 5, {}},
      {"\n", 5, {"|"}},
      {"ab\ncd", 5, {"ab", "|", "cd"}},
      {"ab\r\n\r\ncd\r", 5, {"ab", "|", "|", "cd"}},
      {"a\r\r\n", 5, {"a\r", "|"}},
      {"a\rb\n", 5, {"a\rb", "|"}},
      {"abcdefg\n", 3, {"abc", "def", "g", "|"}},
      {"abc\r\n", 3, {"abc", "|"}},        // the carriage return makes an empty piece
      {"ab\rcd\n", 3, {"ab", "cd", "|"}},  // dropped within the line, at the maximum
      {"a\0b\x1A\n"s, 9, {"a\0b\x1A"s, "|"}},
  };
  for (const auto& row : table) {
    put(row.content);
    textfile file;
    file.assign(file_);
    file.reset();
    EXPECT_EQ(pieces(file, row.maximum), row.expected) << testing::PrintToString(row.content);
    EXPECT_EQ(ioresult(), 0);
  }
}

// Lines that lie across the edges of the reader's blocks come out whole.
TEST_F(TextFile, LinesAcrossBlocks) {
  std::string all;
  for (int i = 0; i < 3000; ++i)
    all += std::string(static_cast<std::size_t>(i % 211), 'x') + "\r\n";
  put(all + std::string(200000, 'y') + "\nlast");
  textfile file;
  file.assign(file_);
  file.reset();
  char line[255];
  for (int i = 0; i < 3000; ++i, file.readln())
    ASSERT_EQ(file.readstring(line, 255), i % 211) << "line " << i;
  EXPECT_EQ(file.readstring(line, 255), 255);
  file.readln();
  EXPECT_EQ(std::string(line, static_cast<std::size_t>(file.readstring(line, 255))), "last");
  EXPECT_TRUE(file.eof());
}

TEST_F(TextFile, WritesWhatItIsGiven) {
  std::string expected;
  textfile file;
  file.assign(file_ + "\0ignored"s);
  file.rewrite();
  EXPECT_TRUE(file.eof());
  for (int i = 0; i < 2000; ++i) {
    const std::string text(static_cast<std::size_t>(i % 97), static_cast<char>(i));
    file.write(text);
    file.writeln();
    expected += text + "\n";
  }
  file.write(std::string(150000, 'z'));
  file.close();
  EXPECT_FALSE(file.opened());
  EXPECT_EQ(content(), expected + std::string(150000, 'z'));
  file.rewrite();
  file.write("short");
  file.close();
  EXPECT_EQ(content(), "short");
  EXPECT_EQ(ioresult(), 0);
}

TEST_F(TextFile, FailuresAreStored) {
  const struct {
    std::string name;
    bool writing;
    int error;
  } rows[] = {
      {folder_, false, EISDIR},
      {folder_, true, EISDIR},
      {folder_ + "/none", false, ENOENT},
      {folder_ + "/none/file", true, ENOENT},
      {"\0x"s, false, ENOENT},
  };
  for (const auto& row : rows) {
    textfile file;
    file.assign(row.name);
    row.writing ? file.rewrite() : file.reset();
    EXPECT_EQ(ioresult(), row.error) << row.name;
    EXPECT_FALSE(file.opened());
    EXPECT_TRUE(file.eof());
    char byte;
    EXPECT_EQ(file.readstring(&byte, 1), 0);
    file.readln();
    EXPECT_EQ(ioresult(), 0);
    file.write("x");
    EXPECT_EQ(ioresult(), EBADF);
  }
}

TEST_F(TextFile, FullDeviceIsStoredOnce) {
  textfile file;
  file.assign("/dev/full");
  file.rewrite();
  ASSERT_EQ(ioresult(), 0);
  file.write(std::string(100000, 'x'));
  EXPECT_EQ(ioresult(), ENOSPC);
  file.close();
  EXPECT_EQ(ioresult(), ENOSPC);  // the bytes held back behind the first block
  file.close();
  EXPECT_EQ(ioresult(), 0);
}

TEST_F(TextFile, DescriptorIsClosedOnExecAndWithTheObject) {
  const int descriptor = dup(0);  // the number that the next open will get
  ASSERT_GE(descriptor, 0);
  ::close(descriptor);
  {
    textfile file;
    file.assign(file_);
    file.rewrite();
    EXPECT_EQ(fcntl(descriptor, F_GETFD), FD_CLOEXEC);
  }
  EXPECT_EQ(fcntl(descriptor, F_GETFD), -1);
}

// Runs body with a descriptor of the process standing on another file.
template <class Body>
void redirected(int descriptor, const std::string& name, int flags, Body body) {
  const int kept = dup(descriptor);
  const int other = open(name.c_str(), flags, 0666);
  dup2(other, descriptor);
  body();
  dup2(kept, descriptor);
  close(other);
  close(kept);
}

TEST_F(TextFile, EmptyNameIsTheStandardStream) {
  put("one\r\ntwo\n\nlong line");
  redirected(STDIN_FILENO, file_, O_RDONLY, [] {
    textfile file;
    file.reset();
    EXPECT_EQ(pieces(file, 4),
              (std::vector<std::string>{"one", "|", "two", "|", "|", "long", " lin", "e"}));
  });
  EXPECT_NE(fcntl(STDIN_FILENO, F_GETFD), -1);
  std::fflush(stdout);
  redirected(STDOUT_FILENO, file_, O_WRONLY | O_TRUNC, [] {
    textfile file;
    file.rewrite();
    file.write("to standard output");
    file.writeln();
  });
  EXPECT_EQ(content(), "to standard output\n");
  EXPECT_EQ(ioresult(), 0);
}

}  // namespace
}  // namespace optxv
