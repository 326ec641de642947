// lint: what rules find in files that may well be read without an error.

#include "lint/linter.h"

#include <map>
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

/// So many findings of a rule are shown to a person.
constexpr std::size_t mostofarule = 20;

/// Hands findings on. A person gets the code that a comment silences them by; of each rule only the
/// first ones, unless all are asked for, and how many more there are.
class lintreport {
 public:
  explicit lintreport(const request& given)
      : form_(given.json ? "json" : given.format),
        report_(makereporter(form_, stdout, {.codes = lintcodes(), .strict = given.strict})),
        all_(given.all || !forpeople()) {}

  listener* hears() { return report_->hears(); }

  void take(finding found) {
    if (!islints(found)) return;
    if (found.level == severity::warning) warnings_++;
    const bool rules = namesrules(found.code);
    if (rules && ++times_[found.code] > mostofarule && !all_) return;
    if (rules && forpeople()) found.text += " [" + std::string(found.code) + ']';
    report_->take(found);
  }

  /// Says what it comes to, and gives that with the warnings of lint alone.
  tally summary(tally total) {
    for (const auto& [code, times] : times_)
      if (times > mostofarule && !all_)
        put(stdout, grouped(times - mostofarule) + " more of " + std::string(code) +
                        " not shown; --all shows them\n");
    total.warnings = warnings_;
    report_->summary(total);
    return total;
  }

 private:
  bool forpeople() const { return form_ == reportwords.front(); }

  std::string form_;
  std::unique_ptr<reporter> report_;
  bool all_;
  std::size_t warnings_ = 0;
  std::map<std::string_view, std::size_t> times_;
};

}  // namespace

int lint(const request& given) {
  for (const auto* words : {&given.select, &given.ignore})
    if (const std::string* wrong = unknownrule(*words))
      return tell({.what = "there is no rule " + inquotes(*wrong)});
  linter rules({given.parameters.empty() ? "D" : "P", given.select, given.ignore});
  lintreport report(given);
  run reading([&](const finding& found) { report.take(found); },
              {.also = report.hears(), .join = [&](run& joined) { return rules.join(joined); }});
  reading.read(readingof(given));
  rules.end();
  return report.summary(reading.total()).status(given.strict);
}

}  // namespace command
