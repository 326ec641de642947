#include "analysis/trial.h"

namespace command {

constexpr std::size_t longesttext = 255;  ///< that the library keeps of a value

void trial::instructions::key(const optxv_key& key) {
  optxv_option info{};
  if (optxv_option_info(handle, key.option, &info) == 0 && info.kind == optxv_kind_immediate)
    instruction = true;
}

bool trial::accepts(std::string_view line) {
  heard_.instruction = false;
  if (line.size() > longesttext) return false;
  if (!options_) {
    options_.emplace();
    options_->read_definition_text("", definition_);
    options_->set_switch(optxv_switch_print, false);
    start_ = options_->take_snapshot();
    heard_.handle = options_->handle();
    hearing_.emplace(heard_.handle, std::vector<listener*>{&heard_});
  }
  options_->restore(*start_);
  options_->set_switch(optxv_switch_line_mode, !tokens_);
  options_->set_switch(optxv_switch_no_bounds, false);
  options_->clear_messages();
  return static_cast<bool>(options_->read_line(line));
}

}  // namespace command
