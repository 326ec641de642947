#include "text/entrytext.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "text/names.h"

namespace command {

std::string realtext(double value) {
  std::array<char, 32> text{};
  const auto result = std::to_chars(text.data(), text.data() + text.size(), value);
  return {text.data(), result.ptr};
}

std::string quotedlabel(const std::string& label) {
  const char quote = label.find('\'') == label.npos ? '\'' : '"';
  return label == "*" ? label : quote + label + quote;
}

std::string withlabels(const std::string& symbol, const std::vector<std::string>& labels) {
  std::string list;
  for (const std::string& label : labels) list += (list.empty() ? "(" : ",") + label;
  return symbol + list + (list.empty() ? "" : ")");
}

std::string textvalue(const std::string& text, std::string_view commentcharacters) {
  constexpr std::string_view others = "./+-";
  const auto plain = [&](char c) {
    return (isnamecharacter(c) || others.find(c) != others.npos) &&
           commentcharacters.find(c) == commentcharacters.npos;
  };
  return !text.empty() && std::ranges::all_of(text, plain) ? text : '"' + text + '"';
}

}  // namespace command
