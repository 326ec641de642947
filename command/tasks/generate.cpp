// generate: code for a program that has the options of a definition.

#include "code/generator.h"
#include "tasks/product.h"
#include "tasks/tasks.h"

namespace command {
int generate(const request& given) {
  const language* as = languageof(given.lang);
  const findingtaker report = tostandarderror();
  run read(report);
  if (!read.read(readingof(given))) return read.total().status();
  if (const int status = withheld(given, read, given.output); status != 0) return status;
  const codeorder order = {.as = as,
                           .prefix = given.prefix,
                           .embed = given.embed,
                           .file = given.definition,
                           .text = read.definitiontext()};
  const auto met = [&](std::int32_t optnr, const std::string& text) {
    place where = read.names().option(optnr).where;
    if (where.line == 0) where.file = given.definition;
    report(own(ownfinding::namesmeet, where, text));
  };
  return delivered(given, read, given.output, generated(read.options().handle(), order, met));
}

}  // namespace command
