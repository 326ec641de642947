// write: what is set, as a parameter file.

#include "output/failure.h"
#include "tasks/product.h"
#include "tasks/readback.h"
#include "tasks/tasks.h"

namespace command {

int write(const request& given) {
  run read(tostandarderror());
  if (!read.read(readingof(given))) return read.total().status();
  if (const int status = withheld(given, read, given.output); status != 0) return status;
  const std::string text = read.options().to_text();
  const int status = delivered(given, read, given.output, text);
  if (status != statusfailed)
    for (const std::string& each : readbacklosses(read, text)) tellwarning(each);
  return status;
}

}  // namespace command
