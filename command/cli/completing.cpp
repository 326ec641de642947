#include "cli/completing.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "cli/subcommands.h"
#include "completion/optioncandidates.h"
#include "completion/shells.h"
#include "output/failure.h"
#include "output/reporter.h"
#include "text/printable.h"

namespace command {
namespace {

bool isflagword(std::string_view word) {
  return word.size() > 1 && word.starts_with('-');
}

/// A flag and its value as they stand in one word: --output=x, -ox.
struct flagword {
  std::string_view name, value;
  bool hasvalue = false;

  explicit flagword(std::string_view word) : name(word) {
    const bool islong = word.starts_with("--");
    const std::size_t end = islong ? word.find('=') : 2;
    hasvalue = end < word.size();
    if (!hasvalue) return;
    name = word.substr(0, end);
    value = word.substr(end + (islong ? 1 : 0));
  }
};

/// The words of a subcommand, as the parser takes them up to the one at the cursor.
class standing {
 public:
  explicit standing(const subcommand& row) : row_(row) {}

  void take(const std::string& word);
  offer end(const std::string& typed) const;

 private:
  const argument* flagof(std::string_view name) const;
  const argument* nextword() const;
  void takeflag(std::string_view word);
  void takevalue(const argument& of, std::string_view text);
  bool isgiven(const argument& row) const { return std::ranges::count(given_, &row) > 0; }
  bool isfree(const argument& row) const;
  std::vector<candidate> flags(const std::string& typed) const;
  offer values(const argument& of, std::string_view before, std::string_view typed) const;

  const subcommand& row_;
  std::vector<const argument*> given_;
  const argument* open_ = nullptr;  ///< the flag whose value comes next
  bool onlywords_ = false;          ///< after --
  std::string definition_;
};

const argument* standing::flagof(std::string_view name) const {
  for (const argument* each : row_.arguments())
    if (each->isflag() && std::ranges::count(namesof(*each), name) > 0) return each;
  return nullptr;
}

/// What the next word is that is known by its position; nil if there is none left.
const argument* standing::nextword() const {
  const auto isnext = [&](const argument* each) { return !each->isflag() && isfree(*each); };
  const auto found = std::ranges::find_if(row_.arguments(), isnext);
  return found == row_.arguments().end() ? nullptr : *found;
}

void standing::takevalue(const argument& of, std::string_view text) {
  given_.push_back(&of);
  if (of.into == field(&request::definition)) definition_ = text;
}

void standing::takeflag(std::string_view word) {
  const flagword parts(word);
  open_ = nullptr;
  const argument* flag = flagof(parts.name);
  if (flag == nullptr) return;
  given_.push_back(flag);
  if (parts.hasvalue)
    takevalue(*flag, parts.value);
  else if (!flag->value.empty())
    open_ = flag;
}

void standing::take(const std::string& word) {
  if (!onlywords_ && word == "--") {
    onlywords_ = true;
    open_ = nullptr;
  } else if (!onlywords_ && isflagword(word)) {
    takeflag(word);
  } else if (open_ != nullptr) {
    takevalue(*open_, word);
    if (!open_->ismany()) open_ = nullptr;
  } else if (const argument* next = nextword(); next != nullptr) {
    takevalue(*next, word);
  }
}

/// Whether a flag or a word can be added to those that are given.
bool standing::isfree(const argument& row) const {
  const auto excludes = [&](const argument* each) {
    return each->excludes == &row || row.excludes == each;
  };
  return (row.ismany() || !isgiven(row)) && std::ranges::none_of(given_, excludes);
}

void addnames(std::vector<candidate>& to, const argument& row) {
  for (const std::string& name : namesof(row)) to.push_back({name, helpof(row)});
}

std::vector<candidate> standing::flags(const std::string& typed) const {
  std::vector<candidate> all;
  for (const argument* each : row_.arguments())
    if (each->isflag() && isfree(*each)) addnames(all, *each);
  addnames(all, helpflag);
  return beginning(all, typed);
}

offer standing::values(const argument& of, std::string_view before, std::string_view typed) const {
  const valuekind kind = of.valueis();
  offer result = {.before = std::string(before)};
  if (kind == valuekind::file) result.otherwise = offer::kind::files;
  if (kind == valuekind::folder) result.otherwise = offer::kind::folders;
  if (kind == valuekind::option)
    result.candidates = after(before, optioncandidates(definition_).names(typed));
  std::vector<candidate> choices;
  for (const std::string_view each : of.choices()) choices.push_back({std::string(each)});
  if (!choices.empty()) result.candidates = after(before, beginning(choices, typed));
  return result;
}

offer standing::end(const std::string& typed) const {
  if (!onlywords_ && isflagword(typed)) {
    const flagword parts(typed);
    const argument* flag = flagof(parts.name);
    if (!parts.hasvalue) return {.candidates = flags(typed)};
    if (flag == nullptr) return {};
    return values(*flag, std::string_view(typed).substr(0, typed.size() - parts.value.size()),
                  parts.value);
  }
  const argument* next = open_ != nullptr ? open_ : nextword();
  if (next != nullptr && typed != "-") return values(*next, "", typed);
  return {.candidates = onlywords_ ? std::vector<candidate>() : flags(typed)};
}

/// The first word after the program.
offer subcommandor(const std::string& typed) {
  std::vector<candidate> all;
  for (const subcommand& row : subcommands())
    all.push_back({std::string(row.word), std::string(row.help)});
  if (typed.starts_with('-')) {
    all.clear();
    for (const argument* each : commonflags) addnames(all, *each);
  }
  return {.candidates = beginning(all, typed)};
}

int answer(const request& given) {
  const auto find = [&](std::span<const std::string> words) {
    if (words.size() < 2) return offer();
    return given.host.empty() ? completed(words)
                              : optioncandidates(given.definition).argument(words);
  };
  put(stdout, shellof(given.shell).answer(given.handed, find));
  return 0;
}

}  // namespace

offer completed(std::span<const std::string> words) {
  if (words.size() < 3) return subcommandor(words.back());
  const auto row = std::ranges::find(subcommands(), words[1], &subcommand::word);
  if (row == subcommands().end()) return {};
  standing at(*row);
  for (const std::string& each : words.subspan(2, words.size() - 3)) at.take(each);
  return at.end(words.back());
}

int complete(const request& given) {
  if (given.host.empty() != given.definition.empty())
    return tell({.what = "--host and --definition belong together"});
  if (!given.handed.empty()) return answer(given);
  completedprogram program = {.name = "optxv"};
  std::error_code fault;
  if (!given.host.empty())
    program = {given.host,
               std::filesystem::absolute(given.definition, fault).lexically_normal().string()};
  if (fault)
    return tell({.what = "the path of " + inquotes(given.definition) + " cannot be found",
                 .error = fault.value()});
  for (const std::string& each : {program.name, program.definition})
    if (printable(each) != each)
      return tell({.what = inquotes(each) + " cannot stand in a script"});
  put(stdout, scriptof(shellof(given.shell), program));
  return 0;
}

}  // namespace command
