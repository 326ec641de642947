#include "foundation/textfile.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/time.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <thread>

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
  const struct {
    std::string text;
    int maximum;
    std::string pieces;
  } rows[] = {{"", 5, ""},
              {"ab\r\n\r\ncd\r", 5, "ab,||cd,"},
              {"ab\rcd\n", 3, "ab,cd,|"},
              {"abcdefg\n", 3, "abc,def,g,|"},
              {"abc\r\n", 3, "abc,|"},
              {"a\0b\x1A\r\r\n"s, 9, "a\0b\x1A\r,|"s}};
  for (const auto& row : rows) {
    folder_.put("file", row.text);
    textfile file;
    file.assign(file_);
    file.reset();
    EXPECT_EQ(pieces(file, row.maximum), row.pieces) << testing::PrintToString(row.text);
    EXPECT_EQ(ioresult(), 0);
  }
}

TEST_F(TextFile, TakesShortLinesWhereTheyLie) {
  textfile file;
  file.resetmemory("ab\n\nabc\r\nabcd\nabcd\r\n\r\nlast");
  std::string all;
  for (std::string_view line; !file.eof(); all += '|') {
    char piece[9];
    const bool taken = file.takeline(4, line);
    if (!taken) line = {piece, static_cast<std::size_t>(file.readstring(piece, 9))}, file.readln();
    all.append(taken ? "" : "!").append(line);
  }
  EXPECT_EQ(all, "ab||abc|abcd|!abcd||!last|");
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
  for (int i = 0; i < 3000; ++i) {
    file.write(line(i) + '\r');
    file.writeln();
  }
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
  EXPECT_EQ(fcntl(descriptor, F_GETFD), -1);
  EXPECT_EQ(folder_.get("file"), "short");
}

std::string xs(std::size_t count) {
  return std::string(count, 'x');
}

TEST_F(TextFile, AMemoryThatIsClosedIsEmpty) {
  textfile memory;
  setioresult(7);
  memory.resetmemory("a\n");
  EXPECT_EQ(ioresult(), 0) << "the code of before is gone";
  EXPECT_EQ(pieces(memory, 9), "a,|");
  memory.resetmemory("a\n");
  memory.close();
  EXPECT_TRUE(memory.eof());
  memory.write("x");
  EXPECT_EQ(ioresult(), EBADF);
}

// What skipping the rest of a line says it has cut off.
TEST_F(TextFile, SkippingTellsWhatItCutOff) {
  const std::pair<std::string, std::size_t> rows[] = {{"", 0},
                                                      {"abc", 0},
                                                      {"abc\nx", 0},
                                                      {"abc\r\nx", 0},
                                                      {"abcdef\nx", 3},
                                                      {"abcdef\r\nx", 3},
                                                      {"abcdef\r\r\nx", 4},
                                                      {"abcde\rf\nx", 4},
                                                      {"abcdef\r", 4},
                                                      {"ab\rdef\nx", 3},
                                                      {xs(65539) + "\r\nx", 65536},
                                                      {xs(65535) + "\r\nx", 65532},
                                                      {xs(65536) + "\r\nx", 65533}};
  for (const auto& [text, cut] : rows) {
    textfile file;
    file.assign(folder_.put("file", text));
    file.reset();
    char piece[3];
    file.readstring(piece, 3);
    EXPECT_EQ(file.readln(), cut) << text.size();
    EXPECT_EQ(pieces(file, 9), text.ends_with('x') ? "x," : "");
  }
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
  fails(folder_.path(), false, EISDIR);
  fails(folder_.path(), true, EISDIR);
  fails(folder_ / "none", false, ENOENT);
  fails(folder_ / "none/file", true, ENOENT);
  fails("\0x"s, false, ENOENT);
  textfile full;
  full.assign("/dev/full");
  setioresult(7);
  full.rewrite();
  EXPECT_EQ(ioresult(), 0) << "the code of before is gone";
  full.write(std::string(100000, 'x'));
  EXPECT_EQ(ioresult(), ENOSPC);
  full.close();
  EXPECT_EQ(ioresult(), ENOSPC) << "the bytes held back behind the first block";
  full.close();
  EXPECT_EQ(ioresult(), 0);
}

TEST_F(TextFile, ReadsThatFail) {
  textfile file;
  file.assign("/proc/self/mem");  // opens, and has nothing to read at its start
  file.reset();
  EXPECT_EQ(file.failure(), 0);
  EXPECT_TRUE(file.eof());
  EXPECT_EQ(ioresult(), EIO);
  file.close();
  EXPECT_EQ(ioresult(), 0);
  EXPECT_EQ(file.failure(), EIO);
  file.resetmemory("");
  EXPECT_EQ(file.failure(), 0);
}

// A line that standard input begins is skipped as that of a file, and what was cut off is told.
TEST_F(TextFile, StandardInputSkipsLines) {
  const test::keptstream input(0);
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  ASSERT_EQ(::write(ends[1], "ab\ncdefgh\r\nij", 13), 13);
  ::close(ends[1]);
  dup2(ends[0], 0);
  textfile file;
  file.reset();
  char text[3];
  EXPECT_EQ(file.readstring(text, 3), 2);
  EXPECT_EQ(file.readln(), 0U);
  EXPECT_EQ(file.readstring(text, 3), 3);
  EXPECT_EQ(file.readln(), 3U);
  EXPECT_EQ(pieces(file, 9), "ij,");
  std::clearerr(stdin);
  ::close(ends[0]);
}

// A device fills up some blocks further on: what was written until then stays.
TEST_F(TextFile, AWriteThatFailsLater) {
  const auto previous = std::signal(SIGXFSZ, SIG_IGN);
  struct rlimit before = {};
  getrlimit(RLIMIT_FSIZE, &before);
  const struct rlimit limit = {150000, before.rlim_max};
  std::string text;
  for (int i = 0; i < 50000; ++i) text += std::to_string(i) + '\n';
  textfile file;
  file.assign(file_);
  file.rewrite();
  setrlimit(RLIMIT_FSIZE, &limit);
  file.write(text.substr(0, 140000));
  const int good = ioresult();
  file.write(text.substr(140000, 60000));
  const int bad = ioresult();
  file.close();
  setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, previous);
  EXPECT_EQ(good, 0);
  EXPECT_EQ(bad, EFBIG);
  EXPECT_EQ(ioresult(), EFBIG) << "the last bytes, which were held back";
  EXPECT_TRUE(folder_.get("file") == text.substr(0, 150000));
}

// A signal that comes while standard output waits for its reader takes nothing away.
TEST_F(TextFile, InterruptedWritesToStandardOutput) {
  std::fflush(stdout);  // what the test program has said so far
  const test::keptstream output(1);
  int ends[2];
  ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
  dup2(ends[1], 1);
  ::close(ends[1]);
  std::string got;
  std::thread reader([&, in = ends[0]] {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, nullptr);
    char piece[512];
    for (ssize_t size; (size = ::read(in, piece, sizeof piece)) > 0;) {
      got.append(piece, static_cast<std::size_t>(size));
      usleep(200);
    }
  });
  // The action stays: a tool that runs the test may hand over the last signal after the timer has
  // ended.
  struct sigaction caught = {};
  caught.sa_handler = [](int) {};
  sigaction(SIGALRM, &caught, nullptr);
  const itimerval often = {{0, 500}, {0, 500}}, never = {};
  setitimer(ITIMER_REAL, &often, nullptr);
  std::string put;
  textfile file;
  file.rewrite();
  file.write({});
  for (int i = 0; i < 20000; ++i) {
    const std::string number = std::to_string(i) + '\n';
    file.write(number);
    put += number;
  }
  file.close();
  setitimer(ITIMER_REAL, &never, nullptr);
  EXPECT_EQ(ioresult(), 0);
  output.restore();
  reader.join();
  ::close(ends[0]);
  EXPECT_TRUE(got == put) << got.size() << " of " << put.size();
}

}  // namespace
}  // namespace optxv
