// What a command line asks for, once it has been read.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "analysis/run.h"

namespace command {

/// Everything that a command line can say, over all subcommands. Each takes the fields that its
/// words and flags are able to set; the others keep the value that they have here. A file that is
/// read may be "-", standard input.
struct request {
  std::string definition;               ///< file
  std::vector<std::string> parameters;  ///< files, in the order in which they are read
  bool tokens = false;                  ///< reads begin in token mode
  bool nobounds = false;                ///< values out of bounds are taken, with a warning

  bool json = false;
  std::string format = "lines";  ///< of findings
  bool all = false;              ///< show every option; of lint, every finding
  bool set = false;              ///< show those that are set, which is the default

  bool origin = false;             ///< show where values come from
  std::vector<std::string> names;  ///< of origin: options that are told of; empty for all

  bool write = false;  ///< over the files that were read

  bool definitions = false;  ///< of format and diff: the files are definitions, all of them
  bool namesonly = false;    ///< only name the files that would change
  std::string sort;          ///< how to sort entries: "group"; empty for not at all
  std::size_t width = 0;     ///< columns of a line of long help; 0 for the usual number

  bool strict = false;        ///< warnings count as errors for the exit status
  std::size_t maxerrors = 0;  ///< errors that are shown; 0 for all

  std::vector<std::string> select;  ///< of lint: codes that are wanted, or their beginnings
  std::vector<std::string> ignore;  ///< of rules that are not
  std::vector<std::string> lint;    ///< of fix: of rules whose sure repairs are made too

  std::string topic;                ///< of help: name of an option, or a number; empty for all
  std::vector<std::string> search;  ///< of help: words to look for in names and texts

  std::string from;  ///< of definition: the table to make one of
  std::string file;  ///< of convert: the file to read
  std::string to;    ///< the form to write

  std::string lang;    ///< of generate: the name of a language
  std::string prefix;  ///< of the names in it; empty for one made of the definition's
  bool embed = false;  ///< the definition's text becomes part of it

  std::string log;  ///< of lsp: file for all that is received and sent; empty for none

  std::string shell;                ///< of complete: the name of one that it knows
  std::string host;                 ///< of complete: the program whose words are completed
  std::vector<std::string> handed;  ///< of complete: what a shell's script asks about

  std::string output;     ///< file to write; empty for standard output
  std::string target;     ///< of reference: the folder of the page, or the file of another form
  bool markdown = false;  ///< the form is Markdown
  bool man = false;       ///< the form is a manual page
  bool force = false;     ///< deliver in spite of errors, and over a file that was read
};

/// The part of a request that is about reading.
inline readsettings readingof(const request& given) {
  return {.definition = given.definition,
          .parameters = given.parameters,
          .tokens = given.tokens,
          .nobounds = given.nobounds};
}

}  // namespace command
