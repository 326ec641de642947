#include "foundation/textfile.h"

#include <fcntl.h>

#include <cerrno>

#include "foundation/runtime.h"
#include "support/scratchfolder.h"

namespace optxv {
namespace {

using namespace std::string_literals;

class TextFile : public testing::Test {
 protected:
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
  const test::scratchfolder folder_;
  const std::string file_ = folder_ / "file";
};

TEST_F(TextFile, ReadsLinesInPieces) {
  const auto gives = [&](const std::string& text, int maximum, const std::string& expected) {
    folder_.put("file", text);
    textfile file;
    file.assign(file_);
    file.reset();
    EXPECT_EQ(pieces(file, maximum), expected) << testing::PrintToString(text);
    EXPECT_EQ(ioresult(), 0);
  };
  gives("", 5, ""), gives("ab\r\n\r\ncd\r", 5, "ab,||cd,"), gives("ab\rcd\n", 3, "ab,cd,|");
  gives("abcdefg\n", 3, "abc,def,g,|"), gives("abc\r\n", 3, "abc,|");
  gives("a\0b\x1A\r\r\n"s, 9, "a\0b\x1A\r,|"s);
}

// Lines that lie across the edges of the blocks come out whole, on the way out and back.
TEST_F(TextFile, LinesAcrossBlocks) {
  const auto line = [](int i) { return std::string(static_cast<std::size_t>(i % 211), 'x'); };
  textfile file;
  file.assign(file_ + "\0ignored"s);
  const int descriptor = dup(0);  // the number that the next open will get
  ::close(descriptor);
  file.rewrite();
  EXPECT_EQ(fcntl(descriptor, F_GETFD), FD_CLOEXEC);
  for (int i = 0; i < 3000; ++i) file.write(line(i) + '\r'), file.writeln();
  file.write(std::string(200000, 'y') + "\nlast");
  file.reset();
  char text[255];
  for (int i = 0; i < 3000; ++i, file.readln())
    ASSERT_EQ(std::string(text, static_cast<std::size_t>(file.readstring(text, 255))), line(i));
  EXPECT_EQ(file.readstring(text, 255), 255);
  file.readln();
  EXPECT_EQ(pieces(file, 9), "last,");
  file.rewrite(), file.write("short"), file.close();
  EXPECT_EQ(fcntl(descriptor, F_GETFD), -1);
  EXPECT_EQ(folder_.get("file"), "short");
}

TEST_F(TextFile, FailuresAreStored) {
  const auto fails = [](const std::string& name, bool writing, int error) {
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
  };
  fails(folder_.path(), false, EISDIR), fails(folder_.path(), true, EISDIR);
  fails(folder_ / "none", false, ENOENT), fails(folder_ / "none/file", true, ENOENT);
  fails("\0x"s, false, ENOENT);
  textfile full;
  full.assign("/dev/full"), setioresult(7), full.rewrite();
  EXPECT_EQ(ioresult(), 0) << "the code of before is gone";
  full.write(std::string(100000, 'x'));
  EXPECT_EQ(ioresult(), ENOSPC);
  full.close();
  EXPECT_EQ(ioresult(), ENOSPC) << "the bytes held back behind the first block";
  full.close();
  EXPECT_EQ(ioresult(), 0);
}

}  // namespace
}  // namespace optxv
