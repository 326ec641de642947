// A program in C++ that uses one class of the library and no function of its C interface.
#include <optxv/platform/arguments.h>

#include <cstdio>

int main() {
  std::printf("%d arguments\n", static_cast<int>(optxv::paramcount()));
  return 0;
}
