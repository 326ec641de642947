// What is written, what is held back, and what does not come back as it was.

#include "commandrun.h"
#include "support/everykind.h"

namespace optxv::test {
namespace {

namespace fs = std::filesystem;

class Product : public commandrun {
 protected:
  void SetUp() override {
    save("s.def", everykind());
    save("good", "steplim 7\n");
  }
};

const std::string forced = "optxv: note: --force writes it all the same\n";
const std::string overlaid =
    ": cannot be written: it is one of the files that were read\n"
    "optxv: note: --force writes over it\n";

TEST_F(Product, NothingIsWrittenOfFilesWithErrors) {
  const std::string faults = "there are errors in the files\n" + forced;
  const std::tuple<std::string, int, std::string, std::string> rows[] = {
      {"write s.def bad", 1, "standard output", faults},
      {"write s.def bad -o target", 1, "target", faults},
      {"write s.def bad -o bad", 1, "bad", faults},
      {"write s.def good none -o target", 2, "target", "a file could not be read\n" + forced},
      {"html bad.def", 1, "standard output", faults},
      {"definition bad.def -o target", 1, "target", faults},
      {"include bad.def", 1, "standard output", faults},
      {"reference bad.def -o site", 1, "site/index.html", faults}};
  save("bad", "steplim 7\nsteplm 8\n");
  save("target", "old");
  save("bad.def", "good boolean 1 0 1 1 G\nbad integr 1 1 0 9 1 1 x\n");
  for (const auto& [arguments, status, where, why] : rows) {
    const outcome got = run(arguments);
    const std::string told = "optxv: error: nothing is written to " + where + ": " + why;
    EXPECT_EQ(std::tuple(got.status, got.out, got.err.substr(got.err.find("optxv: "))),
              std::tuple(status, "", told))
        << arguments;
  }
  EXPECT_EQ(get("target") + get("bad"), "oldsteplim 7\nsteplm 8\n");
  EXPECT_FALSE(fs::exists(folder_ / "site"));
  EXPECT_EQ(run("write --force s.def bad none").status, 2);
  EXPECT_EQ(run("write --force s.def bad").out, "steplim=7\n");
  EXPECT_EQ(run("write --force s.def bad -o bad").status, 1);
  EXPECT_EQ(get("bad"), "steplim=7\n");
}

TEST_F(Product, NothingIsLaidOverWhatWasRead) {
  const std::string nested = "* kept\nsteplim 7\n";
  save("nested", nested);
  save("p", "read nested\n");
  fs::create_symlink("nested", folder_ / "link");
  fs::create_directory(folder_ / "site");
  fs::copy(folder_ / "s.def", folder_ / "site/index.html");
  const std::pair<std::string, std::string> rows[] = {
      {"write s.def nested -o nested", "nested"},
      {"write s.def p -o link", "link"},
      {"write s.def - <nested >>link", "standard output"},
      {"write s.def good -o s.def", "s.def"},
      {"html s.def -o ./s.def", "./s.def"},
      {"reference site/index.html -o site", "site/index.html"}};
  for (const auto& [arguments, where] : rows) {
    const outcome got = run(arguments);
    EXPECT_EQ(got.err + std::to_string(got.status), "optxv: error: " + where + overlaid + "2")
        << arguments;
  }
  EXPECT_EQ(get("nested") + get("s.def"), nested + everykind());
  EXPECT_EQ(run("write --force s.def p -o link").status, 0);
  EXPECT_EQ(get("nested"), "steplim=7\n");
}

TEST_F(Product, WhatDoesNotComeBackIsTold) {
  const std::string longest = "a " + std::string(252, 'x');  // with quotes it is over 255 bytes
  const std::pair<std::string, std::string> rows[] = {
      {"logname it's\nnames a\nrange 2 3\ntol 1e-8\nx.scale('a') = 2", ""},
      {"logname \"x#y\"", "logname: \"x#y\" comes back as \"x\""},
      {"logname \"#\"", "logname: \"#\" does not come back"},
      {"tol 0.1234567890123456789",
       "tol: 0.12345678901234568 0.12345678901234568 comes back as "
       "0.123456789012346 0.123456789012346"},
      {"range * 4", ""},
      {"names a\nnames \"b#c\"\nnames d", "names: item 2, \"b#c\" comes back as \"b\""},
      {"names a\nnames \"#\"", "names: 2 items comes back as 1, from item 2, \"#\""},
      {"--note one two", "--note: \"one two\" does not come back"},
      {"x.scale(\"a'b\") = 2\nx.scale(\"b#c\") = 3\ntie e(i)$v = 1", ""},
      {"logname \"" + longest + "\"", "logname: \"" + longest + "\" does not come back"}};
  for (const auto& [text, told] : rows) {
    save("p", text + '\n');
    const outcome got = run("write s.def p");
    EXPECT_EQ(got.err, told.empty() ? "" : "optxv: warning: " + told + '\n') << text;
    EXPECT_EQ(got.status, 0) << text;
  }
}

}  // namespace
}  // namespace optxv::test
