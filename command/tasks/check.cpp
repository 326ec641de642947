// check: everything that is wrong with the files.

#include <memory>

#include "analysis/codes.h"
#include "analysis/run.h"
#include "output/failure.h"
#include "output/reportforms.h"
#include "tasks/tasks.h"

namespace command {

int check(const request& given) {
  const std::unique_ptr<reporter> report =
      makereporter(given.json ? "json" : given.format, stdout,
                   {.codes = checkcodes(), .strict = given.strict, .most = given.maxerrors});
  run reading([&](const finding& found) { report->take(found); },
              {.checks = true, .also = report->hears()});
  reading.read(readingof(given));
  const tally total = reading.total();
  report->summary(total);
  return total.status(given.strict);
}

}  // namespace command
