// schema: a JSON Schema of the settings of a definition.

#include "exchange/jsonschema.h"

#include <filesystem>

#include "tasks/product.h"
#include "tasks/tasks.h"
#include "text/printable.h"

namespace command {
namespace {

std::string titleof(const std::string& file) {
  const std::string name = std::filesystem::path(file).filename().string();
  return file == "-" ? "Settings" : "Settings of " + printable(name);
}

}  // namespace

int schema(const request& given) {
  const findingtaker report = tostandarderror();
  run read(report);
  if (!read.read(readingof(given))) return read.total().status();
  if (const int status = withheld(given, read, given.output); status != 0) return status;
  const auto tell = [&](std::int32_t optnr, const std::string& text) {
    report(own(ownfinding::notinschema, read.names().option(optnr).where,
               inquotes(read.names().option(optnr).name) + ": " + text));
  };
  const bool indicators = !read.names().indicatorword().empty();
  return delivered(
      given, read, given.output,
      jsontext(jsonschema(read.options(), indicators, titleof(given.definition), tell)));
}

}  // namespace command
