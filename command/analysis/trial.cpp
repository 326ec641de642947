#include "analysis/trial.h"

namespace command {

constexpr std::size_t longesttext = 255;  ///< that the library keeps of a value

void trial::effects::key(const optxv_key& key) {
  optxv_option info{};
  if (optxv_option_info(handle, key.option, &info) == 0 && info.kind == optxv_kind_immediate)
    instruction = true;
}

void trial::open() {
  options_.emplace();
  options_->read_definition_text("", definition_);
  options_->set_switch(optxv_switch_print, false);
  heard_.handle = options_->handle();
  hearing_.emplace(heard_.handle, std::vector<listener*>{&heard_});
}

/// So that no line has an effect on the next: what was set is reset, option by option, since a text
/// may have many faults and the table many options. Dot options and indicators are only added to
/// their lists, which are emptied now and then.
void trial::undo() {
  constexpr std::size_t mostentries = 1000;
  for (const std::int32_t number : heard_.set) options_->reset(number);
  heard_.set.clear();
  if (heard_.entries < mostentries) return;
  options_->reset_all();
  heard_.entries = 0;
}

bool trial::accepts(std::string_view line) {
  heard_.instruction = false;
  if (line.size() > longesttext) return false;
  if (!options_) open();
  undo();
  options_->set_switch(optxv_switch_line_mode, !tokens_);
  options_->set_switch(optxv_switch_no_bounds, false);
  options_->clear_messages();
  return static_cast<bool>(options_->read_line(line));
}

}  // namespace command
