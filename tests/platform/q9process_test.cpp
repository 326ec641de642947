#include "platform/q9process.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>

#include "platform/q9platform.h"
#include "support/scratchfolder.h"

namespace optxv {
namespace {

std::string contentof(const texecarglist& list) {
  std::string all;
  for (std::int32_t i = 0; i < list.count(); ++i) all.append("[").append(list.get(i)) += ']';
  return all;
}

/// The result of a call, a slash, and its code, which no case leaves as it was.
template <class... Arguments, class... Passed>
std::string of(int (*call)(Arguments...), const Passed&... passed) {
  std::int32_t code = -77;
  const int result = call(passed..., code);
  return std::to_string(result) + '/' + std::to_string(code);
}

TEST(ArgumentList, SplitsWords) {
  const std::string x(255, 'x');
  const auto splits = [](const std::string& text, const std::string& parts) {
    texecarglist list;
    list.add("z");
    list.splitprepend(text);
    EXPECT_EQ(contentof(list), parts + "[z]") << text;
    const std::int32_t before = list.count();
    EXPECT_EQ(list.splitappend(text), before - 1) << text;
    EXPECT_EQ(contentof(list), parts + "[z]" + parts) << text;
  };
  splits(" \t\n\x01 ", "");
  splits("a \"b c\" d", "[a][b c][d]");
  splits("a\"b c\"d", "[ab cd]");
  splits("\"\"a\"\" b", "[a][b]");
  splits("\"\"\"\"a", "[a]");
  splits("\" \"", "[ ]");
  // An empty pair that stands alone ends the text.
  splits("a \"\" b", "[a]");
  splits("\"\" a", "");
  splits("a \"\"\"\" b", "[a]");
  splits("a \"b c", "[a][b c]");
  splits("a \"", "[a]");
  splits("\"a\x01\tb\"", "[a\x01\tb]");
  splits("a\x1fg\x7f\xff c", "[a][g\x7f\xff][c]");
  splits({"a b\0c d", 7}, "[a][b]");
  splits("it's \\\" x\"", "[it's][\\ x]");
  splits(x + "x y", "[" + x + "][y]");
}

TEST(CommandLine, HasTheProgramAndItsArguments) {
  const test::scratchfolder folder;
  std::string program = folder.putscript("p", "exit 0");
  char first[] = "a", second[] = "b c";
  char* vector[] = {program.data(), first, second, nullptr};
  setarguments(3, vector);
  const std::string line = q9getcommandline();
  setarguments(-1, nullptr);
  EXPECT_EQ(line, '"' + program + "\"  a b c");
}

TEST(ArgumentList, KeepsTexts) {
  const auto blocks = allocmemcount();
  {
    texecarglist list;
    EXPECT_EQ(list.getlast(), "");
    list.add("b");
    EXPECT_EQ(list.getlast(), "b");
    list.add("");
    list.insert(0, "a");
    list.insert(3, list.get(0));
    list.put(1, list.get(1));
    list.delete_(2);
    EXPECT_EQ(contentof(list), "[a][b][a]");
  }
  EXPECT_EQ(allocmemcount(), blocks);
}

class Programs : public ::testing::Test {
 protected:
  Programs() { setenv("OUT", (folder_ / "out").c_str(), 1); }

  const test::keptvariable variable_{"OUT"};
  const test::scratchfolder folder_;
  const std::string show_ =
      folder_.putscript("show", "for word; do printf '[%s]' \"$word\"; done > \"$OUT\"; exit 7");
};

TEST_F(Programs, OutcomesOfTheShell) {
  EXPECT_EQ(of(q9system, "exit 255"), "0/255");
  EXPECT_EQ(of(q9system, "no-such-command 2>&-"), "127/0");
  EXPECT_EQ(of(q9system, "kill -9 $$"), "1/9");
  EXPECT_EQ(of(q9system2, "exit 6", nullptr), "0/6");
  EXPECT_EQ(of(q9system2, "exit", "7"), "0/7");
  const std::string overlong = ": " + std::string(70000, 'x') + "; exit 8";
  EXPECT_EQ(of(q9systemp, overlong.c_str()), "0/8");
  EXPECT_EQ(of(q9system, overlong), "0/0");             // cut
  const auto previous = std::signal(SIGCHLD, SIG_IGN);  // nobody can be waited for
  EXPECT_EQ(of(q9system, "exit 3"), "2/0");
  EXPECT_EQ(of(q9exec, "true"), "1/0");
  std::signal(SIGCHLD, previous);
  const auto child = [&] {  // without a command it is "sh" that runs, on what there is to read
    if (freopen(folder_.put("script", "exit 9\n").c_str(), "r", stdin) == nullptr) _exit(99);
    _exit(of(q9system, "") == "0/9" ? 42 : 1);
  };
  EXPECT_EXIT(child(), ::testing::ExitedWithCode(42), "");
}

TEST_F(Programs, OutcomesWithoutAShell) {
  const std::string odd = folder_.putscript("an odd name", "exit 3");
  EXPECT_EQ(of(q9exec, "\"" + odd + "\" a b"), "0/3");
  EXPECT_EQ(of(q9exec2, odd, nullptr), "0/3");
  EXPECT_EQ(of(q9execl, odd, texecarglist()), "0/3");
  EXPECT_EQ(of(q9exec2, "sh", "-c \"exit 254\""), "0/254");
  EXPECT_EQ(of(q9exec2, "sh", "-c \"exit 255\""), "1/0");
  EXPECT_EQ(of(q9exec2, "sh", "-c \"kill -9 $$\""), "1/0");
  const char* const stopped = "-c \"(sleep 0.1; kill -CONT $$) & kill -STOP $$; exit 4\"";
  EXPECT_EQ(of(q9exec2, "sh", stopped), "0/4");
  for (const std::string& none : {folder_ / "absent", folder_.put("text", "x"), {" \"\" "}})
    EXPECT_EQ(of(q9exec, none), "1/0") << none;
  EXPECT_EQ(of(q9execp, nullptr), "1/0");
}

TEST_F(Programs, WaitingTakesTheStatusOfOtherChildren) {
  const pid_t other = fork();
  if (other == 0) _exit(5);
  EXPECT_EQ(of(q9exec, "sleep 0.2"), "0/0");
  int status = 0;
  EXPECT_EQ(waitpid(other, &status, 0), -1);
}

TEST_F(Programs, ArgumentsArriveAsTheyAre) {
  const auto shown = [&] { return folder_.get("out"); };
  EXPECT_EQ(of(q9exec, show_ + " a \"b  c\" $HOME;x 'q r' d\"e f\"g \x01 \"\x01\""), "0/7");
  EXPECT_EQ(shown(), "[a][b  c][$HOME;x]['q][r'][de fg][\x01]");
  EXPECT_EQ(of(q9exec2, show_, "\t*\n`x` \""), "0/7");
  EXPECT_EQ(shown(), "[*][`x`]");
  texecarglist list, shell;
  for (const char* argument : {"", "b c", "\"quoted\"", "$x\n\x01", "-n"}) list.add(argument);
  EXPECT_EQ(of(q9execl, show_, list), "0/7");
  EXPECT_EQ(shown(), "[][b c][\"quoted\"][$x\n\x01][-n]");
  const std::string many = show_ + ' ' + std::string(300, 'x') + std::string(2000, ' ') + "y";
  EXPECT_EQ(of(q9execp, many.c_str()), "0/7");
  EXPECT_EQ(shown(), '[' + std::string(255, 'x') + "][y]");

  for (const char* argument : {"a", "b c", "", "\"b  c\"", "  \"d\" ", "a\nb", "\x01", "\"", "x\""})
    shell.add(argument);
  EXPECT_EQ(of(q9systeml, ">\"$OUT\" printf '[%s]'", shell), "0/0");
  EXPECT_EQ(shown(), "[a][b c][][b  c][d][a\nb][\x01][ x]");
}

TEST(FileTypes, WithoutAnImplementationRaise) {
  const test::kept filetype(osfiletype);
  osfiletype = 0;  // where programs are started by a call that this system has not
  EXPECT_EQ(of(q9system, "true"), "127/0");
  EXPECT_EQ(of(q9systemp, nullptr), "127/0");
  EXPECT_EQ(of(q9exec, "true"), "1/0");
  for (const char* const shell : {"", "dos"}) {
    const test::keptvariable variable("COMSPEC");
    setenv("COMSPEC", shell, 1);
    EXPECT_EQ(of(q9system, "true"), "127/0");
  }
  osfiletype = 5;
  EXPECT_THROW(of(q9system, "true"), eassertionfailed);
  EXPECT_THROW(of(q9exec, "true"), eassertionfailed);
}

// What a child makes of an interrupt: its exit code, or 1000 and the signal.
int interrupted(int (*prepare)()) {
  const pid_t child = fork();
  if (child == 0) {
    alarm(20);
    std::signal(SIGINT, SIG_DFL);
    if (prepare() != 0) _exit(1);
    raise(SIGINT);
    _exit(0);
  }
  int status = 0;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
}

template <int code>
void leave() {
  _exit(code);
}

int replaced() {
  return q9installctrlhandler(leave<10>) + q9installctrlhandler(leave<11>);
}

void overridden() {
  q9installctrlhandler(leave<10>);
  std::signal(SIGINT, [](int) { _exit(12); });
}

TEST(Interrupt, ReachesTheHandlerInPlace) {
  constexpr int killed = 1000 + SIGINT;
  EXPECT_EQ(interrupted([] { return q9installctrlhandler(leave<10>); }), 10);
  EXPECT_EQ(interrupted(replaced), 11);
  EXPECT_EQ(interrupted([] { return replaced() == 0 ? q9uninstallctrlhandler() : 1; }), killed);
  EXPECT_EQ(interrupted([] { return replaced(), finalq9process(), 0; }), killed);
  EXPECT_EQ(interrupted([] { return overridden(), 0; }), 12);
  // The old action is back, and the result says so; unloading the library leaves the other in
  // place.
  EXPECT_EQ(interrupted([] { return overridden(), q9uninstallctrlhandler() - 2; }), killed);
  EXPECT_EQ(interrupted([] { return overridden(), finalq9process(), 0; }), 12);
  EXPECT_EQ(
      interrupted([] { return overridden(), finalq9process(), q9installctrlhandler(nullptr) - 1; }),
      12);
  EXPECT_EQ(q9installctrlhandler(nullptr), 1);
  EXPECT_EQ(interrupted([] { return replaced(), q9getctrlhandler() == leave<11> ? 0 : 1; }), 11);
}

}  // namespace
}  // namespace optxv
