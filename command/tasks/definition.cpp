// definition: what was understood of a definition, in the form of a definition; or a new one, made
// of a table.

#include "exchange/madetext.h"
#include "exchange/sheetdefinition.h"
#include "output/failure.h"
#include "tasks/product.h"
#include "tasks/tasks.h"
#include "text/shelf.h"

namespace command {
namespace {

/// The definition is read in place of the table, so that whatever is wrong with it is told of that.
int fromtable(const request& given) {
  std::optional<madetext> made;
  bool reading = false;
  const findingtaker report = tostandarderror();
  orderedfindings oftable;
  const auto take = [&](const finding& found) {
    if (!made) return report(found);
    oftable.add(reading ? made->origin(found) : found);
  };
  run read(take, {.checks = true});
  const textdocument* const table = read.open(given.from);
  if (table == nullptr) return read.total().status();
  made.emplace(given.from, table->text(), [&](const finding& found) { read.tell(found); });
  sheetdefinition definition(*made);
  definition.read(table->text());
  const drafttexts drafts = {{given.from, made->text()}};
  reading = true;
  read.read({.definition = given.from, .drafts = &drafts});
  reading = false;
  definition.compare(read.options());
  oftable.report(report);
  if (const int status = withheld(given, read, given.output); status != 0) return status;
  return delivered(given, read, given.output, made->text());
}

}  // namespace

int definition(const request& given) {
  if (!given.from.empty()) return fromtable(given);
  if (given.definition.empty())
    return tell({.what = "there is nothing to read",
                 .notes = {"name a definition, or a table after --from"}});
  return document(given, &optxv::tzmaoptionwriter::definitiontext);
}

}  // namespace command
