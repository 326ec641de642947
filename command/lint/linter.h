// The linter: has the rules look at what a run reads, and silences what comments say.
#pragma once

#include <memory>
#include <vector>

#include "lint/declaredtable.h"
#include "lint/entryfacts.h"
#include "lint/ignores.h"
#include "lint/rules.h"

namespace command {

/// Joins a run, and adds the findings of the rules to its own, with the code of the rule: those
/// about the definition once it is read, those about parameter text line by line.
///
///   linter rules({"DP", {}, {}});
///   run reading(taker, {.join = [&](run& joined) { return rules.join(joined); }});
///   reading.read(...);
///   rules.end();
///
/// Where parameter text is read again, end() is called after each read.
///
/// OWNS: what its rules look at. BORROWS: the run, until end() or the end of the run.
class linter {
 public:
  explicit linter(ruleset rules);
  ~linter();
  linter(const linter&) = delete;
  linter& operator=(const linter&) = delete;

  /// The listeners for a run. Asked again for the same run, they are those for another text with
  /// the same definition: what is known of that stays, and all else is as new.
  std::vector<listener*> join(run& of);
  /// Adds what there is to say of the comments, once everything is read. REQUIRES: it has joined.
  void end();

 private:
  class joined;
  ruleset rules_;
  std::unique_ptr<joined> joined_;
};

}  // namespace command
