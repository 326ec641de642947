#include "analysis/trial.h"

namespace command {

bool trial::accepts(std::string_view line) {
  if (line.size() > optionset::longesttext) return false;
  if (!options_) {
    options_ = std::make_unique<optionset>();
    options_->readdefinition("", definition_);
    options_->setlinemode(!tokens_);
  }
  options_->clearmessages();
  options_->readline(line);
  return options_->errorcount() == 0;
}

}  // namespace command
