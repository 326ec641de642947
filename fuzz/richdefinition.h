// A definition with every kind of record but one: there is no key that reads a file, since the
// fuzzer must not choose the files that are opened.
#pragma once

#include <string>

namespace optxv::fuzz {

/// The definition under a rule of lookup: Normal, Path or Minos.
inline std::string richdefinition(const std::string& rule) {
  return rule +
         " lookup\n"
         "mark eolcomm !#\n"
         "g group 1 1 The group\n"
         "h group 2 2 Another\n"
         "step_limit integer 1 10 0 100 3 1 Steps\n"
         " More about steps.\n"
         "steps integer.OPT 2 5 minint maxint 3 1 Steps, or none\n"
         "span integer.TWO 3 1 -10 10 3 1 From and to\n"
         "tolerance double 4 1e-6 0 1 4 1 Tolerance\n"
         "range double.TWO 5 0 mindouble maxdouble 4 2 Range\n"
         "logname string 6 \"run log\" 5 1 Log\n"
         "pair string.TWO 7 a 5 1 Two texts\n"
         "flag boolean 8 0 6 1 Flag\n"
         "verbose boolean.NV 9 1 6 1 Loud\n"
         "method enumstr 10 auto 7 1 Method\n"
         " auto 8 Any\n"
         " primal_simplex 9 Primal\n"
         " \"two words\" 9 Both\n"
         "level enumint 11 1 7 1 Level\n"
         " 0 8 None\n"
         " 1 9 Some\n"
         " -7 9 Odd\n"
         "paths strlist 12 8 1 Paths\n"
         "both multilist 13 9 1 Both\n"
         " step_limit tolerance\n"
         "no_bounds immediate NoBounds 10 1 Bounds\n"
         "fast macro 9 1 Fast\n"
         " flag\n"
         " level\n"
         " no_bounds\n"
         "whole immediate EolFlag 10 1 Mode\n"
         "say immediate Message 10 1 Text\n"
         "stplim synonym step_limit\n"
         "old synonym flag\n"
         "gone deprecated\n"
         " stplim Say step_limit.\n"
         " range Out of use\n"
         "dead obsolete\n"
         " old Say flag.\n"
         "indic indicator\n"
         ".scale double 14 1 mindouble maxdouble 11 1 Scale\n"
         ".prior integer 15 1 minint maxint 11 1 Priority\n"
         ".on boolean 16 0 11 1 On\n"
         ".kind enumint 17 1 11 1 Kind\n"
         " 0 8 None\n"
         " 1 9 Some\n";
}

}  // namespace optxv::fuzz
