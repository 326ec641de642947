#include "writers/everykind.h"

namespace optxv {
namespace {

constexpr std::string_view helpline = "Help immediate.OPT Help 0 \n";

TEST(DefinitionDocument, HoldsEveryKind) {
  EXPECT_EQ(written(everykind, &tzmaoptionwriter::writedefinition),
            std::string(helpline) +
                "rate integer.OPT 3 1 0 maxint 1 2 Rate <b> \"q\"\n"
                "   Long help,\n"
                "   \n"
                "   indented.\n"
                "tol double 4 1E-6 mindouble maxdouble 5 2 Tolerance\n"
                "logname string 5 \"a, b\" 6 2 Caf\xE9 & co\n"
                "flag boolean.NV 6 1  7 2 Flag\n"
                "   Help of the flag.\n"
                "method enumstr 7 \"by size\"  8 2 Method\n"
                " by size 81 By size\n"
                " dual 82 \n"
                "level enumint 8 2147483647  9 2147483647 Level\n"
                " 0 90 Silent\n"
                " maxint 91 All\n"
                "pair multilist 9  10 2 Pair\n"
                " rate tol\n"
                "fast macro  12 2 Fast\n"
                " flag\n"
                " method\n"
                ".scale double.TWO 11 1 1E-20 10 13 2 Scale\n"
                "rf immediate ReadFile 14 Read\n"
                "stop synonym rate\n"
                "ver deprecated options\n"
                "   rate  \n"
                "   flag  Too old\n"
                "ver obsolete options\n"
                "   tol  No more\n"
                "   paths  Never again\n");
}

/// A definition of flags with names of 9 bytes, and a multi-list of them all.
std::string listof(int count, const std::string& last) {
  std::string flags, members;
  for (int i = 0; i < count; ++i) {
    const std::string name = "member" + std::to_string(100 + i);
    flags += name + " boolean 0 0 1 1 x\n";
    members += " " + name;
  }
  if (!last.empty()) flags += last + " boolean 0 0 1 1 x\n";
  return flags + "all multilist 1 2 3 All\n" + members + "\n " + last + "\n";
}

/// The lines behind the one that begins with "all ".
std::string memberblock(const std::string& definition) {
  const std::string all = written(definition, &tzmaoptionwriter::writedefinition);
  return all.substr(all.find('\n', all.find("\nall ") + 1) + 1);
}

TEST(DefinitionDocument, MembersFillEightyColumns) {
  std::string line;
  for (int i = 0; i < 7; ++i) line += " member" + std::to_string(100 + i);
  ASSERT_EQ(line.size(), 70U);
  const std::string fits(9, 'f'), wide(10, 'w'), alone(85, 'z');
  EXPECT_EQ(memberblock(listof(7, fits)), line + " " + fits + "\n");
  EXPECT_EQ(memberblock(listof(7, wide)), line + "\n " + wide + "\n");
  EXPECT_EQ(memberblock(listof(7, alone)), line + "\n " + alone + "\n");
  EXPECT_EQ(memberblock(listof(0, alone)), "\n " + alone + "\n");
  EXPECT_EQ(memberblock("all multilist 1 2 3 All\n"), "\n");
}

TEST(DefinitionDocument, EdgeRows) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"", ""},
      {"x integer.OPT 3 1 0 5 1 2 h\n", "x integer.OPT 3 1 0 5 1 2 h\n"},
      {"s string 1 \"\" 1 1\n", "s string 1 \"\" 1 1 \n"},
      {"p strlist 1 1 1 P\nd deprecated\n p gone\n", ""},
      {"p strlist 1 1 1 P\nb boolean 1 0 1 1 B\nd deprecated\n b too\n p gone\n",
       "b boolean 1 0  1 1 B\nver deprecated options\n   p  gone\n   b  too\n"},
      {"m macro 1 1 M\n", "m macro  1 1 M\n"},
  };
  for (const auto& [definition, expected] : rows)
    EXPECT_EQ(written(definition, &tzmaoptionwriter::writedefinition),
              std::string(helpline) + expected);
}

TEST(DefinitionDocument, ItsPlainOptionsReadBack) {
  const std::string plain =
      "rate integer 3 1 minint maxint 1 2 Rate\n Long help\n"
      "tol double.TWO 4 0.25 mindouble maxdouble 5 2 Tolerance\n"
      "log string 5 \"a, b\" 6 2 Log\n"
      "method enumstr 7 primal 8 2 Method\n primal 1 P\n dual 2 D\n"
      "pair multilist 9 10 2 Pair\n rate tol\n";
  const std::string once = written(plain, &tzmaoptionwriter::writedefinition);
  EXPECT_NE(once.find("\ntol double.TWO 4 0.25 mindouble maxdouble 5 2 "), std::string::npos);
  EXPECT_EQ(written(once.substr(helpline.size()), &tzmaoptionwriter::writedefinition), once);
}

TEST(DefinitionDocument, BadFilesAreRefused) {
  refusesbadfiles(&tzmaoptionwriter::writedefinition);
}

}  // namespace
}  // namespace optxv
