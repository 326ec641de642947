// The forms of findings by the words that flags have for them.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

#include "output/reporter.h"

namespace command {

/// What a form may want to know.
struct reportsettings {
  std::vector<coderow> codes = {};  ///< of the findings that may come
  bool strict = false;              ///< warnings count as errors for the exit status
  std::size_t most = 0;             ///< errors that are shown; 0 for all
};

/// The words, the first of which is the form for people.
inline constexpr std::array<std::string_view, 5> reportwords = {"lines", "json", "sarif", "github",
                                                                "gcc"};

/// A reporter of that form. REQUIRES: one of the words. BORROWS: the stream.
std::unique_ptr<reporter> makereporter(std::string_view word, std::FILE* out,
                                       reportsettings settings);

}  // namespace command
