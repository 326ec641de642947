// The documents about a definition as their users get them.

#include <sys/stat.h>

#include <set>

#include "commandrun.h"

namespace optxv::test {
namespace {

namespace fs = std::filesystem;

const char* const definition =
    "limits group 1 1 Limits & more\nempty group 2 1 Nobody\nsecret group 3 0 Secret\n"
    "rate integer.OPT 3 1 0 maxint 1 1 Rate <b> \"q\"\n"
    " Long <i>help</i>,\n in lines.\n \n Second paragraph.\n"
    "tol double 4 1e-6 mindouble 1e299 0 1 Hidden tolerance\n"
    "logname string 5 \"a, b\" 6 9 Caf\xE9 caf\xC3\xA9\n"
    "method enumstr 7 auto 8 3 Method\n auto 81 By <size>\nfast macro 12 1 Fast\n rate\n method\n"
    ".scale double.TWO 11 1 eps 10 13 1 Scale\nstop synonym rate\nhalt synonym rate\n"
    "passing deprecated\n stop Say 'rate'.\ngone obsolete\n tol No more\nrow indicator\n";

class Documents : public commandrun {
 protected:
  void SetUp() override { save("s.def", definition); }
  std::string page(const std::string& file = "s.def") const {
    run("reference " + file + " -o site");
    return get("site/index.html");
  }
  /// The names in the folder, but what a run leaves of its streams.
  std::set<std::string> names() const {
    std::set<std::string> all;
    for (const auto& each : fs::directory_iterator(folder_.path()))
      if (const std::string name = each.path().filename(); name[0] != '.') all.insert(name);
    return all;
  }
};

TEST_F(Documents, GoToStandardOutputOrWholeIntoAFile) {
  save("target", "old");
  chmod((folder_ / "target").c_str(), 0640);
  fs::create_symlink("target", folder_ / "link");
  const std::pair<std::string, const char*> pieces[] = {
      {"html", "<td> Rate &lt;b&gt; \"q\" </td>"},
      {"definition", "\nrate integer.OPT 3 1 0 maxint 1 1 Rate <b> \"q\"\n"},
      {"include", "\n       pfrate "}};
  for (const auto& [form, piece] : pieces) {
    const outcome printed = run(form + " s.def");
    EXPECT_NE(printed.out.find(piece), std::string::npos) << form << printed.out;
    EXPECT_EQ(printed.err + std::to_string(printed.status), "0") << form;
    EXPECT_EQ(run(form + " s.def -o link").out, "") << form;
    EXPECT_EQ(get("target"), printed.out) << form;
  }
  EXPECT_EQ(names(), (std::set<std::string>{"link", "s.def", "target"}));
  EXPECT_TRUE(fs::is_symlink(folder_ / "link"));
  EXPECT_EQ(fs::status(folder_ / "target").permissions(), fs::perms(0640));
}

TEST_F(Documents, FailuresAreNamedWithTheReason) {
  const std::pair<std::string, std::string> rows[] = {
      {"definition s.def -o .", ".: cannot be opened: Is a directory"},
      {"html s.def -o /dev/full", "/dev/full: cannot be written: No space left on device"},
      {"html s.def >/dev/full", "standard output: cannot be written: No space left on device"},
      {"reference s.def -o none/site", "none/site: cannot be made: No such file or directory"},
      {"reference s.def -o s.def", "s.def/index.html: cannot be opened: Not a directory"}};
  for (const auto& [arguments, complaint] : rows) {
    const outcome got = run(arguments);
    EXPECT_EQ(got.err + std::to_string(got.status), "optxv: error: " + complaint + "\n2")
        << arguments;
  }
  EXPECT_EQ(run("reference s.def").status, 2);
  EXPECT_EQ(names(), std::set<std::string>{"s.def"});
}

TEST_F(Documents, AFaultyDefinitionIsDocumentedAsFarAsItWasReadIfForced) {
  save("bad.def", "good boolean 1 0 1 1 G\nbad integr 1 1 0 9 1 1 x\n");
  for (const std::string form : {"html", "definition", "include", "reference -o site"}) {
    const outcome got = run(form + " --force bad.def");
    EXPECT_EQ(got.status, 1) << form;
    EXPECT_NE((got.out + get("site/index.html")).find("good"), std::string::npos) << form;
    EXPECT_EQ(got.err.find("bad.def:2:5: error: Unknown option type"), 0U) << form << got.err;
  }
}

TEST_F(Documents, TheReferenceEscapesAndGroups) {
  const std::string text = page();
  for (const char* piece :
       {"<title>Options of s.def</title>", "<h2 id=\"group-1-title\">Limits &amp; more</h2>",
        "<p>Long &lt;i&gt;help&lt;/i&gt;,\nin lines.</p>\n<p>Second paragraph.</p>",
        "stop</span> <span class=\"words\"><span class=\"note\">(deprecated)</span> Say "
        "&#39;rate&#39;.</span></li>\n<li><span class=\"name\">halt</span></li>",
        "As one synonym is deprecated, each of them gives the warning.",
        "Obsolete: it no longer works. No more</p>", "<dt>Set by</dt><dd><a href=\"#option-fast\">",
        "<p>Caf\\xE9 caf\xC3\xA9</p>", "<article id=\"option-.scale\"",
        "<h2 id=\"group-none-title\">Options without a group</h2>",
        "<code>row</code> is an indicator"})
    EXPECT_NE(text.find(piece), std::string::npos) << piece;
  EXPECT_EQ(text.find("Nobody</"), std::string::npos);  // a group without options
}

// Keep docs/reference-example.html what the command makes of the example:
//   optxv reference examples/solver.def -o docs && mv docs/index.html docs/reference-example.html
TEST_F(Documents, TheExampleIsUpToDate) {
  fs::copy(OPTXV_SOURCE_DIR "/docs/reference-example.html", folder_ / "kept");
  EXPECT_TRUE(page(OPTXV_SOURCE_DIR "/examples/solver.def") == get("kept"));
}

}  // namespace
}  // namespace optxv::test
