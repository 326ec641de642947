#include "definition/definitionentries.h"

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
    all +=
        str(concat(options.synonymlist.getname(i), '>', inttostr(options.synonymposition(i)), ' '));
  all += std::to_string(options.lookupmode) + " ";
  for (int c = 0; c < 256; ++c)
    if (options.eolcommset.has(static_cast<char>(c))) all += static_cast<char>(c);
  return all + (options.indicatorkey.isnil() ? "" : " " + str(options.indicatorkey));
}

// Text >> messages ("@" stands for " for option '") >> table >> settings.
TEST(Entries, AreReadWithTheirFaults) {
  constexpr std::string_view rows = R"(
e enumstr.TWO 1 "A b" 7 5 t\n "a B" 3 the text \n c\n d x u >> D3: Bad HC@e' | D4: Bad HC@e'
    >> e estr.TWO 1 'A b' 7 5 t | - a B 3 the text | - c 3 | - d 0 u
e enumstr 1 z 0 0\n a 1\n a 1\n^ >> D4: Default is undefined@e' >> e estr 1 'z' 0 0 | - a 1
    - a 1 | l list 1 0 0
n enumint.OPT 1 4 7 5 t\n 4 3 four\n \n x y z\n^ >> D3: Bad integer enum@n' | D3: Bad HC@n'
    D4: Bad integer enum@n' | D4: Bad HC@n' >> n eint.OPT 1 '4' 7 5 t | - 4 3 four | - 4 3
    - 0 0 z | l list 1 0 0
%\nm multilist 2 3 4 t\n x nil x nil\n \n m "x\n^ >> D3: MultiList option 'nil' is undefined@m'
    D3: Duplicate option used@m' | D3: MultiList option 'nil' is undefined@m'
    D3: Duplicate option used@m' >> x int 1 0 0 9 0 0 | m mlist 2 3 4 t | - 1 | - -1 | - 1 | - -1
    - 2 | l list 1 0 0
Path lookup\nfirst_name strlist 1 0 0\ns synonym fir_nam\nm multilist 2 0 0\n FIR_NAM s\
\nk macro 0 0\n fir_nam\n FIRST_name >> D5: MultiList option 's' is undefined@m'
    D7: Unknown option 'fir_nam' for macro 'k'@k' >> first_name list 1 0 0 | m mlist 2 0 0 | - 1
    - -1 | k macro -1 0 0 | - first_name >> s>1 1
%\ns synonym x\nm macro 3 4 t\n x nil\n m\n s\n x\n^ >> D5: Unknown option 'm' for macro 'm'@m'
    D6: Unknown option 's' for macro 'm'@m' >> x int 1 0 0 9 0 0 | m macro -1 3 4 t | - x | - x
    l list 1 0 0 >> s>1 0
%\nm multilist 2 0 0\n x,m\n^ >> D3: Comma in member list@m' >> x int 1 0 0 9 0 0 | m mlist 2 0 0
    - 1 | l list 1 0 0
a immediate Foo 1 2 t\nb immediate\n^ >> D1: Unknown immediate option@a'
    D2: immediate type expected@b' | D2: Bad HC@b' | D2: Bad Group value@b'
    D2: Unknown immediate option@b' >> l list 1 0 0
%\ns synonym X\nS synonym nil\nt synonym s\nx synonym x\nu synonym >> D3: Duplicate synonym'S'
    D3: Unknown option for synonym'S' | D4: Unknown option for synonym't'
    D6: Unknown option for synonym'u' >> x int 1 0 0 9 0 0 >> s>1 S>-1 t>-1 x>1 u>-1 0
g group 1 2 one \nh group 7\nG group 1 0 two\ni group >> D2: Bad HC@h' | D3: Duplicate group@G'
    D3: Group number not unique@G' | D4: Bad group number@i' | D4: Bad HC@i'
    D4: Group number not unique@i' >> >> g:1:2:one h:7:2: G:1:0:two i:1:0: 0
%\ns synonym x\nhead deprecated no matter\n x Use y\n s Use x\n nil t\nold obsolete\
\n X Gone for good \n nil >> D6: Deprecated option 'nil' is undefined@head'
    D9: Deprecated option 'nil' is undefined@old' >> x int 1 0 0 9 0 0 | ! 7 Gone for good;Use x
    >> s>1 0
a indicator t\nb indicator\n~ indicator >> D2: Indicator redefined@b' | D3: Indicator redefined@~'
    D3: Indicator '~' not a good identifier@~' >> >> 0 ~
)";
  for (const lines& row : rowsof(rows)) {
    optiontable options;
    options.define(longer(row[0]) + "\n");
    EXPECT_EQ(replaced(options.brief(), " for option '", "@"), longer(row[1])) << row[0];
    EXPECT_EQ(flat(joined(described(options))), longer(row[2])) << row[0];
    EXPECT_EQ(flat(settings(*options)), row[3].empty() ? "0" : longer(row[3])) << row[0];
  }
}

}  // namespace
}  // namespace optxv
