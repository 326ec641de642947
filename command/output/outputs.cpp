#include "output/outputs.h"

#include "output/delivery.h"

namespace command {

int deliver(const std::string& file, std::string_view text) {
  const std::optional<failure> failed = deliver(file, text, {});
  return failed ? failed->error : 0;
}

int unusable(const std::string& file, int error) {
  return tell({.what = filewords(file), .error = error});
}

}  // namespace command
