// Definitions that are made of tables: what becomes of rows, and what is told of them.

#include "commandrun.h"

namespace optxv::test {
namespace {

using std::string;

class FromTable : public commandrun {
 protected:
  outcome made(const string& table) const {
    save("t", table);
    return run("definition --from t");
  }
};

struct tablerow {
  string table, definition;
};

TEST_F(FromTable, RowsBecomeRecords) {
  const string csv = "name,type,default,low,high,group,text,items,synonyms,deprecated\r\n";
  const string group = "g group 1 1 G\n";
  const tablerow rows[] = {
      {csv + "a,int,5,0,10,G,Help,,,", group + "a integer 1 5 0 10 1 1 Help\n"},
      {csv + "a,INTEGER,1e3,,,G,,,,", group + "a integer 1 1000 minint maxint 1 1\n"},
      {csv + "a,real,1d-6,-inf,1e308,G,,,,", group + "a double 1 1e-06 mindouble maxdouble 1 1\n"},
      {csv + "a,float.TWO,0.1,0,1,G,,,,", group + "a double.TWO 1 0.1 0 1 1 1\n"},
      {csv + "a,bool,yes,0,1,G,,,,", group + "a boolean 1 1 1 1\n"},
      {csv + "a,str,,,,G,,,,", group + "a string 1 \"\" 1 1\n"},
      {csv + "a,str,\"x, y\",,,G,\"A \"\"b\"\"\r\nand more\",,,",
       group + "a string 1 \"x, y\" 1 1 A \"b\" and more\n"},
      {csv + "a,int,0,,,G,\"One\n\nTwo\",,,",
       group + "a integer 1 0 minint maxint 1 1 One\n \n Two\n"},
      {csv + "a,enum,x,,,G,,x=An x|y z,,", group + "a enumstr 1 x 1 1\n x 1 An x\n \"y z\" 1\n"},
      {csv + "a,enum,1,,,G,,0=No|1,,", group + "a enumint 1 1 1 1\n 0 1 No\n 1 1\n"},
      {csv + "a,list,,,,G,,,,", group + "a strlist 1 1 1\n"},
      {csv + "a,int,+5,minint,maxint,G,,,,", group + "a integer 1 5 minint maxint 1 1\n"},
      {csv + "a,real,eps,mindouble,maxdouble,G,,,,",
       group + "a double 1 1e-20 mindouble maxdouble 1 1\n"},
      {csv + "r,immediate,ReadFile,,,G,R,,,", group + "r immediate ReadFile 1 1 R\n"},
      {csv + "a,int,1,0,9,G,,,,\nm,macro,,,,G,Both,a,,",
       group + "a integer 1 1 0 9 1 1\nm macro 1 1 Both\n a\n"},
      {csv + "a,int,1,0,9,A b,,,,\nb,int,1,0,9,A-b,,,,",
       "a_b group 1 1 A b\na_b_2 group 2 1 A-b\na integer 1 1 0 9 1 1\nb integer 2 1 0 9 1 2\n"},
      {csv + ".a,int,0,0,9,G,,,,", group + ".a integer 1 0 0 9 1 1\n"},
      {csv + "a,bool,0,,,G,,,b|c,Say b.", group + "a boolean 1 0 1 1\nb synonym a\nc synonym a\n"
                                                  "deprecated_names deprecated\n a Say b.\n"},
      {"\xEF\xBB\xBFType;Section;Max;Option;Min;Default value;Id\nint;G;9;a;1;\"2\";7\n\n",
       group + "a integer 7 2 1 9 1 1\n"},
      {"kind\tname\tdefault\nbool\ta\toff\n", "options group 1 1 Options\na boolean 1 0 1 1\n"},
      {R"([{"name": "a", "type": "enum", "default": "x", "group": "G",
            "values": [{"value": "x", "text": "An x"}, "y"]},
           {"name": "b", "type": "bool", "default": true, "group": "G", "values": []}])",
       group + "a enumstr 1 x 1 1\n x 1 An x\n y 1\nb boolean 2 1 1 1\n"}};
  for (const tablerow& row : rows) {
    const outcome told = made(row.table);
    EXPECT_EQ(told.out, row.definition) << row.table;
    EXPECT_EQ(told.err, "") << row.table;
    save("d", told.out);
    EXPECT_EQ(run("check d").out, "no errors in 1 file\n") << told.out;
  }
}

TEST_F(FromTable, FaultsAreToldWhereTheyAre) {
  const string head = "name,type,default,low,high,items\n";
  const std::pair<string, std::vector<string>> rows[] = {
      {"name,default\na,1\n", {"t:1:1: error: the table has no column \"type\""}},
      {"name,type,type\na,int,int\n", {"t:1:11: error: there is a column \"type\" already"}},
      {"[{\"name\": \"a\",}]", {"t:1:15: error: a name in double quotes is expected"}},
      {"[1]", {"t:1:2: error: an object is expected, not a number"}},
      {head + "a,int,1,2,3,4,5\n", {"t:2:15: error: the row has 7 cells"}},
      {head + "\"a,int\n", {"t:2:1: error: the cell has no closing quote"}},
      {head + "a,int,x,0,1.5,\nb,colour\nc,bool,maybe,,,\n",
       {"t:2:7: error: \"a\": \"x\" is no whole number",
        "t:2:11: error: \"a\": \"1.5\" is no whole", "t:3:3: error: \"b\": \"colour\" is no type",
        "t:4:8: error: \"c\": \"maybe\" is neither"}},
      {head + ",int,1,,,\n9,int,1,,,\n",
       {"t:2:1: error: the row has no name", "t:3:1: error: \"9\""}},
      {head + "a,int,5,6,7,\n", {"t:2:1: error: Default not in range for option \"a\""}},
      {head + "a,enum,z,,,x|y\n", {"t:2:1: error: Default is undefined for option \"a\""}},
      {head + "a,int,1,,,\nA,int,1,,,\n", {"t:3:1: error: Duplicate option for option \"A\""}},
      {head + "a,enum,,,,\n", {"t:2:11: error: \"a\": an enumeration needs the column \"items\""}},
      {head + "\"a\" b,int,1,,,\n", {"there is text behind the closing quote of the cell"}},
      {"{\"options\": 7}", {"t:1:13: error: a list of objects is expected, one for each option"}},
      {"name,type,default,id\na,int,1,1.5\n", {"t:2:9: error: \"a\": \"1.5\" is no whole number"}},
      {"name,type,default,synonyms\na,int,1,9\n", {"t:2:9: error: \"a\": \"9\" is no name"}},
      {head + "a,string,\"x\ny\",,,\n", {"t:2:10: error: \"a\": a default has no line feed"}},
      {head + "a,string,\"x\"\" y\",,,\n",
       {"t:2:1: error: \"a\": a definition has no way to write"}}};
  for (const auto& [table, expected] : rows) {
    const outcome told = made(table);
    EXPECT_EQ(told.status, 1) << table;
    EXPECT_EQ(told.out, "");
    for (const string& each : expected)
      EXPECT_NE(told.err.find(each), string::npos) << each << " in\n" << told.err;
  }
}

TEST_F(FromTable, WhatADefinitionDoesNotSayIsTold) {
  const string head = "name,type,default,low,high,colour\n";
  const string told = made(head + "a-b,int,,,,\nc,string,x,1,,\nd,int,1,0,99999999999,\n").err;
  for (const string each :
       {"t:1:28: warning: the column \"colour\" has no place",
        "t:2:1: warning: \"a_b\": the name \"a-b\"", "t:2:1: warning: \"a_b\": there is no default",
        "t:3:12: warning: \"c\": the type string has no",
        "t:4:11: warning: \"d\": 99999999999 is beyond"})
    EXPECT_NE(told.find(each), string::npos) << each << " in\n" << told;
  EXPECT_EQ(run("definition").status, 2);
  EXPECT_EQ(run("definition --from nothing").status, 2);
}

}  // namespace
}  // namespace optxv::test
