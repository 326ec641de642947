// A table with an option of every kind, for the tests of the writers.
#pragma once

#include <string>
#include <string_view>

#include "foundation/runtime.h"
#include "support/optiontable.h"
#include "writers/optionwriter.h"

namespace optxv {

inline constexpr std::string_view everykind =
    "general group 2 1 General options\n"
    "rate integer.OPT 3 1 0 maxint 1 2 Rate <b> \"q\"\n"
    " Long help,\n"
    " \n"
    "   indented.\n"
    "tol double 4 1e-6 mindouble 1e299 5 2 Tolerance\n"
    "logname string 5 \"a, b\" 6 2 Caf\xE9 & co\n"
    "flag boolean.NV 6 1 7 2 Flag\n"
    " Help of the flag.\n"
    "method enumstr 7 \"by size\" 8 2 Method\n"
    " \"by size\" 81 By size\n"
    " dual 82\n"
    "level enumint 8 maxint 9 maxint Level\n"
    " 0 90 Silent\n"
    " maxint 91 All\n"
    "pair multilist 9 10 2 Pair\n"
    " rate tol\n"
    "paths strlist 10 11 2 Paths\n"
    "fast macro 12 2 Fast\n"
    " flag\n"
    " method\n"
    ".scale double.TWO 11 1 eps 10 13 2 Scale\n"
    "rf immediate ReadFile 14 2 Read\n"
    "stop synonym rate\n"
    "passing deprecated\n"
    " stop Say rate\n"
    " flag Too old\n"
    "gone obsolete\n"
    " tol No more\n"
    " paths Never again\n";

using writeroperation = void (tzmaoptionwriter::*)(std::string_view) const;

/// What one of the writers makes of a definition, which must be free of faults.
inline std::string written(std::string_view definition, writeroperation write) {
  const optiontable options(definition);
  const scratchfile file;
  (tzmaoptionwriter(options.options).*write)(file.name());
  EXPECT_EQ(ioresult(), 0);
  return file.content();
}

/// Expects that a writer raises for files that cannot be written to their end, and leaves neither
/// an error code nor memory behind.
inline void refusesbadfiles(writeroperation write) {
  const optiontable options("a integer 1 1 0 9 1 1 A\n");
  const std::int64_t before = allocmemcount();
  const tzmaoptionwriter writer(options.options);
  for (const auto& [name, reason] :
       {std::pair{"/dev/full", "'No space left on device'"}, std::pair{"/", "'Is a directory'"},
        std::pair{"/none/such", "'No such file or directory'"}}) {
    std::string message = "nothing raised";
    try {
      (writer.*write)(name);
    } catch (const einouterror& failure) {
      message = failure.message.view();
    }
    EXPECT_NE(message.find(reason), std::string::npos) << name << ": " << message;
    EXPECT_EQ(ioresult(), 0) << name;
  }
  EXPECT_EQ(allocmemcount(), before);
}

}  // namespace optxv
