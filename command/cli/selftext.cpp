#include "cli/selftext.h"

#include <nlohmann/json.hpp>

#include "completion/shells.h"
#include "lint/rules.h"
#include "optxv/optxv.h"
#include "text/wording.h"

namespace command {
namespace {

using nlohmann::ordered_json;

constexpr std::string_view statustext =
    "Exit status: 0 no errors, 1 errors in the files, 2 wrong usage or a file that cannot be read "
    "or "
    "written.";

std::string padded(std::string_view text, std::size_t width) {
  return std::string(text) + std::string(width - std::min(width, text.size()), ' ');
}

std::size_t longestword() {
  return std::ranges::max(subcommands(), {}, [](const subcommand& row) { return row.word.size(); })
      .word.size();
}

ordered_json asjson(const argument& row) {
  ordered_json result;
  if (row.isflag())
    result = {{"names", namesof(row)}, {"value", row.value}};
  else
    result = {{"name", row.names}};
  result["help"] = helpof(row);
  if (!row.choices().empty()) result["values"] = row.choices();
  result["required"] = row.required;
  result["many"] = row.ismany();
  result["excludes"] =
      row.excludes == nullptr ? ordered_json() : ordered_json(namesof(*row.excludes).back());
  return result;
}

/// The flags among the arguments, or the words.
ordered_json chosen(std::span<const argument* const> arguments, bool flags) {
  ordered_json result = ordered_json::array();
  for (const argument* each : arguments)
    if (each->isflag() == flags) result.push_back(asjson(*each));
  return result;
}

}  // namespace

std::string shortlist() {
  const std::size_t width = longestword() + 2;
  std::string text = "usage: optxv SUBCOMMAND ...\n";
  for (const subcommand& row : subcommands())
    text += "  " + padded(row.word, width) + std::string(row.help) + '\n';
  return text + "optxv SUBCOMMAND --help says more, with examples.\n";
}

std::string usage(const subcommand& row) {
  std::string text = "optxv " + std::string(row.word);
  for (const argument* each : row.arguments()) {
    const std::string many = each->ismany() ? "..." : "";
    if (each->required && each->isflag())
      text += ' ' + namesof(*each).front() + ' ' + std::string(each->value) + many;
    else if (each->required)
      text += ' ' + std::string(each->names) + many;
    else if (!each->isflag())
      text += " [" + std::string(each->names) + many + ']';
  }
  return text;
}

std::string footer(const subcommand& row) {
  std::string text = row.more.empty() ? "" : std::string(row.more) + "\n\n";
  text += "Examples:\n";
  for (const std::string_view each : row.examples()) text += "  " + std::string(each) + '\n';
  return text + '\n' + std::string(statustext);
}

std::string versiontext() {
  std::string library = auditline();
  library.erase(library.find_last_not_of(' ') + 1);
  return "optxv " OPTXV_COMMAND_VERSION ", API version " + std::to_string(OPTXV_API_VERSION) +
         "\nlibrary: " + library + '\n';
}

std::string completionscript() {
  return scriptof(shellof("bash"), {.name = "optxv"});
}

std::string rowsjson() {
  ordered_json rows = ordered_json::array();
  for (const subcommand& row : subcommands())
    rows.push_back({{"word", row.word},
                    {"usage", usage(row)},
                    {"help", row.help},
                    {"more", row.more},
                    {"words", chosen(row.arguments(), false)},
                    {"flags", chosen(row.arguments(), true)},
                    {"examples", row.examples()}});
  ordered_json rules = ordered_json::array();
  for (const lintrule& row : lintrules())
    rules.push_back(
        {{"code", row.code}, {"severity", severityword(row.level)}, {"help", row.sentence}});
  const ordered_json all = {
      {"subcommands", rows}, {"flags", chosen(commonflags, true)}, {"rules", rules}};
  return all.dump(2) + '\n';
}

}  // namespace command
