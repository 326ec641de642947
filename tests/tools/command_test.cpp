// The command as its users run it: arguments and files in; output, complaints and status out.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <random>
#include <sstream>

namespace {

namespace fs = std::filesystem;
using files = std::map<std::string, std::string>;

const char* const definition =
    "comment eolcomm #\n"
    "steplim integer 1 1000 0 10000 10 1 Step limit\n"
    " Stops the run.\n"
    "tol double 2 0.5 0 1 11 1 Tolerance\n"
    "logname string 3 \"run log\" 12 1 Log file\n"
    "scale boolean 4 1 13 1 Scale\n"
    "verbose boolean.NV 5 0 14 1 Talk\n"
    "range integer.TWO 6 1 0 9 15 1 Range\n"
    "method enumstr 7 primal 16 1 Method\n"
    " primal 1 Primal\n"
    " dual 2 Dual\n"
    "names strlist 8 17 1 Names\n"
    "rf immediate ReadFile 0 1 Read\n"
    ".weight double 9 1 0 100 29 1 Weight\n"
    "stplim synonym steplim\n"
    "stplim deprecated\n"
    " stplim Use steplim\n"
    "rowtype indicator\n";

struct outcome {
  int status = -1;
  std::string out, err;
};

std::string readfile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

class Command : public testing::Test {
 protected:
  void SetUp() override {
    std::string name = (fs::temp_directory_path() / "optxv-XXXXXX").string();
    ASSERT_NE(mkdtemp(name.data()), nullptr);
    folder_ = name;
    save({{"s.def", definition}});
  }
  void TearDown() override { fs::remove_all(folder_); }

  void save(const files& all) const {
    for (const auto& [name, text] : all) std::ofstream(folder_ / name, std::ios::binary) << text;
  }

  /// Runs the command with arguments in the words of a shell, in the folder of the files.
  outcome run(const std::string& arguments, const std::string& environment = "") const {
    const std::string line = "cd '" + folder_.string() + "' && env -u COLUMNS -u NO_COLOR " +
                             environment + " '" OPTXV_COMMAND_FILE "' " + arguments +
                             " >.out 2>.err </dev/null";
    const int status = std::system(line.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, readfile(folder_ / ".out"),
            readfile(folder_ / ".err")};
  }

  fs::path folder_;
};

struct checkrow {
  std::string name, parameters;
  int status;
  std::string out;
};

TEST_F(Command, CheckTellsPlaceLineAndRemedy) {
  const std::vector<checkrow> rows = {
      {"clean", "steplim 5\n", 0, "no errors in 2 files\n"},
      {"value, with what is allowed", "* note\n\nsteplim = 50000 # 50000\n", 1,
       "p:3:11: error: Integer range error for option \"steplim\" saw \"50000\"\n"
       "    3 | steplim = 50000 # 50000\n"
       "      |           ^~~~~\n"
       "p:3:11: note: Valid range is 0 to 10000\n"
       "1 error in 2 files\n"},
      {"name, with the nearest", "\tstelpim 4\r\n", 1,
       "p:1:2: error: Unknown option \"stelpim\"\n"
       "    1 |  stelpim 4\n"
       "      |  ^~~~~~~\n"
       "p:1:2: note: did you mean \"steplim\"?\n"
       "1 error in 2 files\n"},
      {"dotted names are apart", "x.weigth 1\n", 1,
       "p:1:2: error: unknown .suffix \".weigth\" for key \"x\"\n"
       "    1 | x.weigth 1\n"
       "      |  ^~~~~~~\n"
       "p:1:2: note: did you mean \".weight\"?\n"
       "p:1:10: error: Option keyword expected, saw \"1\"\n"
       "    1 | x.weigth 1\n"
       "      |          ^\n"
       "2 errors in 2 files\n"},
      {"warning alone is clean", "stplim 7\n", 0,
       "p:1:1: warning: deprecated synonym \"stplim\"; Use steplim\n"
       "    1 | stplim 7\n"
       "      | ^~~~~~\n"
       "1 warning in 2 files\n"},
      {"no caret where the place is in doubt", "verbose extra\n", 1,
       "p:1: error: Remainder of line ignored\n"
       "    1 | verbose extra\n"
       "p:1: error: Unknown option \"e\"\n"
       "    1 | verbose extra\n"
       "2 errors in 2 files\n"},
      {"other files", "rf q\nrf \"no such\"\nsteplim x\n", 1,
       "q:2:5: error: Double expected for option \"tol\" saw \"y\"\n"
       "    2 | tol y\n"
       "      |     ^\n"
       "p:2:5: error: Cannot open parameter file \"no such\"\n"
       "    2 | rf \"no such\"\n"
       "      |     ^~~~~~~\n"
       "p:2:5: note: Error code = 2; No such file or directory\n"
       "p:3:9: error: Integer expected, for option \"steplim\" saw \"x\"\n"
       "    3 | steplim x\n"
       "      |         ^\n"
       "3 errors in 2 files\n"},
      {"dot options and indicators", "x.weight('a') = 2\nrowtype e$v = yes\n", 0,
       "no errors in 2 files, 1 dot option, 1 indicator\n"},
      {"control bytes", std::string("\x1b[31m\xc2\x9b\xc3\xa9\xff 5\n"), 1,
       "p:1:1: error: Option keyword expected, saw \"\\x1B\"\n"
       "    1 | \\x1B[31m\\xC2\\x9B\xc3\xa9\\xFF 5\n"
       "      | ^~~~\n"
       "1 error in 2 files\n"},
      {"empty", "", 0, "p: note: the file is empty\nno errors in 2 files\n"},
      {"byte-order mark", "\xEF\xBB\xBF* c\nsteplim\x1a 5\n", 1,
       "p:1:1: note: the first line begins with a byte-order mark (UTF-8), which the language does "
       "not know\n"
       "    1 | \\xEF\\xBB\\xBF* c\n"
       "      | ^~~~~~~~~~~~\n"
       "p:1:1: note: save the file as plain text without the mark\n"
       "p:2:8: warning: byte 26 stands for the end of the line: what follows it is not read\n"
       "    2 | steplim\\x1A 5\n"
       "      |        ^~~~\n"
       "p:1:1: error: Option keyword expected, saw \"\\xEF\"\n"
       "    1 | \\xEF\\xBB\\xBF* c\n"
       "      | ^~~~\n"
       "p:2:1: error: Bad separator after key \"steplim\"\n"
       "    2 | steplim\\x1A 5\n"
       "      | ^~~~~~~\n"
       "2 errors, 1 warning in 2 files\n"},
      {"long line", "* " + std::string(2000, 'c') + "\nlogname " + std::string(1100, 'x') + "\n", 0,
       "p:2:1021: warning: the line has 1,108 bytes, of which the first 1,020 are read\n"
       "    2 | ..." +
           std::string(100, 'x') + "...\n      | " + std::string(53, ' ') +
           "^\n"
           "1 warning in 2 files\n"},
  };
  for (const checkrow& row : rows) {
    SCOPED_TRACE(row.name);
    save({{"p", row.parameters}, {"q", "steplim 5\ntol y\n"}});
    const outcome got = run("check s.def p");
    EXPECT_EQ(got.out, row.out);
    EXPECT_EQ(got.err, "");
    EXPECT_EQ(got.status, row.status);
  }
}

TEST_F(Command, CheckTellsOfDefinitions) {
  const std::vector<checkrow> rows = {
      {"type word", "a integr 1 5 0 9 1 1 x\n", 1,
       "p:1:3: error: Unknown option type \"integr\" for option \"a\"\n"
       "    1 | a integr 1 5 0 9 1 1 x\n"
       "      |   ^~~~~~\n"
       "p:1:3: note: did you mean \"integer\"?\n"
       "p: warning: the definition declares no option\n"
       "1 error, 1 warning in 1 file\n"},
      {"records lost", "s string 1 a 1 1 Name\n of the file\nc double 1 0 0 1 0 1 x\n", 0,
       "p:2: warning: the definition ends here, since the line neither begins a record nor "
       "continues "
       "one\n"
       "    2 |  of the file\n"
       "p:2: note: 1 record further down is not read\n"
       "1 warning in 1 file\n"},
      {"text behind the records", "c double 1 0 0 1 0 1 x\n help\n \n#\nNotes on c double check\n",
       0, "no errors in 1 file\n"},
  };
  for (const checkrow& row : rows) {
    SCOPED_TRACE(row.name);
    save({{"p", row.parameters}});
    const outcome got = run("check p");
    EXPECT_EQ(got.out, row.out);
    EXPECT_EQ(got.status, row.status);
  }
}

TEST_F(Command, UnusableFilesAreNamedWithTheReason) {
  save({{"good", "steplim 5\n"}, {"locked", "steplim 5\n"}});
  const std::string longname(256, 'n');
  const std::vector<checkrow> rows = {
      {"check none", "", 2,
       "none: error: cannot be read: No such file or directory\n"
       "1 error in 1 file, 1 not read\n"},
      {"check .", "", 2,
       ".: error: cannot be read: Is a directory\n1 error in 1 file, 1 not read\n"},
      {"check s.def . good none", "", 2,
       ".: error: cannot be read: Is a directory\n"
       "none: error: cannot be read: No such file or directory\n"
       "2 errors in 4 files, 2 not read\n"},
      {"check s.def " + longname, "", 2,
       longname + ": error: cannot be read: the name has 256 bytes, more than the 255 that can be "
                  "handled\n1 error in 2 files, 1 not read\n"},
  };
  for (const checkrow& row : rows) {
    const outcome got = run(row.name);
    EXPECT_EQ(got.out, row.out) << row.name;
    EXPECT_EQ(got.status, row.status) << row.name;
  }
  for (const char* product : {"show", "write", "help"}) {
    const outcome got = run(std::string(product) + " none");
    EXPECT_EQ(got.err, "none: error: cannot be read: No such file or directory\n") << product;
    EXPECT_EQ(got.out + std::to_string(got.status), "2") << product;
  }
  if (geteuid() == 0) return;  // root may read anything
  fs::permissions(folder_ / "locked", fs::perms::none);
  EXPECT_EQ(run("check s.def locked").out,
            "locked: error: cannot be read: Permission denied\n1 error in 2 files, 1 not read\n");
}

TEST_F(Command, UsageIsStatusTwo) {
  for (const char* arguments :
       {"", "check", "polish s.def", "check --loud s.def", "show --all --set s.def"}) {
    const outcome got = run(arguments);
    EXPECT_EQ(got.status, 2) << arguments;
    EXPECT_NE(got.err, "") << arguments;
  }
  for (const char* name : {"check", "show", "help", "write", "api"}) {
    const outcome got = run(std::string(name) + " --help");
    EXPECT_EQ(got.status, 0);
    EXPECT_NE(got.out.find("Examples:\n  optxv " + std::string(name)), std::string::npos) << name;
  }
}

TEST_F(Command, EachFileHasAQueueOfItsOwn) {
  std::string bad;
  for (int i = 0; i < 5100; i++) bad += "zzz" + std::to_string(i) + " 1\n";
  save({{"many", bad}, {"one", "steplim x\n"}});
  const outcome got = run("check s.def many one");
  const std::size_t full =
      got.out.find("many: error: Maximum of 5000 messages reached\nmany: note: ");
  ASSERT_NE(full, std::string::npos);
  EXPECT_NE(got.out.find("one:1:9: error: ", full), std::string::npos);
  EXPECT_TRUE(got.out.ends_with("\n5,001 errors in 3 files\n"));
}

TEST_F(Command, ModesAreSwitched) {
  save({{"p", "steplim 99999, tol 0.25\n"}});
  EXPECT_EQ(run("write --no-bounds --tokens s.def p").out, " 1\nsteplim=99999\n 0\ntol=0.25\n");
  EXPECT_EQ(run("check --tokens s.def p").out.find("p:1:9: error: Integer range error"), 0U);
  EXPECT_EQ(run("check --no-bounds --tokens s.def p").status, 0);
  EXPECT_EQ(run("check --no-bounds s.def p").status, 1);
}

const char* const settings =
    "steplim 7\nverbose\nrange * 4\nlogname = my log\nnames one\nnames \"two, three\"\n"
    "--note first try\nx.weight('a',*) = 2.5\nrowtype e('i')$v = yes\n";

TEST_F(Command, ShowPrintsATable) {
  save({{"p", settings}});
  const outcome got = run("show s.def p");
  EXPECT_EQ(got.out,
            "Nr  Name     Kind         Value       Default    Set\n"
            " 2  steplim  integer      7           1000       set\n"
            " 4  logname  string       \"my log\"    \"run log\"  set\n"
            " 6  verbose  boolean.NV   0           0          set\n"
            " 7  range    integer.TWO  1 4         1          second\n"
            " 9  names    strlist      one                    set\n"
            "                          two, three\n"
            "11  .weight  double       2.5         1          set\n"
            "12  --note   strlist      first try              set\n"
            "\n"
            "7 of 12 options are set\n"
            "\nDot options\n  x.weight('a',*) = 2.5\n"
            "\nIndicators\n  e('i')$v = 1\n");
  EXPECT_EQ(got.err + std::to_string(got.status), "0");
  EXPECT_EQ(run("show s.def p", "COLUMNS=30").out.substr(0, 71),
            "steplim = 7\n    2, integer, default 1000, set\n"
            "logname = \"my log\"\n    4,");
  EXPECT_NE(
      run("show --all s.def").out.find("\n 8  method   enumstr      primal     primal     -\n"),
      std::string::npos);
  save({{"p", "tol 9\n"}});
  const outcome bad = run("show s.def p");
  EXPECT_EQ(bad.out, "0 of 11 options are set\n");
  EXPECT_EQ(bad.err.find("p:1:5: error: "), 0U);
  EXPECT_EQ(bad.status, 1);
}

TEST_F(Command, JsonHoldsTheSame) {
  save({{"p", std::string(settings) + "steplim 50000\n\xff\n"}});
  const auto state = nlohmann::json::parse(run("show --json s.def p").out);
  const auto& options = state["options"];
  EXPECT_EQ(options[0], (nlohmann::json{{"number", 2},
                                        {"name", "steplim"},
                                        {"kind", "integer"},
                                        {"value", 7},
                                        {"default", 1000},
                                        {"set", true}}));
  EXPECT_EQ(options[1]["value"], "my log");
  EXPECT_EQ(options[2]["value"], false);
  EXPECT_EQ(options[3]["value"], (nlohmann::json{1, 4}));
  EXPECT_EQ(options[3]["set"], (nlohmann::json{false, true}));
  EXPECT_EQ(options[4]["value"], (nlohmann::json{"one", "two, three"}));
  EXPECT_EQ(
      state["dotoptions"][0],
      (nlohmann::json{
          {"symbol", "x"}, {"attribute", ".weight"}, {"labels", {"a", "*"}}, {"value", 2.5}}));
  const auto found = nlohmann::json::parse(run("check --json s.def p").out);
  const auto& first = found["diagnostics"][0];
  EXPECT_EQ(first["kind"], "optMsgValueError");
  EXPECT_EQ(first["line"], 10);
  EXPECT_EQ(first["column"], 9);
  EXPECT_EQ(first["notes"], nlohmann::json{"Valid range is 0 to 10000"});
  EXPECT_EQ(found["diagnostics"][1]["kind"], "optMsgUserError");
  EXPECT_EQ(found["summary"]["errors"], 2);
  EXPECT_EQ(found["summary"]["dotoptions"], 1);
}

TEST_F(Command, WrittenStateReadsBack) {
  save({{"p",
         "steplim 7\nverbose\nrange 2 4\nlogname = my log\nnames one\nnames two, three\n"
         "x.weight('a',*) = 2.5\nrowtype e('i')$v = yes\n"}});
  EXPECT_EQ(run("write s.def p -o again").out, "");
  EXPECT_EQ(run("write s.def again").out, readfile(folder_ / "again"));
  EXPECT_EQ(run("show s.def again").out, run("show s.def p").out);
  EXPECT_EQ(run("check s.def again").status, 0);
  const outcome refused = run("write s.def p -o none/again");
  EXPECT_EQ(refused.err, "none/again: error: cannot be written: No such file or directory\n");
  EXPECT_EQ(refused.status, 2);
  EXPECT_EQ(run("write s.def p -o /dev/full").status, 2);
}

TEST_F(Command, HelpIsTheLibrarys) {
  const outcome one = run("help s.def stplim");
  EXPECT_NE(one.out.find("Step limit"), std::string::npos);
  EXPECT_NE(one.out.find("Stops the run."), std::string::npos);
  EXPECT_EQ(one.err, "");
  const outcome wrong = run("help s.def stelpim");
  EXPECT_EQ(wrong.err,
            "optxv: note: no option is called \"stelpim\"\n"
            "optxv: note: did you mean \"steplim\"?\n");
  EXPECT_NE(run("help s.def 4").out.find("steplim"), std::string::npos);
}

TEST_F(Command, ApiListsTheFunctions) {
  const auto all = nlohmann::json::parse(run("api --json").out);
  EXPECT_EQ(all["version"], 2);
  EXPECT_EQ(all["functions"].size(), 75U);
  EXPECT_EQ(all["functions"][11], (nlohmann::json{{"name", "optEchoSet"},
                                                  {"result", "none"},
                                                  {"arguments", {"integer"}},
                                                  {"twin", nullptr}}));
  EXPECT_NE(run("api").out.find("\noptGetNameNr           coptGetNameNr           integer  "
                                "integer, outtext\n"),
            std::string::npos);
}

/// What the command writes to a terminal.
std::string onterminal(const std::string& folder, const std::string& environment) {
  const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
  EXPECT_EQ(grantpt(terminal) | unlockpt(terminal), 0);
  const std::string name = ptsname(terminal);
  const int keptopen =
      open(name.c_str(), O_RDWR | O_NOCTTY);  // so that what is written waits for us
  const std::string line = "cd '" + folder + "' && env -u NO_COLOR TERM=xterm " + environment +
                           " '" OPTXV_COMMAND_FILE "' check s.def p >" + name;
  EXPECT_EQ(WEXITSTATUS(std::system(line.c_str())), 1);
  std::array<char, 4096> text{};
  const ssize_t got = read(terminal, text.data(), text.size());
  close(keptopen);
  close(terminal);
  return {text.data(), static_cast<std::size_t>(got > 0 ? got : 0)};
}

TEST_F(Command, ColoursOnATerminalAlone) {
  save({{"p", "tol 9\n"}});
  EXPECT_EQ(onterminal(folder_.string(), "").find("\x1B[1mp:1:5: \x1B[0m\x1B[1;31merror:\x1B[0m "),
            0U);
  EXPECT_EQ(onterminal(folder_.string(), "NO_COLOR=1").find("p:1:5: error: "), 0U);
}

TEST_F(Command, AnyBytesAreReadWithoutHarm) {
  std::mt19937 random(3);
  const std::string words = "steplim tol x.weight('a') = 1 \"rowtype e$v\n\n\n \x1a\t*#,integer";
  for (int round = 0; round < 12; round++) {
    std::string text;
    for (int i = 0; i < 3000; i++)
      text += round % 2 == 0 ? static_cast<char>(random()) : words[random() % words.size()];
    save({{"junk", text}, {"junk.def", definition + text}});
    for (const char* arguments :
         {"check junk.def junk", "show --all junk.def junk", "write s.def junk"}) {
      const outcome got = run(arguments);
      EXPECT_TRUE(got.status == 0 || got.status == 1) << arguments << ' ' << got.err.substr(0, 200);
      if (std::string(arguments).starts_with("write")) continue;  // that is data, byte for byte
      const auto control = [](char c) { return (c >= 0 && c < ' ' && c != '\n') || c == 0x7F; };
      EXPECT_EQ(std::ranges::count_if(got.out + got.err, control), 0) << arguments;
    }
  }
}

}  // namespace
