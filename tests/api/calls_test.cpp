// Every function that carries text, called in both forms through the built library: on two handles
// that have read the same, the two give the same, and it is what the row says.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <variant>
#include <vector>

#include "optxv/optxv.h"

namespace {

using value = std::variant<int32_t, double, std::string>;
using values = std::vector<value>;

// An out buffer with bytes in front and behind that nobody may touch.
class guarded {
 public:
  guarded() {
    std::memset(bytes_, '#', sizeof bytes_);
    bytes_[room] = 0;  // empty in either form, for functions that leave it untouched
  }
  ~guarded() {
    const auto untouched = [](unsigned char c) { return c == '#'; };
    EXPECT_TRUE(std::all_of(bytes_, bytes_ + room, untouched));
    EXPECT_TRUE(std::all_of(bytes_ + room + OPTXV_TEXT_SIZE, bytes_ + sizeof bytes_, untouched));
  }
  unsigned char* text() { return bytes_ + room; }

 private:
  static constexpr int room = 64;
  unsigned char bytes_[room + OPTXV_TEXT_SIZE + room];
};

// What is passed for one argument: taken from the inputs, or an out variable that ends in the
// outcome.
template <class Argument>
struct slot {
  explicit slot(const values& inputs, std::size_t& next)
      : in(std::get<Argument>(inputs.at(next++))) {}
  Argument pass() { return in; }
  void collect(values&) {}
  Argument in;
};
template <class Number>
struct slot<Number*> {
  slot(const values&, std::size_t&) {}
  Number* pass() { return &out; }
  void collect(values& outcome) { outcome.emplace_back(out); }
  Number out = 77;
};
template <>
struct slot<const char*> {
  slot(const values& inputs, std::size_t& next) : in(std::get<std::string>(inputs.at(next++))) {}
  const char* pass() { return in.c_str(); }
  void collect(values&) {}
  std::string in;
};
template <>
struct slot<const unsigned char*> {
  slot(const values& inputs, std::size_t& next) : in(std::get<std::string>(inputs.at(next++))) {
    in.insert(in.begin(), static_cast<char>(in.size()));
  }
  const unsigned char* pass() { return reinterpret_cast<const unsigned char*>(in.data()); }
  void collect(values&) {}
  std::string in;
};
template <>
struct slot<char*> {
  slot(const values&, std::size_t&) {}
  char* pass() { return reinterpret_cast<char*>(buffer.text()); }
  void collect(values& outcome) { outcome.emplace_back(std::string(pass())); }
  guarded buffer;
};
template <>
struct slot<unsigned char*> {
  slot(const values&, std::size_t&) {}
  unsigned char* pass() { return buffer.text(); }
  void collect(values& outcome) {
    outcome.emplace_back(std::string(pass() + 1, pass() + 1 + *pass()));
  }
  guarded buffer;
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

struct twocalls {
  const char* name;
  std::function<values(void*, const values&)> opt;
  std::function<values(void*, const values&)> copt;
};
#define TWIN(name)                                                                         \
  twocalls {                                                                               \
#name, [](void* handle, const values& inputs) { return call(&name, handle, inputs); },   \
        [](void* handle, const values& inputs) { return call(&c##name, handle, inputs); } \
  }

const char* const definition =
    "general group 1 7 General options\n"
    "steplim integer 11 1000 0 5000 5 1 Step limit\n"
    "tol double.TWO 12 0.5 0 1 6 1 Tolerance\n"
    "logname string.TWO 13 run.log 8 1 Log file\n"
    "method enumstr 14 primal 9 1 Method\n"
    " primal 21 Primal method\n"
    " dual 22 Dual method\n"
    "names strlist 15 10 1 Names\n"
    "maxsteps synonym steplim\n"
    ".scale double 16 1 0 100 11 1 Scale factor\n"
    "rowtype indicator\n";

const struct row {
  twocalls function;
  values inputs;
  std::optional<values> outcome;  // none: the two forms have to agree, and that is all
} rows[] = {
    {TWIN(optreadfromstr), {"steplim 500"}, values{}},
    {TWIN(optreadfromstr), {"tol 0.25 0.75"}, values{}},
    {TWIN(optreadfromstr), {"names one"}, values{}},
    {TWIN(optreadfromstr), {"names two"}, values{}},
    {TWIN(optreadfromstr), {"x.scale('a',*) = 2.5"}, values{}},
    {TWIN(optreadfromstr), {"rowtype eqa('a','b')$vara('a') = yes"}, values{}},
    {TWIN(optgetmessage), {1}, values{"Bad message number = 0", 9}},

    {TWIN(optlookup), {"STEPLIM"}, values{1}},
    {TWIN(optlookup), {"maxsteps"}, values{-1}},
    {TWIN(optfindstr), {"maxsteps"}, values{1, 2, 11}},
    {TWIN(optfindstr), {"none"}, values{0, -1, -1}},
    {TWIN(optgetvalstr), {"maxsteps"}, values{1, "500"}},
    {TWIN(optgetval2str), {"tol"}, values{1, "0.75"}},
    {TWIN(optsetrefnrstr), {"steplim", 99}, values{1}},
    {TWIN(optfindstr), {"steplim"}, values{1, 2, 99}},
    {TWIN(optgetsynonym), {1}, values{1, "maxsteps", "steplim"}},
    {TWIN(optgetsynonym), {2}, values{0, "", ""}},
    {TWIN(optlistcountstr), {"names"}, values{2}},
    {TWIN(optlistcountstr), {"tol"}, values{-1}},
    {TWIN(optreadfromliststr), {"names", 2}, values{1, "two"}},
    {TWIN(optreadfromliststr), {"names", 3}, values{0, ""}},
    {TWIN(optgetfromliststr), {"names"}, values{1, "one"}},
    {TWIN(optgetfromanystrlist), {1}, values{0, "names", ""}},
    {TWIN(optgetfromanystrlist), {0}, values{1, "names", "two"}},
    {TWIN(optgetfromanystrlist), {0}, values{0, "", ""}},

    {TWIN(optgetnamenr), {2}, values{1, "steplim"}},
    {TWIN(optgetnamenr), {0}, values{0, ""}},
    {TWIN(optgethelpnr), {2}, values{1, "steplim", "Step limit"}},
    {TWIN(optgetopthelpnr), {2}, values{1, "steplim", 5, 1}},
    {TWIN(optgetdefaultstr), {4}, values{1, "run.log"}},
    {TWIN(optgetdefaultstr), {2}, values{0, ""}},

    {TWIN(optgetvaluesnr), {2}, values{1, "steplim", 500, 0.0, "500"}},
    {TWIN(optgetvaluesnr), {3}, values{1, "tol", 0, 0.25, "0.25"}},
    {TWIN(optgetvaluesnr), {99}, values{0, "", 0, 0.0, ""}},
    {TWIN(optsetvaluesnr), {3, 1, 0.125, "not this"}, values{1}},
    {TWIN(optgetstrnr), {3}, values{1, "0.125"}},
    {TWIN(optsetvalues2nr), {4, 1, 0.5, "second"}, values{1}},
    {TWIN(optgetstr2nr), {4}, values{1, "second"}},
    {TWIN(optsetstrnr), {4, "first"}, values{1}},
    {TWIN(optsetstr2nr), {4, "two words"}, values{1}},
    {TWIN(optgetstrnr), {4}, values{1, "first"}},
    {TWIN(optgetval2str), {"logname"}, values{1, "two words"}},

    {TWIN(optgetenumvalue), {5, 2}, values{1, 0, "dual"}},
    {TWIN(optgetenumvalue), {5, 3}, values{0, -1, ""}},
    {TWIN(optgetenumhelp), {5, 2}, values{1, 22, "Dual method"}},
    {TWIN(optgetenumstrnr), {5}, values{1, "primal", 1}},
    {TWIN(optgetgroupnr), {1}, values{1, "general", 1, 7, "General options"}},
    {TWIN(optgetgroupnr), {2}, values{0, "", 0, 0, ""}},

    {TWIN(optgetdotoptnr), {1}, values{1, "x", 7, 2, 2.5}},
    {TWIN(optgetdotoptuel), {1, 1}, values{1, "a"}},
    {TWIN(optgetdotoptuel), {1, 2}, values{1, "*"}},
    {TWIN(optgetindicatornr), {1}, values{1, "eqa", "vara", 2, 1, 1}},
    {TWIN(optgetequindicatornr), {1, 2}, values{1, "'b'"}},
    {TWIN(optgetvarindicatornr), {1, 1}, values{1, "'a'"}},
    {TWIN(optgetvarindicatornr), {1, 2}, values{0, ""}},

    {TWIN(optgettypename), {2}, values{1, "string"}},
    {TWIN(optgettypename), {10}, values{0, ""}},
    {TWIN(optgetconstname), {2, 9}, values{1, "optTypeImmediate"}},
    {TWIN(optgetconstname), {4, 9}, values{0, ""}},
    {TWIN(optdefinitionfile), {}, values{"calls.def"}},
    {TWIN(optversion), {}, {}},

    {TWIN(optaddmessage), {"hello"}, values{}},
    {TWIN(optgetmessage), {1}, values{"*** Error hello", 9}},
    {TWIN(optshowhelp), {"maxsteps"}, values{}},
    {TWIN(optgetmessage), {2}, values{"maxsteps is a synonym for steplim", 1}},
    {TWIN(optreadparameterfile), {"/nowhere/at all"}, values{2}},
    {TWIN(optwriteparameterfile), {"/nowhere/at all"}, values{2}},
    {TWIN(optreaddefinition), {"/nowhere/at all"}, values{2}},
};

class Calls : public ::testing::Test {
 protected:
  void SetUp() override {
    const std::string file = ::testing::TempDir() + "calls.def";
    std::ofstream(file) << definition;
    for (void** handle : {&opt_, &copt_}) {
      xcreate(handle);
      ASSERT_EQ(coptreaddefinition(*handle, file.c_str()), 0);
      ASSERT_EQ(optmessagecount(*handle), 0);
    }
    std::remove(file.c_str());
  }
  void TearDown() override {
    xfree(&opt_);
    xfree(&copt_);
    EXPECT_EQ(copt_, nullptr);
    xfree(&copt_);
  }
  void* opt_ = nullptr;
  void* copt_ = nullptr;
};

TEST_F(Calls, BothFormsGiveTheSame) {
  std::set<std::string> seen;
  for (const row& row : rows) {
    const values outcome = row.function.opt(opt_, row.inputs);
    EXPECT_EQ(row.function.copt(copt_, row.inputs), outcome) << row.function.name;
    EXPECT_EQ(outcome, row.outcome.value_or(outcome)) << row.function.name;
    seen.insert(row.function.name);
  }
  EXPECT_EQ(seen.size(), 41U) << "a function with text is missing";
}

TEST_F(Calls, LongTextsIn) {
  for (const std::size_t length : {0, 1, 254, 255, 256, 300, 100000}) {
    const std::string text(length, 'x');
    optclearmessages(copt_);
    coptaddmessage(copt_, text.c_str());
    EXPECT_EQ(
        call(&coptgetmessage, copt_, {1}),
        (values{("*** Error " + (length < 255 ? text : "PCharToStr Overflow")).substr(0, 255), 9}))
        << length;
  }
}

TEST_F(Calls, NilTextsInAreEmpty) {
  coptaddmessage(copt_, nullptr);
  optaddmessage(opt_, nullptr);
  EXPECT_EQ(call(&coptgetmessage, copt_, {1}), (values{"*** Error ", 9}));
  EXPECT_EQ(call(&coptgetmessage, opt_, {1}), (values{"*** Error ", 9}));
  optreadfrompchar(copt_, nullptr);
  EXPECT_EQ(coptlookup(copt_, nullptr), -1);
  EXPECT_EQ(optlookup(opt_, nullptr), -1);
  EXPECT_EQ(optmessagecount(copt_), 1);
}

TEST_F(Calls, PCharTextOfAnyLength) {
  const std::string text = std::string(700, ' ') + "steplim" + std::string(700, ' ') + "321";
  optreadfrompchar(copt_, text.c_str());
  int32_t value = 0;
  EXPECT_EQ(optgetintnr(copt_, 2, &value), 1);
  EXPECT_EQ(value, 321);
}

TEST(Library, LoadPathIsEverybodys) {
  char path[OPTXV_TEXT_SIZE] = "left over";
  coptgetloadpath(path);
  EXPECT_STREQ(path, "");
  coptsetloadpath("/some/where");
  unsigned char bounded[OPTXV_TEXT_SIZE];
  optgetloadpath(bounded);
  EXPECT_EQ(std::string(bounded + 1, bounded + 1 + bounded[0]), "/some/where");
  optsetloadpath(reinterpret_cast<const unsigned char*>("\1x"));
  coptgetloadpath(path);
  EXPECT_STREQ(path, "x");
}

TEST(Library, SomeFunctionsNeedNoHandle) {
  EXPECT_EQ(call(&optgettypename, nullptr, {0}), (values{1, "integer"}));
  EXPECT_EQ(call(&coptgetconstname, nullptr, {1, 0}), (values{1, "optDataNone"}));
  const values version = call(&coptversion, nullptr, {});
  EXPECT_EQ(std::get<std::string>(version[0]).size(), 78U);
  EXPECT_EQ(std::get<std::string>(version[0]).substr(0, 6), "optxv ");
}

TEST(Library, NewObject) {
  void* handle = nullptr;
  xcreate(&handle);
  EXPECT_EQ(optcount(handle), 0);
  EXPECT_EQ(opteolonlyset(handle, 0), 1);
  EXPECT_EQ(opteolonlyset(handle, 5), 0);
  EXPECT_EQ(opteolonlyset(handle, 1), 1);
  EXPECT_EQ(optrecentenabled(handle), 1);
  EXPECT_EQ(call(&coptdefinitionfile, handle, {}), values{""});
  xfree(&handle);
}

}  // namespace
