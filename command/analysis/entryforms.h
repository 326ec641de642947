// Dot options and indicators as lines of parameter text.
#pragma once

#include <string>
#include <vector>

#include "optxv/optxv.hpp"

namespace command {

/// An entry as parameter text has it: what is before the equals sign, and after it. Printable.
struct entryform {
  std::string name, value;
  std::string line() const { return name + " = " + value; }
};
/// The form of an entry of these options. A label of a dot option gets quotes, but for a star.
entryform formof(const optxv::options& options, const optxv::dot_option& entry);
entryform formof(const optxv::indicator& entry);

/// The entries of an option set, a line each, in the order in which they were read, printable. A
/// label of a dot option, which comes without its quotes, gets some.
std::vector<std::string> dotlines(const optxv::options& options);
std::vector<std::string> indicatorlines(const optxv::options& options);

}  // namespace command
