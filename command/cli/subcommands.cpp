#include "cli/subcommands.h"

#include "tasks/tasks.h"

namespace command {

constexpr argument helpflag{"-h,--help", "", "Show the words and flags, with examples", {}};
constexpr argument versionflag{
    "-V,--version", "", "Show the version of the command and of the library", {}};
constexpr argument listflag{
    "--subcommands", "", "Print what the subcommands take as JSON, for other programs", {}};
constexpr argument completionflag{
    "--completion", "", "Print a script that completes the words of the command in bash", {}};

namespace {

constexpr argument definitionword{"DEFINITION", "",
                                  "File that declares the options; - is standard input",
                                  &request::definition, true};
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
constexpr argument lang{"--lang", "LANG", "Language of the code: c, c++, python, fortran or pascal",
                        &request::lang, true};
constexpr argument prefix{"--prefix", "NAME",
                          "Word that the names in the code begin with; else that of the definition",
                          &request::prefix};
constexpr argument embed{"--embed", "",
                         "Put the definition's text into the code, with a function that reads it",
                         &request::embed};
constexpr argument folder{"-o,--output", "FOLDER", "Folder to write into, made if there is none",
                          &request::folder, true};
constexpr argument filewords{"FILE", "", "Parameter files to repair; - is standard input",
                             &request::parameters, true};
constexpr argument overwrite{"--write", "",
                             "Write the repaired files over the old ones instead of a difference",
                             &request::write};
constexpr argument logfile{"--log", "FILE", "Write all that is received and sent to a file",
                           &request::log};
constexpr argument force{
    "--force", "", "Write in spite of errors in what was read, and even over a file that was read",
    &request::force};

constexpr auto rows = std::to_array<subcommand>({
    {"check",
     "Report everything that is wrong with the files",
     "",
     {&definitionword, &parameterwords, &tokens, &nobounds, &strict, &maxerrors, &json},
     {"optxv check solver.def", "optxv check --strict solver.def solver.opt more.opt",
      "sed s/old/new/ solver.opt | optxv check solver.def -",
      "optxv check --json solver.def solver.opt | jq .summary"},
     check},
    {"fix",
     "Repair what has one sure repair, and tell what is left",
     "What would change is shown as a difference that patch takes. The exit status is that of "
     "what\n"
     "is left.",
     {&definitionword, &filewords, &tokens, &nobounds, &overwrite},
     {"optxv fix solver.def solver.opt", "optxv fix --write solver.def *.opt",
      "optxv fix solver.def solver.opt | patch"},
     fix},
    {"show",
     "Show options, values and defaults",
     "",
     {&definitionword, &parameterwords, &tokens, &nobounds, &all, &set, &json},
     {"optxv show solver.def solver.opt", "optxv show --all solver.def",
      "optxv show --json solver.def solver.opt"},
     show},
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
     "its form.",
     {&definitionword, &output, &force},
     {"optxv definition solver.def | diff solver.def -"},
     definition},
    {"include",
     "Write the numbers of the options as an Object Pascal include file",
     "",
     {&definitionword, &output, &force},
     {"optxv include solver.def -o options.inc"},
     include},
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
     "Write a reference of the options for a browser, with a search box",
     "The page is index.html in that folder.",
     {&definitionword, &folder, &force},
     {"optxv reference solver.def -o site"},
     reference},
    {"lsp",
     "Serve an editor: findings while somebody types, completion, help, rename",
     "An editor starts it, and talks to it over standard input and output in the language server\n"
     "protocol 3.17. docs/editors.md says how to switch it on.",
     {&logfile},
     {"optxv lsp", "optxv lsp --log /tmp/optxv.log"},
     lsp},
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

}  // namespace command
