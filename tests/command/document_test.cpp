#include "text/document.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <future>
#include <tuple>

#include "support/scratchfolder.h"
#include "text/shelf.h"

namespace optxv::test {
namespace {

using command::descriptor, command::textdocument, command::readresult, command::readfailure,
    command::shelf;

std::string textof(const readresult& result) {
  const auto* text = std::get_if<textdocument>(&result);
  return text != nullptr ? std::string(text->text()) : std::get<readfailure>(result).words();
}

class Document : public testing::Test {
 protected:
  /// A named pipe that gives a text to its first reader.
  std::string pipe(const std::string& name, const std::string& text) {
    mkfifo((folder_ / name).c_str(), 0600);
    writer_ = std::async(std::launch::async, [path = folder_ / name, text] {
      const descriptor out(open(path.c_str(), O_WRONLY | O_CLOEXEC));
      optxv::writeall(out.number(), text);
    });
    return folder_ / name;
  }

  const scratchfolder folder_;
  std::future<void> writer_;  // waits for the writer at its end
};

TEST_F(Document, EveryFailedReadIsAFailure) {
  const std::string file = folder_.put("file", "12345");
  std::filesystem::create_symlink("loop", folder_ / "loop");
  const std::tuple<std::string, std::size_t, std::string> rows[] = {
      {file, 5, "12345"},
      {file, 4, "larger than 1 GiB together with the files before it"},
      {"/dev/zero", 1000, "larger than 1 GiB together with the files before it"},
      {"/dev/null", 0, ""},
      {folder_ / "none", 9, "No such file or directory"},
      {file + std::string("\0x", 2), 9, "No such file or directory"},
      {file + "/x", 9, "Not a directory"},
      {folder_.path(), 9, "Is a directory"},
      {folder_ / "loop", 9, "Too many levels of symbolic links"},
      {folder_ / std::string(256, 'n'), 9, "File name too long"},
      {"/proc/self/mem", 9, "Input/output error"}};
  for (const auto& [name, limit, result] : rows)
    EXPECT_EQ(textof(textdocument::read(name, limit)), result) << name;
  std::filesystem::resize_file(file, textdocument::largest + 1);  // a hole, which takes no room
  EXPECT_EQ(textof(textdocument::read(file)), "larger than 1 GiB");
}

/// What standard input gives, twice, in a process of its own: a pipe with a text in it.
void readtwice(const std::string& text, bool ended, const std::string& expected) {
  std::array<int, 2> ends{};
  const bool ready = pipe2(ends.data(), O_NONBLOCK) == 0 && optxv::writeall(ends[1], text) &&
                     dup2(ends[0], STDIN_FILENO) == STDIN_FILENO && (!ended || close(ends[1]) == 0);
  const bool same =
      textof(textdocument::read("-")) == expected && textof(textdocument::read("-")) == expected;
  std::_Exit(ready && same ? 0 : 1);
}

TEST_F(Document, StandardInputIsReadOnceAndToItsEnd) {
  const testing::ExitedWithCode fine(0);
  EXPECT_EXIT(readtwice("abc", true, "abc"), fine, "");
  EXPECT_EXIT(readtwice("", true, ""), fine, "");
  EXPECT_EXIT(readtwice("abc", false, "Resource temporarily unavailable"), fine, "");
}

TEST_F(Document, NamesAreOfAnyLength) {
  const std::string deep = folder_ / std::string(200, 'd');
  std::filesystem::create_directory(deep);
  std::ofstream(deep + '/' + std::string(200, 'f')) << "text";
  const readresult result = textdocument::read(deep + '/' + std::string(200, 'f'));
  EXPECT_EQ(textof(result), "text");
}

TEST_F(Document, AShelfReadsEachFileOnce) {
  const std::string file = folder_.put("file", "old");
  std::filesystem::create_symlink("file", folder_ / "link");
  std::filesystem::create_hard_link(file, folder_ / "other");
  const std::string fifo = pipe("fifo", "from the pipe");
  shelf all;
  EXPECT_EQ(textof(all.input(file)), "old");
  folder_.put("file", "new");
  for (const std::string name : {"file", "./file", "link", "other"})
    EXPECT_EQ(textof(all.input(folder_ / name)), "old") << name;
  for (int i = 0; i < 2; i++) EXPECT_EQ(textof(all.input(fifo)), "from the pipe");
  EXPECT_EQ(textof(all.input(folder_ / "./fifo")), "from the pipe");
  EXPECT_EQ(textof(all.input(folder_ / "none")), "No such file or directory");
}

}  // namespace
}  // namespace optxv::test
