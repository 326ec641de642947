#include "foundation/textfile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <tuple>

#include "foundation/runtime.h"

namespace optxv {
namespace {

using namespace std::string_literals;

class TextFile : public testing::Test {
 protected:
  void TearDown() override { std::filesystem::remove_all(folder_); }
  void put(const std::string& content) { std::ofstream(file_, std::ios::binary) << content; }
  std::string content() const {
    std::ostringstream all;
    all << std::ifstream(file_, std::ios::binary).rdbuf();
    return all.str();
  }
  // All of a file in pieces of at most maximum bytes, each with a comma behind it; "|" stands for a
  // line's end.
  static std::string pieces(textfile& file, int maximum) {
    std::string all;
    while (!file.eof()) {
      std::string piece(static_cast<std::size_t>(maximum), '?');
      const int count = file.readstring(piece.data(), maximum);
      all += count > 0 ? piece.substr(0, static_cast<std::size_t>(count)) + ',' : "|";
      if (count == 0) file.readln();
    }
    return all;
  }
  char name_[32] = "/tmp/optxvtextXXXXXX";
  std::string folder_ = mkdtemp(name_), file_ = folder_ + "/file";
};

TEST_F(TextFile, ReadsLinesInPieces) {
  const std::tuple<std::string, int, std::string> table[] = {{"", 5, ""},
                                                             {"ab\ncd", 5, "ab,|cd,"},
                                                             {"ab\r\n\r\ncd\r", 5, "ab,||cd,"},
                                                             {"\n", 5, "|"},
                                                             {"ab\rcd\n", 3, "ab,cd,|"},
                                                             {"abcdefg\n", 3, "abc,def,g,|"},
                                                             {"abc\r\n", 3, "abc,|"},
                                                             {"a\rb\n", 5, "a\rb,|"},
                                                             {"a\0b\x1A\n"s, 9, "a\0b\x1A,|"s},
                                                             {"a\r\r\n", 5, "a\r,|"}};
  for (const auto& [text, maximum, expected] : table) {
    put(text);
    textfile file;
    file.assign(file_);
    file.reset();
    EXPECT_EQ(pieces(file, maximum), expected) << testing::PrintToString(text);
    EXPECT_EQ(ioresult(), 0);
  }
}

// Lines that lie across the edges of the blocks come out whole, on the way out and back.
TEST_F(TextFile, LinesAcrossBlocks) {
  const auto line = [](int i) { return std::string(static_cast<std::size_t>(i % 211), 'x'); };
  textfile file;
  file.assign(file_ + "\0ignored"s);
  file.rewrite();
  for (int i = 0; i < 3000; ++i) file.write(line(i) + '\r'), file.writeln();
  file.write(std::string(200000, 'y') + "\nlast");
  file.reset();
  char text[255];
  for (int i = 0; i < 3000; ++i, file.readln())
    ASSERT_EQ(std::string(text, static_cast<std::size_t>(file.readstring(text, 255))), line(i));
  EXPECT_EQ(file.readstring(text, 255), 255);
  file.readln();
  EXPECT_EQ(pieces(file, 9), "last,");
  file.rewrite();
  file.write("short");
  file.close();
  EXPECT_EQ(content(), "short");
}

TEST_F(TextFile, FailuresAreStored) {
  const std::tuple<std::string, bool, int> rows[] = {{folder_, false, EISDIR},
                                                     {folder_, true, EISDIR},
                                                     {folder_ + "/none", false, ENOENT},
                                                     {folder_ + "/none/file", true, ENOENT},
                                                     {"\0x"s, false, ENOENT}};
  for (const auto& [name, writing, error] : rows) {
    textfile file;
    file.assign(name);
    writing ? file.rewrite() : file.reset();
    EXPECT_EQ(ioresult(), error) << name;
    EXPECT_TRUE(file.eof());
    char byte;
    EXPECT_EQ(file.readstring(&byte, 1), 0);
    file.readln();
    EXPECT_EQ(ioresult(), 0);
    file.write("x");
    EXPECT_EQ(ioresult(), EBADF);
  }
  textfile full;
  full.assign("/dev/full");
  full.rewrite();
  full.write(std::string(100000, 'x'));
  EXPECT_EQ(ioresult(), ENOSPC);
  full.close();
  EXPECT_EQ(ioresult(), ENOSPC) << "the bytes held back behind the first block";
  full.close();
  EXPECT_EQ(ioresult(), 0);
}

TEST_F(TextFile, DescriptorIsClosedOnExecAndWithTheObject) {
  const int descriptor = dup(0);  // the number that the next open will get
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
  const int kept = dup(descriptor), other = open(name.c_str(), flags, 0666);
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
    EXPECT_EQ(pieces(file, 4), "one,|two,||long, lin,e,");
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
}

}  // namespace
}  // namespace optxv
