// check: everything that is wrong with the files.

#include <memory>

#include "analysis/run.h"
#include "output/json.h"
#include "output/limited.h"
#include "output/lines.h"
#include "tasks/tasks.h"

namespace command {
namespace {

std::unique_ptr<reporter> reporterof(const request& given) {
  std::unique_ptr<reporter> result = given.json ? makejson(stdout) : makelines(stdout);
  if (given.maxerrors == 0) return result;
  return makelimited(std::move(result), given.maxerrors);
}

}  // namespace

int check(const request& given) {
  const std::unique_ptr<reporter> report = reporterof(given);
  run reading([&](const finding& found) { report->take(found); }, {.checks = true});
  reading.read(readingof(given));
  const tally total = reading.total();
  report->summary(total);
  return total.status(given.strict);
}

}  // namespace command
