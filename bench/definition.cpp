// Prints the definition of a table of the benchmarks, for code that is made from it at build time.
//
//   optxv_benchdefinition <options>

#include <cstdio>
#include <cstdlib>

#include "generator.h"

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const std::size_t count = std::strtoul(argv[1], nullptr, 10);
  const std::string text =
      optxv::bench::definitiontext(optxv::bench::generatetable(count, optxv::bench::tableseed));
  return std::fputs(text.c_str(), stdout) < 0 ? 1 : 0;
}
