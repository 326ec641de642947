// write: what is set, as a parameter file.

#include <cerrno>
#include <optional>

#include "output/outputs.h"
#include "output/reporter.h"
#include "tasks/tasks.h"
#include "text/textform.h"

namespace command {

int write(const request& given) {
  optionset options;
  const std::unique_ptr<reporter> report = makelines(stderr);
  session run(options, *report);
  if (!run.read(reading(given))) return run.total().status();
  // By way of a file in memory: the library ends the process if a write fails, and a full disk is
  // no reason for that.
  const std::optional<std::string> text =
      captured([&](const std::string& name) { return options.writeparameters(name); });
  const int error = text ? deliver(given.output, *text) : errno;
  if (error == 0) return run.total().status();
  const std::string where = given.output.empty() ? "standard output" : printable(given.output);
  put(stderr, where + ": error: cannot be written: " + systemtext(error) + '\n');
  return statusunusable;
}

}  // namespace command
