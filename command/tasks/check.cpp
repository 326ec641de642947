// check: everything that is wrong with the files.

#include <memory>

#include "analysis/codes.h"
#include "analysis/run.h"
#include "output/failure.h"
#include "output/reportforms.h"
#include "tasks/tasks.h"
#include "text/printable.h"

namespace command {
namespace {

int unknownform(const std::string& word) {
  std::string known;
  for (const std::string_view each : reportwords)
    known += (known.empty() ? "" : ", ") + std::string(each);
  return tell({.what = "there is no format " + inquotes(word), .notes = {"there are " + known}});
}

}  // namespace

int check(const request& given) {
  const std::string word = given.json ? "json" : given.format;
  const std::unique_ptr<reporter> report = makereporter(
      word, stdout, {.codes = checkcodes(), .strict = given.strict, .most = given.maxerrors});
  if (report == nullptr) return unknownform(word);
  run reading([&](const finding& found) { report->take(found); },
              {.checks = true, .also = report->hears()});
  reading.read(readingof(given));
  const tally total = reading.total();
  report->summary(total);
  return total.status(given.strict);
}

}  // namespace command
