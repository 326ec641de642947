#include "output/delivery.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <future>
#include <set>
#include <thread>
#include <tuple>
#include <vector>

#include "commandrun.h"

// Calls that a signal interrupts, as far as the library can see: a bit for each of the next ones,
// the lowest first.
namespace {
unsigned interruptions = 0;

bool interrupts() {
  const bool now = (interruptions & 1) != 0;
  interruptions >>= 1;
  if (now) errno = EINTR;
  return now;
}
}  // namespace
extern "C" {
__attribute__((visibility("default"))) int fsync(int file) {
  return interrupts() ? -1 : static_cast<int>(syscall(SYS_fsync, file));
}
__attribute__((visibility("default"))) int close(int file) {
  const int closed = static_cast<int>(syscall(SYS_close, file));
  return interrupts() ? -1 : closed;
}
}

namespace optxv::test {
namespace {

namespace fs = std::filesystem;
using command::deliver, command::identity;

/// What deliver tells; empty if all went well.
std::string told(const std::string& destination, const std::string& product,
                 const std::vector<identity>& inputs = {}) {
  const auto failed = deliver(destination, product, inputs);
  return failed ? command::failuretext(*failed) : "";
}

struct stat statusof(const std::string& path) {
  struct stat status = {};
  EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
  return status;
}

class Delivery : public commandrun {
 protected:
  std::string path(const std::string& name) const { return folder_ / name; }
  std::set<std::string> names() const {
    std::set<std::string> all;
    for (const auto& each : fs::directory_iterator(folder_.path()))
      all.insert(each.path().filename());
    return all;
  }
  /// Runs a piece in a process of its own, without the rights of root, and hands back what it says.
  template <class Piece>
  std::string asnobody(Piece piece) const {
    fs::permissions(folder_.path(), fs::perms::all);
    std::array<int, 2> ends{};
    EXPECT_EQ(pipe(ends.data()), 0);
    const pid_t child = fork();
    if (child == 0) {
      constexpr uid_t nobody = 65534;
      const bool ready = getuid() != 0 || (setgid(nobody) == 0 && setuid(nobody) == 0);
      writeall(ends[1], ready ? piece() : "no way to become nobody");
      std::_Exit(0);
    }
    const descriptor from(ends[0]);
    close(ends[1]);
    std::string text(1000, '\0');
    text.resize(static_cast<std::size_t>(read(from.number(), text.data(), text.size())));
    waitpid(child, nullptr, 0);
    return text;
  }
};

TEST_F(Delivery, AFileIsReplacedAndKeepsWhatItIs) {
  umask(022);
  EXPECT_EQ(told(path("fresh"), "new"), "");
  EXPECT_EQ(statusof(path("fresh")).st_mode & 07777, 0644U);
  const std::tuple<mode_t, uid_t, gid_t> rows[] = {
      {0600, 1234, 4321}, {0664, 1234, getgid()}, {0755, getuid(), 4321}};
  for (const auto& [mode, user, group] : rows) {
    save("file", "old, and longer");
    chmod(path("file").c_str(), mode);
    ASSERT_TRUE(getuid() != 0 || chown(path("file").c_str(), user, group) == 0);
    const struct stat before = statusof(path("file"));
    EXPECT_EQ(told(path("file"), "new"), "");
    const struct stat after = statusof(path("file"));
    EXPECT_EQ(get("file"), "new");
    EXPECT_EQ(std::tuple(after.st_mode, after.st_uid, after.st_gid),
              std::tuple(before.st_mode, before.st_uid, before.st_gid));
    EXPECT_NE(after.st_ino, before.st_ino);
  }
  EXPECT_EQ(names(), (std::set<std::string>{"file", "fresh"}));
}

TEST_F(Delivery, LinksStay) {
  save("file", "old");
  save("one", "old and longer");
  fs::create_directory(path("sub"));
  fs::create_symlink("../file", path("sub/link"));
  fs::create_symlink("sub/link", path("chain"));
  fs::create_symlink("sub/nothing", path("dangling"));
  fs::create_hard_link(path("one"), path("two"));
  const std::pair<std::string, std::string> rows[] = {
      {"chain", "file"}, {"sub/link", "file"}, {"dangling", "sub/nothing"}, {"two", "one"}};
  for (const auto& [destination, file] : rows) {
    EXPECT_EQ(told(path(destination), "by " + destination), "");
    EXPECT_EQ(get(file), "by " + destination);
  }
  for (const char* link : {"chain", "sub/link", "dangling"})
    EXPECT_TRUE(fs::is_symlink(path(link))) << link;
  EXPECT_EQ(statusof(path("one")).st_nlink, 2U);
  // As many as the system follows.
  for (int i = 1; i <= 41; i++)
    fs::create_symlink(i == 1 ? "file" : std::to_string(i - 1), path(std::to_string(i)));
  EXPECT_EQ(told(path("40"), "by the last"), "");
  EXPECT_EQ(get("40"), "by the last");
  EXPECT_NE(told(path("41"), "too far").find("Too many levels of symbolic links"),
            std::string::npos);
}

TEST_F(Delivery, DescriptorsDevicesAndPipesAreWrittenThrough) {
  save("log", "begun\n");
  {
    const descriptor log(open(path("log").c_str(), O_WRONLY | O_APPEND | O_CLOEXEC));
    const std::string number = std::to_string(log.number()), process = std::to_string(getpid());
    fs::create_symlink("/dev/fd/" + number, path("link"));
    for (const std::string& name :
         {"/dev/fd/" + number, "/proc/self/fd/" + number, "/proc/" + process + "/fd/" + number,
          "/proc/self/task/" + process + "/fd/" + number, path("link")})
      EXPECT_EQ(told(name, name + '\n'), "") << name;
    EXPECT_EQ(std::ranges::count(get("log"), '\n'), 6);
    EXPECT_EQ(get("log").find("begun\n/dev/fd/"), 0U);
  }
  mkfifo(path("fifo").c_str(), 0600);
  auto reader = std::async(std::launch::async, [&] { return get("fifo"); });
  EXPECT_EQ(told(path("fifo"), "through"), "");
  EXPECT_EQ(reader.get(), "through");
  EXPECT_EQ(told("/dev/null", "gone"), "");
  EXPECT_TRUE(fs::is_fifo(path("fifo")) && fs::is_character_file("/dev/null"));
}

TEST_F(Delivery, StandardOutputIsAppendedTo) {
  save("s.def", "steplim integer 1 1000 0 10000 10 1 Step limit\n");
  save("p", "steplim 7\n");
  for (const char* destination : {"", "-o /dev/stdout", "-o /dev/fd/1", "-o /dev/fd/7 7>&1"}) {
    save("log", "begun\n");
    const outcome got = run(std::string("write s.def p >>log ") + destination);
    EXPECT_EQ(get("log") + got.err, "begun\nsteplim=7\n") << destination;
  }
  const descriptor mine(open(path("log").c_str(), O_WRONLY | O_CLOEXEC));
  const std::string process = std::to_string(getpid()), number = std::to_string(mine.number());
  run("write s.def p -o /proc/" + process + "/fd/" + number);
  EXPECT_EQ(get("log"), "begun\nsteplim=7\nsteplim=7\n");
}

TEST_F(Delivery, InputsAreNotWrittenOver) {
  save("input", "the input");
  save("second", "2");
  save("output", "3");
  fs::create_symlink("input", path("link"));
  fs::create_hard_link(path("input"), path("hard"));
  const descriptor opened(open(path("input").c_str(), O_WRONLY | O_APPEND | O_CLOEXEC));
  std::vector<identity> inputs;
  for (const std::string& name : {path("second"), path("input"), std::string("/dev/null")})
    inputs.push_back(command::identityof(statusof(name)));
  const std::string through = "/dev/fd/" + std::to_string(opened.number());
  for (const std::string& name :
       {path("input"), path("./input"), path("link"), path("hard"), through}) {
    EXPECT_EQ(told(name, "product", inputs),
              "optxv: error: " + name +
                  ": cannot be written: it is one of the files that were read\n"
                  "optxv: note: --force writes over it\n");
  }
  EXPECT_EQ(get("input"), "the input");
  for (const std::string& name : {path("output"), path("none"), std::string("/dev/null")})
    EXPECT_EQ(told(name, "product", inputs), "") << name;
}

TEST_F(Delivery, FailuresLeaveWhatIsThere) {
  save("file", "old");
  fs::create_symlink("loop", path("loop"));
  const std::set<std::string> before = names();
  const std::tuple<std::string, std::string, std::string> rows[] = {
      {folder_.path(), "cannot be opened", "Is a directory"},
      {path("none/x"), "cannot be opened", "No such file or directory"},
      {path("file/x"), "cannot be opened", "Not a directory"},
      {path("loop"), "cannot be opened", "Too many levels of symbolic links"},
      {path(std::string(256, 'n')), "cannot be opened", "File name too long"},
      {"/dev/full", "cannot be written", "No space left on device"},
      {"/dev/fd/999", "cannot be opened", "Bad file descriptor"}};
  for (const auto& [name, what, why] : rows)
    EXPECT_EQ(told(name, "new"), "optxv: error: " + name + ": " + what + ": " + why + '\n');
  EXPECT_EQ(names(), before);
  EXPECT_EQ(get("file"), "old");
}

TEST_F(Delivery, InterruptionsDoNotShow) {
  for (const unsigned calls : {0b1U, 0b11U, 0b10U, 0b100U, 0b1000U}) {
    const kept back(interruptions);
    interruptions = calls;
    EXPECT_EQ(told(path("file"), "new"), "") << calls;
    EXPECT_EQ(interruptions, 0) << "the library calls others";
    EXPECT_EQ(get("file"), "new");
  }
}

TEST_F(Delivery, AFileThatIsTooLargeIsAFailureAndNoDeath) {
  save("file", "old");
  const std::string failed = asnobody([&] {
    const struct rlimit limit = {100, 100};
    setrlimit(RLIMIT_FSIZE, &limit);
    return told(path("fresh"), std::string(1000, 'x'));
  });
  EXPECT_EQ(failed, "optxv: error: " + path("fresh") + ": cannot be written: File too large\n");
  EXPECT_EQ(names(), std::set<std::string>{"file"});
}

TEST_F(Delivery, WhatCannotBeReplacedIsWrittenInPlaceIfItMayBeWritten) {
  fs::create_directory(path("closed"));
  save("closed/file", "old");
  save("closed/refused", "old");
  save("others", "old");
  for (const char* name : {"closed/file", "others"}) chmod(path(name).c_str(), 0666);
  chmod(path("closed/refused").c_str(), 0444);
  chmod(path("closed").c_str(), 0555);
  const ino_t inode = statusof(path("others")).st_ino;
  EXPECT_EQ(
      asnobody([&] { return told(path("closed/file"), "new") + told(path("others"), "new"); }), "");
  EXPECT_EQ(get("closed/file") + get("others"), "newnew");
  EXPECT_TRUE(getuid() != 0 || statusof(path("others")).st_ino == inode);
  EXPECT_EQ(asnobody([&] { return told(path("closed/refused"), "new"); }),
            "optxv: error: " + path("closed/refused") + ": cannot be opened: Permission denied\n");
  EXPECT_EQ(asnobody([&] { return told(path("closed/fresh"), "new"); }),
            "optxv: error: " + path("closed/fresh") + ": cannot be created: Permission denied\n");
  chmod(path("closed").c_str(), 0755);
}

TEST_F(Delivery, DeathLeavesAWholeFileAndNothingElse) {
  constexpr std::size_t size = std::size_t{2} << 20;
  for (const int signal : {SIGTERM, SIGINT, SIGHUP, SIGTERM, SIGTERM, SIGTERM, SIGTERM, SIGTERM}) {
    save("file", std::string(size, 'a'));
    const pid_t child = fork();
    if (child == 0) {
      std::signal(signal, SIG_DFL);  // nohup, and a shell in the background, have some ignored
      for (int times = 0; times < 10000; times++)
        deliver(path("file"), std::string(size, static_cast<char>('a' + times % 26)), {});
      std::_Exit(0);
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    kill(child, signal);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal);
    const std::string content = get("file");
    EXPECT_EQ(content, std::string(size, content[0])) << "not whole";
    EXPECT_EQ(names(), std::set<std::string>{"file"});
  }
}

TEST(Failure, HasOneForm) {
  const std::tuple<command::failure, const char*> rows[] = {
      {{.what = "a.opt: cannot be written", .error = ENOSPC},
       "optxv: error: a.opt: cannot be written: No space left on device\n"},
      {{.what = "a\x1B\n: cannot be read", .error = EFBIG, .why = "larger than 1 GiB"},
       "optxv: error: a\\x1B\\x0A: cannot be read: larger than 1 GiB\n"},
      {{.what = "no subcommand is called \"chekc\"", .notes = {"did you mean \"check\"?", "\x9B"}},
       "optxv: error: no subcommand is called \"chekc\"\n"
       "optxv: note: did you mean \"check\"?\noptxv: note: \\x9B\n"}};
  for (const auto& [failure, text] : rows) EXPECT_EQ(command::failuretext(failure), text);
}

}  // namespace
}  // namespace optxv::test
