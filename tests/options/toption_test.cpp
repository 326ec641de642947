#include "options/toption.h"

#include <gtest/gtest.h>

#include <string>

#include "support/optiontable.h"

namespace optxv {
namespace {

constexpr std::string_view table =
    "i integer.TWO 1 7 0 10 0 0\n"
    "d double.TWO 2 0.5 0 1 0 0\n"
    "s string.TWO 3 \"\" 0 0\n"
    "b boolean.TWO 4 1 0 0\n"
    "es enumstr.TWO 5 one 0 0\n one 0\n"
    "ei enumint.TWO 6 -3 0 0\n -3 0\n"
    "nv integer.NV 7 7 0 10 0 0\n"
    "l strlist 8 0 0\n"
    "m multilist 9 0 0\n i d\n"
    "mac macro 0 0\n i\n l\n"
    "im immediate Message 0 0\n";

TEST(UseDefined, StoresTheDefaultOfTheScalarKinds) {
  optiontable options(table);
  // Whatever is taken gives way to the default.
  for (std::int32_t i = 0; i < options->getcount(); ++i) options->getobjects(i)->setasstring("0");
  for (std::int32_t i = 0; i < options->getcount(); ++i) options->getobjects(i)->usedefined();
  options->optclearmessages();
  EXPECT_EQ(options.state(), "i=7 d=0.5 s= b=1 es=one ei=-3 nv=7 l=[0|0]");
  EXPECT_EQ(options.option("mac").defined, 0);
}

TEST(Reset, HidesTheValuesOfEveryKind) {
  optiontable options(table);
  options->optnoboundsset(1);
  const lines names = {"d", "s", "b", "es", "ei", "mac"};
  for (const std::string& name : names) {
    options.option(name).setasstring("7");
    options.option(name).setasstring2("8");
  }
  EXPECT_EQ(options.state(), "i=7 d=7/8!3 s=7/8 es=/!3 ei=7/8!3 l=[7]");
  for (const std::string& name : names) options.option(name).reset();
  EXPECT_EQ(options.state(), "");
  for (const std::string& name : names) {
    const toption& option = options.option(name);
    EXPECT_EQ(option.getasstring(), option.getasstring2()) << name;  // both the default
    EXPECT_EQ(option.recent + option.outofbounds, 0) << name;
  }
  options.option("l").setasstring("c");  // a member of the macro, whose items went with it
  EXPECT_EQ(options.state(), "l=[c]");
}

TEST(Assignment, TestsForQuotesAndForOptionsWithoutAValue) {
  const struct {
    const char* option;
    bool second;
    std::string text;
    std::string queue;
    std::string state;
  } rows[] = {// Being mentioned is the value: nothing is looked at, and what the field held shows.
              {"nv", false, "x\"y", "", "nv=0"},
              {"nv", true, "8", "", "nv=/8"},
              {"nv", true, "\"8", "V Bad double-quote in value", ""},
              {"s", false, "a\"b", "V Bad double-quote in value", ""},
              {"l", false, "\"", "V Bad double-quote in value", ""},
              {"im", false, "\"", "V Bad double-quote in value", ""},
              {"mac", true, "1", "", ""},
              {"im", true, "x", "", ""}};
  for (const auto& row : rows) {
    optiontable options(table);
    toption& option = options.option(row.option);
    row.second ? option.setasstring2(row.text) : option.setasstring(row.text);
    EXPECT_EQ(options.brief(), row.queue) << row.option;
    EXPECT_EQ(options.state(), row.state) << row.option << row.text;
  }
}

}  // namespace
}  // namespace optxv
