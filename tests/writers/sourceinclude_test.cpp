#include "writers/everykind.h"

namespace optxv {
namespace {

std::string include(std::string_view definition) {
  return written(definition, &tzmaoptionwriter::writedelphiinc);
}

std::string expectedfile(const std::string& types, const std::string& maps) {
  shortstring line;
  tzmaoptions::optversion(line);
  EXPECT_FALSE(line.empty());
  return "// file created by " + std::string(line.view()) + "\ntype\n" + types + "\nconst\n" +
         maps + "\n";
}

TEST(SourceInclude, HoldsABucketForEachClassOfValue) {
  EXPECT_EQ(include(everykind),
            expectedfile("\n   Tpfintegerkeys = (\n"
                         "       pfrate             , pfflag             , pflevel       );\n"
                         "\n   Tpfrealkeys = (\n"
                         "       pftol              , pf.scale      );\n"
                         "\n   Tpfstringkeys = (\n"
                         "       pflogname          , pfmethod      );\n"
                         "\n   Tpfkeys = (\n"
                         "       pffast        );\n",
                         "\n   pfintegermap: array[Tpfintegerkeys] of integer = (\n"
                         "       2        , 5        , 7    );\n"
                         "\n   pfrealmap: array[Tpfrealkeys] of integer = (\n"
                         "       3        , 11   );\n"
                         "\n   pfstringmap: array[Tpfstringkeys] of integer = (\n"
                         "       4        , 6    );\n"
                         "\n   pfmap: array[Tpfkeys] of integer = (\n"
                         "       10   );\n"));
}

TEST(SourceInclude, TablesWithoutValues) {
  const std::string macro = "\n   Tpfkeys = (\n       pfm           );\n";
  const std::string numbers = "\n   pfmap: array[Tpfkeys] of integer = (\n       2    );\n";
  EXPECT_EQ(include(""), expectedfile("", ""));
  EXPECT_EQ(include("p strlist 1 1 1 P\nl multilist 1 1 1 L\n p\n"), expectedfile("", ""));
  EXPECT_EQ(include("m macro 1 1 M\n"), expectedfile(macro, numbers));
}

// Items are padded to a multiple of 14; one that is such a multiple gets no blank.
TEST(SourceInclude, ItemsStandInLines) {
  std::string definition, names, numbers;
  for (int i = 0; i < 12; ++i) {
    const std::string name = std::string(i == 11 ? 26 : 12, static_cast<char>('a' + i));
    definition += name + " boolean 1 0 1 1 x\n";
    names += (i == 0 ? "       pf" : i % 5 == 0 ? "\n     , pf" : "     , pf") + name;
    const std::string number = std::to_string(i + 2);
    numbers += (i == 0        ? "       "
                : i % 10 == 0 ? "\n     , "
                              : "     , ") +
               number + std::string(4 - number.size(), ' ');
  }
  EXPECT_EQ(include(definition),
            expectedfile(
                "\n   Tpfintegerkeys = (\n" + names + ");\n",
                "\n   pfintegermap: array[Tpfintegerkeys] of integer = (\n" + numbers + " );\n"));
}

TEST(SourceInclude, BadFilesAreRefused) {
  refusesbadfiles(&tzmaoptionwriter::writedelphiinc);
}

}  // namespace
}  // namespace optxv
