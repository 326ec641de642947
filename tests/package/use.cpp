// A caller in C++: two objects live side by side, and each is its own.
#include <optxv/optxv.h>
#include <iostream>

int main() {
  void* first = nullptr;
  void* second = nullptr;
  xcreate(&first);
  xcreate(&second);
  const bool distinct = first != nullptr && second != nullptr && first != second;
  const bool empty = distinct && optcount(first) == 0 && optcount(second) == 0;
  xfree(&first);
  xfree(&second);
  if (!empty || first != nullptr || second != nullptr) return 1;
  std::cout << "c++ caller: ok\n";
  return 0;
}
