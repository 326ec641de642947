#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <sstream>
#include <string>

#include "optxv/embedding.h"
#include "support/callrows.h"

namespace optxv {
namespace {

const char* const definition = R"(count integer 0 5 0 10 1 1 Count
level double 0 0.5 0 1 1 1 Level
flag boolean 0 0 1 1 Flag
pick enumint 0 2 1 1 Pick
 1 1 One
 2 1 Two
word string 0 "none" 1 1 Word
mode enumstr 0 slow 1 1 Mode
 slow 1 Slow
 fast 1 Fast
pair integer.TWO 0 1 0 9 1 1 Pair
texts strlist 0 1 1 Texts
all macro 1 1 All
 count
 level
say immediate Message 1 1 Say
calm synonym count
)";

struct handle : optiontable {
  handle() : optiontable(definition) {}
  optxv_handle get() { return &options; }
  std::int32_t number(const std::string& name) {
    std::int32_t found = 0;
    optxv_find(get(), name.data(), name.size(), &found);
    return found;
  }
};

/// Runs a call that is written as its words, the last of which is the value.
std::string called(handle& of, const std::string& call) {
  std::istringstream in(call);
  std::string how, name, value;
  in >> how >> name >> std::ws;
  std::getline(in, value);
  const std::int32_t number = of.number(name), which = how.ends_with('2') ? 2 : 1;
  const auto real = [&] { return std::stod(value); };
  const auto integer = [&] { return std::stoi(value); };
  const std::map<std::string, std::function<std::int32_t()>> ways = {
      {"integer", [&] { return optxv_set_integer(of.get(), name.c_str(), integer()); }},
      {"real", [&] { return optxv_set_real(of.get(), name.c_str(), real()); }},
      {"text", [&] { return optxv_set_text(of.get(), name.c_str(), value.data(), value.size()); }},
      {"integer2", [&] { return optxv_set_integer_nr(of.get(), number, which, integer()); }},
      {"real2", [&] { return optxv_set_real_nr(of.get(), number, which, real()); }},
      {"parse", [&] { return optxv_parse_value(of.get(), number, 1, value.c_str(), OPTXV_ENDED); }},
      {"parse2",
       [&] { return optxv_parse_value(of.get(), number, 2, value.c_str(), OPTXV_ENDED); }},
  };
  return optxv_status_text(ways.at(how)());
}

std::string shownvalue(handle& of, const std::string& call) {
  std::istringstream in(call);
  std::string how, name;
  in >> how >> name;
  char text[256] = "";
  optxv_show_value(of.get(), of.number(name), how.ends_with('2') ? 2 : 1, text);
  return text;
}

const char* const calls = R"(integer count 7    >> success >> 7
integer calm 7     >> success >> 7
integer count 11   >> the value was refused >> 5
 *** Value Error Integer range error for option "count" saw "11"
 *** Value Error    Valid range is 0 to 10
real count 7       >> success >> 7
real count 7.5     >> the value was refused >> 5
 *** Value Error Integer expected, for option "count" saw "7.5"
real count 1e10    >> the value was refused >> 5
 *** Value Error Integer expected, for option "count" saw "10000000000"
real count nan     >> the value was refused >> 5
 *** Value Error Integer expected, for option "count" saw "NAN"
integer level 1    >> success >> 1
real level 1.5     >> the value was refused >> 0.5
 *** Value Error Double out of range for option "level" saw "1.5"
 *** Value Error    Valid range is 0 to 1
real flag 1        >> success >> 1
real pick 3        >> the value was refused >> 2
 *** Value Error Unknown value for option "pick" saw "3"
 *** Value Error    Possible values are  1 2
text word a "b" c  >> success >> a "b" c
text mode FAST     >> success >> fast
text mode quick    >> the value was refused >> slow
 *** Value Error Unknown value for option "mode" saw "quick"
 *** Value Error    Possible values are  slow fast
text count 7       >> the option is of another kind >> 5
integer word 7     >> the option is of another kind >> none
real texts 7       >> the option is of another kind
integer2 pair 7    >> success >> 7
real2 pair 10      >> the value was refused >> 1
 *** Value Error Integer range error for option "pair" saw "10"
 *** Value Error    Valid range is 0 to 9
integer2 count 7   >> the option is of another kind
integer2 nosuch 7  >> no such option or entry
integer nosuch 7   >> no such option or entry
parse count 1e1    >> success >> 10
parse word a"b     >> the value was refused >> none >> *** Value Error Bad double-quote in value
parse2 pair 4      >> success >> 4
parse texts one    >> success
parse say hello    >> the option is of another kind
parse all 1        >> success
parse all 2        >> the value was refused >> >> *** Value Error Double out of range for option "all" saw "2"
 *** Value Error    Valid range is 0 to 1
)";

TEST(Setters, StoreOrSayWhyNot) {
  for (const lines& row : fieldsof(calls)) {
    handle table;
    const std::string status = called(table, row[0]);
    const std::string shown = shownvalue(table, row[0]);
    const std::string queue = joined(table.queue());
    const std::string wanted = row[3].empty() ? row[2] : row[2] + " | " + row[3];
    EXPECT_EQ(status, row[1]) << row[0];
    EXPECT_EQ(shown + (queue.empty() ? "" : " | " + queue), wanted) << row[0];
  }
}

TEST(Setters, KnowARefusalWhileTheQueueIsFull) {
  for (const lines& row : fieldsof(calls)) {
    handle table;
    for (int i = 0; i <= maximummessages; i++) optxv_add_message(table.get(), "x", 1);
    EXPECT_EQ(called(table, row[0]), row[1]) << row[0];
  }
}

TEST(Setters, TakeAValueOutOfBoundsWithAWarning) {
  handle table;
  EXPECT_EQ(optxv_switch(table.get(), optxv_switch_no_bounds, 1), 0);
  EXPECT_EQ(called(table, "integer count 99"), "success");
  EXPECT_EQ(called(table, "real count 7.5"), "the value was refused");
  EXPECT_EQ(shownvalue(table, "integer count"), "99");
}

TEST(Getters, GiveTheValueOfTheirKindAlone) {
  handle table;
  table.read("pair 3 4\nmode fast");
  // integer, real and text of the first value, and of the second one
  const std::map<std::string, std::string> rows = {
      {"count", "5 5 kind; kind kind kind"},       {"level", "kind 0.5 kind; kind kind kind"},
      {"pick", "2 2 kind; kind kind kind"},        {"word", "kind kind none; kind kind kind"},
      {"mode", "kind kind fast; kind kind kind"},  {"pair", "3 3 kind; 4 4 kind"},
      {"texts", "kind kind kind; kind kind kind"}, {"say", "kind kind kind; kind kind kind"}};
  for (const auto& [name, wanted] : rows) {
    const std::int32_t nr = table.number(name);
    std::ostringstream got;
    for (const std::int32_t which : {1, 2}) {
      std::int32_t integer = 0;
      double real = 0;
      optxv_text text = {};
      optxv_get_integer_nr(table.get(), nr, which, &integer) == 0 ? got << integer : got << "kind";
      optxv_get_real_nr(table.get(), nr, which, &real) == 0 ? got << ' ' << real : got << " kind";
      optxv_get_text_nr(table.get(), nr, which, &text) == 0 ? got << ' ' << text.bytes
                                                            : got << " kind";
      got << (which == 1 ? "; " : "");
    }
    EXPECT_EQ(got.str(), wanted) << name;
  }
}

TEST(Arguments, AreCheckedBeforeAnythingChanges) {
  handle table;
  const std::string longest(254, 'x'), longer(255, 'x');
  std::int32_t integer = 77;
  EXPECT_EQ(optxv_set_text(table.get(), "word", longest.data(), 254), optxv_ok);
  EXPECT_EQ(optxv_set_text(table.get(), "word", longer.c_str(), OPTXV_ENDED), optxv_too_long);
  EXPECT_EQ(shownvalue(table, "text word"), longest);
  EXPECT_EQ(optxv_set_text(table.get(), "word", nullptr, 0), optxv_ok);
  EXPECT_EQ(shownvalue(table, "text word"), "");
  EXPECT_EQ(optxv_set_text(table.get(), "word", nullptr, 1), optxv_bad_argument);
  EXPECT_EQ(optxv_set_integer_nr(table.get(), 2, 3, 1), optxv_bad_argument);
  EXPECT_EQ(optxv_get_integer(table.get(), "nosuch", &integer), optxv_unknown);
  EXPECT_EQ(optxv_get_integer(table.get(), "word", &integer), optxv_wrong_kind);
  EXPECT_EQ(optxv_get_integer(nullptr, "count", &integer), optxv_bad_argument);
  EXPECT_EQ(optxv_find(table.get(), "countless", 5, &integer), optxv_ok);
  EXPECT_EQ(integer, 2);
  EXPECT_EQ(optxv_read_parameters(table.get(), std::string(256, 'f').c_str()), optxv_too_long);
  EXPECT_EQ(optxv_read_parameters(table.get(), "/no/such/file"), ENOENT);
}

TEST(Switches, GiveWhatTheyWere) {
  handle table;
  const std::pair<std::int32_t, std::int32_t> rows[] = {{optxv_switch_line_mode, 1},
                                                        {optxv_switch_no_bounds, 0},
                                                        {optxv_switch_echo, 0},
                                                        {optxv_switch_recent, 1},
                                                        {optxv_switch_print, 1}};
  for (const auto& [which, first] : rows) {
    EXPECT_EQ(optxv_switch(table.get(), which, 1 - first), first) << which;
    EXPECT_EQ(optxv_switch(table.get(), which, first), 1 - first) << which;
  }
  EXPECT_EQ(optxv_switch(table.get(), 5, 1), optxv_bad_argument);
}

}  // namespace
}  // namespace optxv
