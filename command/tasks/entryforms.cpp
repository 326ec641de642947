#include "tasks/entryforms.h"

#include "exchange/entrytext.h"
#include "text/printable.h"
#include "text/wording.h"

namespace command {
namespace {

std::string dotline(const optxv::options& options, const optxv::dot_option& each) {
  std::vector<std::string> labels;
  for (const std::string& label : each.labels) labels.push_back(quotedlabel(label));
  return printable(withlabels(each.symbol + shownname(options.handle(), each.option), labels)) +
         " = " + realtext(each.value);
}

std::string indicatorline(const optxv::indicator& each) {
  return printable(withlabels(each.equation, each.equation_labels) + '$' +
                   withlabels(each.variable, each.variable_labels)) +
         " = " + std::to_string(each.mark);
}

}  // namespace

std::vector<std::string> dotlines(const optxv::options& options) {
  std::vector<std::string> lines;
  for (const optxv::dot_option& each : options.dot_options())
    lines.push_back(dotline(options, each));
  return lines;
}

std::vector<std::string> indicatorlines(const optxv::options& options) {
  std::vector<std::string> lines;
  for (const optxv::indicator& each : options.indicators()) lines.push_back(indicatorline(each));
  return lines;
}

}  // namespace command
