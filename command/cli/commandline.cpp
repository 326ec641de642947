#include "cli/commandline.h"

#include <CLI/CLI.hpp>
#include <map>
#include <memory>
#include <optional>

#include "cli/selftext.h"
#include "cli/subcommands.h"
#include "language/nearestnames.h"
#include "output/reporter.h"
#include "text/names.h"
#include "text/printable.h"

namespace command {
namespace {

using optxv::knownname;
using optxv::nearestnames;

// --- The parser, from the rows

/// The help of the parser's library, but with the usage from a row, and beside a flag only what its
/// value stands for: everything else is said in words.
class helpform : public CLI::Formatter {
 public:
  explicit helpform(std::string usage) : usage_(std::move(usage)) {
    label("Positionals", "Words");
    column_width(22);
  }
  std::string make_usage(const CLI::App*, std::string) const override {
    return "Usage: " + usage_ + '\n';
  }
  std::string make_option_opts(const CLI::Option* option) const override {
    const std::string value = option->get_type_name();
    return (value.empty() ? "" : ' ' + value) + (option->get_expected_max() > 1 ? " ..." : "");
  }

 private:
  std::string usage_;
};

/// What is wrong with the text of a count; empty if nothing is.
std::string notcount(const std::string& text) {
  constexpr std::size_t mostdigits = 9;
  const bool good =
      !text.empty() && text.size() <= mostdigits && std::ranges::all_of(text, isdigit);
  return good ? "" : "a number is expected, of at most 9 digits, saw " + inquotes(text);
}

/// Adds a word or a flag, which sets its field of the request.
CLI::Option* add(CLI::App& app, const argument& row, request& given) {
  const std::string names(row.names), help = helpof(row);
  const auto bound = [&](auto into) -> CLI::Option* {
    using kind = decltype(into);
    if constexpr (std::is_same_v<kind, std::monostate>)
      return app.add_flag(names, help);
    else if constexpr (std::is_same_v<kind, bool request::*>)
      return app.add_flag(names, given.*into, help);
    else
      return app.add_option(names, given.*into, help);
  };
  CLI::Option* option = std::visit(bound, row.into);
  if (std::holds_alternative<std::size_t request::*>(row.into)) option->check(notcount);
  if (row.commas) option->delimiter(',')->allow_extra_args(false);
  return option->type_name(std::string(row.value))->required(row.required)->group("Flags");
}

void add(CLI::App& app, const subcommand& row, request& given) {
  CLI::App* sub = app.add_subcommand(std::string(row.word), std::string(row.help));
  sub->formatter(std::make_shared<helpform>(usage(row) + " [FLAGS]"));
  sub->get_help_ptr()->group("Flags");
  sub->footer(footer(row));
  std::map<const argument*, CLI::Option*> added;
  for (const argument* each : row.arguments()) {
    CLI::Option* option = added[each] = add(*sub, *each, given);
    if (each->excludes != nullptr) option->excludes(added.at(each->excludes));
  }
}

void addall(CLI::App& app, request& given) {
  app.option_defaults()->group("Flags");
  app.formatter(std::make_shared<helpform>("optxv SUBCOMMAND ..."));
  app.set_help_flag(std::string(helpflag.names), std::string(helpflag.help));
  app.set_version_flag(std::string(versionflag.names), versiontext(),
                       std::string(versionflag.help));
  add(app, listflag, given);
  add(app, completionflag, given);
  app.require_subcommand(0, 1);
  app.footer("optxv SUBCOMMAND --help says more, with examples.");
  for (const subcommand& row : subcommands()) add(app, row, given);
}

/// The subcommand that was given, or null.
const subcommand* chosen(const CLI::App& app) {
  if (app.get_subcommands().empty()) return nullptr;
  const std::string& word = app.get_subcommands().front()->get_name();
  return &*std::ranges::find(subcommands(), word, &subcommand::word);
}

// --- What is wrong with the words

/// What is wrong, and what may have been meant; empty if nothing can be guessed.
struct complaint {
  std::string text, hint;
};

std::string hintof(const std::vector<std::string>& nearest) {
  return nearest.empty() ? "" : question(nearest);
}

std::vector<std::string> flagsof(std::span<const argument* const> arguments) {
  std::vector<std::string> names;
  for (const argument* each : arguments)
    if (each->isflag())
      for (std::string& name : namesof(*each)) names.push_back(std::move(name));
  return names;
}

/// The long flags among the names that are nearest to a wrong one. They are compared without their
/// first dashes, which would count as letters, and with underscores for the dashes between words.
std::vector<std::string> nearestflags(std::string_view wrong, std::vector<std::string> names) {
  const auto bare = [](std::string_view flag) {
    std::string text(flag.substr(std::min(flag.find_first_not_of('-'), flag.size())));
    std::ranges::replace(text, '-', '_');
    return text;
  };
  std::erase_if(names, [](const std::string& name) { return !name.starts_with("--"); });
  std::vector<knownname> known(names.size());
  for (std::size_t i = 0; i < names.size(); i++)
    known[i] = {bare(names[i]), static_cast<std::int32_t>(i)};
  std::vector<std::string> result = nearestnames(known).nearest(bare(wrong));
  for (std::string& each : result) {
    std::ranges::replace(each, '_', '-');
    each.insert(0, "--");
  }
  return result;
}

/// "check, show and api": the subcommands that have a flag; empty if there are none.
std::string ownersof(const std::string& flag) {
  std::vector<std::string_view> owners;
  for (const subcommand& row : subcommands())
    if (std::ranges::count(flagsof(row.arguments()), flag) > 0) owners.push_back(row.word);
  std::string text;
  for (std::size_t i = 0; i < owners.size(); i++)
    text += (i == 0 ? "" : i + 1 == owners.size() ? " and " : ", ") + std::string(owners[i]);
  return text;
}

complaint wrongflag(const std::string& word, const subcommand* row) {
  const std::string flag = word.substr(0, word.find('='));
  const std::string owner(row == nullptr ? "optxv" : row->word);
  complaint result = {owner + " has no flag " + inquotes(flag), ""};
  if (const std::string owners = ownersof(flag); !owners.empty()) {
    result.hint = "it is a flag of " + owners;
    if (row == nullptr) result.hint += ", and must come after the subcommand";
    return result;
  }
  std::vector<std::string> known = flagsof(commonflags);
  if (row != nullptr) {
    known = flagsof(row->arguments());
    known.emplace_back("--help");
  }
  result.hint = hintof(nearestflags(flag, known));
  return result;
}

complaint wrongsubcommand(const std::string& word) {
  std::vector<knownname> known;
  for (const subcommand& row : subcommands())
    known.push_back({std::string(row.word), static_cast<std::int32_t>(known.size())});
  return {"no subcommand is called " + inquotes(word), hintof(nearestnames(known).nearest(word))};
}

/// The first flag among some words, since another of them may be its value; or else the first word.
/// Nothing if there are no words.
std::optional<std::string> first(const std::vector<std::string>& words) {
  const auto isflag = [](const std::string& word) { return word.size() > 1 && word[0] == '-'; };
  const auto flag = std::ranges::find_if(words, isflag);
  if (flag != words.end()) return *flag;
  return words.empty() ? std::nullopt : std::optional(words.front());
}

/// What the parser could not place is reported rather than what it found missing, since it may be
/// the reason for that.
complaint complaintof(const CLI::App& app, const CLI::ParseError& why) {
  const subcommand* row = chosen(app);
  if (const auto word = first(app.remaining(false)))
    return word->starts_with('-') ? wrongflag(*word, nullptr) : wrongsubcommand(*word);
  if (row == nullptr) return {why.what(), ""};
  if (const auto word = first(app.get_subcommands().front()->remaining(false)))
    return word->starts_with('-') ? wrongflag(*word, row)
                                  : complaint{"one word too many: " + inquotes(*word), ""};
  return {why.what(), ""};
}

/// The first value that is none of those that its flag or word takes.
std::optional<complaint> wrongvalue(const subcommand& row, const request& given) {
  for (const argument* each : row.arguments()) {
    const auto* into = std::get_if<std::string request::*>(&each->into);
    if (into == nullptr || each->choices().empty()) continue;
    if (given.**into == request().**into && !each->required) continue;  // not given
    if (std::ranges::count(each->choices(), given.**into) == 0)
      return complaint{namesof(*each).back() + " cannot be " + inquotes(given.**into),
                       "it is " + listed(each->choices())};
  }
  return std::nullopt;
}

int tellwrong(const subcommand* row, complaint wrong) {
  if (wrong.hint.empty())
    wrong.hint = "see optxv " + (row == nullptr ? "" : std::string(row->word) + ' ') + "--help";
  put(stderr, "optxv: error: " + printable(wrong.text) + "\noptxv: note: " + wrong.hint + '\n');
  return statusunusable;
}

/// Help and version come as exceptions from the parser, with nothing wrong.
int tell(const CLI::App& app, const CLI::ParseError& why) {
  if (why.get_exit_code() != 0) return tellwrong(chosen(app), complaintof(app, why));
  put(stdout, why.get_name() == "CallForVersion" ? versiontext() : app.help());
  return 0;
}

/// Prints what was asked for about the command itself; gives the exit status.
int putself(const std::string& text) {
  put(stdout, text);
  return 0;
}

}  // namespace

int runcommandline(int count, const char* const* words) {
  CLI::App app("Check, show, rewrite and document the run-time options of solver-style programs.",
               "optxv");
  request given;
  addall(app, given);
  try {
    app.parse(count, words);
  } catch (const CLI::ParseError& why) {
    return tell(app, why);
  }
  if (const subcommand* row = chosen(app)) {
    const std::optional<complaint> wrong = wrongvalue(*row, given);
    return wrong ? tellwrong(row, *wrong) : row->run(given);
  }
  if (app.count(std::string(listflag.names)) > 0) return putself(rowsjson());
  if (app.count(std::string(completionflag.names)) > 0) return putself(completionscript());
  put(stderr, shortlist());
  return statusunusable;
}

}  // namespace command
