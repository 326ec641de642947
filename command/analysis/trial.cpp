#include "analysis/trial.h"

namespace command {

constexpr std::size_t longesttext = 255;  ///< that the library keeps of a value

bool trial::accepts(std::string_view line) {
  if (line.size() > longesttext) return false;
  if (!options_) {
    options_.emplace();
    options_->read_definition_text("", definition_);
    options_->set_switch(optxv_switch_print, false);
    start_ = options_->take_snapshot();
  }
  options_->restore(*start_);
  options_->set_switch(optxv_switch_line_mode, !tokens_);
  options_->set_switch(optxv_switch_no_bounds, false);
  options_->clear_messages();
  return static_cast<bool>(options_->read_line(line));
}

}  // namespace command
