#include "layout/layout.h"

#include "layout/entrypieces.h"
#include "layout/entryrows.h"
#include "layout/grouporder.h"
#include "layout/layouttable.h"
#include "layout/recordpieces.h"
#include "layout/recordrows.h"
#include "layout/witness.h"

namespace command {
namespace {

/// The name that a text is read by; nobody sees it.
const std::string textname = "text";

/// What a text comes to: all that is heard of it, and what is set after it.
struct meaning {
  witness heard;
  std::string settings = {};

  bool operator==(const meaning& other) const {
    return heard.agrees(other.heard) && settings == other.settings;
  }
};

/// Reads parameter text, with one listener more or none.
meaning meaningof(const layouttable& table, std::string_view text, const layoutsettings& settings,
                  listener* also) {
  meaning result = {witness(!settings.bygroup)};
  optxv::options options = table.make(settings.tokens, settings.nobounds);
  std::vector<listener*> listeners = {&result.heard};
  if (also != nullptr) listeners.push_back(also);
  const hearing hearing(options.handle(), listeners);
  options.read_text(textname, text);
  hearing.rethrow();
  result.settings = options.to_text();
  return result;
}

witness witnessof(std::string_view definition, listener* also) {
  witness result(true);
  optxv::options options;
  std::vector<listener*> listeners = {&result};
  if (also != nullptr) listeners.push_back(also);
  const hearing hearing(options.handle(), listeners);
  options.read_definition_text(textname, definition);
  hearing.rethrow();
  return result;
}

/// A text as it is after all.
laidout refused(std::string_view text) {
  return {std::string(text), true};
}

}  // namespace

laidout layoutparameters(std::string_view definition, std::string_view text,
                         const layoutsettings& settings) {
  const layouttable table(definition);
  const std::vector<fileline> lines = filelines(text);
  entrypieces pieces(lines, table.words(), settings.tokens);
  const meaning before = meaningof(table, text, settings, &pieces);
  entryrows rows(lines, pieces, table.words());
  if (settings.bygroup) sortbygroup(rows, table.make(false, false));
  std::string written = rows.written();
  if (written == text) return {std::move(written)};
  const bool same = meaningof(table, written, settings, nullptr) == before;
  return same ? laidout{std::move(written)} : refused(text);
}

laidout layoutdefinition(std::string_view text, const layoutsettings& settings) {
  const std::vector<fileline> lines = filelines(text);
  recordpieces pieces(lines);
  const witness before = witnessof(text, &pieces);
  std::string written = recordtext(lines, pieces, settings.width);
  if (written == text) return {std::move(written)};
  return witnessof(written, nullptr).agrees(before) ? laidout{std::move(written)} : refused(text);
}

}  // namespace command
