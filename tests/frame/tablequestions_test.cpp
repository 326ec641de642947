#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "optxv/embedding.h"
#include "support/optiontable.h"

namespace optxv {
namespace {

const char* const definition = R"(limits group 3 4 The limits
count integer 11 5 0 10 1 3 Count
 More of it
level double 12 0.5 0 1 1 3 Level
flag boolean 13 1 -1 3 Flag
pick enumint 14 2 1 3 Pick
 1 7 One
 2 8 Two
mode enumstr 15 slow 1 3 Mode
 slow 1 Slow
both macro 1 3 Both
 count
 level
parts multilist 16 1 3 Parts
 count
 level
texts strlist 17 1 3 Texts
calm synonym count
old synonym level
synonyms deprecated
 calm "say count"
options obsolete
 flag "gone"
)";

std::string str(const optxv_text& text) {
  EXPECT_EQ(text.bytes[text.size], 0);
  return {text.bytes, text.size};
}

std::string shown(const optxv_text& text) {
  return text.size == 0 ? "-" : str(text);
}

/// What the functions tell of an option, with its lines of help and its items.
std::string told(tzmaoptions& options, std::int32_t number) {
  optxv_option o;
  EXPECT_EQ(optxv_option_info(&options, number, &o), optxv_ok);
  std::ostringstream out;
  out << str(o.name) << " " << o.kind << o.takes << o.data << " ref " << o.reference << " group "
      << o.group << " hc " << o.helpcontext << " marks " << o.marks << str(o.markedtext) << " set "
      << o.defined << o.recent << " default " << o.default_integer << "/" << o.default_real << "/"
      << str(o.default_text) << " from " << o.low_integer << "/" << o.low_real << " to "
      << o.high_integer << "/" << o.high_real << " " << shown(o.help) << (o.runtime ? " made" : "");
  for (std::int32_t i = 1; i <= o.helplines; i++) {
    optxv_text line;
    EXPECT_EQ(optxv_help_line(&options, number, i, &line), optxv_ok);
    out << "; " << str(line);
  }
  for (std::int32_t i = 1; i <= o.items; i++) {
    optxv_item item;
    EXPECT_EQ(optxv_item_info(&options, number, i, &item), optxv_ok);
    out << "; " << item.integer << " of " << item.option << " hc " << item.helpcontext << " "
        << str(item.text) << " " << shown(item.help);
  }
  EXPECT_EQ(optxv_item_info(&options, number, o.items + 1, nullptr), optxv_unknown);
  EXPECT_EQ(optxv_help_line(&options, number, 0, nullptr), optxv_unknown);
  return out.str();
}

TEST(TheTable, IsToldWhole) {
  optiontable table(definition);
  table.read("count 7\ntexts first\n--more last");
  std::string all;
  for (std::int32_t i = 1; i <= optxv_option_count(&*table); i++) all += told(*table, i) + "\n";
  EXPECT_EQ(all, R"(Help 920 ref 0 group 0 hc 0 marks 0 set 00 default 0/0/ from 0/0 to 0/0 -
count 001 ref 11 group 3 hc 1 marks 0 set 11 default 5/0/ from 0/0 to 10/0 Count; More of it
level 102 ref 12 group 3 hc 1 marks 0 set 00 default 0/0.5/ from 0/0 to 0/1 Level
flag 301 ref 13 group 3 hc -1 marks 2"gone" set 00 default 1/0/ from 0/0 to 1/0 Flag
pick 501 ref 14 group 3 hc 1 marks 0 set 00 default 2/0/ from -2147483648/0 to 2147483647/0 Pick; 1 of 0 hc 7 1 One; 2 of 0 hc 8 2 Two
mode 403 ref 15 group 3 hc 1 marks 0 set 00 default 0/0/slow from 0/0 to 0/0 Mode; 0 of 0 hc 1 slow Slow
both 800 ref -1 group 3 hc 1 marks 0 set 00 default 0/0/ from 0/0 to 0/0 Both; 0 of 2 hc 0 count -; 0 of 3 hc 0 level -
parts 600 ref 16 group 3 hc 1 marks 0 set 00 default 0/0/ from 0/0 to 0/0 Parts; 0 of 2 hc 0 count -; 0 of 3 hc 0 level -
texts 704 ref 17 group 3 hc 1 marks 0 set 11 default 0/0/ from 0/0 to 0/0 Texts; 0 of 0 hc 0 first -
--more 704 ref 0 group 0 hc 0 marks 0 set 11 default 0/0/ from 0/0 to 0/0 - made; 0 of 0 hc 0 last -
)");
}

TEST(GroupsAndSynonyms, AreTold) {
  optiontable table(definition);
  optxv_group group;
  ASSERT_EQ(optxv_group_info(&*table, 1, &group), optxv_ok);
  EXPECT_EQ(str(group.name) + str(group.help), "limitsThe limits");
  EXPECT_EQ(group.number * 10 + group.helpcontext, 34);
  EXPECT_EQ(optxv_group_info(&*table, 2, &group), optxv_unknown);
  std::string all;
  for (std::int32_t i = 1; i <= optxv_synonym_count(&*table); i++) {
    optxv_synonym synonym;
    ASSERT_EQ(optxv_synonym_info(&*table, i, &synonym), optxv_ok);
    all += str(synonym.name) + " " + std::to_string(synonym.option) + " " +
           std::to_string(synonym.marks) + str(synonym.markedtext) + "; ";
  }
  EXPECT_EQ(all, "calm 2 1\"say count\"; old 3 0; ");
}

TEST(TheMark, ChangesWithNamesKindsAndSubTypesAlone) {
  const auto markof = [](std::string_view text) {
    optiontable table(text);
    return optxv_table_mark(&*table);
  };
  const std::uint64_t mark = markof("count integer 0 5 0 10 1 1 Count");
  EXPECT_EQ(mark, 0x9E477303438A721CU);  // of "help", 0, 9, 2, "count", 0, 0, 0
  EXPECT_EQ(markof("COUNT integer 9 1 0 3 2 2 Other"), mark);
  for (const char* other : {"counts integer 0 5 0 10 1 1 Count", "count double 0 5 0 10 1 1 Count",
                            "count integer.OPT 0 5 0 10 1 1 Count"})
    EXPECT_NE(markof(other), mark) << other;
  optiontable table("count integer 0 5 0 10 1 1 Count");
  table.read("--made 1");
  EXPECT_EQ(optxv_table_mark(&*table), mark);
}

TEST(TheMark, GoesOnWhereTheTableHasGrownSinceItWasAsked) {
  const std::string_view second = "two boolean 0 1 1 1 Two\n";
  optiontable asked("one integer 0 5 0 10 1 1 One"), unasked("one integer 0 5 0 10 1 1 One");
  const std::uint64_t mark = optxv_table_mark(&*asked);
  for (optiontable* each : {&asked, &unasked})
    optxv_read_definition_text(&**each, "more", second.data(), second.size());
  EXPECT_NE(optxv_table_mark(&*asked), mark);
  EXPECT_EQ(optxv_table_mark(&*asked), optxv_table_mark(&*unasked));
}

}  // namespace
}  // namespace optxv
