// The definition with an option of every kind, which most tests read.
#pragma once

#include <fstream>
#include <iterator>
#include <string>

namespace optxv {

/// The text of everykind.def. The first option, Help, is the library's own: steplim has number 2.
inline const std::string& everykind() {
  static const std::string text = [] {
    std::ifstream file(OPTXV_TESTS "/support/everykind.def");
    return std::string(std::istreambuf_iterator<char>(file), {});
  }();
  return text;
}

}  // namespace optxv
