// check: everything that is wrong with the files.

#include <memory>

#include "output/limited.h"
#include "output/reporter.h"
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
  optionset options;
  const std::unique_ptr<reporter> report = reporterof(given);
  session run(options, *report);
  run.read(reading(given));
  run.summarize();
  return run.total().status(given.strict);
}

}  // namespace command
