// The reference of a definition in Markdown and as a manual page.

#include "commandrun.h"

namespace optxv::test {
namespace {

using std::string;

class Reference : public commandrun {
 protected:
  string made(const string& form, const string& definition) const {
    save("solver.def", definition);
    run("reference --force solver.def --" + form + " -o made");
    return get("made");
  }
};

const char* const example =
    "limits group 1 1 Limits\nsecret group 3 0 Secret\n"
    "rate integer.OPT 3 1 0 maxint 1 1 Rate\n Long help,\n in lines.\n \n Second paragraph.\n"
    "method enumstr 7 auto 0 3 Method\n auto 81 By size\nboth macro 12 1 Both\n rate\n method\n"
    ".scale double.TWO 11 1 eps 10 13 1 Scale\nstop synonym rate\nhalt synonym rate\n"
    "passing deprecated\n stop Say 'rate'.\ngone obsolete\n method No more\nrow indicator\n";

TEST_F(Reference, IsOneFileOfMarkdown) {
  EXPECT_EQ(made("markdown", example), R"md(# Options of solver.def

5 options in 2 groups, 2 synonyms, from `solver.def`. A line that begins with `row` is an indicator.

- [Limits](#group-1) (3)
- [Secret](#group-3) (1)
- [Options without a group](#group-none) (1)

<a id="group-1"></a>

## Limits

<a id="option-rate"></a>

### rate

Rate

| | |
|---|---|
| Kind | `integer` (whole number); the value may be left out |
| Default | `1` |
| Range | `0` to `maxint` |
| Set by | [both](#option-both) |
| Synonyms | `stop` (deprecated) Say 'rate'., `halt` |

As one synonym is deprecated, each of them gives the warning.

Long help,
in lines.

Second paragraph.

<a id="option-both"></a>

### both

Both

| | |
|---|---|
| Kind | `macro` (sets the options named, all to the same value) |
| Sets | [rate](#option-rate), [method](#option-method) |

<a id="option-.scale"></a>

### .scale

Scale

Dot option: it belongs to a symbol of the model, as in `x.scale('label') = value`.

| | |
|---|---|
| Kind | `double` (real number); takes two values |
| Default | `1` |
| Range | `1E-20` to `10` |

<a id="group-3"></a>

## Secret

**Hidden: the help listings leave this group out.**

<a id="option-method"></a>

### method

Method

**Obsolete: it no longer works.** No more

**Hidden: the help listings leave this option out.**

| | |
|---|---|
| Kind | `enumstr` (one of a list of words) |
| Default | `auto` |
| Set by | [both](#option-both) |

| Value | Meaning |
|---|---|
| `auto` | By size |

<a id="group-none"></a>

## Options without a group

<a id="option-Help"></a>

### Help

**Hidden: the help listings leave this option out.**

| | |
|---|---|
| Kind | `immediate` (instruction to the reader of parameters); the value may be left out |
| Action | `Help` |
)md");
}

TEST_F(Reference, IsAManualPage) {
  EXPECT_EQ(made("man", example), R"roff(.TH "solver" 5 "" "solver.def" "Options"
.SH NAME
solver \- options of solver.def
.SH DESCRIPTION
5 options in 2 groups, 2 synonyms, from
\fBsolver.def\fR.
A line that begins with \fBrow\fR is an indicator.
.SH "Limits"
.TP
\fBrate\fR
Rate
.br
Kind: \fBinteger\fR (whole number); the value may be left out
.br
Default: \fB1\fR
.br
Range: \fB0\fR to \fBmaxint\fR
.br
Set by: \fBboth\fR
.br
Synonyms: \fBstop\fR (deprecated) Say \(aqrate\(aq., \fBhalt\fR
.br
As one synonym is deprecated, each of them gives the warning.
.IP
Long help,
in lines.
.IP
Second paragraph.
.TP
\fBboth\fR
Both
.br
Kind: \fBmacro\fR (sets the options named, all to the same value)
.br
Sets: \fBrate\fR, \fBmethod\fR
.TP
\fB.scale\fR
Scale
.br
Dot option: it belongs to a symbol of the model, as in \fBx.scale(\(aqlabel\(aq) = value\fR.
.br
Kind: \fBdouble\fR (real number); takes two values
.br
Default: \fB1\fR
.br
Range: \fB1E\-20\fR to \fB10\fR
.SH "Secret"
\fBHidden: the help listings leave this group out.\fR
.TP
\fBmethod\fR
Method
.br
\fBObsolete: it no longer works.\fR No more
.br
\fBHidden: the help listings leave this option out.\fR
.br
Kind: \fBenumstr\fR (one of a list of words)
.br
Default: \fBauto\fR
.br
Set by: \fBboth\fR
.RS
.TP
\fBauto\fR
By size
.RE
.SH "Options without a group"
.TP
\fBHelp\fR
.br
\fBHidden: the help listings leave this option out.\fR
.br
Kind: \fBimmediate\fR (instruction to the reader of parameters); the value may be left out
.br
Action: \fBHelp\fR
)roff");
}

TEST_F(Reference, TextsActOnNoReader) {
  const struct {
    string help, markdown, roff;
  } rows[] = {{".TH x", "\\.TH x", "\\&.TH x"},
              {"'q' \"d\"", "'q' \"d\"", "\\(aqq\\(aq \\(dqd\\(dq"},
              {"- a-b", "\\- a-b", "\\- a\\-b"},
              {"12. x", "12\\. x", "12. x"},
              {"# a | *b* _c_ `d` ~e~", "\\# a \\| \\*b\\* \\_c\\_ \\`d\\` \\~e\\~",
               "# a | *b* _c_ \\(gad\\(ga \\(tie\\(ti"},
              {"<b>&lt;[x](y)\\fB", "\\<b\\>\\&lt;\\[x\\](y)\\\\fB", "<b>&lt;[x](y)\\efB"},
              {"\xC3\xA9\xF0\x9F\x98\x80\xFF\x1B", "\xC3\xA9\xF0\x9F\x98\x80\\\\xFF\\\\x1B",
               "\\[u00E9]\\[u1F600]\\exFF\\ex1B"}};
  for (const auto& [help, markdown, roff] : rows) {
    const string record = "a_b integer 1 5 0 9 1 1 " + help + "\n " + help + "\n";
    const string page = made("markdown", record), manual = made("man", record);
    EXPECT_NE(page.find("### a\\_b\n\n" + markdown + "\n\n| |"), page.npos) << page;
    EXPECT_TRUE(page.ends_with("\n\n" + markdown + "\n")) << page;
    EXPECT_NE(manual.find("\\fBa_b\\fR\n" + roff + "\n.br"), manual.npos) << manual;
    EXPECT_TRUE(manual.ends_with("\n.IP\n" + roff + "\n")) << manual;
  }
  const string values = made(
      "markdown", "a enumstr 1 `|` 1 1 A\n `|` 1 a|b\n ``x 2 \n b`c 3 C\ns string 2 \"\" 1 1 S\n");
  for (const char* each :
       {"| `` `\\|` `` | a\\|b |", "| ``` ``x ``` |  |", "| ``b`c`` | C |", "| Default | `\"\"` |"})
    EXPECT_NE(values.find(each), values.npos) << values;
}

TEST_F(Reference, IsReadByRoffWithoutAWarning) {
  if (std::system("groff --version >/dev/null 2>&1") != 0) GTEST_SKIP() << "there is no groff";
  string all(example);
  for (int byte = 1; byte < 256; byte++)
    if (byte != '\n' && byte != 26)
      all +=
          "o" + std::to_string(byte) + " integer 1 5 0 9 1 1 " + static_cast<char>(byte) + " x\n";
  ASSERT_NE(made("man", all).find("o255"), string::npos);
  const string line = "cd '" + folder_.path() + "' && groff -Tutf8 -ww -man made >.out 2>.err";
  EXPECT_EQ(std::system(line.c_str()), 0);
  EXPECT_EQ(get(".err"), "");
  EXPECT_NE(get(".out").find("' x"), string::npos);
}

TEST_F(Reference, IsNeverLaidOverAFileThatWasRead) {
  save("solver.def", example);
  const outcome over = run("reference solver.def --markdown -o solver.def");
  EXPECT_EQ(over.status, 2);
  EXPECT_NE(over.err.find("--force writes over it"), string::npos) << over.err;
  EXPECT_EQ(get("solver.def"), example);
  EXPECT_EQ(run("reference solver.def --man --markdown -o made").status, 2);
  EXPECT_EQ(run("reference solver.def --man -o /dev/stdout").out, made("man", example));
}

}  // namespace
}  // namespace optxv::test
