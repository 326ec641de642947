// lint: what rules find in files that may well be read without an error.

#include "lint/linter.h"

#include <memory>

#include "analysis/codes.h"
#include "output/failure.h"
#include "output/reportforms.h"
#include "tasks/tasks.h"
#include "text/printable.h"

namespace command {
namespace {

/// Whether lint tells a finding: errors and what rules find. The warnings are those of check.
bool islints(const finding& found) {
  return found.level != severity::warning || namesrules(found.code);
}

/// All codes that lint may tell.
std::vector<coderow> lintcodes() {
  std::vector<coderow> all = checkcodes();
  for (const lintrule& each : lintrules()) all.push_back({each.code, each.level, each.sentence});
  return all;
}

/// Hands a finding on; for a person, with the code that a comment silences it by.
void tell(reporter& report, finding found, bool forpeople) {
  if (forpeople && namesrules(found.code)) found.text += " [" + std::string(found.code) + ']';
  report.take(found);
}

}  // namespace

int lint(const request& given) {
  for (const auto* words : {&given.select, &given.ignore})
    if (const std::string* wrong = unknownrule(*words))
      return tell({.what = "there is no rule " + inquotes(*wrong)});
  linter rules({given.parameters.empty() ? "D" : "P", given.select, given.ignore});
  const std::string form = given.json ? "json" : given.format;
  const std::unique_ptr<reporter> report =
      makereporter(form, stdout, {.codes = lintcodes(), .strict = given.strict});
  std::size_t warnings = 0;
  const auto take = [&](const finding& found) {
    if (!islints(found)) return;
    if (found.level == severity::warning) warnings++;
    tell(*report, found, form == reportwords.front());
  };
  run reading(take,
              {.also = report->hears(), .join = [&](run& joined) { return rules.join(joined); }});
  reading.read(readingof(given));
  rules.end();
  tally total = reading.total();
  total.warnings = warnings;
  report->summary(total);
  return total.status(given.strict);
}

}  // namespace command
