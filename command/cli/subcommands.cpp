#include "cli/subcommands.h"

#include "cli/completing.h"
#include "code/languages.h"
#include "completion/shells.h"
#include "output/reportforms.h"
#include "tasks/tasks.h"

namespace command {

constexpr argument helpflag{"-h,--help", "", "Show the words and flags, with examples", {}};
constexpr argument versionflag{
    "-V,--version", "", "Show the version of the command and of the library", {}};
constexpr argument listflag{
    "--subcommands", "", "Print what the subcommands take as JSON, for other programs", {}};
constexpr argument completionflag{"--completion", "", "Print what complete bash prints", {}};

namespace {

std::span<const std::string_view> reportforms() {
  return reportwords;
}
std::span<const std::string_view> convertedforms() {
  static constexpr std::array<std::string_view, 2> words = {"json", "parameters"};
  return words;
}
std::span<const std::string_view> sortorders() {
  static constexpr std::array<std::string_view, 1> words = {"group"};
  return words;
}

constexpr argument checkedword{
    "DEFINITION", "",
    "File that declares the options; - is standard input. Without it: all that optxv.json binds",
    &request::definition};
constexpr argument definitionword{"DEFINITION", "",
                                  "File that declares the options; - is standard input",
                                  &request::definition, true};
constexpr argument listedword{"DEFINITION", "", definitionword.help, &request::definition};
constexpr argument from{"--from",       "TABLE", "Table of options to make a definition of",
                        &request::from, false,   &listedword};
constexpr argument parameterwords{"PARAMETERS", "",
                                  "Parameter files, read in this order; - is standard input",
                                  &request::parameters};
constexpr argument topicword{"REQUEST", "", "Name of an option, or a number", &request::topic};
constexpr argument tokens{
    "--tokens", "", "Begin each file in token mode: many options per line, values are single words",
    &request::tokens};
constexpr argument nobounds{"--no-bounds", "", "Take values that are out of bounds, with a warning",
                            &request::nobounds};
constexpr argument strict{"--strict", "", "Let warnings count as errors for the exit status",
                          &request::strict};
constexpr argument maxerrors{"--max-errors", "N",
                             "Show at most N errors, then how many more there are; 0 shows all",
                             &request::maxerrors};
constexpr argument json{"--json", "", "Print JSON, for other programs", &request::json};
constexpr argument reportform{.names = "--format",
                              .value = "FORM",
                              .help = "Form of the findings; else that for people",
                              .into = &request::format,
                              .excludes = &json,
                              .fixed = reportforms};
constexpr argument all{"--all", "", "Show every option", &request::all};
constexpr argument set{"--set",       "",    "Show the options that are set; the default",
                       &request::set, false, &all};
constexpr argument search{
    "--search",       "WORD", "Show the options that have all these words in their names and texts",
    &request::search, false,  &topicword};
constexpr argument output{
    "-o,--output", "FILE",
    "File to write instead of standard output; the old one stays until the new one is whole",
    &request::output};
constexpr argument lang{"--lang", "LANG",  "Language of the code", &request::lang,
                        true,     nullptr, languagenames};
constexpr argument prefix{"--prefix", "NAME",
                          "Word that the names in the code begin with; else that of the definition",
                          &request::prefix};
constexpr argument embed{"--embed", "",
                         "Put the definition's text into the code, with a function that reads it",
                         &request::embed};
constexpr argument markdown{"--markdown", "", "Write one file in Markdown instead of a page",
                            &request::markdown};
constexpr argument man{"--man",       "",    "Write a manual page for section 5",
                       &request::man, false, &markdown};
constexpr argument target{
    "-o,--output", "TARGET",
    "Folder of the page, made if there is none; with --markdown or --man, the file",
    &request::target, true};
constexpr argument filewords{"FILE", "", "Parameter files to repair; - is standard input",
                             &request::parameters, true};
constexpr argument comparedwords{
    "FILE", "", "The two parameter files; or the new definition. - is standard input",
    &request::parameters, true};
constexpr argument definitions{"--definitions", "",
                               "Compare two definitions, and tell what breaks what worked",
                               &request::definitions};
constexpr argument withorigin{"--origin", "", "Show where the values come from", &request::origin};
constexpr argument settingwords{
    "PARAMETERS", "",
    "Parameter files, read in this order; - is standard input. The last "
    "words may be names of options",
    &request::parameters};
constexpr argument optionnames{
    "--name", "NAME", "Show this option alone; may be given more than once", &request::names};
constexpr argument convertedword{"FILE", "", "File to convert; - is standard input", &request::file,
                                 true};
constexpr argument to{.names = "--to",
                      .value = "FORM",
                      .help = "Form to write",
                      .into = &request::to,
                      .required = true,
                      .fixed = convertedforms};
constexpr argument every{"--all", "", "Write every option, by its default where it is not set",
                         &request::all};
constexpr argument overwrite{"--write", "",
                             "Write the repaired files over the old ones instead of a difference",
                             &request::write};
constexpr argument logfile{"--log", "FILE", "Write all that is received and sent to a file",
                           &request::log};
constexpr argument select{
    .names = "--select",
    .value = "CODES",
    .help = "Apply only these rules: codes or what they begin with, with commas between",
    .into = &request::select,
    .commas = true};
constexpr argument ignore{.names = "--ignore",
                          .value = "CODES",
                          .help = "Do not apply these rules, written likewise",
                          .into = &request::ignore,
                          .commas = true};
constexpr argument everyfinding{
    "--all", "", "Show every finding, not only the first 20 of each rule", &request::all};
constexpr argument lintrepairs{
    .names = "--lint",
    .value = "CODES",
    .help = "Also repair what these rules of lint find, where that is sure",
    .into = &request::lint,
    .commas = true};
constexpr argument layoutwords{"FILE", "", "Files to lay out; - is standard input",
                               &request::parameters};
constexpr argument laidoutdefinitions{"--definitions", "",
                                      "Lay definitions out: DEFINITION and each FILE is one",
                                      &request::definitions};
constexpr argument layoutwrite{"--write", "", "Write over the files instead of showing the result",
                               &request::write};
constexpr argument namesonly{
    "--check",           "",    "Only name the files that would change; the exit status is then 1",
    &request::namesonly, false, &layoutwrite};
constexpr argument sort{
    .names = "--sort",
    .value = "ORDER",
    .help = "Sort entries, with headings: by the groups in the order of the definition",
    .into = &request::sort,
    .fixed = sortorders};
constexpr argument width{"--width", "N",
                         "Wrap the long help of a definition at N columns; 100 if it is not given",
                         &request::width};
constexpr argument force{
    "--force", "", "Write in spite of errors in what was read, and even over a file that was read",
    &request::force};

constexpr argument shellword{
    "SHELL", "", "Shell that the script is for", &request::shell, true, nullptr, shellnames};
constexpr argument handedwords{"WORDS", "",
                               "What the script hands over, after --, to be told what to offer",
                               &request::handed};
constexpr argument host{"--host", "NAME", "Complete the words of this program, not of optxv",
                        &request::host};
constexpr argument hostdefinition{"--definition", "FILE",
                                  "Definition of the options that the program takes as arguments",
                                  &request::definition};

constexpr auto rows = std::to_array<subcommand>({
    {"check",
     "Report everything that is wrong with the files",
     "",
     {&checkedword, &parameterwords, &tokens, &nobounds, &strict, &maxerrors, &json, &reportform},
     {"optxv check solver.def", "optxv check --strict solver.def solver.opt more.opt",
      "sed s/old/new/ solver.opt | optxv check solver.def -",
      "optxv check --json solver.def solver.opt | jq .summary"},
     check},
    {"fix",
     "Repair what has one sure repair, and tell what is left",
     "What would change is shown as a difference that patch takes. The exit status is that of "
     "what\n"
     "is left.",
     {&definitionword, &filewords, &tokens, &nobounds, &overwrite, &lintrepairs},
     {"optxv fix solver.def solver.opt", "optxv fix --write solver.def *.opt",
      "optxv fix solver.def solver.opt | patch", "optxv fix --lint P2 solver.def solver.opt"},
     fix},
    {"lint",
     "Report what is right and yet hardly meant, or could be better",
     "The definition is looked at if it is alone, or else the parameter files; --select D,P is "
     "both.\n"
     "A comment such as `* optxv: ignore P101` silences a rule in the next line.",
     {&definitionword, &parameterwords, &tokens, &nobounds, &select, &ignore, &everyfinding,
      &strict, &json, &reportform},
     {"optxv lint solver.def", "optxv lint solver.def solver.opt",
      "optxv lint --strict --ignore D2,D402 solver.def",
      "optxv lint --select P1 --json solver.def solver.opt"},
     lint},
    {"format",
     "Lay files out: columns aligned, and nothing that they say changed",
     "Comments and empty lines stay, and lines with errors stay as they are. The result is shown,\n"
     "file after file, or written with --write.",
     {&definitionword, &layoutwords, &laidoutdefinitions, &tokens, &nobounds, &layoutwrite,
      &namesonly, &sort, &width},
     {"optxv format solver.def solver.opt", "optxv format --write --sort group solver.def *.opt",
      "optxv format --check solver.def *.opt", "optxv format --definitions --write solver.def"},
     format},
    {"show",
     "Show options, values and defaults",
     "",
     {&definitionword, &parameterwords, &tokens, &nobounds, &all, &set, &withorigin, &json},
     {"optxv show solver.def solver.opt", "optxv show --all solver.def",
      "optxv show --origin solver.def solver.opt", "optxv show --json solver.def solver.opt"},
     show},
    {"origin",
     "Show where values come from, and what they overrode",
     "A last word that is no file asks for the option of that name alone; so does --name, "
     "whatever\n"
     "files there are.",
     {&definitionword, &settingwords, &tokens, &nobounds, &optionnames, &json},
     {"optxv origin solver.def solver.opt night.opt", "optxv origin solver.def solver.opt steplim",
      "optxv origin --json solver.def solver.opt --name steplim"},
     origins},
    {"diff",
     "Show what differs in effect between two settings, or between two definitions",
     "The exit status is 0 if nothing differs, 1 if something does, and 2 for any trouble, also "
     "for\n"
     "errors in the files. Of definitions it is 1 only if a change breaks what worked.",
     {&definitionword, &comparedwords, &tokens, &nobounds, &definitions, &json},
     {"optxv diff solver.def day.opt night.opt", "optxv diff --json solver.def day.opt night.opt",
      "optxv diff --definitions old.def solver.def"},
     diff},
    {"help",
     "Show the help that a definition holds",
     "A number asks for lists, and may be a sum: 1 by group, 2 in alphabetical order, 4 the table "
     "for\n"
     "debugging, 8 marks of deprecation.",
     {&definitionword, &topicword, &search},
     {"optxv help solver.def", "optxv help solver.def steplim", "optxv help solver.def 2",
      "optxv help solver.def --search step limit"},
     help},
    {"write",
     "Write what is set as one parameter file",
     "",
     {&definitionword, &parameterwords, &tokens, &nobounds, &output, &force},
     {"optxv write solver.def solver.opt more.opt -o merged.opt",
      "optxv write solver.def solver.opt | sort"},
     write},
    {"html",
     "Write the raw definition as an HTML table",
     "",
     {&definitionword, &output, &force},
     {"optxv html solver.def -o solver.html"},
     html},
    {"definition",
     "Write what the library understood of a definition, as a definition",
     "A listing for people: what the library understood, in the form of a definition. It leaves\n"
     "out lists of texts, groups, and the indicator, lookup and eolcomm records, and it includes\n"
     "the option Help, with which every table begins. So it cannot always be read back; that is\n"
     "its form. With --from, a definition is made of a table that another program keeps, in CSV "
     "or\n"
     "JSON: a column each for name, type, default, low, high, group, text and some more.",
     {&listedword, &from, &output, &force},
     {"optxv definition solver.def | diff solver.def -",
      "optxv definition --from options.csv -o solver.def"},
     definition},
    {"include",
     "Write the numbers of the options as an Object Pascal include file",
     "",
     {&definitionword, &output, &force},
     {"optxv include solver.def -o options.inc"},
     include},
    {"convert",
     "Write a parameter file as JSON, or JSON as a parameter file",
     "JSON is what \"optxv schema\" describes. Values come through as they are, bit for bit; what "
     "the\nother form cannot hold is an error.",
     {&definitionword, &convertedword, &to, &tokens, &nobounds, &every, &output, &force},
     {"optxv convert solver.def solver.opt --to json -o solver.json",
      "optxv convert solver.def solver.json --to parameters"},
     convert},
    {"schema",
     "Write a JSON Schema of the settings, for editors and validators",
     "The schema is of draft 2020-12. It is about settings as \"optxv convert --to json\" writes "
     "them.",
     {&definitionword, &output, &force},
     {"optxv schema solver.def -o solver.schema.json"},
     schema},
    {"generate",
     "Write code for programs: the options as a struct, with their numbers and enumerations",
     "The code has a field for each option with a value, its default and its help, and functions\n"
     "that fill the fields from a handle of the library and write them back. Names become legal\n"
     "ones of the language; a warning tells where two of them meet.",
     {&definitionword, &lang, &prefix, &embed, &output, &force},
     {"optxv generate solver.def --lang c -o solver_options.h",
      "optxv generate solver.def --lang fortran --prefix slv -o slv_options.f90"},
     generate},
    {"reference",
     "Write a reference of the options: a page with a search box, Markdown, or a manual page",
     "The page is index.html in that folder.",
     {&definitionword, &target, &markdown, &man, &force},
     {"optxv reference solver.def -o site", "optxv reference solver.def --markdown -o options.md",
      "optxv reference solver.def --man -o solver.5 && man ./solver.5"},
     reference},
    {"lsp",
     "Serve an editor: findings while somebody types, completion, help, rename",
     "An editor starts it, and talks to it over standard input and output in the language server\n"
     "protocol 3.17. docs/editors.md says how to switch it on.",
     {&logfile},
     {"optxv lsp", "optxv lsp --log /tmp/optxv.log"},
     lsp},
    {"complete",
     "Print a script that lets a shell complete the words of optxv, or of a program",
     "Names and values of options come from the definition that the line names, or that of the\n"
     "program, as it is when TAB is pressed.",
     {&shellword, &handedwords, &host, &hostdefinition},
     {"source <(optxv complete bash)", "source <(optxv complete zsh)",
      "optxv complete fish | source",
      "source <(optxv complete bash --host solver --definition solver.def)"},
     complete},
    {"api",
     "Show the library's version and the signatures of its functions",
     "",
     {&json},
     {"optxv api", "optxv api --json"},
     api},
});

}  // namespace

std::span<const subcommand> subcommands() {
  return rows;
}

std::vector<std::string> namesof(const argument& row) {
  std::vector<std::string> names;
  for (std::string_view rest = row.names; !rest.empty();) {
    const std::size_t end = std::min(rest.find(','), rest.size());
    names.emplace_back(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return names;
}

valuekind argument::valueis() const {
  struct row {
    std::string_view word;
    valuekind kind;
  };
  static constexpr auto words = std::to_array<row>({{"DEFINITION", valuekind::file},
                                                    {"PARAMETERS", valuekind::file},
                                                    {"FILE", valuekind::file},
                                                    {"TARGET", valuekind::folder},
                                                    {"REQUEST", valuekind::option}});
  const auto found = std::ranges::find(words, isflag() ? value : names, &row::word);
  return found == words.end() ? valuekind::text : found->kind;
}

std::string listed(std::span<const std::string_view> words) {
  std::string text;
  for (std::size_t i = 0; i < words.size(); i++)
    text += (i == 0 ? "" : i + 1 == words.size() ? " or " : ", ") + std::string(words[i]);
  return text;
}

std::string helpof(const argument& row) {
  const std::string help(row.help);
  return row.choices().empty() ? help : help + ": " + listed(row.choices());
}

}  // namespace command
