#include "definition/definitionreader.h"

#include <cerrno>

#include "support/optiontable.h"

namespace optxv {
namespace {

/// The text of a row in full: "~" is a name of 64 characters, "^" and "%" are a record each.
std::string longer(const std::string& text) {
  const std::string named = replaced(text, "~", std::string(64, 'n'));
  return replaced(replaced(named, "^", "l strlist 1 0 0"), "%", "x integer 1 0 0 9 0 0");
}

/// A text with single blanks, and none at the end.
std::string flat(std::string text) {
  while (text.find("  ") != text.npos) text = replaced(text, "  ", " ");
  if (text.ends_with(' ')) text.pop_back();
  return text;
}

/// What the table holds after number 1: one line per option and one for each thing in it.
lines described(optiontable& table) {
  lines all;
  const auto add = [&](const auto&... parts) { all.push_back((str(parts) + ...)); };
  const auto n = [](std::int32_t number) { return std::to_string(number) + " "; };
  const auto help = [&](const toptionx& o) { return n(o.helpcontext) + str(o.helptext); };
  for (std::int32_t i = 1; i < table->getcount(); ++i) {
    const toption& o = *table->getobjects(i);
    static const char* const kinds[] = {"int",  "dbl",   "str",  "bool",  "estr",
                                        "eint", "mlist", "list", "macro", "imm"};
    static const char* const modifiers[] = {" ", ".NV ", ".OPT ", ".TWO "};
    std::string value = o.opttype <= optTypeEnumInt ? "'" + str(o.getasstring()) + "' " : "";
    if (const auto* integer = dynamic_cast<const tintoption*>(&o))
      value = str(o.getasstring()) + " " + n(integer->lowbound) + n(integer->highbound);
    if (const auto* real = dynamic_cast<const tdbloption*>(&o))
      value = joined(
          {str(o.getasstring()), str(dbltostr(real->lowbound)), str(dbltostr(real->highbound)), ""},
          " ");
    if (const auto* acting = dynamic_cast<const timmediateoption*>(&o))
      value = n(acting->immediatekind);
    add(o.optname, " ", kinds[o.opttype], modifiers[o.subtype], n(o.refnr), value, n(o.helpcontext),
        n(o.group), o.helptext);
    for (std::int32_t k = 0; o.bigtext && k < o.bigtext->count(); ++k)
      add("  | ", o.bigtext->get(k));
    if (const auto* texts = dynamic_cast<const tenumstroption*>(&o))
      for (std::int32_t k = 0; k < texts->enumitems.count(); ++k)
        add("  - ", texts->enumitems.getname(k), " ",
            help(*objectof<toptionx>(texts->enumitems.getobject(k))));
    if (const auto* numbers = dynamic_cast<const tenumintoption*>(&o))
      for (std::int32_t k = 0; k < numbers->enumitems.count(); ++k)
        add("  - ", n(numbers->item(k).itemvalue), help(numbers->item(k)));
    if (const auto* spread = dynamic_cast<const tmultilistoption*>(&o))
      for (std::int32_t k = 0; k < spread->members.count(); ++k)
        add("  - ", std::to_string(spread->member(k)));
    if (const auto* macro = dynamic_cast<const tmacrooption*>(&o))
      for (std::int32_t k = 0; k < macro->members.count(); ++k)
        add("  - ", macro->member(k)->optname);
    if (o.deprecation != 0)
      add("  ! ", n(o.deprecation), o.deprecatedtext(), ";", o.synonymdeprecatedtext());
  }
  return all;
}

/// What a definition sets apart from the options: groups as "name:number:hc:text", synonyms as
/// "name>position", the lookup rule, the comment characters and the indicator's key.
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

TEST(Definition, OfEveryKindIsReadLineByLine) {
  optiontable options(sampledefinition);
  EXPECT_EQ(joined(described(options)),
            "steplim int 1 1000 0 2147483647 10 1 Step limit |   | "
            "Ends the run after so many steps. |   |  |   | Restarts count. | "
            "  ! 2 ;Use steplim | tol dbl 2 1E-6 0 1 11 1 Feasibility tolerance | "
            "logname str 3 'run log' 12 1 Log file name | "
            "scale bool 4 '1' 13 1 Scale the model | "
            "verbose bool.NV 5 '0' 14 1 Talk more | "
            "method estr 6 'auto' 20 1 Solution method |   - auto 21 By model size | "
            "  - primal 22 Primal simplex | printlevel eint 7 '1' 23 1 Output volume | "
            "  - 0 24 Silent |   - 1 25 Normal | paths list 8 26 1 Search paths | "
            "fast macro -1 27 1 Fast settings |   - scale | "
            "rf imm -1 1 28 1 Read a parameter file | "
            ".scale dbl 9 1 0 1E299 29 1 Scale factor");
  EXPECT_EQ(options->indicatorkey.view(), "rowtype");
  EXPECT_TRUE(options->eolcommset.has('!'));
}

// Text >> messages ("@" stands for " for option '") >> table >> settings.
TEST(Definition, ReportsFaultsAndCompletesTheRecord) {
  constexpr std::string_view rows = R"(
* c\n\np integer.NV 1 5 0 9 7 3 text\na integer >> D4: Bad usermap value@a'
    D4: Bad default value@a' | D4: Bad low value@a' | D4: Bad high value@a' | D4: Bad HC value@a'
    D4: Bad Group value@a' >> p int.NV 1 5 0 9 7 3 text | a int 1 5 0 9 7 3
a integer 1 12x 0 9 1 1 t >> D1: Bad default value@a' | D1: Default not in range@a'
    >> a int 1 12 0 9 1 1 t
a integer $10 -5 minint MaxInt "3" +1  two  words \t  >>
    >> a int 16 -5 -2147483648 2147483647 3 1 two words
a string.nv 1 x 0 0\nb string.xx 1 x 0 0\nc string 1 x 0 0\nd string. 1 x 0 0
    >> D2: Unknown type modifier = XX@b' | D4: Unknown type modifier = @d' >> a str.NV 1 'x' 0 0
    b str.NV 1 'x' 0 0 | c str 1 'x' 0 0 | d str 1 'x' 0 0
a foo 5 rest\nb strlist 1 0 0 >> D1: Unknown option type 'foo'@a' >> b list 1 0 0
a strlist 1 0 0\nA string 2 x 0 0\nHELP strlist 3 0 0\ns synonym a\ns strlist 4 0 0
    >> D2: Duplicate option@A' | D3: Duplicate option@HELP' | D5: Duplicate option@s'
    >> a list 1 0 0 | A str 2 'x' 0 0 | HELP list 3 0 0 | s list 4 0 0 >> s>1 0
.~ strlist 1 0 0\n~ strlist 1 0 0 >> D1: Identifier too long@~' >> .~ list 1 0 0 | ~ list 1 0 0
s string 1\nt string 2 "ab 0 0 >> D1: Bad HC@s' | D1: Bad Group value@s' | D2: Bad HC@t'
    D2: Bad Group value@t' >> s str 1 '' 0 0 | t str 2 'ab 0 0' 0 0
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

TEST(Definition, EndsSilently) {
  // Text >> the number of options, Help among them.
  constexpr std::string_view rows = R"(
^ >> 2
\n ^\n^ >> 1
^\n\x1a\n^ >> 2
g group 1 0\n help\n^ >> 1
%\n help\n \n^ >> 3
^\r\ns string 1 x 0 0\r >> 3
)";
  for (const lines& row : rowsof(rows)) {
    optiontable options;
    options.define(replaced(replaced(longer(row[0]), "\\r", "\r"), "\\x1a", "\x1a") + "\n");
    EXPECT_EQ(options.queue(), lines()) << row[0];
    EXPECT_EQ(std::to_string(options->optcount()), row[1]) << row[0];
  }
}

TEST(Definition, InMemoryReadsAsTheFileOfItsName) {
  const std::string sample(sampledefinition);
  const std::string faulty = "i integer 1 x 0\n\r\ni strlist 1 2 3\n dropped\n";
  for (const std::string& text :
       {std::string(), sample, replaced(sample, "\n", "\r\n") + "end", faulty}) {
    optiontable file, memory;
    file->optechoset(1);
    memory->optechoset(1);
    file.define(text);
    const std::string name = file.path("def");
    EXPECT_EQ(memory->readdefinitiontext(name, text), 0);
    EXPECT_EQ(joined(memory.queue(true)), joined(file.queue(true)));
    EXPECT_EQ(memory->getfilename(), file->getfilename());
    EXPECT_EQ(described(memory), described(file));
  }
}

TEST(Definition, ThatCannotBeOpenedLeavesNothing) {
  optiontable options;
  EXPECT_EQ(options->optreaddefinition("/nowhere/x.def"), ENOENT);
  EXPECT_EQ(options.brief(),
            "D Cannot open option file '/nowhere/x.def' | "
            "D Error code = 2; No such file or directory");
  EXPECT_EQ(options->optcount(), 0);
}

TEST(Definition, ThatCannotBeReadKeepsWhatWasRead) {
  optiontable options;
  EXPECT_EQ(options->optreaddefinition("/proc/self/mem"), EIO);
  EXPECT_EQ(options.brief(),
            "D Cannot read option file '/proc/self/mem' | D Error code = 5; Input/output error");
  EXPECT_EQ(options->optcount(), 1);
}

}  // namespace
}  // namespace optxv
