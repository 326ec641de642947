// Where values come from, and what they overrode, as `origin` and `show` tell it.

#include <algorithm>

#include "analysis/origins.h"
#include "commandrun.h"

namespace optxv::test {
namespace {

using std::string;

const char* const definition =
    "steps integer 1 5 0 maxint 1 1 S\nscale boolean.NV 2 1 1 1 P\nrange double.TWO 3 0 0 100 1 1 "
    "R\n"
    "all macro 1 1 A\n steps\n scale\nboth multilist 4 1 1 B\n range\n steps\n"
    "paths strlist 5 1 1 L\nrf immediate ReadFile 1 1 R\nwl immediate EolFlag 1 1 W\n"
    ".pri integer 6 0 0 9 1 1 D\nstp synonym steps\nline indicator\n";

class Origin : public commandrun {
 protected:
  void SetUp() override {
    save("s.def", definition);
    save("none", "");
  }
  /// The rows below the headings, with one blank between the cells.
  string rows(const string& words) const {
    const string told = run("origin " + words).out;
    string text;
    for (const char c : told.substr(told.find('\n') + 1))
      if (c != ' ' || !text.ends_with(' ')) text += c;
    return text;
  }
};

TEST_F(Origin, EachRoadIsTold) {
  save("q", "rf r\nsteps 3\n");
  save("r", "\n  steps = 2\n");
  const std::pair<string, string> told[] = {
      {"steps 1", "steps 1 p:1:7\n"},
      {"stp:= 1\nstp := \"1\"", "steps 1 p:2:9\n"},
      {"steps 1\nsteps 2\nsteps x\nsteps 3", "steps 3 p:4:7\n before 2 p:2:7\n before 1 p:1:7\n"},
      {"scale", "scale 1 p:1:1\n"},
      {"all yes\nall 7\nscale",
       "steps 7 p:2:5 macro all\nscale 1 p:3:1\n before 0 p:2:5 macro all\n"
       " before 0 p:1:5 macro all\n"},
      {"both 4:5", "steps 5 p:1:8 multilist both\nrange[1] 4 p:1:6 multilist both\n"},
      {"range 3", "range[1] 3 p:1:7\nrange[2] 3 p:1:7\n"},
      {"range 1 2\nrange * 3", "range[1] 1 p:1:7\nrange[2] 3 p:2:9\n before 2 p:1:9\n"},
      {"paths a b\npaths \"c\"\n--new x",
       "paths[1] \"a b\" p:1:7\npaths[2] c p:2:8\n--new[1] x p:3:7\n"},
      {"rf q\nsteps 4\nrf r",
       "steps 2 r:2:11 read at p:3:4\n before 4 p:2:7\n before 3 q:2:7 read at p:1:4\n"
       " before 2 r:2:11 read at q:1:4, read at p:1:4\n"},
      {"x.pri(a) 1\nx.pri('a') 1\nx.pri 2", "x.pri('a') 1 p:2:1\nx.pri 2 p:3:1\n"},
      {"line e(i)$x(i) yes", "e(i)$x(i) 1 p:1:6\n"},
      {"* no more", ""}};
  for (const auto& [text, expected] : told) {
    save("p", text + "\n");
    string got = rows("s.def p");
    EXPECT_EQ(got, expected) << text;
  }
  save("p", "steps 1 steps 2\n");
  save("night", "steps 3\n");
  EXPECT_EQ(run("origin --tokens s.def p night paths", "COLUMNS=20").out, "paths\n    empty\n");
  EXPECT_EQ(run("origin --tokens s.def p night", "COLUMNS=20").out,
            "steps = 3\n    night:1:7\n    before 2, p:1:15\n    before 1, p:1:7\n");
  EXPECT_EQ(rows("--tokens s.def p night"),
            "steps 3 night:1:7\n before 2 p:1:15\n before 1 p:1:7\n");
}

TEST_F(Origin, ANameMayComeLastOrByItsFlag) {
  save("p", "steps 1\nrange 3\nx.pri 2\n");
  save("scale", "scale\n");
  const string steps = "steps 1 p:1:7\n", range = "range[1] 3 p:2:7\nrange[2] 3 p:2:7\n";
  const std::pair<string, string> told[] = {
      {"p STP", steps},
      {"p .pri", "x.pri 2 p:3:1\n"},
      {"p steps paths rf", steps + "paths empty\nrf an instruction\n"},
      {"p both", steps + range},
      {"p scale", "steps 1 p:1:7\nscale 1 scale:1:1\n" + range + "x.pri 2 p:3:1\n"},
      {"p --name scale", "scale 1 default\n"},
      {"--name steps", "steps 5 default\n"},
      {".pri", ".pri 0 default\n"}};
  for (const auto& [words, expected] : told) EXPECT_EQ(rows("s.def " + words), expected) << words;
  const std::pair<string, string> wrong[] = {
      {"p step",
       "no file and no option is called \"step\"\noptxv: note: did you mean \"steps\"?\n"},
      {"p --name nothing", "no option is called \"nothing\"\n"},
      {"p q.opt steps", "no file and no option is called \"q.opt\"\n"}};
  for (const auto& [words, complaint] : wrong) {
    const outcome got = run("origin s.def " + words);
    EXPECT_EQ(std::to_string(got.status) + got.out + got.err, "2optxv: error: " + complaint);
  }
  save("p", "steps 99999999999999999999x\nsteps 1\n");
  EXPECT_EQ(run("origin s.def p").status, 1);
  EXPECT_EQ(rows("s.def p"), steps.substr(0, 8) + "p:2:7\n");
  EXPECT_EQ(run("origin s.def missing/p").status, 2);
}

TEST_F(Origin, ProgramsGetTheSameAsJson) {
  save("q", "steps 3\n");
  save("p", "range 1\nall 2\nrf q\nrange * 2\n");
  const string told = run("origin --json s.def p steps").out;
  EXPECT_EQ(told,
            R"({
  "options": [
    {
      "number": 2,
      "name": "steps",
      "kind": "integer",
      "value": 3,
      "default": 5,
      "set": true,
      "origin": {
        "file": "q",
        "line": 1,
        "column": 7,
        "length": 1,
        "road": "entry",
        "from": [
          {
            "file": "p",
            "line": 3,
            "column": 4,
            "length": 1
          }
        ],
        "overrode": [
          {
            "value": 2,
            "file": "p",
            "line": 2,
            "column": 5,
            "length": 1,
            "road": "macro",
            "through": "all"
          }
        ]
      }
    }
  ],
  "dotoptions": [],
  "indicators": []
}
)");
}

TEST_F(Origin, ShowHasThePlacesIfAsked) {
  save("p", "range 1 2\nrange * 3\npaths a\npaths b\n");
  EXPECT_EQ(run("show --origin s.def p").out,
            "Nr  Name   Kind        Value  Default  Set   Where\n"
            " 4  range  double.TWO  1 3    0        both  p:1:7 p:2:9\n"
            " 7  paths  strlist     a               set   p:3:7\n"
            "                       b                     p:4:7\n\n2 of 10 options are set\n");
  EXPECT_EQ(run("show s.def p").out.find("p:"), string::npos);
  EXPECT_NE(run("show --origin s.def p", "COLUMNS=30").out.find("both\n    p:1:7 p:2:9\n"),
            string::npos);
}

/// What is set for good stays, however much comes after it; of the rest the last is kept.
TEST(Settings, KeepTheLastOfAnyNumber) {
  const options table = options::from_text(definition);
  command::settings all(table.handle(), true);
  const std::int32_t steps = *table.find("steps"), range = *table.find("range");
  const auto store = [&](std::int32_t option, std::int32_t which, std::int64_t line) {
    all.stored({option, which, optxv_road_entry, 0, {"p", line, 1, 1}});
  };
  constexpr std::int64_t many = command::settings::mostkept + 10;
  store(range, 2, 1);
  for (std::int64_t line = 2; line <= many; line++) store(steps, 1, line);
  EXPECT_EQ(all.history(steps).size(), command::settings::mostkept);
  EXPECT_EQ(all.history(steps).front().at.line, many);
  EXPECT_EQ(all.history(steps).back().at.line, 11);
  EXPECT_EQ(all.of(steps).times, many - 1U);
  EXPECT_EQ(all.last(range, 2)->at.line, 1);
  EXPECT_EQ(all.history(range, 2).size(), 1U);
  EXPECT_FALSE(all.last(range, 1));
}

}  // namespace
}  // namespace optxv::test
