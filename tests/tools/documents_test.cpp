// The documents about a definition as their users get them: files in; files, complaints, status
// out.

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>

namespace {

namespace fs = std::filesystem;

std::string contents(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

const char* const definition =
    "limits group 1 1 Limits & more\n"
    "empty group 2 1 Nobody\n"
    "secret group 3 0 Secret\n"
    "rate integer.OPT 3 1 0 maxint 1 1 Rate <b> \"q\"\n"
    " Long <i>help</i>,\n"
    " in lines.\n"
    " \n"
    " Second paragraph.\n"
    "tol double 4 1e-6 mindouble 1e299 0 1 Hidden tolerance\n"
    "logname string 5 \"a, b\" 6 9 Caf\xE9 caf\xC3\xA9\n"
    "method enumstr 7 auto 8 3 Method\n"
    " auto 81 By <size>\n"
    "fast macro 12 1 Fast\n"
    " rate\n"
    " method\n"
    ".scale double.TWO 11 1 eps 10 13 1 Scale\n"
    "stop synonym rate\n"
    "passing deprecated\n"
    " stop Say 'rate'.\n"
    "gone obsolete\n"
    " tol No more\n"
    "row indicator\n";

struct outcome {
  int status = -1;
  std::string out, err;
};

class Documents : public testing::Test {
 protected:
  void SetUp() override {
    std::string name = (fs::temp_directory_path() / "optxv-XXXXXX").string();
    ASSERT_NE(mkdtemp(name.data()), nullptr);
    folder_ = name;
    save("s.def", definition);
  }
  void TearDown() override { fs::remove_all(folder_); }

  void save(const std::string& name, const std::string& text) const {
    std::ofstream(folder_ / name, std::ios::binary) << text;
  }
  outcome run(const std::string& arguments) const {
    const std::string line = "cd '" + folder_.string() + "' && '" OPTXV_COMMAND_FILE "' " +
                             arguments + " 2>.err </dev/null" +
                             (arguments.find('>') == std::string::npos ? " >.out" : "");
    const int status = std::system(line.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contents(folder_ / ".out"),
            contents(folder_ / ".err")};
  }
  std::string page(const std::string& file = "s.def") const {
    run("reference " + file + " -o site");
    return contents(folder_ / "site/index.html");
  }
  /// The names in the folder, but what a run leaves of its streams.
  std::set<std::string> names() const {
    std::set<std::string> all;
    for (const auto& each : fs::directory_iterator(folder_)) all.insert(each.path().filename());
    all.erase(".out");
    all.erase(".err");
    return all;
  }

  fs::path folder_;
};

TEST_F(Documents, GoToStandardOutputOrWholeIntoAFile) {
  const std::map<std::string, std::string> pieces = {
      {"html", "<td> Rate &lt;b&gt; \"q\" </td>"},
      {"definition", "\nrate integer.OPT 3 1 0 maxint 1 1 Rate <b> \"q\"\n"},
      {"include", "\n       pfrate "}};
  for (const auto& [form, piece] : pieces) {
    const outcome printed = run(form + " s.def");
    EXPECT_NE(printed.out.find(piece), std::string::npos) << form << printed.out;
    EXPECT_EQ(printed.err + std::to_string(printed.status), "0") << form;
    EXPECT_EQ(run(form + " s.def -o out").out, "") << form;
    EXPECT_EQ(contents(folder_ / "out"), printed.out) << form;
  }
  EXPECT_EQ(names(), (std::set<std::string>{"out", "s.def"}));

  // What stands there keeps its permissions, and a link its name.
  save("target", "old");
  chmod((folder_ / "target").c_str(), 0640);
  fs::create_symlink("target", folder_ / "link");
  EXPECT_EQ(run("definition s.def -o link").status, 0);
  EXPECT_TRUE(fs::is_symlink(folder_ / "link"));
  EXPECT_TRUE(contents(folder_ / "target").starts_with("Help immediate"));
  EXPECT_EQ(fs::status(folder_ / "target").permissions(), fs::perms(0640));
}

TEST_F(Documents, FailuresAreNamedWithTheReason) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"html none", "none: No such file or directory"},
      {"include .", ".: Is a directory"},
      {"definition s.def -o .", ".: Is a directory"},
      {"html s.def -o none/x", "none/x: No such file or directory"},
      {"html s.def -o /dev/full", "/dev/full: No space left on device"},
      {"html s.def >/dev/full", "standard output: No space left on device"},
      {"reference none -o site", "none: No such file or directory"},
      {"reference s.def -o none/site", "none/site: No such file or directory"},
      {"reference s.def -o s.def", "s.def/index.html: Not a directory"},
  };
  for (const auto& [arguments, complaint] : rows) {
    const outcome got = run(arguments);
    EXPECT_EQ(got.err, "optxv: " + complaint + "\n") << arguments;
    EXPECT_EQ(got.status, 2) << arguments;
  }
  EXPECT_EQ(run("reference s.def").status, 2);
  EXPECT_EQ(names(), std::set<std::string>{"s.def"});
}

TEST_F(Documents, AFaultyDefinitionIsDocumentedAsFarAsItWasRead) {
  save("bad.def", "good boolean 1 0 1 1 G\nbad integr 1 1 0 9 1 1 x\n");
  for (const std::string form : {"html", "definition", "include"}) {
    const outcome got = run(form + " bad.def");
    EXPECT_EQ(got.status, 1) << form;
    EXPECT_NE(got.out.find("good"), std::string::npos) << form;
    EXPECT_EQ(got.err.find("bad.def:2:5: error: Unknown option type"), 0U) << form << got.err;
  }
  EXPECT_EQ(run("reference bad.def -o site").status, 1);
  EXPECT_NE(contents(folder_ / "site/index.html").find(">good</a>"), std::string::npos);
}

TEST_F(Documents, TheReferenceTellsEverything) {
  const std::string text = page();
  const std::vector<std::string> pieces = {
      "<title>Options of s.def</title>",
      "<h2 id=\"group-1-title\">Limits &amp; more</h2>",
      "<article id=\"option-rate\" aria-labelledby=\"option-rate-name\">",
      "<p>Rate &lt;b&gt; &quot;q&quot;</p>",
      "<code>integer</code> (whole number); the value may be left out",
      "<dt>Default</dt><dd>&quot;a, b&quot;</dd>",
      "<dt>Range</dt><dd>0 to maxint</dd>",
      "<dt>Range</dt><dd>mindouble to maxdouble</dd>",
      "<dt>Synonyms</dt><dd>stop</dd>",
      "<p>Long &lt;i&gt;help&lt;/i&gt;,\nin lines.</p>\n<p>Second paragraph.</p>",
      "<p class=\"note\">A synonym is deprecated: it still works, with a warning. Say "
      "&#39;rate&#39;.</p>",
      "<p class=\"note\">This option is obsolete: it no longer works. No more</p>",
      "<p class=\"note\">Hidden: the help listings leave this option out.</p>",
      "<p class=\"note\">Hidden: the help listings leave this group out.</p>",
      "<p>Caf\\xE9 caf\xC3\xA9</p>",
      "<th scope=\"row\"><code>auto</code></th><td>By &lt;size&gt;</td>",
      "<a href=\"#option-rate\">rate</a>, <a href=\"#option-method\">method</a>",
      "<article id=\"option-.scale\"",
      "<h2 id=\"group-none-title\">Options without a group</h2>",
      "<code>row</code> is an indicator",
  };
  for (const std::string& piece : pieces) EXPECT_NE(text.find(piece), std::string::npos) << piece;
  EXPECT_EQ(text.find("Nobody</"), std::string::npos);  // a group without options
}

/// Every tag is closed in its turn, every place is there once, and every link of the page leads to
/// one. Gives the number of elements with a place.
std::size_t checkmarkup(std::string text) {
  for (const std::string raw : {"style", "script"}) {
    const std::size_t start = text.find("<" + raw + ">") + raw.size() + 2;
    text.erase(start, text.find("</" + raw + ">") - start);
  }
  const std::set<std::string> single = {"meta", "link", "input", "!DOCTYPE"};
  const std::regex tag("<(/?)([!A-Za-z0-9]+)([^<>]*)>"), attribute("(id|href)=\"([^\"]*)\"");
  std::vector<std::string> open;
  std::set<std::string> places, links;
  for (std::sregex_iterator at(text.begin(), text.end(), tag), end; at != end; ++at) {
    const std::string name = (*at)[2], rest = (*at)[3];
    if ((*at)[1].length() == 0 && single.count(name) == 0) open.push_back(name);
    if ((*at)[1].length() != 0) {
      EXPECT_TRUE(!open.empty() && open.back() == name) << name;
      if (!open.empty()) open.pop_back();
    }
    for (std::sregex_iterator each(rest.begin(), rest.end(), attribute); each != end; ++each)
      if ((*each)[1] == "id")
        EXPECT_TRUE(places.insert((*each)[2]).second) << (*each)[2];
      else
        links.insert((*each)[2]);
  }
  EXPECT_TRUE(open.empty());
  for (const std::string& link : links)
    EXPECT_TRUE(link == "data:," || (link.starts_with('#') && places.count(link.substr(1)) == 1))
        << link;
  EXPECT_EQ(text.find("http://"), std::string::npos);
  EXPECT_EQ(text.find("https://"), std::string::npos);
  return places.size();
}

TEST_F(Documents, TheReferenceIsWellFormedAndLeadsNowhereElse) {
  EXPECT_GT(checkmarkup(page()), 10U);
  save("none.def", "");
  EXPECT_GT(checkmarkup(page("none.def")), 4U);
  save("s\"<&'.def", std::string("again group 1 1 Again\nrate boolean 1 0 1 1 R\n") + definition);
  EXPECT_GT(checkmarkup(page("'s\"<&'\\''.def'")), 10U);
}

// Keep docs/reference-example.html what the command makes of the example:
//   optxv reference examples/solver.def -o docs && mv docs/index.html docs/reference-example.html
TEST_F(Documents, TheExampleIsUpToDate) {
  const std::string text = page(OPTXV_SOURCE_DIR "/examples/solver.def");
  EXPECT_GT(checkmarkup(text), 40U);
  EXPECT_TRUE(text == contents(OPTXV_SOURCE_DIR "/docs/reference-example.html"));
}

}  // namespace
