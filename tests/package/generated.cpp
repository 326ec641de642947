// A caller whose options the package makes: they are found, and filled from a handle.
#include <iostream>

#include "rates_options.hpp"

int main() {
  optxv_handle handle = nullptr;
  if (optxv_create(&handle) != optxv_ok) return 1;
  if (rates::read_definition(handle) != optxv_ok) return 2;
  rates::options values;
  values.rate = 7;
  if (rates::apply(values, handle) != optxv_ok) return 3;
  rates::options found;
  if (rates::fill(found, handle) != optxv_ok || found.rate != 7) return 4;
  optxv_free(&handle);
  std::cout << "generated: ok\n";
}
