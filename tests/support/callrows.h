// Rows of calls and what they give, and the small definition that they are about.
#pragma once

#include <algorithm>
#include <cstddef>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "support/optiontable.h"

namespace optxv {

/// A table of rows: one per line, its fields separated by ">>" and without the blanks around them,
/// up to four fields, missing ones empty. A line that begins with "#" is a remark; one that begins
/// with a blank goes on with the last field, after " | ", or with the next one; a backslash at the
/// end joins the next line as it is. "\\t" and "\\n" in a field stand for a tab and a line end.
inline std::vector<lines> fieldsof(std::string_view table) {
  lines whole;
  std::istringstream in{replaced(str(table), "\\\n", "")};
  for (std::string line; std::getline(in, line);)
    if (const std::size_t at = line.find_first_not_of(' '); line.starts_with(' '))
      whole.back() += (at == line.find(">>") ? " " : " | ") + line.substr(at);
    else if (!line.empty() && line[0] != '#')
      whole.push_back(line);
  std::vector<lines> rows;
  for (const std::string& line : whole) {
    lines& row = rows.emplace_back();
    for (std::size_t at = 0, end = 0; end != std::string::npos; at = end + 2) {
      const std::string field = line.substr(at, (end = line.find(">>", at)) - at);
      const std::size_t first = std::min(field.find_first_not_of(' '), field.size());
      const std::string bare = field.substr(first, field.find_last_not_of(' ') + 1 - first);
      row.push_back(replaced(replaced(bare, "\\t", "\t"), "\\n", "\n"));
    }
    row.resize(std::max<std::size_t>(row.size(), 4));
  }
  return rows;
}

/// The queue without the messages at the start and the end of a read, in one text: "V argument 3:"
/// stands for the words of a value error, "E", "D" and "W" for the other kinds; "'" for a double
/// quote.
inline std::string brief(optiontable& table) {
  std::string all = replaced(joined(table.queue()), "\"", "'");
  for (const std::string_view words :
       {"*** Value Error ", "*** Definition Error ", "*** Error ", "*** Warning "})
    all = replaced(replaced(all, str(words), {words[4], ' '}),
                   {words[4], ' ', 'l', 'i', 'n', 'e', ' '}, {words[4]});
  return all;
}

/// A definition with bounds that a test can pass, and few names that are alike.
inline constexpr std::string_view smalldefinition = R"(* solver options
general group 1 0 General options
steplim integer 1 1000 0 maxint 10 1 Step limit
 Ends the run after so many steps.
 
    Restarts count.
tol double 2 1.0e-6 0 1 11 1 Feasibility tolerance
logname string 3 "run log" 12 1 Log file name
scale boolean 4 1 13 1 Scale the model
verbose boolean.NV 5 0 14 1 Talk more
cmt eolcomm !
method enumstr 6 auto 20 1 Solution method
 auto 21 By model size
 primal 22 Primal simplex
printlevel enumint 7 1 23 1 Output volume
 0 24 Silent
 1 25 Normal
stplim synonym steplim
paths strlist 8 26 1 Search paths
fast macro 27 1 Fast settings
 scale
rf immediate ReadFile 28 1 Read a parameter file
gone deprecated
 stplim Use steplim
rowtype indicator
.scale double 9 1 0 maxdouble 29 1 Scale factor
)";

}  // namespace optxv
