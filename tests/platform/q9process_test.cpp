#include "platform/q9process.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <string>
#include <vector>

#include "platform/q9platform.h"
#include "platform/q9utils.h"
#include "support/scratchfolder.h"

namespace optxv {
namespace {

using words = std::vector<std::string>;

words contentof(const texecarglist& list) {
  words all;
  for (std::int32_t i = 0; i < list.count(); ++i) all.emplace_back(list.get(i));
  return all;
}

struct outcome {
  int result;
  std::int32_t code;
  bool operator==(const outcome&) const = default;
  friend void PrintTo(const outcome& o, std::ostream* out) { *out << o.result << '/' << o.code; }
};

/// A call with its code, which no case leaves as it was.
template <class... Arguments, class... Passed>
outcome of(int (*call)(Arguments...), const Passed&... passed) {
  std::int32_t code = -77;
  const int result = call(passed..., code);
  return {result, code};
}

// --- Arguments ---

TEST(ArgumentList, SplitsWords) {
  const std::string overlong(300, 'x');
  const struct {
    std::string text;
    words parts;
  } rows[] = {
      {"", {}},
      {" \t\n\x01 ", {}},
      {"a \"b c\" d", {"a", "b c", "d"}},
      {"a\"b c\"d", {"ab cd"}},
      {"\"\"", {}},
      {"\"\" a \"\"\"\" b", {"a", "b"}},
      {"\"\"a\"\"", {"a"}},
      {"a\"\" b", {"a", "b"}},
      {"\"\"\"a b\"", {"a b"}},
      {"\" \"", {" "}},
      {"a \"b c", {"a", "b c"}},
      {"a \"", {"a"}},
      {"a\x1f"
       "b\x7f\xff c",
       {"a", "b\x7f\xff", "c"}},
      {"\"a\x01\tb\"", {"a\x01\tb"}},
      {"it's \\\" x\"", {"it's", "\\ x"}},
      {std::string("a b\0c d", 7), {"a", "b"}},
      {overlong + " y", {std::string(255, 'x'), "y"}},
      {"\"" + overlong + "\" y", {std::string(255, 'x'), "y"}},
  };
  for (const auto& row : rows) {
    texecarglist list;
    list.add("z");
    EXPECT_EQ(list.splitprepend(row.text), static_cast<std::int32_t>(row.parts.size()));
    words expected = row.parts;
    expected.emplace_back("z");
    EXPECT_EQ(contentof(list), expected) << row.text;
    EXPECT_EQ(list.splitappend(row.text), static_cast<std::int32_t>(row.parts.size()));
    expected.insert(expected.end(), row.parts.begin(), row.parts.end());
    EXPECT_EQ(contentof(list), expected) << row.text;
  }
}

TEST(ArgumentList, KeepsTexts) {
  const auto blocks = allocmemcount();
  {
    texecarglist list;
    EXPECT_TRUE(list.sysflag());
    EXPECT_EQ(list.getlast(), "");
    EXPECT_EQ(list.add("b"), 0);
    EXPECT_EQ(list.add(""), 1);
    list.insert(0, "a");
    list.insert(3, list.get(0));
    list.put(1, list.get(1));
    EXPECT_EQ(contentof(list), (words{"a", "b", "", "a"}));
    EXPECT_EQ(list.getlast(), "a");
    list.delete_(0);
    list.delete_(2);
    EXPECT_EQ(contentof(list), (words{"b", ""}));
    EXPECT_EQ(list.capacity(), 16);
    while (list.count() < 17) list.add("x");
    EXPECT_EQ(list.capacity(), 128);
    list.setcapacity(3);
    EXPECT_EQ(list.capacity(), 17);
    list.freeitem(16);
    EXPECT_EQ(list.getlast(), "");
    list.clear();
    EXPECT_EQ(list.count() + list.capacity(), 0);
    list.add("again");
  }
  EXPECT_EQ(allocmemcount(), blocks);
}

// --- Programs ---

class Programs : public ::testing::Test {
 protected:
  Programs() { setenv("OUT", (folder_ / "out").c_str(), 1); }

  /// What the program "show" was given, and forgets it.
  std::string shown() {
    const std::string text = folder_.get("out");
    unlink((folder_ / "out").c_str());
    return text;
  }

  const test::keptvariable variable_{"OUT"};
  const test::keptvariable path_{"PATH"};
  const test::scratchfolder folder_;
  const std::string show_ =
      folder_.putscript("show", "for word; do printf '[%s]' \"$word\"; done > \"$OUT\"; exit 7");
};

TEST_F(Programs, OutcomesOfTheShell) {
  const struct {
    const char* command;
    outcome expected;
  } rows[] = {
      {"exit 0", {0, 0}},
      {"exit 3", {0, 3}},
      {"exit 255", {0, 255}},
      {"exit 126", {0, 126}},
      {"exit 127", {127, 0}},
      {"no-such-command 2>&-", {127, 0}},
      {"kill -9 $$", {1, 9}},
      {"kill -TERM $$", {1, 15}},
      {"(sleep 0.1; kill -CONT $$) & kill -STOP $$; exit 4", {0, 4}},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(of(q9system, row.command), row.expected) << row.command;
    EXPECT_EQ(of(q9systemp, row.command), row.expected) << row.command;
  }
  EXPECT_EQ(of(q9system2, "exit", "5"), (outcome{0, 5}));
  EXPECT_EQ(of(q9system2, "exit 6", ""), (outcome{0, 6}));
  EXPECT_EQ(of(q9system2, "", "exit 6"), (outcome{0, 6}));
  EXPECT_EQ(of(q9system2, "exit 6", nullptr), (outcome{0, 6}));
  const std::string overlong = ": " + std::string(70000, 'x') + "; exit 8";
  EXPECT_EQ(of(q9systemp, overlong.c_str()), (outcome{0, 8}));
  EXPECT_EQ(of(q9system, overlong), (outcome{0, 0}));  // cut
  EXPECT_EQ(of(q9system2, ":", overlong.c_str()), (outcome{0, 8}));

  const auto previous = std::signal(SIGCHLD, SIG_IGN);  // nobody can be waited for
  EXPECT_EQ(of(q9system, "exit 3"), (outcome{2, 0}));
  EXPECT_EQ(of(q9exec, "true"), (outcome{1, 0}));
  std::signal(SIGCHLD, previous);
}

// Without a command it is "sh" that runs, on what there is to read.
TEST_F(Programs, NothingRunsTheShellItself) {
  const auto child = [&] {
    if (freopen(folder_.put("script", "exit 9\n").c_str(), "r", stdin) == nullptr) _exit(99);
    const outcome first = of(q9system, "");
    if (freopen((folder_ / "script").c_str(), "r", stdin) == nullptr) _exit(99);
    const outcome second = of(q9systemp, nullptr);
    _exit(first == outcome{0, 9} && second == outcome{0, 9} ? 42 : 1);
  };
  EXPECT_EXIT(child(), ::testing::ExitedWithCode(42), "");
}

TEST_F(Programs, ShellArgumentsAreQuotedWhereTheyNeedIt) {
  const struct {
    words arguments;
    std::string shown;
  } rows[] = {
      {{"a", "b c", ""}, "[a][b c][]"},
      {{"\"b  c\"", "\"\"", "  \"d\" "}, "[b  c][][d]"},
      {{"\"", "x\""}, "[ x]"},  // a quote alone opens one
      {{"a\tb", "a\nb", "\x01"}, "[a\tb][a\nb][\x01]"},
      {{}, "[]"},
  };
  for (const auto& row : rows) {
    texecarglist list;
    for (const std::string& argument : row.arguments) list.add(argument);
    EXPECT_EQ(of(q9systeml, ">\"$OUT\" printf '[%s]'", list), (outcome{0, 0}));
    EXPECT_EQ(shown(), row.shown);
  }
}

TEST_F(Programs, OutcomesWithoutAShell) {
  const std::string odd = folder_.putscript("an odd name", "exit 3");
  const struct {
    outcome got, expected;
    const char* which;
  } rows[] = {
      {of(q9exec, "true"), {0, 0}, "along PATH"},
      {of(q9exec, "\"" + odd + "\" a b"), {0, 3}, "quoted"},
      {of(q9exec2, odd, "a b"), {0, 3}, "whole"},
      {of(q9exec2, odd, nullptr), {0, 3}, "no parameters"},
      {of(q9execl, odd, texecarglist()), {0, 3}, "list"},
      {of(q9exec2, "sh", "-c \"exit 254\""), {0, 254}, "254"},
      {of(q9exec2, "sh", "-c \"exit 255\""), {1, 0}, "255"},
      {of(q9exec2, "sh", "-c \"exit 127\""), {0, 127}, "127"},
      {of(q9exec2, "sh", "-c \"kill -9 $$\""), {1, 0}, "killed"},
      {of(q9exec2, "sh", "-c \"(sleep 0.1; kill -CONT $$) & kill -STOP $$; exit 4\""),
       {0, 4},
       "stopped for a while"},
      {of(q9exec, folder_ / "absent"), {1, 0}, "absent"},
      {of(q9exec, folder_.path()), {1, 0}, "a folder"},
      {of(q9exec, folder_.put("text", "x")), {1, 0}, "no program"},
      {of(q9exec, ""), {1, 0}, "empty"},
      {of(q9exec, " \"\" "), {1, 0}, "no word"},
      {of(q9execp, nullptr), {1, 0}, "nil"},
      {of(q9exec2, "", "a"), {1, 0}, "empty program"},
      {of(q9execl, "", texecarglist()), {1, 0}, "empty program"},
  };
  for (const auto& row : rows) EXPECT_EQ(row.got, row.expected) << row.which;
}

TEST_F(Programs, ArgumentsArriveAsTheyAre) {
  EXPECT_EQ(of(q9exec, show_ + " a \"b  c\" $HOME;x \"\" 'q r' d\"e f\"g \x01 \"\x01\""),
            (outcome{0, 7}));
  EXPECT_EQ(shown(), "[a][b  c][$HOME;x]['q][r'][de fg][\x01]");
  EXPECT_EQ(of(q9exec2, show_, "\t*\n`x` \""), (outcome{0, 7}));
  EXPECT_EQ(shown(), "[*][`x`]");

  texecarglist list;
  for (const char* argument : {"", "b c", "\"quoted\"", "$x\n\x01", "-n"}) list.add(argument);
  EXPECT_EQ(of(q9execl, show_, list), (outcome{0, 7}));
  EXPECT_EQ(shown(), "[][b c][\"quoted\"][$x\n\x01][-n]");

  const std::string many = show_ + ' ' + std::string(300, 'x') + std::string(2000, ' ') + "y";
  EXPECT_EQ(of(q9execp, many.c_str()), (outcome{0, 7}));
  EXPECT_EQ(shown(), '[' + std::string(255, 'x') + "][y]");
  setenv("PATH", (folder_.path() + ":/usr/bin:/bin").c_str(), 1);
  EXPECT_EQ(of(q9exec, "show found"), (outcome{0, 7}));
  EXPECT_EQ(shown(), "[found]");
}

TEST_F(Programs, OpenFilesStayAtHome) {
  tq9filehandle handle = 0;
  ASSERT_EQ(q9fileopen(show_, 0, handle), 0);
  const std::string test = "test -e /proc/self/fd/" + std::to_string(handle);
  EXPECT_EQ(of(q9exec, test), (outcome{0, 1}));
  EXPECT_EQ(of(q9system, test), (outcome{0, 1}));
  q9fileclose(&handle);
}

TEST_F(Programs, WaitingTakesTheStatusOfOtherChildren) {
  const pid_t other = fork();
  if (other == 0) _exit(5);
  EXPECT_EQ(of(q9exec, "sleep 0.2"), (outcome{0, 0}));
  int status = 0;
  EXPECT_EQ(waitpid(other, &status, 0), -1);
  EXPECT_EQ(errno, ECHILD);
}

// --- Other file-system types ---

template <class Call>
std::string assertion(Call call) {
  try {
    call();
  } catch (const eassertionfailed& failure) {
    return std::string(failure.message);
  }
  return "none";
}

TEST(FileTypes, WithoutAnImplementationAreAsserted) {
  const test::kept filetype(osfiletype);
  const texecarglist list;
  osfiletype = 5;
  const struct {
    std::string got;
    const char* operation;
  } rows[] = {
      {assertion([&] { of(q9system, "true"); }), "Q9system"},
      {assertion([&] { of(q9systemp, "true"); }), "Q9SystemP"},
      {assertion([&] { of(q9system2, "true", ""); }), "Q9SystemP"},
      {assertion([&] { of(q9exec, "true"); }), "Q9ExecP"},
      {assertion([&] { of(q9execp, "true"); }), "Q9ExecP"},
      {assertion([&] { of(q9exec2, "true", ""); }), "Q9Exec2"},
      {assertion([&] { of(q9execl, "true", list); }), "Q9Execl"},
  };
  for (const auto& row : rows)
    EXPECT_THAT(row.got, ::testing::MatchesRegex("Assertion Failed. \\(q9process:[0-9]+\\) "
                                                 "unimplemented " +
                                                 std::string(row.operation) + " for OSFileType\n"));
  osfiletype = 0;  // a process creation that this build has not
  EXPECT_EQ(of(q9system, "true"), (outcome{127, 0}));
  EXPECT_EQ(of(q9systeml, "true", list), (outcome{127, 0}));
  EXPECT_EQ(of(q9exec, "true"), (outcome{1, 0}));
  EXPECT_EQ(of(q9execl, "true", list), (outcome{1, 0}));
}

// --- This program ---

TEST_F(Programs, CommandLineIsMadeOnce) {
  char program[256];
  show_.copy(program, show_.size());
  program[show_.size()] = '\0';
  char one[] = "a b";
  char two[] = "";
  char three[] = "c";
  char* vector[] = {program, one, two, three, nullptr};
  setarguments(4, vector);
  const char* const line = q9getcommandline();
  EXPECT_EQ(line, '"' + show_ + "\"  a b  c");
  setarguments(1, vector);
  EXPECT_EQ(q9getcommandline(), line);
  setarguments(-1, nullptr);
}

// What a child makes of an interrupt from outside: its exit code, or 1000 and the signal. It says
// through a pipe that it is ready.
template <class Prepare>
int interrupted(Prepare prepare) {
  int ready[2];
  EXPECT_EQ(pipe(ready), 0);
  const pid_t child = fork();
  if (child == 0) {
    alarm(20);
    std::signal(SIGINT, SIG_DFL);
    const int failed = prepare();
    if (failed != 0 || write(ready[1], "x", 1) != 1) _exit(failed);
    for (;;) pause();
  }
  close(ready[1]);
  char byte = 0;
  if (read(ready[0], &byte, 1) == 1) kill(child, SIGINT);
  close(ready[0]);
  int status = 0;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
}

void exit10() {
  _exit(10);
}
void exit11() {
  _exit(11);
}

// After a first interrupt, takes the handler away and is killed by the next.
void uninstallandgoon() {
  if (q9uninstallctrlhandler() != 0) _exit(1);
  kill(getpid(), SIGINT);
}

TEST(Interrupt, ReachesTheHandlerInPlace) {
  EXPECT_EQ(interrupted([] { return q9installctrlhandler(exit10); }), 10);
  EXPECT_EQ(interrupted([] { return q9installctrlhandler(exit10) + q9installctrlhandler(exit11); }),
            11);
  EXPECT_EQ(interrupted([] { return q9installctrlhandler(uninstallandgoon); }), 1000 + SIGINT);
  EXPECT_EQ(interrupted([] {
              return q9installctrlhandler(exit10) + q9installctrlhandler(exit11) +
                     q9uninstallctrlhandler();
            }),
            1000 + SIGINT);
  EXPECT_EQ(interrupted([] {
              q9installctrlhandler(exit10);
              finalq9process();
              return 0;
            }),
            1000 + SIGINT);
}

void foreign(int) {
  _exit(12);
}

TEST(Interrupt, SomebodyElseInBetween) {
  EXPECT_EQ(interrupted([] {
              q9installctrlhandler(exit10);
              std::signal(SIGINT, foreign);
              return 0;
            }),
            12);
  EXPECT_EQ(interrupted([] {  // the old action is back, and the result tells
              q9installctrlhandler(exit10);
              std::signal(SIGINT, foreign);
              return q9uninstallctrlhandler() == 2 && q9getctrlhandler() == nullptr ? 0 : 1;
            }),
            1000 + SIGINT);
  EXPECT_EQ(interrupted([] {  // the library that goes leaves it alone
              q9installctrlhandler(exit10);
              std::signal(SIGINT, foreign);
              finalq9process();
              return 0;
            }),
            12);
}

TEST(Interrupt, Results) {
  EXPECT_EQ(q9getctrlhandler(), nullptr);
  EXPECT_EQ(q9uninstallctrlhandler(), 1);
  EXPECT_EQ(q9installctrlhandler(nullptr), 1);
  EXPECT_EQ(q9installctrlhandler(exit10), 0);
  EXPECT_EQ(q9getctrlhandler(), &exit10);
  EXPECT_EQ(q9installctrlhandler(exit11), 0);
  EXPECT_EQ(q9getctrlhandler(), &exit11);
  EXPECT_EQ(q9installctrlhandler(nullptr), 0);
  EXPECT_EQ(q9getctrlhandler(), nullptr);
  EXPECT_EQ(q9uninstallctrlhandler(), 1);
}

}  // namespace
}  // namespace optxv
