// The header for C++17, through the built library: what a program gets from the example definition,
// and what its own faults throw.

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "optxv/optxv.hpp"
#include "support/scratchfolder.h"

namespace {

using texts = std::vector<std::string>;
const std::string definition = OPTXV_SOURCE_DIR "/examples/solver.def";

optxv::options solver() {
  return optxv::options::from_file(definition);
}

/// What is set, as a program would write it for people: numbers and texts by their types.
texts shown(const optxv::options& options) {
  texts all;
  for (const optxv::option& each : options.table())
    if (each.defined != 0 && each.data != optxv_data_list)
      all.push_back(std::string(each.name) + " " + options.shown(each.number));
  return all;
}

texts shown(const optxv::sequence<optxv::message>& messages) {
  texts all;
  for (const optxv::message& each : messages) all.push_back(each.shown);
  return all;
}

enum class printlevel { nothing, result, lines, everything = 9 };

TEST(Get, EveryTypeByNameAndByNumber) {
  optxv::options options = solver();
  ASSERT_TRUE(options.read_text("solver.opt",
                                "time_limit 12.5\n"
                                "threads 8\n"
                                "presolve no\n"
                                "log_file my log\n"
                                "print_level 9\n"
                                "scale_range 0.5 2\n"
                                "read_path /models\n"
                                "read_path /models/last year\n"));
  EXPECT_EQ(options.get<double>("TIME_LIMIT"), 12.5);
  EXPECT_EQ(options.get<double>("threads"), 8);
  EXPECT_EQ(options.get<std::int32_t>(options.find("threads").value()), 8);
  EXPECT_FALSE(options.get<bool>("presolve"));
  EXPECT_EQ(options.get<printlevel>("print_level"), printlevel::everything);
  EXPECT_EQ(options.get<std::string>("log_file"), "my log");
  EXPECT_EQ(options.get<std::string_view>("method"), "auto");
  EXPECT_EQ((options.get<std::pair<double, double>>("scale_range")), std::pair(0.5, 2.0));
  EXPECT_EQ(options.get<texts>("read_path"), (texts{"/models", "/models/last year"}));
  const auto list = options.list("read_path");
  EXPECT_EQ((std::vector<std::string_view>(list.begin(), list.end())),
            (std::vector<std::string_view>{"/models", "/models/last year"}));
  EXPECT_EQ(options.get<std::optional<std::int32_t>>("threads"), 8);
  EXPECT_EQ(options.get<std::optional<double>>("optimality_tol"), std::nullopt);
  EXPECT_EQ(options.get<std::optional<texts>>("read_path").value().size(), 2U);
  options.reset("read_path");
  EXPECT_EQ(options.get<std::optional<texts>>("read_path"), std::nullopt);
  EXPECT_EQ(options.find("nothing"), std::nullopt);
}

TEST(Get, LooksUpTheBytesOfAViewAlone) {
  const optxv::options options = solver();
  EXPECT_EQ(options.get<std::int32_t>(std::string_view("threads_of_all", 7)), 1);
}

struct fault {
  const char* name;
  std::function<void(optxv::options&)> call;
  std::int32_t status;
  std::string text;
};

TEST(Faults, OfTheProgramThrowAndNameTheOption) {
  const std::vector<fault> rows = {
      {"an unknown name", [](auto& on) { on.template get<double>("time_limt"); }, optxv_unknown,
       "there is no option \"time_limt\"; near is \"time_limit\""},
      {"a name like none", [](auto& on) { on.reset("zzzzzzzzzz"); }, optxv_unknown,
       "there is no option \"zzzzzzzzzz\""},
      {"a bad number", [](auto& on) { on.template get<double>(99); }, optxv_unknown,
       "there is no option 99"},
      {"a bad number of a list", [](auto& on) { on.list(0); }, optxv_unknown,
       "there is no option 0"},
      {"where a bad number is from", [](auto& on) { on.where(99); }, optxv_unknown,
       "there is no option 99"},
      {"a text as a number", [](auto& on) { on.template get<std::int32_t>("method"); },
       optxv_wrong_kind, "option \"method\""},
      {"one value as two",
       [](auto& on) { on.template get<std::pair<double, double>>("time_limit"); }, optxv_wrong_kind,
       "option \"time_limit\""},
      {"a text as a list", [](auto& on) { on.template get<texts>("log_file"); }, optxv_wrong_kind,
       "option \"log_file\""},
      {"a number set as a text", [](auto& on) { on.set("threads", "4"); }, optxv_wrong_kind,
       "option \"threads\""},
      {"a value out of bounds", [](auto& on) { on.set("threads", 65); }, optxv_refused,
       "*** Value Error Integer range error for option \"threads\" saw \"65\"\n"
       "*** Value Error    Valid range is 1 to 64"},
      {"a text too long", [](auto& on) { on.set("log_file", std::string(255, 'x')); },
       optxv_too_long, "option \"log_file\""},
      {"another one's snapshot", [](auto& on) { on.restore(solver().take_snapshot()); },
       optxv_other_table, "snapshot"},
      {"a folder that is not there", [](auto& on) { on.write("/nowhere/solver.opt"); }, ENOENT,
       "/nowhere/solver.opt"},
      {"a definition that is not there",
       [](auto&) { optxv::options::from_file("/nowhere/solver.def"); }, ENOENT,
       "*** Definition Error Cannot open option file"},
      {"a definition with a fault",
       [](auto&) { optxv::options::from_text("a integer x\n", "mine.def"); }, optxv_refused,
       "mine.def:\n*** Definition Error line 1: "},
  };
  for (const fault& row : rows) {
    SCOPED_TRACE(row.name);
    optxv::options options = solver();
    try {
      row.call(options);
      ADD_FAILURE() << "nothing is thrown";
    } catch (const optxv::error& failure) {
      EXPECT_EQ(failure.status(), row.status);
      EXPECT_NE(std::string_view(failure.what()).find(row.text), std::string_view::npos)
          << failure.what();
    }
    EXPECT_EQ(shown(options), texts());
  }
}

struct found {
  const char* text;
  std::int32_t errors, warnings;
};

TEST(Read, SaysWhatIsFoundInItAlone) {
  const std::vector<found> rows = {
      {"threads 8\n", 0, 0},
      {"threads 65\nthread 4\n", 2, 0},  // the range adds to the first, and is no fault of its own
      {"iterlim 5\nreslim 5\n", 0, 1},
      {"say hello\n", 1, 0},
  };
  optxv::options options = solver();
  for (const found& row : rows) {
    const optxv::read_result result = options.read_text("solver.opt", row.text);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, row.errors) << row.text;
    EXPECT_EQ(result.warnings, row.warnings) << row.text;
    EXPECT_EQ(static_cast<bool>(result), row.errors == 0);
  }
  EXPECT_EQ(options.faults().errors, 3);
  EXPECT_EQ(options.faults().warnings, 1);
  options.clear_messages();
  EXPECT_EQ(options.read("/nowhere/solver.opt").status, ENOENT);
  EXPECT_EQ(options.faults().errors, 1);
}

TEST(Read, IsNotGoodWhereTheQueueIsFull) {
  optxv::options options = solver();
  for (int i = 0; i <= 5000; i++) options.add_message("a message");
  EXPECT_FALSE(options.read_line("threads 65"));
  options.clear_messages();
  EXPECT_TRUE(options.read_line("threads 64"));
}

TEST(Read, ArgumentsLeaveTheirPlacesAndTellTheNearest) {
  optxv::options options = solver();
  std::string words[] = {"solver", "--threads=4", "model.txt", "--methd", "dual", "--presolve"};
  std::vector<char*> argv;
  for (std::string& each : words) argv.push_back(each.data());
  argv.push_back(nullptr);
  int argc = 6;
  const optxv::read_result result = options.read_arguments(argc, argv.data());
  EXPECT_EQ(result.errors, 1);
  EXPECT_EQ(shown(options), (texts{"threads 4", "presolve 1"}));
  ASSERT_EQ(argc, 3);
  EXPECT_STREQ(argv[1], "model.txt");
  const optxv::message told = options.messages()[0];
  EXPECT_EQ(told.fault, optxv_fault_unknown_option);
  EXPECT_EQ(told.about, "methd");
  EXPECT_EQ(told.place.file, "argument 3");
  EXPECT_EQ(options.nearest(told), (std::vector<std::string_view>{"method"}));
}

TEST(Set, TakesWhatFitsAndReplacesLists) {
  optxv::options options = solver();
  options.set("time_limit", 60);
  options.set("threads", std::uint8_t{4});
  options.set("presolve", false);
  options.set("log_file", "a \"quoted\" name");
  options.set("method", std::string("dual"));
  options.set("print_level", printlevel::result);
  options.set("scale_range", std::pair(0.5, 8.0));
  options.set("read_path", texts{"/old"});
  options.set("read_path", texts{"/models", "/models/last year"});
  options.set("optimality_tol", std::optional(1e-7));
  options.set("threads", std::optional<std::int32_t>());
  EXPECT_EQ(options.get<double>("time_limit"), 60);
  EXPECT_EQ(options.get<std::string>("log_file"), "a \"quoted\" name");
  EXPECT_EQ((options.get<std::pair<double, double>>("scale_range")), std::pair(0.5, 8.0));
  EXPECT_THROW(options.set("read_path", texts{"/new", "a \"quote\""}), optxv::error);
  EXPECT_EQ(options.get<texts>("read_path"), (texts{"/models", "/models/last year"}));
  EXPECT_TRUE(options.is_set("print_level"));
  EXPECT_FALSE(options.is_set("threads"));
  EXPECT_EQ(options.where("method").road, optxv_road_call);
  EXPECT_FALSE(options.parse("threads", "many"));
  EXPECT_TRUE(options.parse("presolve", "yes"));
  EXPECT_TRUE(options.get<bool>("presolve"));
}

TEST(Set, TellsWhatWasRefusedThoughTheQueueIsFull) {
  optxv::options options = solver();
  for (int i = 0; i <= 5000; i++) options.add_message("a message");
  EXPECT_THROW(options.set("threads", 65), optxv::error);
  options.set("threads", 64);
  EXPECT_EQ(options.get<std::int32_t>("threads"), 64);
}

TEST(Snapshot, OutlivesItsOptionsAndGoesBackAnyNumberOfTimes) {
  auto options = std::make_optional(solver());
  options->read_line("threads 8");
  const optxv::snapshot before = options->take_snapshot();
  for (const std::int32_t threads : {16, 32}) {
    options->set("threads", threads);
    options->set("method", "dual");
    options->restore(before);
    EXPECT_EQ(shown(*options), (texts{"threads 8"}));
  }
  EXPECT_EQ(options->where("threads").place.column, 9);
  options.reset();
}

TEST(Table, IsPlainStructs) {
  const optxv::options options = solver();
  const optxv::option limit = options.describe("reslim");
  EXPECT_EQ(limit.name, "time_limit");
  EXPECT_EQ(limit.reference, 101);
  EXPECT_EQ(limit.default_value, 3600);
  EXPECT_EQ(limit.group, 1);
  EXPECT_EQ(limit.help, "Time limit in seconds");
  EXPECT_EQ(options.help_lines("time_limit")[1], "of one iteration.");
  EXPECT_EQ(options.table()[0].name, "Help");
  EXPECT_EQ(options.describe("threads").high, 64);
  EXPECT_EQ(options.describe("threads").default_value, 1);
  EXPECT_EQ(options.describe("log_file").default_text, "solver run.log");
  EXPECT_EQ(options.items("print_level")[3].integer, 9);
  EXPECT_EQ(options.items("method")[1].help, "Primal simplex");
  EXPECT_EQ(options.items("all_cuts")[1].option, options.find("gomory_cuts"));
  EXPECT_TRUE(options.items("threads").empty());
  texts groups, synonyms;
  for (const optxv::group& each : options.groups()) groups.emplace_back(each.name);
  for (const optxv::synonym& each : options.synonyms())
    synonyms.push_back(std::string(each.name) + " " +
                       std::string(options.describe(each.option).name));
  EXPECT_EQ(groups, (texts{"limits", "numerics", "search", "output", "control"}));
  EXPECT_EQ(synonyms, (texts{"iterlim iteration_limit", "reslim time_limit"}));
  EXPECT_EQ(options.nearest("tollerances").at(0), "tolerances");
}

TEST(Entries, ArePlainStructs) {
  optxv::options options = solver();
  options.read_text("solver.opt",
                    "x.scale('jan', *) 0.5\n"
                    "indic balance(i,'oslo')$open(i) = yes\n"
                    "x.scale('feb' 2\n");
  ASSERT_EQ(options.dot_options().size(), 1U);
  const optxv::dot_option dot = options.dot_options()[0];
  EXPECT_EQ(dot.symbol, "x");
  EXPECT_EQ(dot.option, options.find(".scale"));
  EXPECT_EQ(dot.labels, (texts{"jan", "*"}));
  EXPECT_EQ(dot.value, 0.5);
  EXPECT_EQ(options.dropped_dot_options(), 1);
  ASSERT_EQ(options.indicators().size(), 1U);
  const optxv::indicator tie = options.indicators()[0];
  EXPECT_EQ(tie.equation_labels, (texts{"i", "'oslo'"}));
  EXPECT_EQ(tie.variable, "open");
  EXPECT_EQ(tie.mark, 1);
}

TEST(Messages, CarryTheirFacts) {
  optxv::options options = solver();
  options.read_text("my.opt", "threads 65\n");
  const auto messages = options.messages();
  ASSERT_EQ(messages.size(), 4U);
  const optxv::message told = messages[1];
  EXPECT_EQ(told.kind, optxv_said_value_error);
  EXPECT_EQ(told.fault, optxv_fault_range);
  EXPECT_EQ(told.option, options.find("threads"));
  EXPECT_EQ(told.seen, "65");
  EXPECT_EQ(told.place.file, "my.opt");
  EXPECT_EQ(told.place.column, 9);
  EXPECT_TRUE(messages[2].detail);
  EXPECT_EQ(told.shown,
            "*** Value Error line 1: Integer range error for option \"threads\" saw \"65\"");
  options.clear_messages();
  EXPECT_THROW(messages[1], optxv::error);
  options.show_help("threads");
  EXPECT_NE(shown(options.messages()), texts());
}

TEST(Written, ComesBack) {
  const optxv::test::scratchfolder folder;
  optxv::options options = solver();
  options.set("threads", 8);
  options.set("log_file", "my log");
  options.write(folder / "solver.opt");
  EXPECT_EQ(folder.get("solver.opt"), options.to_text());
  optxv::options again = solver();
  EXPECT_TRUE(again.read(folder / "solver.opt"));
  EXPECT_EQ(shown(again), (texts{"threads 8", "log_file my log"}));
}

TEST(Ownership, MovesWithTheObject) {
  optxv::options first = solver();
  const auto table = first.table();
  optxv::options second = std::move(first);
  second.set("threads", 8);
  EXPECT_EQ(table[0].name, "Help");
  first = optxv::options();
  EXPECT_EQ(first.find("threads"), std::nullopt);
  std::swap(first, second);
  EXPECT_EQ(shown(first), (texts{"threads 8"}));
  const optxv::options adopted = optxv::options::adopt(first.release());
  EXPECT_EQ(shown(adopted), (texts{"threads 8"}));
}

}  // namespace
