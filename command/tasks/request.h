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
  bool all = false;  ///< show every option
  bool set = false;  ///< show those that are set, which is the default

  bool write = false;  ///< over the files that were read

  bool strict = false;        ///< warnings count as errors for the exit status
  std::size_t maxerrors = 0;  ///< errors that are shown; 0 for all

  std::string topic;                ///< of help: name of an option, or a number; empty for all
  std::vector<std::string> search;  ///< of help: words to look for in names and texts

  std::string lang;    ///< of generate: the language of the code
  std::string prefix;  ///< of the names in it; empty for one made of the definition's
  bool embed = false;  ///< the definition's text becomes part of it

  std::string log;  ///< of lsp: file for all that is received and sent; empty for none

  std::string output;  ///< file to write; empty for standard output
  std::string folder;  ///< to write into
  bool force = false;  ///< deliver in spite of errors, and over a file that was read
};

/// The part of a request that is about reading.
inline readsettings readingof(const request& given) {
  return {.definition = given.definition,
          .parameters = given.parameters,
          .tokens = given.tokens,
          .nobounds = given.nobounds};
}

}  // namespace command
