#include "writers/everykind.h"

namespace optxv {
namespace {

// Cells as they are written, from texts that are escaped already.
std::string cells(std::initializer_list<std::string_view> texts) {
  std::string all;
  for (const std::string_view text : texts) all += "<td> " + std::string(text) + " </td>\n";
  return all;
}
std::string row(std::initializer_list<std::string_view> texts) {
  return "\n<tr>\n" + cells(texts) + "</tr>\n";
}

const std::string top =
    "<html>\n<body>\n\n<table border>\n" +
    row({"Option", "Type", "UserMap", "Default", "Low", "High", "Group", "Hc", "Help Text"}) +
    row({"Help", "immediate", "0", "Help", "", "", "0", "0", ""});
const std::string end = "</table>\n\n</body>\n</html>\n";

TEST(OptionTable, HoldsEveryKind) {
  EXPECT_EQ(
      written(everykind, &tzmaoptionwriter::writeashtml),
      top + row({"rate", "integer", "3", "1", "0", "maxint", "2", "1", "Rate &lt;b&gt; \"q\""}) +
          row({"tol", "double", "4", "1E-6", "mindouble", "maxdouble", "2", "5", "Tolerance"}) +
          row({"logname", "string", "5", "\"a, b\"", "", "", "2", "6", "Caf&eacute; &amp; co"}) +
          row({"flag", "boolean", "6", "1", "", "", "2", "7", "Flag"}) +
          row({"method", "enumstr", "7", "\"by size\"", "", "", "2", "8", "Method"}) +
          row({"", "", "", "by size", "", "", "", "81", "By size"}) +
          row({"", "", "", "dual", "", "", "", "82", ""}) +
          row({"level", "enumint", "8", "2147483647", "", "", "maxint", "9", "Level"}) +
          row({"", "", "", "0", "", "", "", "90", "Silent"}) +
          cells({"", "", "", "2147483647", "", "", "", "91", "All"}) + "</tr>\n" +
          row({"pair", "multilist", "9", "", "", "", "2", "10", "Pair"}) + row({"", "", "rate"}) +
          row({"", "", "tol"}) + "\n<tr>\n" + cells({"paths", "strlist", "10"}) + "\n<tr>\n" +
          cells({"fast", "macro", "-1"}) +
          row({".scale", "double", "11", "1", "1E-20", "10", "2", "13", "Scale"}) +
          row({"rf", "immediate", "-1", "ReadFile", "", "", "2", "14", "Read"}) +
          row({"stop", "synonym", "rate"}) + end);
}

TEST(OptionTable, EdgeRows) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"", ""},
      {"a string 1 \"\" 1 1 \n", row({"a", "string", "1", "\"\"", "", "", "1", "1", ""})},
      {"Minos lookup\na_b boolean 1 0 1 1 x\n",
       row({"a_b", "boolean", "1", "0", "", "", "1", "1", "x"})},
      {"m macro 1 1 M\n", "\n<tr>\n" + cells({"m", "macro", "-1"})},
  };
  for (const auto& [definition, expected] : rows)
    EXPECT_EQ(written(definition, &tzmaoptionwriter::writeashtml), top + expected + end);

  // A table that a faulty definition left: values and targets that do not exist.
  optiontable faulty("a integer 1 1 0 9 1 1 A\n");
  faulty.options.addoption("e",
                           std::make_unique<tenumintoption>("e", &faulty.options, 1, optionhelp()));
  faulty.options.addsynonym("s", -1);
  const scratchfile file;
  tzmaoptionwriter(faulty.options).writeashtml(file.name());
  const std::string all = file.content();
  const std::string expected = row({"e", "enumint", "0", "1", "", "", "0", "0", ""}) + "\n<tr>\n" +
                               row({"s", "synonym", ""}) + end;
  EXPECT_TRUE(all.ends_with(expected)) << all;
}

TEST(OptionTable, BadFilesAreRefused) {
  refusesbadfiles(&tzmaoptionwriter::writeashtml);
}

}  // namespace
}  // namespace optxv
