// Every function that carries text, called in both forms through the built library: on two handles
// that have read the same, the two give the same, and it is what the row says.

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <functional>
#include <set>
#include <string>
#include <tuple>
#include <variant>
#include <vector>

#include "optxv/optxv.h"

namespace {

using values = std::vector<std::variant<int32_t, double, std::string>>;

// One argument: an input of the row, or an out variable that ends in the outcome. An out text has
// bytes before and after it that nobody may touch.
template <class Argument>
struct slot {
  using held = std::remove_const_t<std::remove_pointer_t<Argument>>;
  static constexpr bool isout = std::is_same_v<Argument, held*>;
  static constexpr bool istext = sizeof(held) == 1;
  static constexpr bool isbounded = std::is_same_v<held, unsigned char>;
  slot(const values& inputs, std::size_t& next) {
    if constexpr (isout) {
      text = std::string(64, '#') + '\0' + std::string(OPTXV_TEXT_SIZE + 63, '#');
    } else if constexpr (istext) {
      text = std::get<std::string>(inputs.at(next++));
      if (isbounded) text.insert(text.begin(), static_cast<char>(text.size()));
    } else {
      number = std::get<held>(inputs.at(next++));
    }
  }
  Argument pass() {
    if constexpr (istext) return reinterpret_cast<Argument>(text.data() + (isout ? 64 : 0));
    if constexpr (isout && !istext) return &number;
    if constexpr (!isout && !istext) return number;
  }
  void collect(values& outcome) {
    if constexpr (isout && istext) {
      const char* const out = text.data() + 64;
      const auto length = static_cast<unsigned char>(*out);
      outcome.emplace_back(isbounded ? std::string(out + 1, length) : std::string(out));
      text.erase(64, OPTXV_TEXT_SIZE);
      EXPECT_EQ(text, std::string(128, '#'));
    } else if constexpr (isout) {
      outcome.emplace_back(number);
    }
  }
  std::string text;
  held number = 77;
};

// Calls a function with the inputs in the order of its arguments; gives its result, if it has one,
// and its out arguments.
template <class Result, class... Arguments>
values call(Result (*function)(void*, Arguments...), void* handle, const values& inputs) {
  std::size_t next = 0;
  std::tuple<slot<Arguments>...> slots{slot<Arguments>(inputs, next)...};
  EXPECT_EQ(next, inputs.size());
  return std::apply(
      [&](auto&... each) {
        values outcome;
        if constexpr (std::is_void_v<Result>) {
          function(handle, each.pass()...);
        } else {
          outcome.emplace_back(function(handle, each.pass()...));
        }
        (each.collect(outcome), ...);
        return outcome;
      },
      slots);
}

using form = std::function<values(void*, const values&)>;
struct row {
  const char* name;
  form opt, copt;
  values inputs, outcome;
};
const char* const definition =
    "general group 1 7 General options\n"
    "steplim integer 11 1000 0 5000 5 1 Step limit\n"
    "tol double.TWO 12 0.5 0 1 6 1 Tolerance\n"
    "logname string.TWO 13 run.log 8 1 Log file\n"
    "method enumstr 14 primal 9 1 Method\n primal 21 Primal method\n dual 22 Dual method\n"
    "names strlist 15 10 1 Names\n"
    "maxsteps synonym steplim\n"
    ".scale double 16 1 0 100 11 1 Scale factor\n"
    "rowtype indicator\n";

// clang-format off
#define T(name) #name, [](void* h, const values& in) { return call(&opt##name, h, in); }, \
                       [](void* h, const values& in) { return call(&copt##name, h, in); }
const row rows[] = {
    {T(readfromstr), {"steplim 500"}, {}}, {T(readfromstr), {"tol 0.25 0.75"}, {}},
    {T(readfromstr), {"names one"}, {}}, {T(readfromstr), {"names two"}, {}},
    {T(readfromstr), {"x.scale('a',*) = 2.5"}, {}},
    {T(readfromstr), {"rowtype eqa('a','b')$vara('a') = yes"}, {}},
    {T(getmessage), {1}, {"Bad message number = 0", 9}}, {T(setrefnrstr), {"steplim", 99}, {1}},
    {T(setvaluesnr), {3, 1, 0.125, "not this"}, {1}}, {T(setvalues2nr), {4, 1, 0.5, "second"}, {1}},
    {T(setstrnr), {4, "first"}, {1}}, {T(getval2str), {"logname"}, {1, "second"}},
    {T(setstr2nr), {4, "two words"}, {1}}, {T(addmessage), {"hello"}, {}},
    {T(showhelp), {"maxsteps"}, {}}, {T(getvaluesnr), {2}, {1, "steplim", 500, 0.0, "500"}},
    {T(getgroupnr), {1}, {1, "general", 1, 7, "General options"}},
    {T(getindicatornr), {1}, {1, "eqa", "vara", 2, 1, 1}},
    {T(getmessage), {1}, {"*** Error hello", 9}},
    {T(getmessage), {2}, {"maxsteps is a synonym for steplim", 1}}, {T(lookup), {"STEPLIM"}, {1}},
    {T(getsynonym), {1}, {1, "maxsteps", "steplim"}},
    {T(findstr), {"maxsteps"}, {1, 2, 99}}, {T(findstr), {"none"}, {0, -1, -1}},
    {T(readfromliststr), {"names", 2}, {1, "two"}},
    {T(getvalstr), {"maxsteps"}, {1, "500"}}, {T(gethelpnr), {2}, {1, "steplim", "Step limit"}},
    {T(getopthelpnr), {2}, {1, "steplim", 5, 1}}, {T(listcountstr), {"names"}, {2}},
    {T(getenumvalue), {5, 2}, {1, 0, "dual"}}, {T(getenumhelp), {5, 2}, {1, 22, "Dual method"}},
    {T(getenumstrnr), {5}, {1, "primal", 1}}, {T(getnamenr), {2}, {1, "steplim"}},
    {T(getdefaultstr), {4}, {1, "run.log"}}, {T(getstrnr), {4}, {1, "first"}},
    {T(getstr2nr), {4}, {1, "two words"}}, {T(getdotoptnr), {1}, {1, "x", 7, 2, 2.5}},
    {T(getdotoptuel), {1, 1}, {1, "a"}}, {T(getequindicatornr), {1, 2}, {1, "'b'"}},
    {T(getvarindicatornr), {1, 1}, {1, "'a'"}}, {T(gettypename), {2}, {1, "string"}},
    {T(getconstname), {2, 9}, {1, "optTypeImmediate"}}, {T(definitionfile), {}, {"calls.def"}},
    {T(getfromliststr), {"names"}, {1, "one"}}, {T(getfromanystrlist), {1}, {0, "names", ""}},
    {T(getfromanystrlist), {0}, {1, "names", "two"}},
    {T(readparameterfile), {"/nowhere/at all"}, {2}},
    {T(writeparameterfile), {"/nowhere/at all"}, {2}},
    {T(readdefinition), {"/nowhere/at all"}, {2}},
};
// clang-format on

class Calls : public ::testing::Test {
 protected:
  void SetUp() override {
    const std::string file = ::testing::TempDir() + "calls.def";
    std::ofstream(file) << definition;
    for (void** handle : {&opt_, &copt_}) {
      xcreate(handle);
      EXPECT_EQ(optcount(*handle), 0);
      ASSERT_EQ(coptreaddefinition(*handle, file.c_str()), 0);
    }
    std::remove(file.c_str());
  }
  void TearDown() override {
    for (void** handle : {&opt_, &copt_, &copt_}) xfree(handle);
    EXPECT_EQ(copt_, nullptr);
  }
  void* opt_ = nullptr;
  void* copt_ = nullptr;
};

TEST_F(Calls, BothFormsGiveTheSame) {
  std::set<std::string> seen;
  for (const row& row : rows) {
    EXPECT_EQ(row.opt(opt_, row.inputs), row.outcome) << row.name;
    EXPECT_EQ(row.copt(copt_, row.inputs), row.outcome) << row.name;
    seen.insert(row.name);
  }
  const values version = call(&optversion, nullptr, {});
  EXPECT_EQ(call(&coptversion, nullptr, {}), version) << "and needs no handle";
  EXPECT_EQ(std::get<std::string>(version[0]).substr(0, 6), "optxv ");
  EXPECT_EQ(seen.size(), 40U) << "a function with text is missing";
}

TEST_F(Calls, LongTextsIn) {
  for (const std::size_t length : {0, 1, 254, 255, 256, 100000}) {
    const std::string text(length, 'x');
    optclearmessages(copt_);
    coptaddmessage(copt_, text.c_str());
    const std::string kept = "*** Error " + (length < 255 ? text : "PCharToStr Overflow");
    EXPECT_EQ(call(&coptgetmessage, copt_, {1}), (values{kept.substr(0, 255), 9})) << length;
  }
  const std::string text = std::string(700, ' ') + "steplim" + std::string(700, ' ') + "321";
  optreadfrompchar(copt_, text.c_str());
  EXPECT_EQ(call(&coptgetvalstr, copt_, {"steplim"}), (values{1, "321"})) << "of any length here";
}

TEST_F(Calls, NilTextsInAreEmpty) {
  coptaddmessage(copt_, nullptr), optaddmessage(copt_, nullptr);
  for (const int number : {1, 2})
    EXPECT_EQ(call(&coptgetmessage, copt_, {number}), (values{"*** Error ", 9}));
  optreadfrompchar(copt_, nullptr);
  EXPECT_EQ(coptlookup(copt_, nullptr) + optlookup(opt_, nullptr), -2);
}

TEST(Library, LoadPathIsEverybodys) {
  char path[OPTXV_TEXT_SIZE] = "left over";
  coptsetloadpath("/some/where");
  optgetloadpath(reinterpret_cast<unsigned char*>(path));
  EXPECT_STREQ(path, "\13/some/where");
  optsetloadpath(reinterpret_cast<const unsigned char*>("\1x"));
  coptgetloadpath(path);
  EXPECT_STREQ(path, "x");
}

}  // namespace
