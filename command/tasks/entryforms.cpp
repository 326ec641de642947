#include "tasks/entryforms.h"

#include <array>
#include <charconv>

#include "text/printable.h"

namespace command {
namespace {

std::string withlabels(const std::string& symbol, const std::vector<std::string>& labels) {
  std::string list;
  for (const std::string& label : labels) list += (list.empty() ? "(" : ",") + printable(label);
  return printable(symbol) + list + (list.empty() ? "" : ")");
}

/// A star stands for all labels, and has no quotes.
std::string requoted(const std::string& label) {
  const char quote = label.find('\'') == label.npos ? '\'' : '"';
  return label == "*" ? label : quote + label + quote;
}

std::string dotline(const optionset& options, const dotoption& each) {
  std::vector<std::string> labels;
  for (const std::string& label : each.labels) labels.push_back(requoted(label));
  return withlabels(each.symbol + options.name(each.optnr), labels) + " = " + realtext(each.value);
}

std::string indicatorline(const indicator& each) {
  return withlabels(each.equation, each.equationlabels) + '$' +
         withlabels(each.variable, each.variablelabels) + " = " + std::to_string(each.mark);
}

}  // namespace

std::vector<std::string> dotlines(const optionset& options, std::int32_t& dropped) {
  std::vector<std::string> lines;
  for (const dotoption& each : options.dotoptions(dropped)) lines.push_back(dotline(options, each));
  return lines;
}

std::vector<std::string> indicatorlines(const optionset& options, std::int32_t& dropped) {
  std::vector<std::string> lines;
  for (const indicator& each : options.indicators(dropped)) lines.push_back(indicatorline(each));
  return lines;
}

std::string realtext(double value) {
  std::array<char, 32> text{};
  const auto result = std::to_chars(text.data(), text.data() + text.size(), value);
  return {text.data(), result.ptr};
}

}  // namespace command
