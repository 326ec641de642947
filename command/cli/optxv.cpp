// The command optxv: checks, shows, rewrites and documents option definitions and parameter files.

#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstdio>
#include <string>
#include <vector>

#include "analysis/nearest.h"
#include "optxv/optxv.h"
#include "output/reporter.h"
#include "tasks/tasks.h"
#include "text/textform.h"

namespace {

using command::request;

constexpr const char* statustext =
    "\nExit status: 0 clean, 1 errors in the files, 2 wrong usage or a file that cannot be read or "
    "written.\n";

CLI::App* add(CLI::App& app, const char* name, const char* text, const std::string& examples) {
  CLI::App* sub = app.add_subcommand(name, text);
  sub->footer("Examples:\n" + examples + statustext);
  return sub;
}

void adddefinition(CLI::App* sub, request& given) {
  sub->add_option("DEFINITION", given.definition,
                  "File that declares the options; - is standard input")
      ->required();
}

void addreading(CLI::App* sub, request& given) {
  adddefinition(sub, given);
  sub->add_option("PARAMETERS", given.parameters,
                  "Parameter files, read in this order; - is standard input");
  sub->add_flag("--tokens", given.tokens,
                "Begin each file in token mode: many options a line, values are single words");
  sub->add_flag("--no-bounds", given.nobounds,
                "Take values that are out of their bounds, with a warning");
}

CLI::App* addcheck(CLI::App& app, request& given) {
  CLI::App* sub = add(app, "check", "Tell everything that is wrong with the files",
                      "  optxv check solver.def\n"
                      "  optxv check solver.def solver.opt more.opt\n"
                      "  sed s/old/new/ solver.opt | optxv check solver.def -\n"
                      "  optxv check --json solver.def solver.opt | jq .summary\n");
  addreading(sub, given);
  sub->add_flag("--json", given.json, "Print JSON");
  return sub;
}

CLI::App* addshow(CLI::App& app, request& given) {
  CLI::App* sub = add(app, "show", "Show options, values and defaults",
                      "  optxv show solver.def solver.opt\n"
                      "  optxv show --all solver.def\n"
                      "  optxv show --json solver.def solver.opt\n");
  addreading(sub, given);
  CLI::Option* all = sub->add_flag("--all", given.all, "Show every option");
  sub->add_flag("--set", given.set, "Show the options that are set; the default")->excludes(all);
  sub->add_flag("--json", given.json, "Print JSON");
  return sub;
}

CLI::App* addhelp(CLI::App& app, request& given) {
  CLI::App* sub =
      add(app, "help", "Show the help that a definition holds",
          "  optxv help solver.def            all options by group\n"
          "  optxv help solver.def steplim    one option\n"
          "  optxv help solver.def 2          the sum of: 1 by group, 2 in alphabetical order,\n"
          "                                   4 the table for debugging, 8 marks of deprecation\n");
  adddefinition(sub, given);
  sub->add_option("REQUEST", given.topic, "Name of an option, or a number");
  return sub;
}

void addoutput(CLI::App* sub, request& given) {
  sub->add_option("-o,--output", given.output, "File to write instead of standard output");
}

CLI::App* addwrite(CLI::App& app, request& given) {
  CLI::App* sub = add(app, "write", "Write what is set as one parameter file",
                      "  optxv write solver.def solver.opt more.opt -o merged.opt\n"
                      "  optxv write solver.def solver.opt | sort\n");
  addreading(sub, given);
  addoutput(sub, given);
  return sub;
}

/// The three documents and the reference: the subcommand and what it says of itself.
CLI::App* adddocument(CLI::App& app, request& given, const char* name, const char* text,
                      const std::string& examples) {
  CLI::App* sub = add(app, name, text, examples);
  adddefinition(sub, given);
  return sub;
}

CLI::App* addhtml(CLI::App& app, request& given) {
  CLI::App* sub = adddocument(app, given, "html", "Write the raw definition as an HTML table",
                              "  optxv html solver.def -o solver.html\n");
  addoutput(sub, given);
  return sub;
}

CLI::App* addlisting(CLI::App& app, request& given) {
  CLI::App* sub = adddocument(app, given, "definition",
                              "Write what was understood of a definition, as a definition",
                              "  optxv definition solver.def | diff solver.def -\n");
  addoutput(sub, given);
  return sub;
}

CLI::App* addinclude(CLI::App& app, request& given) {
  CLI::App* sub = adddocument(app, given, "include",
                              "Write the numbers of the options as an Object Pascal include file",
                              "  optxv include solver.def -o options.inc\n");
  addoutput(sub, given);
  return sub;
}

CLI::App* addreference(CLI::App& app, request& given) {
  CLI::App* sub = adddocument(app, given, "reference",
                              "Write a reference of the options for a browser, with a search box",
                              "  optxv reference solver.def -o site    writes site/index.html\n");
  sub->add_option("-o,--output", given.folder, "Folder to write into")->required();
  return sub;
}

CLI::App* addapi(CLI::App& app, request& given) {
  CLI::App* sub = add(app, "api", "Show the library's version and the signatures of its functions",
                      "  optxv api\n  optxv api --json\n");
  sub->add_flag("--json", given.json, "Print JSON");
  return sub;
}

/// Tells of a first word that is no subcommand; false if that is not what is wrong.
bool tellunknown(const CLI::App& app, int count, char** words) {
  if (count < 2 || *words[1] == '-' || !app.get_subcommands().empty()) return false;
  std::vector<command::knownname> known;
  for (const CLI::App* each : app.get_subcommands([](const CLI::App*) { return true; }))
    known.push_back({each->get_name(), static_cast<std::int32_t>(known.size())});
  const std::vector<std::string> nearest = command::nearestnames(known).nearest(words[1]);
  command::put(stderr,
               "optxv: error: no subcommand is called " + command::inquotes(words[1]) + '\n');
  if (!nearest.empty()) command::put(stderr, "optxv: note: " + command::question(nearest) + '\n');
  return true;
}

/// Whether all that was printed has arrived.
bool flushed() {
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return true;
  command::put(stderr,
               "standard output: error: cannot be written: " + command::systemtext(errno) + '\n');
  return false;
}

int run(int count, char** words) {
  CLI::App app("Check, show, rewrite and document the run-time options of solver-style programs.",
               "optxv");
  app.set_version_flag("--version", "optxv, API version " + std::to_string(OPTXV_API_VERSION));
  app.require_subcommand(1);
  app.footer("optxv SUBCOMMAND --help tells more, with examples.");
  request given;
  const CLI::App* check = addcheck(app, given);
  const CLI::App* show = addshow(app, given);
  const CLI::App* help = addhelp(app, given);
  const CLI::App* write = addwrite(app, given);
  const CLI::App* html = addhtml(app, given);
  const CLI::App* listing = addlisting(app, given);
  const CLI::App* include = addinclude(app, given);
  const CLI::App* reference = addreference(app, given);
  addapi(app, given);
  try {
    app.parse(count, words);
  } catch (const CLI::ParseError& stop) {
    if (tellunknown(app, count, words)) return command::statusunusable;
    return app.exit(stop) == 0 ? 0 : command::statusunusable;
  }
  if (check->parsed()) return command::check(given);
  if (show->parsed()) return command::show(given);
  if (help->parsed()) return command::help(given);
  if (write->parsed()) return command::write(given);
  if (html->parsed()) return command::html(given);
  if (listing->parsed()) return command::definition(given);
  if (include->parsed()) return command::include(given);
  if (reference->parsed()) return command::reference(given);
  return command::api(given);
}

}  // namespace

int main(int count, char** words) {
  const int status = run(count, words);
  return flushed() ? status : command::statusunusable;
}
