// The command, in process: words as a shell hands them over, over files in memory. The first three
// bytes choose the subcommand, its flags and the definition; the rest is the text, of a definition,
// of parameters, or of what else a subcommand reads. Whatever the text is, the status is 0, 1 or 2,
// what is said to be JSON is JSON, and what the command makes of a text holds beside the text.
#include <array>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/commandline.h"
#include "grammar.h"
#include "richdefinition.h"
#include "support.h"

namespace optxv::fuzz {
namespace {

using words = std::vector<std::string>;

// --- Running the command

struct result {
  int status = 0;
  std::string output, errors;
  bool good() const { return status == 0 && errors.empty(); }
};

/// Standard output and standard error, in memory. Standard error is only what the C library has for
/// it: the descriptor stays, for the fuzzer's own words.
class streams {
 public:
  streams() {
    demand(::dup2(::open(output_.path().c_str(), O_RDWR | O_APPEND), STDOUT_FILENO) >= 0, "dup2");
    stderr = std::fopen(errors_.path().c_str(), "a");
    demand(stderr != nullptr, "a stream");
  }
  result run(const words& all) {
    output_.fill("");
    errors_.fill("");
    std::vector<const char*> pointers = {"optxv"};
    for (const std::string& each : all) pointers.push_back(each.c_str());
    result came;
    came.status = command::runcommandline(static_cast<int>(pointers.size()), pointers.data());
    std::fflush(stdout);
    std::fflush(stderr);
    came.output = output_.content();
    came.errors = errors_.content();
    demand(came.status >= 0 && came.status <= 2, "a status is 0, 1 or 2");
    return came;
  }

 private:
  memoryfile output_, errors_;
};

result run(const words& all) {
  static streams into;
  return into.run(all);
}

const std::string& pathof(unsigned number, std::string_view text) {
  static std::array<memoryfile, 5> files;
  files[number].fill(text);
  return files[number].path();
}

/// A file that can be replaced, which one in memory cannot.
class replaceable {
 public:
  replaceable() {
    const std::filesystem::path shared = "/dev/shm";
    const bool has = std::filesystem::is_directory(shared);
    path_ = (has ? shared : std::filesystem::temp_directory_path()) /
            ("optxv-fuzz-" + std::to_string(::getpid()));
  }
  ~replaceable() { std::filesystem::remove(path_); }
  replaceable(const replaceable&) = delete;
  replaceable& operator=(const replaceable&) = delete;

  const std::string& filled(std::string_view text) const {
    std::ofstream(path_, std::ios::binary) << text;
    return path_;
  }

 private:
  std::string path_;
};

words with(words all, const words& more) {
  all.insert(all.end(), more.begin(), more.end());
  return all;
}

void demandjson(const result& of) {
  if (!of.output.empty()) demand(nlohmann::json::accept(of.output), "JSON is JSON");
}

// --- One text, in all ways

/// The flags that a text is run with, and the definition beside it.
struct setting {
  std::uint8_t flags;
  const std::string& definition;
  words reading;  ///< --tokens and --no-bounds
  bool flag(unsigned bit) const { return (flags >> bit & 1) != 0; }
};

using subject = void (*)(const setting& in, const std::string& text);

/// Two texts set the same.
void demandsame(const setting& in, std::string_view one, std::string_view two,
                std::string_view rule) {
  const result came =
      run(with({"diff", in.definition, pathof(3, one), pathof(4, two)}, in.reading));
  demand(came.output.empty() && came.status != 1, rule);
}

void check(const setting& in, const std::string& text) {
  static const std::array<words, 6> forms = {{{},
                                              {"--json"},
                                              {"--format", "sarif"},
                                              {"--format", "github"},
                                              {"--format", "gcc"},
                                              {"--strict", "--max-errors", "3"}}};
  const unsigned which = in.flags >> 2;
  const result came =
      run(with(with({"check", in.definition, pathof(0, text)}, forms[which % 6]), in.reading));
  if (which % 6 == 1 || which % 6 == 2) demandjson(came);
}

void lint(const setting& in, const std::string& text) {
  static const std::array<words, 4> forms = {{{"--all"}, {"--json"}, {"--select", "P,D"}, {}}};
  const unsigned which = in.flags >> 2 & 3;
  const result came =
      run(with(with({"lint", in.definition, pathof(0, text)}, forms[which]), in.reading));
  if (which == 1) demandjson(came);
}

void show(const setting& in, const std::string& text) {
  run(with({"show", in.definition, pathof(0, text), in.flag(2) ? "--all" : "--set"}, in.reading));
  run(with({"show", "--origin", in.definition, pathof(0, text)}, in.reading));
  demandjson(run(with({"show", "--json", "--all", in.definition, pathof(0, text)}, in.reading)));
}

void origin(const setting& in, const std::string& text) {
  run(with({"origin", in.definition, pathof(0, text)}, in.reading));
  run(with({"origin", in.definition, pathof(0, text), "--name", "step_limit"}, in.reading));
  demandjson(run(with({"origin", "--json", in.definition, pathof(0, text)}, in.reading)));
}

/// A text that was laid out is read as before, and is not changed again.
void format(const setting& in, const std::string& text) {
  const words sort = in.flag(2) ? words{"--sort", "group"} : words{};
  const auto laidout = [&](std::string_view each) {
    return run(with(with({"format", in.definition, pathof(1, each)}, in.reading), sort));
  };
  const result once = laidout(text);
  if (once.status == 2) return;
  demand(laidout(once.output).output == once.output, "once is enough");
  demandsame(in, text, once.output, "a text that is laid out reads the same");
  const result check = run(
      with(with({"format", "--check", in.definition, pathof(1, once.output)}, in.reading), sort));
  demand(check.output.empty() && check.status != 2, "and nothing would change");
}

/// What was repaired has nothing more to repair.
void fix(const setting& in, const std::string& text) {
  const words codes = in.flag(2) ? words{"--lint", "P"} : words{};
  static const replaceable place;
  const std::string& file = place.filled(text);
  const auto fixed = [&](const words& more) {
    return run(with(with(with({"fix", in.definition, file}, more), in.reading), codes));
  };
  const result shown = fixed({});
  const result written = fixed({"--write"});
  demand(shown.status == written.status, "what is left is the same");
  if (written.status == 2) return;
  const result again = fixed({});
  demand(again.output.empty(), "a text that was repaired needs no more repair");
  demand(again.status == written.status, "and says the same");
}

void diff(const setting& in, const std::string& text) {
  demandsame(in, text, text, "a text does not differ from itself");
  const std::size_t half = text.find('\n', text.size() / 2);
  const std::string_view front = std::string_view(text).substr(0, half);
  demandjson(
      run(with({"diff", "--json", in.definition, pathof(0, front), pathof(1, text)}, in.reading)));
}

/// What is written without a warning is set as before.
void write(const setting& in, const std::string& text) {
  const std::string& file = pathof(0, text);
  const result written = run(with({"write", in.definition, file}, in.reading));
  if (!written.good()) return;
  const result differs = run({"diff", in.definition, file, pathof(1, written.output)});
  if (in.reading.empty())
    demand(differs.status == 0 && differs.output.empty(), "what is written is what was set");
}

/// There and back.
void convert(const setting& in, const std::string& text) {
  const words all = in.flag(2) ? words{"--all"} : words{};
  const auto tojson = [&](std::string_view each, const words& how) {
    return run(with(with({"convert", in.definition, pathof(0, each), "--to", "json"}, how), all));
  };
  const auto back = [&](std::string_view each) {
    return run(with({"convert", in.definition, pathof(1, each), "--to", "parameters"}, in.reading));
  };
  const result there = tojson(text, in.reading);
  demandjson(there);
  if (there.status != 0) return;
  const result text2 = back(there.output);
  if (text2.status != 0) return;
  const result again = tojson(text2.output, in.reading);
  demand(again.status == 0 && again.output == there.output, "there and back, nothing is lost");
}

/// The text is JSON, good or bad.
void settings(const setting& in, const std::string& text) {
  const result came =
      run(with({"convert", in.definition, pathof(1, text), "--to", "parameters"}, in.reading));
  if (came.status != 0) return;
  demandjson(
      run(with({"convert", in.definition, pathof(0, came.output), "--to", "json"}, in.reading)));
}

// --- Definitions

void definition(const setting& in, const std::string& text) {
  const std::string& file = pathof(0, text);
  static const std::array<words, 12> all = {
      {{"check"},
       {"check", "--json"},
       {"lint", "--all"},
       {"html"},
       {"definition"},
       {"include", "--force"},
       {"help"},
       {"help", "--search", "a"},
       {"show", "--all"},
       {"reference", "--force", "-o", "/dev/stdout", "--markdown"},
       {"reference", "--force", "-o", "/dev/stdout", "--man"},
       {"schema", "--force"}}};
  const words& which = all[in.flags % all.size()];
  words line = {which.front(), file};
  line.insert(line.end(), which.begin() + 1, which.end());
  const result came = run(line);
  if (which.front() == "schema" || which.back() == "--json") demandjson(came);
}

void code(const setting& in, const std::string& text) {
  static constexpr std::array<const char*, 5> languages = {"c", "cpp", "python", "fortran",
                                                           "pascal"};
  words line = {"generate", "--force", pathof(0, text), "--lang",
                languages[in.flags % languages.size()]};
  if (in.flag(7)) line.emplace_back("--embed");
  run(line);
}

/// Long help may be wrapped, which makes other lines of it.
void layout(const setting& in, const std::string& text) {
  const words width = in.flag(2) ? words{"--width", "30"} : words{};
  const auto laidout = [&](std::string_view each) {
    return run(with({"format", "--definitions", pathof(1, each)}, width));
  };
  const result once = laidout(text);
  if (once.status == 2) return;
  demand(laidout(once.output).output == once.output, "once is enough");
  const result same =
      run({"diff", "--json", "--definitions", pathof(0, text), pathof(1, once.output)});
  if (same.output.empty()) return;  // one that has no option
  const auto told = nlohmann::json::parse(same.output);
  for (const auto& each : told["changes"])
    demand(each["code"] == "help-changed", "a definition that is laid out is the same one");
}

/// The old one has the first half of the lines.
void versions(const setting& in, const std::string& text) {
  const std::size_t half = text.find('\n', text.size() / 2);
  const std::string_view front = std::string_view(text).substr(0, half);
  const words form = in.flag(2) ? words{"--json"} : words{};
  const result came = run(with({"diff", "--definitions", pathof(0, front), pathof(1, text)}, form));
  if (in.flag(2)) demandjson(came);
  const result same = run({"diff", "--definitions", pathof(0, text), pathof(1, text)});
  demand(same.output.empty() && same.status != 1, "a definition does not differ from itself");
}

/// The text is a table, in CSV or JSON.
void table(const setting&, const std::string& text) {
  const result made = run({"definition", "--from", pathof(0, text)});
  if (made.status != 0) return;
  const result checked = run({"check", pathof(1, made.output)});
  demand(checked.status == 0, "a definition that is made has no errors");
}

struct subjectrow {
  subject run;
  bool isdefinition;
};
constexpr auto subjects = std::to_array<subjectrow>({{check, false},
                                                     {fix, false},
                                                     {format, false},
                                                     {convert, false},
                                                     {write, false},
                                                     {lint, false},
                                                     {show, false},
                                                     {origin, false},
                                                     {diff, false},
                                                     {settings, false},
                                                     {definition, true},
                                                     {code, true},
                                                     {layout, true},
                                                     {versions, true},
                                                     {table, true}});
constexpr std::size_t head = 3;

const subjectrow& subjectof(const std::uint8_t* data) {
  return subjects[data[0] % subjects.size()];
}
vocabulary wordsof(const std::uint8_t* data, std::size_t size) {
  return size > 0 && subjectof(data).isdefinition ? vocabulary(definitionwords)
                                                  : vocabulary(parameterwords);
}

void runone(const std::uint8_t* data, std::size_t size) {
  static const memoryfile definitions[] = {memoryfile(richdefinition("Normal")),
                                           memoryfile(richdefinition("Path")),
                                           memoryfile(richdefinition("Minos"))};
  const std::uint8_t flags = data[1];
  setting in{flags, definitions[data[2] % 3].path(), {}};
  if (in.flag(0)) in.reading.emplace_back("--tokens");
  if (in.flag(1)) in.reading.emplace_back("--no-bounds");
  subjectof(data).run(in, {reinterpret_cast<const char*>(data) + head, size - head});
}

}  // namespace
}  // namespace optxv::fuzz

OPTXV_FUZZ_GRAMMAR(optxv::fuzz::head, optxv::fuzz::wordsof(data, size))

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size >= optxv::fuzz::head) optxv::fuzz::runone(data, size);
  return 0;
}
