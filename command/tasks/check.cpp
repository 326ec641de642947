// check: everything that is wrong with the files.

#include <memory>

#include "analysis/run.h"
#include "output/json.h"
#include "output/lines.h"
#include "tasks/tasks.h"

namespace command {
namespace {

/// Passes findings on up to a number of errors, and counts the others.
class limited {
 public:
  limited(reporter& report, std::size_t most) : report_(report), most_(most) {}

  void take(const finding& found) {
    if (found.level == severity::error) errors_++;
    if (most_ > 0 && errors_ > most_)
      unshown_++;
    else
      report_.take(found);
  }
  std::size_t unshown() const { return unshown_; }

 private:
  reporter& report_;
  std::size_t most_, errors_ = 0, unshown_ = 0;
};

}  // namespace

int check(const request& given) {
  const std::unique_ptr<reporter> report = given.json ? makejson(stdout) : makelines(stdout);
  limited shown(*report, given.maxerrors);
  run reading([&](const finding& found) { shown.take(found); }, {.checks = true});
  reading.read(readingof(given));
  tally total = reading.total();
  total.unshown = shown.unshown();
  report->summary(total);
  return total.status(given.strict);
}

}  // namespace command
