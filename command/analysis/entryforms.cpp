#include "analysis/entryforms.h"

#include <array>
#include <charconv>

#include "text/printable.h"
#include "text/wording.h"

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

}  // namespace

entryform formof(const optxv::options& options, const optxv::dot_option& entry) {
  std::vector<std::string> labels;
  for (const std::string& label : entry.labels) labels.push_back(requoted(label));
  return {withlabels(entry.symbol + shownname(options.handle(), entry.option), labels),
          realtext(entry.value)};
}

entryform formof(const optxv::indicator& entry) {
  return {withlabels(entry.equation, entry.equation_labels) + '$' +
              withlabels(entry.variable, entry.variable_labels),
          std::to_string(entry.mark)};
}

std::vector<std::string> dotlines(const optxv::options& options) {
  std::vector<std::string> lines;
  for (const optxv::dot_option& each : options.dot_options())
    lines.push_back(formof(options, each).line());
  return lines;
}

std::vector<std::string> indicatorlines(const optxv::options& options) {
  std::vector<std::string> lines;
  for (const optxv::indicator& each : options.indicators()) lines.push_back(formof(each).line());
  return lines;
}

std::string realtext(double value) {
  std::array<char, 32> text{};
  const auto result = std::to_chars(text.data(), text.data() + text.size(), value);
  return {text.data(), result.ptr};
}

}  // namespace command
