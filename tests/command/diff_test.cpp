// What differs between two settings, and between two definitions.

#include <fstream>

#include "analysis/tablediff.h"
#include "commandrun.h"

namespace optxv::test {
namespace {

using std::string;

class Diff : public commandrun {
 protected:
  void SetUp() override {
    save("s.def",
         "steps integer 1 5 0 maxint 1 1 S\nscale boolean.NV 2 1 1 1 P\n"
         "base string.OPT 3 b 1 1 B\nrange double.TWO 4 0 0 100 1 1 R\n"
         "all macro 1 1 A\n steps\n range\npaths strlist 5 1 1 L\nrf immediate ReadFile 1 1 R\n"
         ".pri integer 6 0 0 9 1 1 D\nline indicator\n");
  }
  /// The output for two parameter files without the lines that name them; the status if not 1.
  string differing(const string& was, const string& is) const {
    save("p", was + '\n');
    save("q", is + '\n');
    return told(run("diff s.def p q"), "--- p\n+++ q\n");
  }
  /// Of two definitions, without places and what they both have, and without the summary.
  string changed(const string& was, const string& is) const {
    const string both = "z integer 99 1 0 9 1 1 Z\n";
    save("old", both + was + '\n');
    save("new", both + is + '\n');
    const string all = told(run("diff --definitions old new"), "");
    string lines;
    for (std::size_t at = 0, end; (end = all.find('\n', at)) != all.npos; at = end + 1) {
      const string line = all.substr(at, end - at);
      if (line.ends_with(']')) lines += line.substr(line.find(": ") + 2) + '\n';
    }
    return lines;
  }
  static string told(const outcome& got, const string& heading) {
    EXPECT_EQ(got.err, "");
    EXPECT_LE(got.status, 1);
    const bool headed = got.out.starts_with(heading);
    EXPECT_EQ(headed, !got.out.empty() || heading.empty()) << got.out;
    return headed ? got.out.substr(heading.size()) : got.out;
  }
};

TEST_F(Diff, OfSettingsIsWhatDiffersInEffect) {
  save("r", "steps 7\n");
  const std::tuple<string, string, string> rows[] = {
      {"steps 1\nsteps 2", "steps := 2", ""},
      {"steps 5", "", ""},
      {"steps 6", "rf r", "steps (default 5)\n  - 6  p:1:7\n  + 7  r:1:7, read at q:1:4\n"},
      {"", "steps maxint", "steps (default 5)\n  - 5       default\n  + maxint  q:1:7\n"},
      {"range 1 2", "range 1 3", "range[2] (default 0)\n  - 2  p:1:9\n  + 3  q:1:9\n"},
      {"range 9\nall 8", "range 9\nsteps 8",
       "range[1] (default 0)\n  - 8  p:2:5, macro all\n  + 9  q:1:7\n"},
      {"scale", "", "scale (default 1)\n  - 1  p:1:1\n  + 1  default\n"},
      {"", "base", "base (default b)\n  - b  default\n  + b  q:1:1\n"},
      {"base a\nbase b", "base \"b\"", ""},
      {"base \"x y\"", "base x", "base (default b)\n  - \"x y\"  p:1:7\n  + x      q:1:6\n"},
      {"paths a\npaths b\npaths c", "paths a\npaths d\npaths e\npaths c",
       "paths\n  - b  p:2:7\n  + d  q:2:7\n  + e  q:3:7\n"},
      {"--note a\n--other b", "--other b", "--note\n  - a  p:1:8\n"},
      {"x.pri 1\ny.pri('a',*) 2", "y.pri('a',*) 2\nx.pri 1", ""},
      {"x.pri 1", "x.pri 2\ny.pri 1", "x.pri\n  - 1  p:1:1\n  + 2  q:1:1\ny.pri\n  + 1  q:2:1\n"},
      {"line e$x 1", "line e$x 0", "e$x\n  - 1  p:1:6\n  + 0  q:1:6\n"}};
  for (const auto& [was, is, expected] : rows) EXPECT_EQ(differing(was, is), expected) << is;
}

TEST_F(Diff, ItsStatusIsThatOfSuchTools) {
  save("p", "steps 1\n");
  save("q", "steps 2\n");
  save("bad", "steps 1\nstepz 2\n");
  save("bad.def", "a integer 1 5 0 9 1 1 A\nb integr 2 5 0 9 1 1 B\n");
  save("a.def", "a integer 1 5 0 9 1 1 A\n");
  save("b.def", "a integer 1 6 0 9 1 1 A\n");
  save("c.def", "a integer 1 5 0 8 1 1 A\n");
  const std::tuple<string, int, string> rows[] = {
      {"s.def p p", 0, ""},
      {"s.def p q", 1, ""},
      {"s.def bad p", 2, "bad:2:1: error: Unknown option \"stepz\""},
      {"s.def p nothing", 2, "nothing: error: cannot be read: No such file"},
      {"s.def p", 2, "optxv: error: diff compares two parameter files, and 1 is given"},
      {"s.def p q p", 2, "optxv: error: diff compares two parameter files, and 3 are given"},
      {"bad.def p p", 2, "bad.def:2:3: error: Unknown option type"},
      {"--definitions a.def a.def", 0, ""},
      {"--definitions a.def b.def", 0, ""},
      {"--definitions c.def a.def", 0, ""},
      {"--definitions a.def c.def", 1, ""},
      {"--definitions a.def bad.def", 2, "bad.def:2:3: error: Unknown option type"},
      {"--definitions a.def nothing", 2, "nothing: error: cannot be read"},
      {"--definitions a.def b.def c.def", 2, "optxv: error: diff compares two definitions"}};
  for (const auto& [words, status, complaint] : rows) {
    const outcome got = run("diff " + words);
    EXPECT_EQ(got.status, status) << words << got.out;
    EXPECT_TRUE(complaint.empty() ? got.err.empty() : got.err.starts_with(complaint)) << got.err;
    EXPECT_EQ(got.err.rfind(complaint, got.err.size() - complaint.size()), 0U) << "told twice";
  }
}

TEST_F(Diff, ADefinitionThatIsGoneForTheSecondFileIsTold) {
  save("p", "steps 1\n");
  const outcome got = run("diff /dev/stdin p p", "sh -c 'cat s.def | \"$0\" \"$@\"'");
  EXPECT_EQ(got.status, 2);
  EXPECT_TRUE(got.err.starts_with("/dev/stdin: note: the file is empty\n")) << got.err;
}

TEST_F(Diff, ProgramsGetTheSameAsJson) {
  save("p", "paths a\n");
  save("q", "range 1 0\n");
  EXPECT_EQ(run("diff --json s.def p q").out, R"({
  "differences": [
    {
      "what": "option",
      "name": "range",
      "number": 5,
      "kind": "double",
      "position": 1,
      "default": 0.0,
      "old": {
        "value": 0.0,
        "origin": null
      },
      "new": {
        "value": 1.0,
        "origin": {
          "file": "q",
          "line": 1,
          "column": 7,
          "length": 1,
          "road": "entry"
        }
      }
    },
    {
      "what": "option",
      "name": "paths",
      "number": 7,
      "kind": "strlist",
      "old": [
        {
          "value": "a",
          "origin": {
            "file": "p",
            "line": 1,
            "column": 7,
            "length": 1,
            "road": "entry"
          }
        }
      ],
      "new": []
    }
  ]
}
)");
  EXPECT_EQ(run("diff --json s.def p p").out, "{\n  \"differences\": []\n}\n");
  save("old", "a integer 1 5 0 9 1 1 A\n");
  save("new", "\nb integer 1 5 0 9 1 1 A\n");
  EXPECT_EQ(run("diff --json --definitions old new").out, R"({
  "changes": [
    {
      "code": "option-renamed",
      "breaking": true,
      "name": "a",
      "text": "is called b now",
      "old": "a",
      "new": "b",
      "file": "new",
      "line": 2,
      "column": 1,
      "length": 1
    }
  ],
  "summary": {
    "breaking": 1,
    "others": 0
  }
}
)");
}

const std::tuple<const char*, const char*, const char*> changes[] = {
    {"a integer 1 5 0 9 1 1 A", "* A comment.\nA  integer 1 $5 0 9 2 1 A", ""},
    {"a integer 1 5 0 9 1 1 A", "", "breaking: a: is gone [option-gone]\n"},
    {"a integer 1 5 0 9 1 1 A\ng obsolete\n a No more", "",
     "change: a: is gone, and was obsolete [obsolete-gone]\n"},
    {"a enumint 1 0 1 1 A\n 0 1 P\n 0 1 Q", "a enumint 1 0 1 1 A\n 0 1 P\n 0 1 R", ""},
    {"", ".a integer 1 5 0 9 1 1 A", "change: .a: is new [option-new]\n"},
    {"a integer 1 5 0 9 1 1 A", "b integer 1 5 0 9 1 1 A",
     "breaking: a: is called b now [option-renamed]\n"},
    {"a integer 0 5 0 9 1 1 A", "b integer 0 5 0 9 1 1 A",
     "breaking: a: is gone [option-gone]\nchange: b: is new [option-new]\n"},
    {"a integer 1 5 0 9 1 1 A\nb integer 1 5 0 9 1 1 B", "c integer 1 5 0 9 1 1 C",
     "breaking: a: is gone [option-gone]\nbreaking: b: is gone [option-gone]\n"
     "change: c: is new [option-new]\n"},
    {"a integer 1 5 0 9 1 1 A\nb integer 2 5 0 9 1 1 B", "b integer 1 5 0 9 1 1 B",
     "breaking: a: is gone [option-gone]\nbreaking: b: the usermap is 1, was 2 "
     "[usermap-changed]\n"},
    {"a integer 1 5 0 9 1 1 A", "b integer 1 6 0 9 1 1 A\na synonym b",
     "change: a: is called b now, of which a is a synonym [option-renamed-kept]\n"
     "change: b: the default is 6, was 5 [default-changed]\n"},
    {"a integer 1 5 0 9 1 1 A", "a double 1 6 0 8 1 1 A",
     "breaking: a: the type is double, was integer [type-changed]\n"},
    {"a integer 1 5 0 9 1 1 A", "a integer.TWO 1 5 0 9 1 1 A",
     "breaking: a: the modifier is TWO, was none [takes-changed]\n"},
    {"a integer 1 5 0 9 1 1 A", "a integer.OPT 1 5 0 9 1 1 A",
     "change: a: the value may be left out now [takes-optional]\n"},
    {"a integer.OPT 1 5 0 9 1 1 A", "a integer 1 5 0 9 1 1 A",
     "breaking: a: the modifier is none, was OPT [takes-changed]\n"},
    {"a double 1 5 0 9 1 1 A", "a double 1 5 1e-20 maxdouble 1 1 A",
     "breaking: a: the range is 1E-20 to maxdouble, was 0 to 9 [bounds-tighter]\n"},
    {"a integer 1 5 0 9 1 1 A", "a integer 1 5 -1 maxint 1 1 A",
     "change: a: the range is now -1 to maxint, was 0 to 9 [bounds-wider]\n"},
    {"a string 1 NEW 1 1 A", "a string 1 \"x OLD\" 1 1 A",
     "change: a: the default is \"x OLD\", was NEW [default-changed]\n"},
    {"a boolean.NV 1 0 1 1 A", "a boolean.NV 1 1 1 1 A",
     "breaking: a: the name alone sets 1, and set 0 [default-said]\n"},
    {"a integer.OPT 1 5 0 9 1 1 A", "a integer.OPT 1 6 0 9 1 1 A",
     "breaking: a: the name alone sets 6, and set 5 [default-said]\n"},
    {"a enumstr 1 p 1 1 A\n p 1 P\n q 1 Q", "a enumstr 1 p 1 1 A\n P 2 P\n \"r s\" 1 R",
     "breaking: a: the item q is gone [item-gone]\n"
     "change: a: the item \"r s\" is new [item-new]\n"},
    {"a enumint 1 0 1 1 A\n 0 1 P", "a enumint 1 0 1 1 A\n 0 1 Q",
     "change: a 0: the help text is another one [help-changed]\n"},
    {"a integer 1 5 0 9 1 1 A\nm macro 1 1 M\n a\n z",
     "b integer 1 5 0 9 1 1 A\na synonym b\nm macro 1 1 M\n b",
     "breaking: m: the members are b, were a z [members-changed]\n"
     "change: a: is called b now, of which a is a synonym [option-renamed-kept]\n"},
    {"a integer 1 5 0 9 1 1 A\nm macro 1 1 M\n a\n z", "m macro 1 1 M\n z",
     "breaking: a: is gone [option-gone]\n"
     "breaking: m: the members are z, were a z [members-changed]\n"},
    {"r immediate ReadFile 1 1 R", "r immediate Message 1 1 R",
     "breaking: r: the instruction is Message, was ReadFile [action-changed]\n"},
    {"a integer 1 5 0 9 1 1 A", "a integer 2 5 0 9 1 1 A",
     "breaking: a: the usermap is 2, was 1 [usermap-changed]\n"},
    {"s synonym z", "", "breaking: s: is gone, a synonym for z [synonym-gone]\n"},
    {"", "s synonym z", "change: s: is new, a synonym for z [synonym-new]\n"},
    {"a integer 1 5 0 9 1 1 A\ns synonym z", "a integer 1 5 0 9 1 1 A\ns synonym a",
     "breaking: s: stands for a, and stood for z [synonym-changed]\n"},
    {"s synonym z", "s synonym z\nd deprecated\n s Say z\no obsolete\n z No more",
     "breaking: z: is obsolete now [obsolete]\nchange: s: is deprecated now [deprecated]\n"},
    {"d deprecated\n z No more", "", "change: z: is no longer deprecated [mark-gone]\n"},
    {"o obsolete\n z No more", "", "change: z: is no longer obsolete [mark-gone]\n"},
    {"d deprecated\n z Old", "o obsolete\n z No more", "breaking: z: is obsolete now [obsolete]\n"},
    {"o obsolete\n z No more", "d deprecated\n z Old",
     "change: z: is no longer obsolete [mark-gone]\n"},
    {"s synonym z\no obsolete\n s No more", "",
     "change: s: is gone, and was obsolete [obsolete-gone]\n"},
    {"s synonym z", "s integer 1 5 0 9 1 1 S",
     "breaking: s: stands for s, and stood for z [synonym-changed]\n"
     "change: s: is new [option-new]\n"},
    {"a integer 1 5 0 9 1 1 A\n Long.", "a integer 1 5 0 9 1 1 A\n Longer.",
     "change: a: the help text is another one [help-changed]\n"},
    {"a integer 1 5 0 9 1 1 A", "a integer 1 5 0 9 0 1 B",
     "change: a: is no longer listed in the help [hidden]\n"
     "change: a: the help text is another one [help-changed]\n"},
    {"a integer 1 5 0 9 1 0 A", "a integer 1 5 0 9 1 2 A",
     "change: a: the group is 2, was 0 [moved]\n"
     "change: a: is listed in the help now [listed]\n"},
    {"g group 1 1 One\nh group 2 1 Two", "g group 1 1 First\nh group 3 1 Three",
     "change: group 1: the text is \"First\", was \"One\" [group-changed]\n"
     "change: group 2: is gone [group-gone]\nchange: group 3: is new [group-new]\n"},
    {"c eolcomm !#\nw indicator", "d eolcomm #!\nw indicator", ""},
    {"c eolcomm !#", "", "breaking: eolcomm: the characters are none, were !# [comment-changed]\n"},
    {"c eolcomm !#\nw indicator", "c eolcomm #\nv indicator",
     "breaking: eolcomm: the characters are #, were !# [comment-changed]\n"
     "breaking: indicator: the word is v, was w [indicator-changed]\n"},
    {"", "Minos lookup\nw indicator",
     "breaking: lookup: the rule is Minos, was Normal [lookup-changed]\n"
     "change: indicator: the word w is new [indicator-new]\n"}};

TEST_F(Diff, OfDefinitionsTellsWhatBreaks) {
  for (const auto& [was, is, expected] : changes) EXPECT_EQ(changed(was, is), expected) << is;
}

TEST_F(Diff, EachKindOfChangeIsInTheRowsAndInTheDocument) {
  std::ifstream file(OPTXV_SOURCE_DIR "/docs/command.md");
  const string document(std::istreambuf_iterator<char>(file), {});
  string rows;
  for (const auto& [was, is, expected] : changes) rows += expected;
  for (const command::changerule& each : command::changerules()) {
    const string code(each.code);
    EXPECT_NE(rows.find('[' + code + ']'), string::npos) << code;
    const string row = "| `" + code + "` | " + (each.breaking ? "breaking" : "") + " | " +
                       string(each.words) + " |\n";
    EXPECT_NE(document.find(row), string::npos) << row;
  }
}

TEST_F(Diff, PlacesAreThoseOfTheNamesAndTheCountStandsBelow) {
  save("old", "a enumint 1 0 1 1 A\n 0 1 P\n 7 1 Q\nb integer 2 5 0 9 1 1 B\ns synonym a\n");
  save("new", "\na enumint 1 0 1 1 A\n 0 1 P\nc integer 9 5 0 9 1 1 C\n");
  EXPECT_EQ(run("diff --definitions old new").out,
            "old:3:2: breaking: a: the item 7 is gone [item-gone]\n"
            "old:4:1: breaking: b: is gone [option-gone]\n"
            "old:5:1: breaking: s: is gone, a synonym for a [synonym-gone]\n"
            "new:4:1: change: c: is new [option-new]\n"
            "3 breaking changes, 1 other\n");
}

}  // namespace
}  // namespace optxv::test
