// The public header in C++11 with every warning an error, without its mixed-case names, which are
// free for the program's own use then.
#define OPTXV_NO_MIXED_CASE_NAMES
#include <optxv/optxv.h>

namespace {
int optCount(optHandle handle) {
  return optcount(handle);
}
}  // namespace

int main() {
  optHandle options = nullptr;
  xcreate(&options);
  const int count = optCount(options);
  xfree(&options);
  return options == nullptr ? count : 1;
}
