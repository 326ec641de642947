#include "definition/definitionentries.h"

#include <gtest/gtest.h>

#include <string>

#include "definition/described.h"

namespace optxv {
namespace {

/// What a definition sets beside the table: "name:number:hc:text" a group, "name>position" a
/// synonym, the lookup rule, the comment characters and the indicator's key.
std::string settings(const tzmaoptions& options) {
  std::string all;
  for (std::int32_t i = 1; i <= options.optgroupcount(); ++i) {
    shortstring name, text;
    std::int32_t number = 0, context = 0;
    options.optgetgroupnr(i, name, number, context, text);
    all += str(concat(name, ':', inttostr(number), ':', inttostr(context), ':', text, ' '));
  }
  for (std::int32_t i = 0; i < options.optsynonymcount(); ++i)
    all += str(options.synonymlist.getname(i)) + ">" + std::to_string(options.synonymposition(i)) +
           " ";
  all += std::to_string(options.lookupmode) + " ";
  for (int c = 0; c < 256; ++c)
    if (options.eolcommset.has(static_cast<char>(c))) all += static_cast<char>(c);
  return all + (options.indicatorkey.isnil() ? "" : " " + str(options.indicatorkey));
}

const std::string x = "x integer 1 0 0 9 0 0\n";
const std::string l = "l strlist 1 0 0\n";

TEST(Entries, AreReadWithTheirFaults) {
  const std::string longname(64, 'n');
  const struct {
    std::string text;
    std::string queue;
    std::string table;
    std::string settings = "0 ";
  } rows[] = {
      // Enumerations. The default is looked for when the next record stands there already.
      {"e enumstr.TWO 1 \"A b\" 7 5 t\n \"a B\" 3 the text \n c\n d x u\n",
       "D3: Bad HC for option 'e' | D4: Bad HC for option 'e'",
       "e estr.TWO 1 'A b' 7 5 t |   - a B 3 the text |   - c 3  |   - d 0 u"},
      {"e enumstr 1 z 0 0\n a 1\n a 1\n" + l, "D4: Default is undefined for option 'e'",
       "e estr 1 'z' 0 0  |   - a 1  |   - a 1  | l list 1 0 0 "},
      {"e enumstr 1 \"a b\n \"a b\n",  // the closing quotes are missing, the texts are taken
       "D1: Bad default string for option 'e' | D1: Bad HC for option 'e' | D1: Bad Group value "
       "for option 'e' | D2: Bad HC for option 'e'",
       "e estr 1 'a b' 0 0  |   - a b 0 "},
      {"e enumstr 1 a 0 0\n a 1\n \n b 2\n" + l, "", "e estr 1 'a' 0 0  |   - a 1 "},
      {"n enumint.OPT 1 4 7 5 t\n 4 3 four\n \n x y z\n" + l,
       "D3: Bad integer enum for option 'n' | D3: Bad HC for option 'n' | D4: Bad integer enum for "
       "option 'n' | D4: Bad HC for option 'n'",
       "n eint.OPT 1 '4' 7 5 t |   - 4 3 four |   - 4 3  |   - 0 0 z | l list 1 0 0 "},

      // Lists and macros. A multi-list stands in the table before its members, a macro behind.
      {x + "m multilist 2 3 4 t\n x nil x nil\n \n m \"x\n" + l,
       "D3: MultiList option 'nil' is undefined for option 'm' | D3: Duplicate option used for "
       "option 'm' | D3: MultiList option 'nil' is undefined for option 'm' | D3: Duplicate option "
       "used for option 'm'",
       "x int 1 0 0 9 0 0  | m mlist 2 3 4 t |   - 1 |   - -1 |   - 1 |   - -1 |   - 2 | l list 1 "
       "0 0 "},
      {"Path lookup\nfirst_name strlist 1 0 0\ns synonym fir_nam\nm multilist 2 0 0\n FIR_NAM s\n"
       "k macro 0 0\n fir_nam\n FIRST_name\n",
       "D5: MultiList option 's' is undefined for option 'm' | D7: Unknown option 'fir_nam' for "
       "macro 'k' for option 'k'",
       "first_name list 1 0 0  | m mlist 2 0 0  |   - 1 |   - -1 | k macro -1 0 0  |   - "
       "first_name",
       "s>1 1 "},
      {x + "s synonym x\nm macro 3 4 t\n x nil\n m\n s\n x\n" + l,
       "D5: Unknown option 'm' for macro 'm' for option 'm' | D6: Unknown option 's' for macro 'm' "
       "for option 'm'",
       "x int 1 0 0 9 0 0  | m macro -1 3 4 t |   - x |   - x | l list 1 0 0 ", "s>1 0 "},

      {x + "m multilist 2 0 0\n x,m\n" + l, "D3: Comma in member list for option 'm'",
       "x int 1 0 0 9 0 0  | m mlist 2 0 0  |   - 1 | l list 1 0 0 "},

      // Immediate options.
      {"a immediate eolflag 1 2 t\nb immediate MESSAGE 0 0\nc immediate \"NoBounds\" 0 0\n"
       "d immediate Help 0 0\n",
       "", "a imm -1 0 1 2 t | b imm -1 2 0 0  | c imm -1 3 0 0  | d imm -1 4 0 0 "},
      {"a immediate Foo 1 2 t\nb immediate\n" + l,
       "D1: Unknown immediate option for option 'a' | D2: immediate type expected for option 'b' | "
       "D2: Bad HC for option 'b' | D2: Bad Group value for option 'b' | D2: Unknown immediate "
       "option for option 'b'",
       "l list 1 0 0 "},

      // Synonyms and groups.
      {x + "s synonym X\nS synonym nil\nt synonym s\nx synonym x\nu synonym\n",
       "D3: Duplicate synonym'S' | D3: Unknown option for synonym'S' | D4: Unknown option for "
       "synonym't' | D6: Unknown option for synonym'u'",
       "x int 1 0 0 9 0 0 ", "s>1 S>-1 t>-1 x>1 u>-1 0 "},
      {"g group 1 2 one \nh group 7\nG group 1 0 two\ni group\n",
       "D2: Bad HC for option 'h' | D3: Duplicate group for option 'G' | D3: Group number not "
       "unique for option 'G' | D4: Bad group number for option 'i' | D4: Bad HC for option 'i' | "
       "D4: Group number not unique for option 'i'",
       "", "g:1:2:one h:7:2: G:1:0:two i:1:0: 0 "},

      // Marks add up, the last text stays.
      {x + "s synonym x\nhead deprecated no matter\n x Use y\n s Use x\n nil t\nold obsolete\n"
           " X Gone for good \n nil\n",
       "D6: Deprecated option 'nil' is undefined for option 'head' | D9: Deprecated option 'nil' "
       "is undefined for option 'old'",
       "x int 1 0 0 9 0 0  |   ! 7 Gone for good;Use x", "s>1 0 "},

      // Settings of the whole file.
      {"a indicator t\nb indicator\n" + longname + " indicator\n",
       "D2: Indicator redefined for option 'b' | D3: Indicator redefined for option '" + longname +
           "' | D3: Indicator '" + longname + "' not a good identifier for option '" + longname +
           "'",
       "", "0  " + longname},
      {"minos lookup and more\nab_c strlist 1 0 0\nab_d strlist 1 0 0\nAB_c_ strlist 1 0 0\n"
       "NORMAL lookup\nab_dd strlist 1 0 0\nFoo lookup\n",
       "D7: Unknown lookup code 'Foo' for option 'Foo'",
       "ab_c list 1 0 0  | ab_d list 1 0 0  | AB_c_ list 1 0 0  | ab_dd list 1 0 0 "},
      {"c eolcomm !a#\n", "", "", "0 !"},
      {"c eolcomm #!,*_~\xff\n", "", "", "0 !#*,_~\xff"}};
  for (const auto& row : rows) {
    optiontable options;
    options.define(row.text);
    EXPECT_EQ(options.brief(), row.queue) << row.text;
    EXPECT_EQ(joined(described(options)), row.table) << row.text;
    EXPECT_EQ(settings(*options), row.settings) << row.text;
  }
}

}  // namespace
}  // namespace optxv
