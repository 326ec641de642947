#include "layout/layouttable.h"

#include <algorithm>

#include "layout/filelines.h"
#include "text/names.h"

namespace command {
namespace {

/// What an instruction does to read a file, and what takes the place of that. It is not the longer
/// one, so that nothing moves.
constexpr std::string_view reads = "readfile", tells = "Message ";
static_assert(reads.size() == tells.size());

/// Hears which instructions there are.
struct instructionlist : listener {
  void field(const optxv_field& field) override {
    if (field.field != optxv_field_action) return;
    const std::string action = folded(viewof(field.text));
    (action == "eolflag" ? words.modes : words.others).insert(field.option);
    if (action == reads) readers.push_back(field.place);
  }
  instructions words;
  std::vector<optxv_place> readers;
};

}  // namespace

layouttable::layouttable(std::string_view definition) : definition_(definition) {
  instructionlist heard;
  {
    optxv::options options;
    const hearing hearing(options.handle(), {&heard});
    options.read_definition_text("definition", definition_);
    hearing.rethrow();
  }
  words_ = std::move(heard.words);
  if (heard.readers.empty()) return;
  const std::vector<fileline> lines = filelines(definition);
  for (const optxv_place& each : heard.readers) {
    const std::string_view body = lines[static_cast<std::size_t>(each.line) - 1].body;
    const auto from = static_cast<std::size_t>(body.data() - definition.data() + each.column - 1);
    // Within quotes the blank at the end would count.
    std::string word(tells);
    word.resize(static_cast<std::size_t>(each.length), ' ');
    definition_.replace(from, word.size(), word);
  }
}

optxv::options layouttable::make(bool tokens, bool nobounds) const {
  optxv::options options;
  options.read_definition_text("definition", definition_);
  options.clear_messages();
  options.set_switch(optxv_switch_line_mode, !tokens);
  options.set_switch(optxv_switch_no_bounds, nobounds);
  options.set_switch(optxv_switch_print, false);
  return options;
}

}  // namespace command
