// The pieces of entries of parameter text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace command {

/// The shortest text that reads as that number, bit for bit.
std::string realtext(double value);

/// A label in quotes that it has not itself. A star stands for all labels, and has no quotes.
std::string quotedlabel(const std::string& label);

/// A symbol with its labels: x('a',*). The labels are as they are to be written.
std::string withlabels(const std::string& symbol, const std::vector<std::string>& labels);

/// A text as the value of an entry: in quotes, but for one that has only letters, digits and some
/// other characters that mean nothing in a table with these comment characters.
std::string textvalue(const std::string& text, std::string_view commentcharacters);

}  // namespace command
