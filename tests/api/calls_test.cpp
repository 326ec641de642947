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
#define T(name)                                                     \
#name,                                                            \
      [](void* h,                                                   \
         const values&                                              \
             in) { return call(&opt##name, h, in); },               \
                                                   [](void* h,      \
                                                      const values& \
                                                          in) { return call(&copt##name, h, in); }
const row rows[] = {
    {T(readfromstr), {"steplim 500"}, {}},
    {T(readfromstr), {"names one"}, {}},
    {T(readfromstr), {"names two"}, {}},
    {T(readfromstr), {"x.scale('a',*) = 2.5"}, {}},
    {T(readfromstr), {"tie eqa('a','b')$vara('a') = yes"}, {}},
    {T(getmessage), {1}, {"Bad message number = 0", 9}},
    {T(addmessage), {"hello"}, {}},
    {T(showhelp), {"reltol"}, {}},
    {T(getmessage), {1}, {"*** Error hello", 9}},
    {T(getmessage), {2}, {"reltol is a synonym for tol", 1}},
    {T(readparameterfile), {"/nowhere/at all"}, {2}},
    {T(writeparameterfile), {"/nowhere/at all"}, {2}},
    {T(setrefnrstr), {"steplim", 99}, {1}},
    {T(setvaluesnr), {3, 1, 0.125, "not this"}, {1}},
    {T(setvalues2nr), {22, 1, 0.5, "second"}, {1}},
    {T(getval2str), {"title"}, {1, "second"}},
    {T(setstrnr), {22, "first"}, {1}},
    {T(setstr2nr), {22, "two words"}, {1}},
    {T(getstrnr), {22}, {1, "first"}},
    {T(getstr2nr), {22}, {1, "two words"}},
    {T(getvaluesnr), {2}, {1, "steplim", 500, 0.0, "500"}},
    {T(getvalstr), {"maxsteps"}, {1, "500"}},
    {T(getdefaultstr), {4}, {1, "run log"}},
    {T(getnamenr), {2}, {1, "steplim"}},
    {T(gethelpnr), {2}, {1, "steplim", "Step limit"}},
    {T(getopthelpnr), {2}, {1, "steplim", 5, 1}},
    {T(getgroupnr), {1}, {1, "limits", 1, 7, "Limits of a run"}},
    {T(getenumvalue), {5, 2}, {1, 0, "dual"}},
    {T(getenumhelp), {5, 2}, {1, 22, "Dual method"}},
    {T(getenumstrnr), {5}, {1, "primal", 1}},
    {T(lookup), {"STEPLIM"}, {1}},
    {T(findstr), {"maxsteps"}, {1, 2, 99}},
    {T(findstr), {"none"}, {0, -1, -1}},
    {T(getsynonym), {1}, {1, "maxsteps", "steplim"}},
    {T(listcountstr), {"names"}, {2}},
    {T(readfromliststr), {"names", 2}, {1, "two"}},
    {T(getfromliststr), {"names"}, {1, "one"}},
    {T(getfromanystrlist), {1}, {0, "names", ""}},
    {T(getfromanystrlist), {0}, {1, "names", "two"}},
    {T(getdotoptnr), {1}, {1, "x", 13, 2, 2.5}},
    {T(getdotoptuel), {1, 1}, {1, "a"}},
    {T(getindicatornr), {1}, {1, "eqa", "vara", 2, 1, 1}},
    {T(getequindicatornr), {1, 2}, {1, "'b'"}},
    {T(getvarindicatornr), {1, 1}, {1, "'a'"}},
    {T(gettypename), {2}, {1, "string"}},
    {T(getconstname), {2, 9}, {1, "optTypeImmediate"}},
    {T(definitionfile), {}, {"everykind.def"}},
    {T(readdefinition), {"/nowhere/at all"}, {2}},
};

class Calls : public ::testing::Test {
 protected:
  void SetUp() override {
    for (void** handle : {&opt_, &copt_}) {
      xcreate(handle);
      EXPECT_EQ(optcount(*handle), 0);
      ASSERT_EQ(coptreaddefinition(*handle, OPTXV_TESTS "/support/everykind.def"), 0);
    }
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

/// What an operation gives for a number that is bad: below 1, or above the count.
struct badnumber {
  const char* name;
  form plain;
  values inputs, outcome;
};
#define B(name) #name, [](void* h, const values& in) { return call(&opt##name, h, in); }
const badnumber badnumbers[] = {
    {B(getinfonr), {}, {0, 0, 0, 0, -1, -1, -1}},
    {B(getdefinednr), {}, {0, 0}},
    {B(getnamenr), {}, {0, ""}},
    {B(gethelpnr), {}, {0, "", ""}},
    {B(getopthelpnr), {}, {0, "", -1, -1}},
    {B(getoptgroupnr), {}, {-1}},
    {B(getvaluesnr), {}, {0, "", 0, 0.0, ""}},
    {B(getintnr), {}, {0, 77}},  // what an operation does not say it clears stays
    {B(getdbl2nr), {}, {0, 77.0}},
    {B(getstrnr), {}, {0, ""}},
    {B(getstr2nr), {}, {0, ""}},
    {B(getboundsint), {}, {0, 77, 77, 77}},
    {B(getdefaultstr), {}, {0, ""}},
    {B(getenumcount), {}, {0, -1}},
    {B(getenumvalue), {1}, {0, -1, ""}},
    {B(getenumhelp), {1}, {0, -1, ""}},
    {B(getenumstrnr), {}, {0, "", -1}},
    {B(getgroupnr), {}, {0, "", 0, 0, ""}},
    {B(getgroupgrpnr), {}, {-1}},
    {B(getsynonym), {}, {0, "", ""}},
    {B(setintnr), {1}, {0}},
    {B(setstr2nr), {"x"}, {0}},
    {B(setrefnr), {7}, {0}},
    {B(resetnr), {}, {0}},
    {B(gettypename), {}, {0, ""}},
};

TEST_F(Calls, BadNumbersGiveNothing) {
  for (const badnumber& row : badnumbers)
    for (const int32_t bad : {INT32_MIN, -1, 0, 25, INT32_MAX}) {
      if (bad == 0 && std::string(row.name) == "gettypename") continue;  // the only count from 0
      values inputs = row.inputs;
      inputs.insert(inputs.begin(), bad);
      EXPECT_EQ(row.plain(opt_, inputs), row.outcome) << row.name << ' ' << bad;
    }
  EXPECT_EQ(optmessagecount(opt_), 0) << "a bad number is a result and never a message";
}

TEST_F(Calls, ChangesAreRecentOnlyWhileThatIsEnabled) {
  EXPECT_EQ(optrecentenabled(opt_), 1);
  optrecentenabledset(opt_, 0);
  EXPECT_EQ(optrecentenabled(opt_), 0);
  call(&optreadfromstr, opt_, {"steplim 5"});
  optrecentenabledset(opt_, -7);
  EXPECT_EQ(optrecentenabled(opt_), 1);
  call(&optreadfromstr, opt_, {"level 2"});
  const values steplim = {1, 1, 0, 11, 1, 0, 0}, level = {1, 1, 1, 15, 1, 5, 0};
  EXPECT_EQ(call(&optgetinfonr, opt_, {2}), steplim) << "set, but not recently";
  EXPECT_EQ(call(&optgetinfonr, opt_, {6}), level);
  optresetrecentchanges(opt_);
  EXPECT_EQ(call(&optgetstrnr, opt_, {2}), (values{1, "5"}));
  EXPECT_EQ(call(&optgetstrnr, opt_, {6}), (values{1, "1"}));
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
  coptaddmessage(copt_, nullptr);
  optaddmessage(copt_, nullptr);
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
