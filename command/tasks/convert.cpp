// convert: settings from one form to the other.

#include <optional>

#include "exchange/madetext.h"
#include "exchange/settingsjson.h"
#include "exchange/settingstext.h"
#include "output/failure.h"
#include "tasks/product.h"
#include "tasks/tasks.h"
#include "text/printable.h"
#include "text/wording.h"

namespace command {
namespace {

int tojson(const request& given) {
  run read(tostandarderror());
  readsettings what = readingof(given);
  what.parameters = {given.file};
  if (!read.read(what)) return read.total().status();
  const settingsloss lost = [&](std::int32_t optnr, std::int32_t which, const std::string& text) {
    place where = read.values().of(optnr, which).where;
    if (where.line == 0) where.file = given.file;
    const std::string name = optnr == 0 ? "" : shownname(read.options().handle(), optnr) + ": ";
    read.tell(own(ownfinding::notexpressible, where, name + text));
  };
  const std::string product = jsontext(settingsjson(read.options(), given.all, lost));
  if (const int status = withheld(given, read, given.output); status != 0) return status;
  return delivered(given, read, given.output, product);
}

/// The text that is made of the JSON has no file name, by which its findings are known.
int toparameters(const request& given) {
  std::optional<madetext> made;
  orderedfindings ofjson;
  const findingtaker report = tostandarderror();
  run read([&](const finding& found) {
    if (!made) return report(found);
    ofjson.add(found.where.file.empty() ? made->origin(found) : found);
  });
  if (!read.read(readingof(given))) return read.total().status();
  const textdocument* const json = read.open(given.file);
  if (json == nullptr) return read.total().status();
  made.emplace(given.file, json->text(), [&](const finding& found) { read.tell(found); });
  settingstext settings(read.options(), read.names(), {given.tokens, given.nobounds}, *made);
  settings.read(json->text());
  read.readmade("", made->text());
  settings.compare();
  ofjson.report(report);
  if (const int status = withheld(given, read, given.output); status != 0) return status;
  return delivered(given, read, given.output, made->product());
}

}  // namespace

int convert(const request& given) {
  return given.to == "json" ? tojson(given) : toparameters(given);
}

}  // namespace command
