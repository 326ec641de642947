#include "analysis/entryforms.h"

#include "text/entrytext.h"
#include "text/printable.h"
#include "text/wording.h"

namespace command {

entryform formof(const optxv::options& options, const optxv::dot_option& entry) {
  std::vector<std::string> labels;
  for (const std::string& label : entry.labels) labels.push_back(quotedlabel(label));
  return {printable(withlabels(entry.symbol + shownname(options.handle(), entry.option), labels)),
          realtext(entry.value)};
}

entryform formof(const optxv::indicator& entry) {
  return {printable(withlabels(entry.equation, entry.equation_labels) + '$' +
                    withlabels(entry.variable, entry.variable_labels)),
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

}  // namespace command
