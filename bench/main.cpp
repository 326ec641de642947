// The benchmarks: the shared library, through its C interface, compared with the yardstick.
//
//   optxv_bench [--benchmark_filter=...]     times, then the table of targets
//   optxv_bench --read <options> <times>     reads one parameter file many times; for callgrind
//   optxv_bench --listen <options> <times>   the same with a listener that has no function
//   optxv_bench --hear <options> <times>     the same with one whose functions do nothing
//   optxv_bench --define <options> <times>   makes a table from its definition many times
//
// Everything is done by both with the same files; nothing is timed before both agree on every
// value.

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <random>
#include <string_view>

#include "agreement.h"
#include "allocations.h"
#include "generator.h"
#include "optxv/optxv.h"
#include "optxv/optxv.hpp"
#include "report.h"
#include "scratch.h"
#include "units.h"
#include "yardstick.h"

namespace optxv::bench {
namespace {

constexpr std::array<std::size_t, 3> sizes = {100, 1000, 2700};
constexpr std::size_t million = 1000000, queuelimit = 5000;
constexpr std::uint32_t seed = tableseed;

/// The library's side of a comparison, with a definition that it takes without a word.
options libraryof(const std::string& definition) {
  options library = options::from_file(definition);
  if (!library.messages().empty())
    throw std::runtime_error("the library does not take the definition");
  return library;
}

/// One size of table: its files and both readers, the definition read.
struct table {
  table(const scratch& folder, std::size_t count)
      : name(std::to_string(count)),
        made(generatetable(count, seed)),
        definition(folder.file(name + ".def", definitiontext(made))),
        parameters(folder.file(name + ".opt", parametertext(made, count, seed))),
        library(libraryof(definition)) {
    yard.readdefinition(definition.c_str());
  }

  std::string name;
  std::vector<generatedoption> made;
  std::string definition, parameters;
  options library;
  yardstick yard;
};

void demand(bool condition, const std::string& what) {
  if (!condition) throw std::runtime_error(what);
}

void demandagreement(table& on) {
  const std::string found = differences(on.library, on.yard);
  demand(found.empty(), "library and yardstick differ in:\n" + found);
}

/// Both agree on the definition, on good and on faulty text, and on what they write.
void checkagreement(const scratch& folder, table& on) {
  demandagreement(on);
  on.library.read(on.parameters);
  on.yard.readparameters(on.parameters.c_str());
  demand(optMessageCount(on.library.handle()) == 0 && on.yard.errors() == 0, "faults in good text");
  demandagreement(on);
  const std::string byus = folder.path("library.out"), byyard = folder.path("yardstick.out");
  coptWriteParameterFile(on.library.handle(), byus.c_str());
  on.yard.write(byyard.c_str());
  demand(content(byus) == content(byyard), "library and yardstick write different files");
  const std::string faulty =
      folder.file(on.name + "-faulty.opt", faultytext(on.made, on.made.size() + 1000, seed));
  on.library.read(faulty);
  on.yard.readparameters(faulty.c_str());
  demand(on.yard.errors() == on.made.size() + 1000, "the yardstick takes faulty text");
  optClearMessages(on.library.handle());
  on.yard.clearerrors();
  demandagreement(on);
}

/// Runs one round after the other.
void measure(const std::string& name, std::function<void()> round) {
  benchmark::RegisterBenchmark(name.c_str(), [round](benchmark::State& state) {
    for (auto _ : state) round();
  });
}

/// As measure, with a step after each round that is not timed.
void measure(const std::string& name, std::function<void()> round, std::function<void()> tidy) {
  benchmark::RegisterBenchmark(name.c_str(), [round, tidy](benchmark::State& state) {
    for (auto _ : state) {
      round();
      state.PauseTiming();
      tidy();
      state.ResumeTiming();
    }
  });
}

void registerreading(table& on) {
  measure("read/" + on.name + "/library", [&on] { on.library.read(on.parameters); });
  measure("read/" + on.name + "/yardstick",
          [&on] { on.yard.readparameters(on.parameters.c_str()); });
  measure("define/" + on.name + "/library", [&on] { libraryof(on.definition); });
  measure("define/" + on.name + "/yardstick", [&on] {
    yardstick made;
    made.readdefinition(on.definition.c_str());
  });
}

/// A file of a million lines, written piece by piece: the text is never in memory as a whole, which
/// would raise the resident peak that is measured later.
template <class Text>
std::string millionlines(const scratch& folder, const std::string& name, Text text,
                         const table& on) {
  std::uint32_t piece = 0;
  for (std::size_t lines = 0, size = 0; lines < million; lines += size) {
    size = std::min(on.made.size(), million - lines);
    folder.append(name, text(on.made, size, seed + piece++));
  }
  return folder.path(name);
}

void registermillion(table& on, const std::string& good, const std::string& faulty) {
  measure("million/good/library", [&on, good] { on.library.read(good); });
  measure("million/good/yardstick", [&on, good] { on.yard.readparameters(good.c_str()); });
  measure(
      "million/faulty/library", [&on, faulty] { on.library.read(faulty); },
      [&on] { optClearMessages(on.library.handle()); });
}

/// The positions of the integer options in random order.
std::vector<std::int32_t> integerpositions(const table& on) {
  std::vector<std::int32_t> positions;
  for (std::size_t i = 0; i < on.made.size(); ++i)
    if (on.made[i].isinteger) positions.push_back(static_cast<std::int32_t>(i));
  std::shuffle(positions.begin(), positions.end(), std::mt19937(seed));
  return positions;
}

void registeraccess(table& on) {
  const auto positions = integerpositions(on);
  measure("get/number/library", [&on, positions] {
    for (const std::int32_t position : positions) {
      std::int32_t value;
      benchmark::DoNotOptimize(optGetIntNr(on.library.handle(), position + 2, &value));
      benchmark::DoNotOptimize(value);
    }
  });
  measure("get/number/yardstick", [&on, positions] {
    for (const std::int32_t position : positions) {
      std::int32_t value;
      benchmark::DoNotOptimize(on.yard.getinteger(position, value));
      benchmark::DoNotOptimize(value);
    }
  });
  measure("get/number/call", [&on, positions] {
    for (const std::int32_t position : positions) {
      std::int32_t value;
      benchmark::DoNotOptimize(optxv_get_integer_nr(on.library.handle(), position + 2, 1, &value));
      benchmark::DoNotOptimize(value);
    }
  });
  measure("get/number/hpp", [&on, positions] {
    for (const std::int32_t position : positions)
      benchmark::DoNotOptimize(on.library.get<std::int32_t>(position + 2));
  });
  measure("get/name/library", [&on, positions] {
    for (const std::int32_t position : positions) {
      std::int32_t value, number, refnr;
      const char* name = on.made[static_cast<std::size_t>(position)].name.c_str();
      benchmark::DoNotOptimize(coptFindStr(on.library.handle(), name, &number, &refnr));
      benchmark::DoNotOptimize(optGetIntNr(on.library.handle(), number, &value));
      benchmark::DoNotOptimize(value);
    }
  });
  measure("get/name/yardstick", [&on, positions] {
    for (const std::int32_t position : positions) {
      std::int32_t value;
      const char* name = on.made[static_cast<std::size_t>(position)].name.c_str();
      benchmark::DoNotOptimize(on.yard.getinteger(on.yard.find(name), value));
      benchmark::DoNotOptimize(value);
    }
  });
}

/// Lookups by name under a rule, in a table of that size, which is made under the rule in force
/// until then, so that names which are alike under the rule stay in it.
void registerlookup(const scratch& folder, const std::string& rule, std::size_t count) {
  const auto made = generatetable(count, seed);
  const std::string name = rule + std::to_string(count);
  const auto library = std::make_shared<options>(
      libraryof(folder.file(name + ".def", definitiontext(made) + rule + " lookup\n")));
  std::vector<std::string> names;
  for (const generatedoption& option : made) names.push_back(option.name);
  std::shuffle(names.begin(), names.end(), std::mt19937(seed));
  names.resize(sizes.back());
  measure("lookup/" + rule + "/" + std::to_string(count), [library, names] {
    for (const std::string& each : names) {
      std::int32_t number, refnr;
      benchmark::DoNotOptimize(coptFindStr(library->handle(), each.c_str(), &number, &refnr));
    }
  });
}

void registersetting(table& on, options& chatty) {
  const auto positions = integerpositions(on);
  const auto setall = [positions](const options& into) {
    for (const std::int32_t position : positions)
      benchmark::DoNotOptimize(optSetIntNr(into.handle(), position + 2, 20));
  };
  for (std::size_t i = 0; i < queuelimit; ++i) coptAddMessage(chatty.handle(), "a message");
  measure("set/quiet", [&on, setall] { setall(on.library); });
  measure("set/messages", [&chatty, setall] { setall(chatty); });
}

void registerwriting(table& on, const std::string& file) {
  measure("write/library",
          [&on, file] { coptWriteParameterFile(on.library.handle(), file.c_str()); });
  measure("write/yardstick", [&on, file] { on.yard.write(file.c_str()); });
}

void registerentries(options& into, const std::string& plain, const std::string& dotted) {
  const auto tidy = [&into] { optResetAllRecent(into.handle()); };
  measure(
      "entry/plain", [&into, plain] { into.read(plain); }, tidy);
  measure(
      "entry/dot", [&into, dotted] { into.read(dotted); }, tidy);
}

/// What one read of a file asks of the heap once everything it sets has been set before.
heapcount heapofread(options& into, const std::string& file) {
  into.read(file);
  const heapcount before = heapnow();
  clearpeak();
  into.read(file);
  const heapcount after = heapnow();
  return {after.calls - before.calls, after.bytes - before.bytes, after.peak - before.bytes};
}

/// What the heap holds more while the made thing exists.
template <class Make>
heapcount heapof(Make make) {
  const heapcount before = heapnow();
  const auto made = make();
  const heapcount after = heapnow();
  return {after.calls - before.calls, after.bytes - before.bytes, 0};
}

void printheap(const char* whose, const heapcount& heap, const table& on) {
  const auto count = static_cast<double>(on.made.size());
  std::printf("a table of %s, %s: %.0f bytes and %.1f blocks per option\n", on.name.c_str(), whose,
              static_cast<double>(heap.bytes) / count, static_cast<double>(heap.calls) / count);
}

/// What the places cost that a table keeps of its values, once each number of it has one.
figure originmemory(const table& on, const std::string& numbers) {
  options fresh = libraryof(on.definition);
  const heapcount before = heapnow();
  fresh.read(numbers);
  const heapcount after = heapnow();
  return {"places of the values of a table of 2,700, KiB",
          static_cast<double>(after.bytes - before.bytes) / 1024,
          {64}};
}

figure tablememory(const table& on) {
  const heapcount library =
      heapof([&] { return std::make_unique<options>(libraryof(on.definition)); });
  const heapcount yard = heapof([&] {
    auto made = std::make_unique<yardstick>();
    made->readdefinition(on.definition.c_str());
    return made;
  });
  printheap("library", library, on);
  printheap("yardstick", yard, on);
  return {"memory of a table of 2,700, to the yardstick's",
          static_cast<double>(library.bytes) / static_cast<double>(yard.bytes),
          {1.5, 1.2}};
}

/// The figures that are counted. The file of a million lines is read here for the first time.
std::vector<figure> counted(const scratch& folder, table& on, const std::string& good) {
  std::vector<figure> figures;
  const auto numeric = numericpart(on.made);
  const std::string all = folder.file("all.opt", parametertext(numeric, numeric.size(), seed));
  const std::string half =
      folder.file("half.opt", parametertext(numeric, numeric.size() / 2, seed));
  const heapcount small = heapofread(on.library, half), full = heapofread(on.library, all);
  const std::size_t resident = residentpeak();
  const heapcount huge = heapofread(on.library, good);
  std::printf("a second read of %zu numeric lines: %zu blocks, at most %zu bytes at once\n",
              numeric.size(), full.calls, full.peak);
  const auto lines = static_cast<double>(numeric.size() - numeric.size() / 2);
  figures.push_back({"blocks from the heap per numeric line, second read",
                     (static_cast<double>(full.calls) - static_cast<double>(small.calls)) / lines,
                     {0}});
  figures.push_back({"growth of the heap peak from 2,700 to 1,000,000 lines, KiB",
                     (static_cast<double>(huge.peak) - static_cast<double>(full.peak)) / 1024,
                     {1}});
  figures.push_back({"growth of the resident peak from 2,700 to 1,000,000 lines, KiB",
                     static_cast<double>(residentpeak() - resident),
                     {256}});
  figures.push_back(tablememory(on));
  figures.push_back(originmemory(on, all));
  return figures;
}

std::vector<target> targets() {
  std::vector<target> rows;
  const auto twins = [&rows](std::string_view what, const std::string& family, bounds held) {
    rows.push_back({what, family + "/library", family + "/yardstick", held});
  };
  twins("parameter lines, table of 100, to the yardstick", "read/100", {3, 1.4});
  twins("parameter lines, table of 1,000, to the yardstick", "read/1000", {3, 1.4});
  twins("parameter lines, table of 2,700, to the yardstick", "read/2700", {3, 1.4});
  twins("1,000,000 parameter lines, to the yardstick", "million/good", {4, 1.4});
  rows.push_back({"1,000,000 faulty lines, to as many good ones",
                  "million/faulty/library",
                  "million/good/library",
                  {3}});
  twins("definition of 100, to the yardstick", "define/100", {4.5, 2});
  twins("definition of 1,000, to the yardstick", "define/1000", {4.5, 2});
  twins("definition of 2,700, to the yardstick", "define/2700", {4.5, 2});
  rows.push_back({"a record of 2,700, to a record of 100",
                  "define/2700/library",
                  "define/100/library",
                  {1.3},
                  100.0 / 2700});
  twins("get by number, to the yardstick", "get/number", {4, 2});
  rows.push_back(
      {"a get through optxv.hpp, to the C call", "get/number/hpp", "get/number/call", {1.1}});
  twins("get by name, to the yardstick", "get/name", {6, 1.2});
  for (const std::string rule : {"Path", "Minos"})
    rows.push_back({rule == "Path" ? "a lookup under Path in a table of 20,000, to one in 2,700"
                                   : "a lookup under Minos in a table of 20,000, to one in 2,700",
                    "lookup/" + rule + "/20000",
                    "lookup/" + rule + "/2700",
                    {2}});
  rows.push_back({"set by number with 5,000 messages, to none", "set/messages", "set/quiet", {2}});
  twins("writing 2,700 options, to a plain buffered write", "write", {4, 1.5});
  rows.push_back(
      {"dot entry with two indices, to a plain entry", "entry/dot", "entry/plain", {2, 1.5}});
  for (const auto& unit : {filltargets(), pooltargets(), heaptargets(), storetargets()})
    rows.insert(rows.end(), unit.begin(), unit.end());
  return rows;
}

int runall(int argc, char** argv) {
  const scratch folder;
  table small(folder, sizes[0]), middle(folder, sizes[1]), large(folder, sizes[2]);
  for (table* on : {&small, &middle, &large}) checkagreement(folder, *on);
  const std::string good = millionlines(folder, "million.opt", parametertext, large);
  const std::vector<figure> figures = counted(folder, large, good);
  const std::string faulty = millionlines(folder, "faults.opt", faultytext, large);

  const std::string withdots = folder.file(
      "dots.def", definitiontext(middle.made) + ".scale double 0 1 0 maxdouble 1 1 Scale factor\n");
  const std::string dots = folder.file("dots.opt", dottext(sizes[1], seed));
  options chatty = libraryof(large.definition), dotted = libraryof(withdots);
  for (table* on : {&small, &middle, &large}) registerreading(*on);
  registermillion(large, good, faulty);
  registeraccess(large);
  for (const char* rule : {"Path", "Minos"})
    for (const std::size_t count : {sizes.back(), std::size_t{20000}})
      registerlookup(folder, rule, count);
  registersetting(large, chatty);
  registerwriting(large, folder.path("written.opt"));
  registerentries(dotted, middle.parameters, dots);
  registerfilling(large.library);
  registerpools();
  registerheap();
  registerstores();

  leasttimes reporter;
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.printtimes();
  reporter.printtargets(targets(), figures);
  return 0;
}

/// A listener that knows every function, and does nothing in any.
optxv_listener hearing() {
  optxv_listener calls = {};
  calls.size = sizeof calls;
  calls.entered = [](void*, const optxv_source*) {};
  calls.left = [](void*, const optxv_source*, std::int32_t) {};
  calls.line = [](void*, const optxv_place*, const optxv_text*) {};
  calls.comment = [](void*, const optxv_place*) {};
  calls.cut = [](void*, const optxv_cut*) {};
  calls.key = [](void*, const optxv_key*) {};
  calls.separator = [](void*, const optxv_place*) {};
  calls.value = [](void*, const optxv_value*) {};
  calls.stored = [](void*, const optxv_store*) {};
  calls.message = [](void*, const optxv_message*) {};
  return calls;
}

void readmany(std::string_view how, std::size_t count, long times) {
  const scratch folder;
  table on(folder, count);
  optxv_listener calls = how == "--hear" ? hearing() : optxv_listener();
  calls.size = sizeof calls;
  if (how != "--read") optxv_listen(on.library.handle(), &calls);
  while (times-- > 0) on.library.read(on.parameters);
  demand(optMessageCount(on.library.handle()) == 0, "faults in good text");
}

void definemany(std::size_t count, long times) {
  const scratch folder;
  const std::string file = folder.file("table.def", definitiontext(generatetable(count, seed)));
  while (times-- > 0) libraryof(file);
}

/// Does the one thing that is to be counted, if the arguments ask for that.
bool runcounted(int argc, char** argv) {
  constexpr std::array<std::string_view, 4> ways = {"--read", "--listen", "--hear", "--define"};
  const std::string_view how = argc == 4 ? argv[1] : "";
  if (std::find(ways.begin(), ways.end(), how) == ways.end()) return false;
  const std::size_t count = std::strtoul(argv[2], nullptr, 10);
  const long times = std::strtol(argv[3], nullptr, 10);
  if (how == "--define")
    definemany(count, times);
  else
    readmany(how, count, times);
  return true;
}

/// The arguments with ours first, so that those of the caller win.
int runwithdefaults(int argc, char** argv) {
  std::vector<std::string> ours = {argv[0], "--benchmark_repetitions=15",
                                   "--benchmark_min_time=0.02",
                                   "--benchmark_enable_random_interleaving=true"};
  std::vector<char*> all;
  for (std::string& argument : ours) all.push_back(argument.data());
  all.insert(all.end(), argv + 1, argv + argc);
  all.push_back(nullptr);
  return runall(static_cast<int>(all.size()) - 1, all.data());
}

}  // namespace
}  // namespace optxv::bench

int main(int argc, char** argv) try {
  return optxv::bench::runcounted(argc, argv) ? 0 : optxv::bench::runwithdefaults(argc, argv);
} catch (const std::exception& failure) {
  std::fprintf(stderr, "optxv_bench: %s\n", failure.what());
  return 1;
}
