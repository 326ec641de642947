// Text that is made from a skeleton and from data.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace command {

/// The data of a skeleton: texts and lists of further data, each under its name.
struct datanode {
  std::map<std::string, std::string, std::less<>> texts = {};
  std::map<std::string, std::vector<datanode>, std::less<>> lists = {};
};

/// Fills a skeleton. Its lines are copied, but for these:
///
///   $(name)        within a line is the text of that name; a line that has nothing but one of them
///                  becomes each line of the text, indented as it is, and nothing for an empty text
///   %each name     begins lines that come once for each member of a list
///   %if name       begins lines that come if there is such a text or list, and it is not empty
///   %unless name   begins lines that come if not
///   %end           ends the three
///
/// A name is looked up in the member of the list, then in what surrounds it. In the lines of %each,
/// `comma` is a comma, but for the last member. REQUIRES: a skeleton that is well formed, whose
/// names are there: it is a part of this program, and a name that is not there throws.
std::string filled(std::string_view skeleton, const datanode& data);

}  // namespace command
