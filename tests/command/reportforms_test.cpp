// The forms in which check tells what it finds, for other programs.

#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "commandrun.h"

namespace optxv::test {
namespace {

using nlohmann::json;
using std::string;

const char* const definition =
    "time_limit double 1 3600 0 1e6 10 1 Time\nsteps integer 2 1000 0 100000 10 1 Steps\n"
    "log_file string 3 run.log 12 1 Log\nrf immediate ReadFile 25 1 Read\n"
    "say immediate Message 25 1 Say\nhelp_me immediate Help 25 1 Help\n";

// A name that every form has to escape, as a shell takes it, and as people are shown it.
const string hostile = "a b:c,50%\n::error::\xC3\xA9\xFF[x](y)";

class Forms : public commandrun {
 protected:
  void SetUp() override { save("s.def", definition); }
  string told(const string& form, const string& text, const string& more = "") const {
    save("p", text);
    return run("check --format " + form + " s.def p " + more).out;
  }
  json log(const string& text, const string& more = "") const {
    return json::parse(told("sarif", text, more))["runs"][0];
  }
};

TEST_F(Forms, AreOfTheWordsThatTheHelpGives) {
  save("p", "stesp 4\n");
  EXPECT_EQ(run("check --format json s.def p").out, run("check --json s.def p").out);
  EXPECT_EQ(run("check --format lines s.def p").out, run("check s.def p").out);
  const outcome unknown = run("check --format xml s.def");
  EXPECT_EQ(unknown.status, 2);
  EXPECT_EQ(unknown.out, "");
  EXPECT_EQ(unknown.err,
            "optxv: error: --format cannot be \"xml\"\n"
            "optxv: note: it is lines, json, sarif, github or gcc\n");
  EXPECT_EQ(run("check --format '' s.def").err,
            "optxv: error: --format cannot be \"\"\n"
            "optxv: note: it is lines, json, sarif, github or gcc\n");
}

TEST_F(Forms, GccHasOneLineForEachFact) {
  save("empty", "");
  EXPECT_EQ(told("gcc", "stesp 4\n\xC3\xA9 \x1B[31m\nsteps 5\nsteps 6\nsay hello\n",
                 "empty no_such --max-errors 1"),
            "p:1:1: error: Unknown option \"stesp\" [unknown-option]\n"
            "p:1:1: note: did you mean \"steps\"?\n"
            "p:1:1: note: write \"steps 4\"\n"
            "p:4:7: warning: the option \"steps\" is set again [set-twice]\n"
            "p:3:7: note: it was set here before\n"
            "p:4:7: note: make the first a comment: it has no effect\n"
            "empty:1:1: note: the file is empty [empty-file]\n"
            "3 more errors not shown\n");
}

TEST_F(Forms, GithubGetsNothingThatActsOfItself) {
  save(hostile, "say ::error::\xC3\xA9\nlog_file \xC3\xA9\xFF\"\xF0\x9F\x98\x80 50%\nhelp_me ::\n");
  const string file = "file=a b%3Ac%2C50%25\\x0A%3A%3Aerror%3A%3A\xC3\xA9\\xFF[x](y),";
  EXPECT_EQ(run("check --format github s.def '" + hostile + "' no_such").out,
            "::error " + file +
                "line=1,col=6,endColumn=15,title=own:::error::\xC3\xA9\n"
                "::error " +
                file +
                "line=2,col=10,endColumn=19,title=quote::Bad double-quote in value"
                "%0Ahelp: write \"log_file \xC3\xA9\\xFF\xF0\x9F\x98\x80 50%25\"\n"
                "::error file=no_such,title=unreadable::cannot be read: No such file or directory\n"
                "3 errors in 3 files, 1 not read\n");
  EXPECT_EQ(
      told("github", "steps 5\nsteps 6\n"),
      "::warning file=p,line=2,col=7,endColumn=8,title=set-twice::the option \"steps\" is set "
      "again%0Ap:1: note: it was set here before%0Ahelp: make the first a comment: it has no "
      "effect\n1 warning in 2 files\n");
}

// --- SARIF

TEST_F(Forms, SarifPointsAtTheCharacters) {
  const struct {
    string line;
    int begin, end;
    string fix;  ///< where the first edit is, and what it writes; empty for none
  } rows[] = {{"steps 5x", 7, 9, "7-9 5"},
              {"steps", 6, 6, ""},
              {"log_file \xC3\xA9\"\xF0\x9F\x98\x80", 10, 14, "10-14 \xC3\xA9\xF0\x9F\x98\x80"},
              {"log_file \xC3\xA9\"\xFF", 10, 13, ""},
              {"\xF0\x9F\x98\x80 5", 1, 3, ""}};
  for (const auto& [line, begin, end, fix] : rows) {
    const json result = log(line + "\n")["results"][0];
    const json region = result["locations"][0]["physicalLocation"]["region"];
    EXPECT_EQ(region, json({{"startLine", 1}, {"startColumn", begin}, {"endColumn", end}})) << line;
    string written;
    if (result.contains("fixes")) {
      const json edit = result["fixes"][0]["artifactChanges"][0]["replacements"][0];
      written = edit["deletedRegion"]["startColumn"].dump() + "-" +
                edit["deletedRegion"]["endColumn"].dump() + " " +
                edit["insertedContent"]["text"].get<string>();
    }
    EXPECT_EQ(written, fix) << line;
  }
  const json marked = log("\xEF\xBB\xBFstesp 4\n")["results"];
  EXPECT_FALSE(marked[0].contains("fixes"));  // the mark is no part of a text
  for (const json& each : marked)
    EXPECT_EQ(each["locations"][0]["physicalLocation"]["region"]["startColumn"], 1);
}

TEST_F(Forms, SarifEscapesNamesAndTexts) {
  save(hostile, "steps {0}[x](y)\x1B\n");
  save(":x", "");
  const json run1 = log("rf \":x\"\n", "'" + hostile + "' '" + folder_.path() + "/p' ./p");
  std::set<string> names;
  for (const json& each : run1["artifacts"]) names.insert(each["location"]["uri"]);
  EXPECT_EQ(names,
            (std::set<string>{"s.def", "p", "%3Ax", "file://" + folder_.path() + "/p", "./p",
                              "a%20b%3Ac%2C50%25%0A%3A%3Aerror%3A%3A%C3%A9%FF%5Bx%5D%28y%29"}));
  string texts;
  for (const json& each : run1["results"]) texts += each["message"]["text"].get<string>() + '\n';
  EXPECT_NE(texts.find("saw \"{{0}}[x\\](y)\\x1B\""), texts.npos) << texts;
}

TEST_F(Forms, SarifTellsTheEndOfTheRun) {
  const struct {
    string text, flags;
    json invocation;
  } rows[] = {{"steps 5\n", "", {{"executionSuccessful", true}, {"exitCode", 0}}},
              {"steps 5\nsteps 6\n", "", {{"executionSuccessful", true}, {"exitCode", 0}}},
              {"steps 5\nsteps 6\n", "--strict", {{"executionSuccessful", true}, {"exitCode", 1}}},
              {"x\n", "no_such", {{"executionSuccessful", false}, {"exitCode", 2}}},
              {"x\ny\nz\n",
               "--max-errors 1",
               {{"executionSuccessful", true},
                {"exitCode", 1},
                {"toolExecutionNotifications",
                 {{{"level", "note"}, {"message", {{"text", "2 more errors not shown"}}}}}}}}};
  for (const auto& [text, flags, invocation] : rows)
    EXPECT_EQ(log(text, flags)["invocations"], json::array({invocation})) << text << flags;
  const json missing = json::parse(run("check --format sarif no_such").out)["runs"][0];
  EXPECT_EQ(missing["results"].size(), 1U);
}

// The objects of the standard with the members that they may have here: of which kind, `!` if they
// must be there, `[]` for a list of these.
const std::map<string, string> shapes = {
    {"log", "$schema:text version:text! runs:run[]!"},
    {"run",
     "tool:tool! columnKind:columns results:result[] artifacts:artifact[] "
     "invocations:invocation[]"},
    {"tool", "driver:component!"},
    {"component", "name:text! version:text rules:rule[]"},
    {"rule", "id:text! shortDescription:message defaultConfiguration:configuration"},
    {"configuration", "level:level"},
    {"result",
     "ruleId:text ruleIndex:number level:level message:message! locations:location[] "
     "relatedLocations:location[] fixes:fix[]"},
    {"location", "id:number physicalLocation:physical message:message"},
    {"physical", "artifactLocation:file! region:region"},
    {"file", "uri:text index:number description:message"},
    {"region", "startLine:count startColumn:count endColumn:count"},
    {"fix", "description:message artifactChanges:change[]!"},
    {"change", "artifactLocation:file! replacements:replacement[]!"},
    {"replacement", "deletedRegion:region! insertedContent:message"},
    {"message", "text:text!"},
    {"artifact", "location:file roles:role[]"},
    {"invocation",
     "executionSuccessful:flag! exitCode:number "
     "toolExecutionNotifications:notification[]"},
    {"notification", "level:level message:message!"}};

bool isoneof(const json& value, const std::set<string>& words) {
  return value.is_string() && words.contains(value);
}

/// What is wrong with a value of a kind, each with its path in front.
string faults(const json& value, const string& kind, const string& path);

string objectfaults(const json& value, const string& members, const string& path) {
  if (!value.is_object()) return path + " is no object\n";
  string found;
  std::set<string> known;
  std::istringstream words(members);
  for (string word; words >> word;) {
    const string name = word.substr(0, word.find(':'));
    string kind = word.substr(name.size() + 1);
    const bool needed = kind.ends_with('!');
    if (needed) kind.pop_back();
    known.insert(name);
    if (value.contains(name))
      found += faults(value[name], kind, path + '.' + name);
    else if (needed)
      found += path + " lacks " + name + '\n';
  }
  for (const auto& [name, ignored] : value.items())
    if (!known.contains(name)) found += path + " has " + name + '\n';
  return found;
}

string faults(const json& value, const string& kind, const string& path) {
  if (kind.ends_with("[]")) {
    string found = value.is_array() ? "" : path + " is no list\n";
    std::set<json> seen;
    for (const json& each : value) {
      found += faults(each, kind.substr(0, kind.size() - 2), path + "[]");
      if (!seen.insert(each).second && kind != "result[]") found += path + " has one twice\n";
    }
    return found;
  }
  if (shapes.contains(kind)) return objectfaults(value, shapes.at(kind), path);
  const bool good = kind == "text"     ? value.is_string()
                    : kind == "flag"   ? value.is_boolean()
                    : kind == "number" ? value.is_number_unsigned()
                    : kind == "count"  ? value.is_number_unsigned() && value > 0
                    : kind == "level"  ? isoneof(value, {"none", "note", "warning", "error"})
                    : kind == "role"   ? isoneof(value, {"analysisTarget"})
                                       : isoneof(value, {"utf16CodeUnits", "unicodeCodePoints"});
  return good ? "" : path + " is no " + kind + ": " + value.dump() + '\n';
}

TEST_F(Forms, SarifHasTheObjectsOfTheStandard) {
  save("d", "a integer 7 10\nb integr 1 5 0 9 1 1 x\nb boolean 1 3 1 1 B\nb boolean 1 1 1 1 B\n");
  const string examples = OPTXV_SOURCE_DIR "/examples/";
  const string rows[] = {
      examples + "solver.def " + examples + "faulty.opt " + examples + "notices.opt", "d",
      "s.def - no_such", "s.def missing --max-errors 1 p"};
  save("p", "x\ny\nz\n");
  for (const string& files : rows) {
    const json all = json::parse(run("check --format sarif " + files).out);
    EXPECT_EQ(faults(all, "log", "log"), "") << files;
    const json only = all["runs"][0];
    const json rules = only["tool"]["driver"]["rules"], artifacts = only["artifacts"];
    for (const json& each : only["results"]) {
      EXPECT_EQ(rules.at(each["ruleIndex"].get<std::size_t>())["id"], each["ruleId"]);
      const json file = each["locations"][0]["physicalLocation"]["artifactLocation"];
      EXPECT_EQ(artifacts.at(file["index"].get<std::size_t>())["location"]["uri"], file["uri"]);
    }
  }
}

}  // namespace
}  // namespace optxv::test
