// check: everything that is wrong with the files.

#include <memory>

#include "output/reporter.h"
#include "tasks/tasks.h"

namespace command {

int check(const request& given) {
  optionset options;
  const std::unique_ptr<reporter> report = given.json ? makejson(stdout) : makelines(stdout);
  session run(options, *report);
  run.read(reading(given));
  run.summarize();
  return run.total().status();
}

}  // namespace command
