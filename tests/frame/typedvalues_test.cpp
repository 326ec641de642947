#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <sstream>
#include <string>

#include "optxv/embedding.h"
#include "support/everykind.h"
#include "support/optiontable.h"
#include "support/rows.h"

namespace optxv {
namespace {

struct handle : optiontable {
  handle() : optiontable(everykind()) {}
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

TEST(Setters, StoreOrSayWhyNot) {
  const std::string rows = rowsof("frame/setters.rows");
  const auto told = [](const std::string& call) {
    handle table, full;
    const std::string status = called(table, call);
    for (int i = 0; i <= maximummessages; i++) optxv_add_message(full.get(), "x", 1);
    EXPECT_EQ(called(full, call), status) << call << ", while the queue is full";
    const std::string shown = shownvalue(table, call);
    return status + (shown.empty() ? "" : ": " + shown) + "\n" + joined(table.queue(), "\n");
  };
  EXPECT_EQ(retold(rows, told), rows);
}

TEST(Setters, TakeAValueOutOfBoundsWithAWarning) {
  handle table;
  EXPECT_EQ(optxv_switch(table.get(), optxv_switch_no_bounds, 1), 0);
  EXPECT_EQ(called(table, "integer quick 100"), "success");
  EXPECT_EQ(called(table, "real quick 7.5"), "the value was refused");
  EXPECT_EQ(shownvalue(table, "integer quick"), "100");
}

TEST(Getters, GiveTheValueOfTheirKindAlone) {
  handle table;
  table.read("range 3 4\nmethod dual");
  // integer, real and text of the first value, and of the second one
  const std::map<std::string, std::string> rows = {{"quick", "42 42 kind; kind kind kind"},
                                                   {"tol", "kind 0.5 kind; kind 0.5 kind"},
                                                   {"level", "1 1 kind; kind kind kind"},
                                                   {"logname", "kind kind run log; kind kind kind"},
                                                   {"method", "kind kind dual; kind kind kind"},
                                                   {"range", "3 3 kind; 4 4 kind"},
                                                   {"names", "kind kind kind; kind kind kind"},
                                                   {"say", "kind kind kind; kind kind kind"}};
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
  EXPECT_EQ(optxv_set_text(table.get(), "logname", longest.data(), 254), optxv_ok);
  EXPECT_EQ(optxv_set_text(table.get(), "logname", longer.c_str(), OPTXV_ENDED), optxv_too_long);
  EXPECT_EQ(shownvalue(table, "text logname"), longest);
  EXPECT_EQ(optxv_set_text(table.get(), "logname", nullptr, 0), optxv_ok);
  EXPECT_EQ(shownvalue(table, "text logname"), "");
  EXPECT_EQ(optxv_set_text(table.get(), "logname", nullptr, 1), optxv_bad_argument);
  EXPECT_EQ(optxv_set_integer_nr(table.get(), 2, 3, 1), optxv_bad_argument);
  EXPECT_EQ(optxv_get_integer(table.get(), "nosuch", &integer), optxv_unknown);
  EXPECT_EQ(optxv_get_integer(table.get(), "logname", &integer), optxv_wrong_kind);
  EXPECT_EQ(optxv_get_integer(nullptr, "quick", &integer), optxv_bad_argument);
  EXPECT_EQ(optxv_find(table.get(), "quickest", 5, &integer), optxv_ok);
  EXPECT_EQ(integer, table.number("quick"));
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
