// Settings as JSON and back: what comes through, what is refused, and where.

#include <algorithm>
#include <bit>
#include <fstream>
#include <random>
#include <sstream>

#include "commandrun.h"
#include "optxv/optxv.hpp"

namespace optxv::test {
namespace {

using std::string;

string textof(const string& file) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return text.str();
}

class Convert : public commandrun {
 protected:
  void SetUp() override { save("s.def", textof(OPTXV_TESTS "/support/everykind.def")); }
  /// The result as one line, without the blanks that only lay it out.
  string json(const string& text, const string& flags = "") const {
    save("p.opt", text);
    const outcome told = run("convert s.def p.opt --to json " + flags);
    string line;
    std::istringstream lines(told.out);
    for (string each; std::getline(lines, each);) line += each.substr(each.find_first_not_of(' '));
    return line.empty() ? told.err : line;
  }
  string parameters(const string& text, const string& flags = "") const {
    save("p.json", text);
    const outcome told = run("convert s.def p.json --to parameters " + flags);
    return told.status == 0 ? told.out : told.err;
  }
};

struct pairrow {
  string parameters, json;
};

TEST_F(Convert, EveryKindBothWays) {
  const pairrow rows[] = {
      {"steplim=5\n", R"({"steplim": 5})"},
      {"tol=0.1 0.30000000000000004\n", R"({"tol": [0.1,0.30000000000000004]})"},
      {"tol=* 1e-300\n", R"({"tol": [null,1e-300]})"},
      {"range=7 *\n", R"({"range": [7,null]})"},
      {"title=\"a b\" c\n", R"({"title": ["a b","c"]})"},
      {"logname=\"\"\n", R"({"logname": ""})"},
      {"logname=\"a ! \\ \xC3\xA9\"\n", "{\"logname\": \"a ! \\\\ \xC3\xA9\"}"},
      {"method=dual\n", R"({"method": "dual"})"},
      {"level=2\n", R"({"level": 2})"},
      {"verbose\n", R"({"verbose": true})"},
      {"quick=3\n", R"({"quick": 3})"},
      {"scale=0\n", R"({"scale": false})"},
      {"whole 0\nlogname=\" a\"\nwhole 1\n", R"({"logname": " a"})"},
      {"title=\" a\" b\n", R"({"title": [" a","b"]})"},
      {"names=a\nnames=\"b c\"\n", R"({"names": ["a","b c"]})"},
      {"--note=first try !\n", R"({"--note": ["first try !"]})"},
      {"x.scale('a',*) = 2.5\ny.keep(\"it's\") = 1\n",
       R"({"dot-options": [{"symbol": "x","attribute": ".scale","labels": ["a","*"],"value": 2.5},)"
       R"({"symbol": "y","attribute": ".keep","labels": ["it's"],"value": true}]})"},
      {"tie eq(i,'oslo')$x(i) = 1\n",
       R"({"indicator-entries": [{"equation": "eq","equationlabels": ["i","'oslo'"],)"
       R"("variable": "x","variablelabels": ["i"],"value": true}]})"}};
  for (const pairrow& row : rows) {
    EXPECT_EQ(json(row.parameters), row.json);
    EXPECT_EQ(parameters(row.json), row.parameters);
  }
}

TEST_F(Convert, JsonThatIsTakenInOtherForms) {
  const pairrow rows[] = {{"steplim=1000\n", R"({"$schema": "s.json", "steplim": 1e3})"},
                          {"level=1\n", R"({"level": 1.0})"},
                          {"method=DUAL\n", R"({"method": "DUAL"})"},
                          {"quick\n", R"({"quick": null})"},
                          {"", R"({"verbose": false, "names": []})"},
                          {"tol=-0 1e-320\n", R"({"tol": [-0, 1e-320]})"},
                          {"tol=0 0\n", "\xEF\xBB\xBF{\"tol\": [0, 1e-999]}"}};
  for (const pairrow& row : rows) EXPECT_EQ(parameters(row.json), row.parameters);
  EXPECT_EQ(parameters(R"({"steplim": 6000})", "--no-bounds --force").substr(0, 7), "free 1\n");
  EXPECT_EQ(json("steplim 6000", "--no-bounds"), R"({"steplim": 6000})");
  EXPECT_NE(json("", "--all").find(R"("tol": [0.5,0.5],"logname": "run log","method": "primal")"),
            string::npos);
}

/// Faults with the place of each; all of one text are told, in its order.
TEST_F(Convert, FaultsInJson) {
  const std::pair<string, std::vector<string>> rows[] = {
      {"[1]", {"1:1: error: settings are an object, not a list"}},
      {"{\"steplim\": 1,}",
       {"1:15: error: a name in double quotes is expected; JSON has no comma"}},
      {"{\"steplim\" 1}", {"1:12: error: a colon is expected, and a value"}},
      {"{\"steplim\": 01}", {"1:14: error: a comma or } is expected; a number does not begin"}},
      {"{\n// no\n}", {"2:1: error: a name in double quotes or } is expected; JSON has no comm"}},
      {"{\"logname\": \"a", {"1:13: error: the text that begins here has no closing quote"}},
      {"{\"logname\": \"a\xE9\"}", {"1:15: error: a character that JSON does not have in a text"}},
      {string(100000, '['), {"1:65: error: lists and objects are more than 64 deep"}},
      {"{\"steplim\": 1, \"steplim\": 2}", {"1:16: error: a member of this name is there already"}},
      {"{\"stpelim\": 1}", {"1:2: error: no option is called", "did you mean \"steplim\"?"}},
      {"{\"maxsteps\": 1}", {"1:2: error: no option is called", "help: write \"steplim\""}},
      {"{\"both\": 1}", {"1:2: error: \"both\" has no value of its own"}},
      {"{\"gone\": 1}", {"1:2: error: \"gone\" is obsolete"}},
      {"{\"steplim\": \"5\"}",
       {"1:13: error: \"steplim\" takes a whole number from 0 to 5000, not"}},
      {"{\"steplim\": 0.5}", {"1:13: error: \"steplim\" takes a whole number"}},
      {"{\"steplim\": 99999999999}", {"1:13: error: \"steplim\" takes a whole number"}},
      {"{\"steplim\": 5001}",
       {"1:13: error: Integer range error", "note: Valid range is 0 to 5000"}},
      {"{\"tol\": [0, 1e999]}", {"1:13: error: \"tol\" takes a number from 0 to 1, not 1e999"}},
      {"{\"tol\": [null, null]}", {"1:9: error: \"tol\" takes a list of two"}},
      {"{\"method\": \"dula\"}", {"1:12: error: Unknown value", "did you mean \"dual\"?"}},
      {"{\"logname\": \"a\\nb\"}", {"1:13: error: \"logname\" has a text with a line feed in it"}},
      {"{\"title\": [\"*\", \"a\"]}", {"1:2: error: \"title\" does not come back", "[null,\"a\"]"}},
      {"{\"dot-options\": [{\"symbol\": \"x\", \"attribute\": \".scal\", \"value\": 1}]}",
       {"1:47: error: \"dot-options\": an attribute is expected; there are \".scale\""}},
      {"", {"1:1: error: a value is expected"}},
      {"{} 1", {"1:4: error: the end of the text is expected"}},
      {"{\"names\": [\"a\" 1]}", {"1:16: error: a comma or ] is expected"}},
      {"{\"names\": [,]}",
       {"1:13: error: a value is expected; JSON has no comma in front of a bracket"}},
      {"{\"logname\": 'a'}", {"JSON has no single quotes"}},
      {"{\"tol\": NaN}", {"JSON has no such number"}},
      {"{\"names\": 1}", {"1:11: error: \"names\" takes a list of texts, not a number"}},
      {"{\"names\": [1]}", {"1:12: error: \"names\" is a list of texts, not of a number"}},
      {"{\"verbose\": 1}", {"1:13: error: \"verbose\" takes"}},
      {"{\"scale\": []}", {"1:11: error: \"scale\" takes"}},
      {"{\"logname\": \"" + string(300, 'a') + "\"}", {"has a text of 300 bytes, and parameter"}},
      {"{\".scale\": 1}", {"is an attribute of the entries in \"dot-options\""}},
      {"{\"free\": 1}", {"is an instruction to the reader of a file"}},
      {"{\"dot-options\": 1}",
       {"1:17: error: \"dot-options\": a list of objects is expected, not a"}},
      {"{\"dot-options\": [1]}", {"1:18: error: \"dot-options\": an object is expected, not a"}},
      {R"({"dot-options": [{"symbol": "x", "value": 1}]})", {"there is no \"attribute\" here"}},
      {R"({"dot-options": [{"symbol": "9", "attribute": ".scale", "value": 1, "sort": 1}]})",
       {"letters, digits and underscores is expected", "no member is called \"sort\"",
        "there are symbol, attribute"}},
      {R"({"dot-options": [{"symbol": "x", "attribute": ".scale", "value": "a", "labels": 1}]})",
       {"a list of labels is expected, not a number"}},
      {R"({"dot-options": [{"symbol": "x", "attribute": ".scale", "value": "a"}]})",
       {"\".scale\" takes a number"}},
      {R"({"dot-options": [{"symbol": "x", "attribute": ".scale", "value": 1, "labels": [1]}]})",
       {"a label is a text, not a number"}},
      {R"({"dot-options": [{"symbol": "x", "attribute": ".scale", "value": 1, "labels": ["'\""]}]})",
       {"a label has no line feed, and no quotes of both"}},
      {R"({"indicator-entries": [{"equation": "e", "variable": "x", "value": 1,
          "equationlabels": ["o slo"]}]})",
       {"a label is a name, or a text in single or double quotes of its own"}},
      {R"({"indicator-entries": [{"equation": "e", "variable": "x", "value": 1}]})",
       {"the value is true or false, not a number"}},
      {"{\"steplim\": -1,\n\"tol\": 1,\n\"stpelim\": 1, \"level\": 1e999,\n\"scale\": 1}",
       {"1:13: error", "2:8: error", "3:1: error", "3:24: error", "4:10: error"}}};
  for (const auto& [text, expected] : rows) {
    const string told = parameters(text);
    std::size_t at = 0;
    for (const string& each : expected) {
      EXPECT_NE(at = told.find(each, at), string::npos) << each << " in\n" << told;
      at = std::min(at, told.size());
    }
    EXPECT_NE(told.find("nothing is written"), string::npos) << told;
  }
}

TEST_F(Convert, WhatJsonCannotHold) {
  const string notutf8 = json("logname a\xE9z\n");
  EXPECT_NE(notutf8.find("p.opt:1:9: error: logname: JSON cannot hold its text \"a\\xE9z\""),
            string::npos)
      << notutf8;
  EXPECT_EQ(run("convert s.def p.opt --to json").status, 1);
  EXPECT_EQ(run("convert s.def p.opt --to xml").status, 2);
  EXPECT_EQ(run("convert s.def nothing --to parameters").status, 2);
}

// --- Any settings

/// All values of a set, bit for bit, as a text.
string heldby(const options& all) {
  std::ostringstream text;
  for (const option& each : all.table()) {
    text << each.name << ' ' << each.defined;
    for (std::int32_t which = 1; which <= (each.takes == optxv_takes_two ? 2 : 1); which++) {
      if (each.data == optxv_data_real)
        text << ' ' << std::bit_cast<std::uint64_t>(all.get<double>(each.number, which));
      if (each.data == optxv_data_integer) text << ' ' << all.get<std::int32_t>(each.number, which);
      if (each.data == optxv_data_text) text << ' ' << all.get<string>(each.number, which) << '|';
    }
    if (each.kind == optxv_kind_list)
      for (const std::string_view item : all.list(each.number)) text << ' ' << item << '|';
    text << '\n';
  }
  for (const dot_option& each : all.dot_options()) {
    text << each.symbol << each.option << ' ' << std::bit_cast<std::uint64_t>(each.value);
    for (const string& label : each.labels) text << ' ' << label;
    text << '\n';
  }
  for (const indicator& each : all.indicators()) {
    text << each.equation << each.variable << each.mark;
    for (const string& label : each.equation_labels) text << ' ' << label;
    text << '\n';
  }
  return text.str();
}

class randomtext {
 public:
  explicit randomtext(unsigned seed) : random_(seed) {}

  string lines() {
    string text;
    for (unsigned count = below(30); count > 0; count--) text += line() + '\n';
    return text;
  }

 private:
  unsigned below(unsigned limit) { return static_cast<unsigned>(random_() % limit); }
  string line() {
    switch (below(9)) {
      case 0:
        return "tol " + real() + (below(3) == 0 ? "" : ' ' + real());
      case 1:
        return "logname \"" + characters() + '"';
      case 2:
        return "names \"" + characters() + '"';
      case 3:
        return "--n" + std::to_string(below(3)) + ' ' + characters();
      case 4:
        return "title " + string(below(3) == 0 ? "*" : "\"" + characters() + '"') + " z" +
               characters();
      case 5:
        return "x.scale('" + std::to_string(below(9)) + "',\"" + characters() + "\") " + real();
      case 6:
        return "tie e(i,'" + characters() + "')$v(i) " + (below(2) == 0 ? "yes" : "no");
      case 7:
        return "range " + std::to_string(below(120)) + (below(2) == 0 ? " *" : " 5");
      default:
        return below(2) == 0 ? "verbose" : "quick " + std::to_string(below(99));
    }
  }
  /// A real between 0 and 1 of any bits.
  string real() {
    const double value = std::bit_cast<double>(random_() % std::bit_cast<std::uint64_t>(1.0));
    std::ostringstream text;
    text.precision(17);
    text << value;
    return text.str();
  }
  string characters() {
    static const string all[] = {"a",
                                 "B",
                                 "0",
                                 " ",
                                 "\t",
                                 "=",
                                 ":=",
                                 "!",
                                 "#",
                                 "'",
                                 "*",
                                 ",",
                                 "(",
                                 "\\",
                                 "/",
                                 "-",
                                 ".",
                                 "\r",
                                 "\x01",
                                 "\xC3\xA9",
                                 "\xF0\x9F\x98\x80",
                                 string(1, '\0'),
                                 string(120, 'x')};
    string text;
    for (unsigned count = below(6); count > 0; count--) text += all[below(std::size(all))];
    return text;
  }

  std::mt19937_64 random_;
};

/// What the library holds after it has read a file.
class AnySettings : public Convert {
 protected:
  string held(const string& file, bool tokens = false) const {
    options all = options::from_file(folder_.path() + "/s.def");
    all.set_switch(optxv_switch_line_mode, !tokens);
    all.read(folder_.path() + '/' + file);
    return heldby(all);
  }
};

TEST_F(AnySettings, ComeBackAsTheyAre) {
  randomtext random(20);
  for (int round = 0; round < 30; round++) {
    save("p.opt", random.lines());
    ASSERT_LE(run("convert s.def p.opt --to json --force -o p.json").status, 1);
    const string before = held("p.opt");
    for (const string flags : {"", "--tokens"}) {
      const outcome back = run("convert s.def p.json --to parameters -o q.opt " + flags);
      EXPECT_EQ(back.status, 0) << back.err << get("p.opt");
      EXPECT_EQ(held("q.opt", !flags.empty()), before)
          << get("p.opt") << get("p.json") << get("q.opt");
    }
  }
}

}  // namespace
}  // namespace optxv::test
