// Filling the struct that `optxv generate` makes of the table of 2,700, compared with the gets by
// number of its options.

#include <stdexcept>

#include "bench_options.hpp"  // made at build time
#include "units.h"

namespace optxv::bench {
namespace {

/// Gets the value of every option by the function of its type.
void getall(const options& from, const std::vector<option>& table) {
  for (const option& each : table) {
    if (each.data == optxv_data_integer)
      benchmark::DoNotOptimize(from.get<std::int32_t>(each.number));
    else if (each.data == optxv_data_real)
      benchmark::DoNotOptimize(from.get<double>(each.number));
    else if (each.data == optxv_data_text)
      benchmark::DoNotOptimize(from.get<std::string_view>(each.number));
  }
}

}  // namespace

void registerfilling(const options& library) {
  ::benchtable::options values;
  if (::benchtable::fill(values, library) != optxv_ok)
    throw std::runtime_error("the generated code is not of the table that is measured");
  benchmark::RegisterBenchmark("fill/struct", [&library, values](benchmark::State& state) mutable {
    for (auto _ : state) {
      benchmark::DoNotOptimize(::benchtable::fill(values, library));
      benchmark::ClobberMemory();
    }
  });
  const auto all = library.table();
  const std::vector<option> table(all.begin(), all.end());
  benchmark::RegisterBenchmark("fill/gets", [&library, table](benchmark::State& state) {
    for (auto _ : state) getall(library, table);
  });
}

std::vector<target> filltargets() {
  return {{"filling a struct of 2,700 fields, to the gets by number",
           "fill/struct",
           "fill/gets",
           {1.5}}};
}

}  // namespace optxv::bench
