#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "optxv/embedding.h"
#include "support/optiontable.h"

namespace optxv {
namespace {

const std::string definition = std::string(sampledefinition) + R"(pair integer.TWO 10 1 0 9 1 1 Pair
perhaps integer.OPT 11 4 0 9 1 1 Perhaps
say immediate Message 1 1 Say
)";

/// Arguments as a program has them: cut at blanks; "_" at the beginning of one is a blank in it.
class programarguments {
 public:
  explicit programarguments(const std::string& words) {
    std::istringstream in("program " + words);
    for (std::string word; in >> word;) texts_.push_back(replaced(word, "~", " "));
    for (std::string& text : texts_)
      vector_.push_back(text == "''" ? texts_[0].data() + 7 : text.data());
    vector_.push_back(nullptr);
    count_ = static_cast<int>(texts_.size());
  }
  std::int32_t read(tzmaoptions& options, std::uint32_t flags = 0) {
    return optxv_read_arguments(&options, &count_, vector_.data(), flags);
  }
  std::string left() const {
    lines all(vector_.begin() + 1, vector_.begin() + count_);
    EXPECT_EQ(vector_[static_cast<std::size_t>(count_)], nullptr);
    return joined(all, " ");
  }

 private:
  lines texts_;
  std::vector<char*> vector_;
  int count_ = 0;
};

// What is given, what stays, what is set, and the messages.
const char* const rows =
    R"(a -v - x=y.z.w.1! --2x in.dat >> a -v - --2x in.dat >> >> E argument 4: Unknown option 'x'
--steplim=5 in.dat --tol 1e-3  >> in.dat >> steplim=5 tol=0.001
steplim=5 --STEPLIM 6 --stplim=7 >> >> steplim=7 >> W argument 4: deprecated synonym 'stplim'; Use steplim
--print-level=0 --print_level 1 >> >> print_level=1
--logname=a~#~!~b >> >> logname=a # ! b
--logname "a~b" >> >> logname=a b
--logname '' in.dat >> in.dat >> logname=
--logname= >> >> >> E argument 1: Value expected for key 'logname'
--logname a"b >> >> >> V argument 2: Bad double-quote in value
--steplim -- 5 >> 5 >> >> E argument 1: Value expected for key 'steplim'
--steplim --tol=1 >> >> tol=1 >> E argument 1: Value expected for key 'steplim'
--steplim -5 >> >> >> V argument 2: Integer range error for option 'steplim' saw '-5' | \
V argument 2:    Valid range is 0 to maxint
--verbose x --verbose=1 >> x >> verbose=0 >> E argument 3: Remainder of line ignored
--scale x >> x >> scale=1
--scale off x >> x >> scale=0
--scale=off --scale >> >> scale=1
--perhaps 7 >> 7 >> perhaps=4
--perhaps=7 >> >> perhaps=7
--pair 2 3 4 >> 4 >> pair=2/3
--pair 2 --scale >> >> scale=1 pair=2/2
--pair=2~3 >> >> pair=2/3
--pair 2 x >> >> pair=2 >> V argument 3: Integer expected, for option 'pair' saw 'x'
--fast 1 --paths=/a~b --paths /c >> >> scale=1 paths=[/a b|/c]
--say=well~done --say again >> >> >> E argument 1: well done | E argument 3: again
-- --steplim=5 x >> --steplim=5 x
--setplim 5 x >> 5 x >> >> E argument 1: Unknown option 'setplim' | E argument 1:    Did you mean 'steplim'?
x.scale=5 >> >> >> E argument 1: Unknown option 'x.scale' | E argument 1:    Did you mean 'scale'?
--rf=/no/such >> >> >> E argument 1: Cannot open parameter file '/no/such' | \
E argument 1: Error code = 2; No such file or directory
)";

TEST(Arguments, AreTakenAsParameterTextIs) {
  for (const lines& row : rowsof(rows)) {
    optiontable table(replaced(definition, "printlevel", "print_level"));
    programarguments given(row[0]);
    EXPECT_EQ(given.read(*table), optxv_ok);
    EXPECT_EQ(joined({given.left(), table.state(), table.brief()}, " >> "),
              joined({row[1], row[2], row[3]}, " >> "))
        << row[0];
  }
}

TEST(Arguments, ThatAreUnknownMayStay) {
  optiontable table(definition);
  programarguments given("--other --steplim 7 --nosuch=1 x=1");
  EXPECT_EQ(given.read(*table, optxv_arguments_keep_unknown), optxv_ok);
  EXPECT_EQ(given.left() + table.state() + table.brief(), "--other --nosuch=1 x=1steplim=7");
  EXPECT_EQ(given.read(*table, 2), optxv_bad_argument);
}

std::string placed(const optxv_place& place) {
  return std::string(place.file) + " " + std::to_string(place.line) + ":" +
         std::to_string(place.column) + "+" + std::to_string(place.length);
}

TEST(Arguments, ArePlacesOfTheirOwn) {
  optiontable table(definition);
  std::string told;
  optxv_listener calls = {};
  calls.size = sizeof calls;
  calls.context = &told;
  const auto add = [](void* to, const std::string& text) {
    *static_cast<std::string*>(to) += text + "\n";
  };
  static const auto append = add;
  calls.entered = [](void* to, const optxv_source* e) { append(to, std::string("in ") + e->name); };
  calls.left = [](void* to, const optxv_source* e, std::int32_t) {
    append(to, std::string("out ") + e->name);
  };
  calls.key = [](void* to, const optxv_key* e) { append(to, "key " + placed(e->place)); };
  calls.value = [](void* to, const optxv_value* e) { append(to, "value " + placed(e->place)); };
  calls.stored = [](void* to, const optxv_store* e) { append(to, "stored " + placed(e->place)); };
  calls.message = [](void* to, const optxv_message* e) {
    append(to, "message " + placed(e->place));
  };
  optxv_listen(&*table, &calls);
  programarguments given("--steplim=\"5\" --tol 7");
  given.read(*table);
  EXPECT_EQ(told, R"(in argument 1
key argument 1 1:3+7
value argument 1 1:12+1
stored argument 1 1:12+1
out argument 1
in argument 2
key argument 2 1:3+3
out argument 2
in argument 3
value argument 3 1:1+1
message argument 3 1:1+1
message argument 3 1:1+1
out argument 3
)");
  optxv_place place;
  std::int32_t road = 0;
  ASSERT_EQ(optxv_value_place(&*table, table.number("steplim"), &place, &road, nullptr), 1);
  EXPECT_EQ(placed(place), "argument 1 1:12+1");
  ASSERT_EQ(optxv_message_place(&*table, 1, &place), 1);
  EXPECT_EQ(placed(place), "argument 3 1:1+1");
  optxv_message message;
  ASSERT_EQ(optxv_message_info(&*table, 1, &message), optxv_ok);
  EXPECT_EQ(std::string(message.text.bytes, message.text.size),
            "Double out of range for option \"tol\" saw \"7\"");
}

}  // namespace
}  // namespace optxv
