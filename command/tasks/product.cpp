#include "tasks/product.h"

#include <unistd.h>

#include <memory>
#include <vector>

#include "output/delivery.h"
#include "output/lines.h"
#include "text/printable.h"

namespace command {
namespace {

std::vector<identity> inputsof(const run& read) {
  std::vector<identity> all;
  for (const enteredfile& each : read.files())
    if (each.id != identity{}) all.push_back(each.id);
  return all;
}

bool isterminal(const std::string& destination) {
  return destination.empty() && isatty(STDOUT_FILENO) == 1;
}

std::optional<failure> delivered(const std::string& destination, std::string_view product,
                                 const std::vector<identity>& inputs = {}) {
  return isterminal(destination) ? deliver(destination, printablelines(product), inputs)
                                 : deliver(destination, product, inputs);
}

}  // namespace

findingtaker tostandarderror() {
  return [report = std::shared_ptr<reporter>(makelines(stderr))](const finding& found) {
    report->take(found);
  };
}

int withheld(const request& given, const run& read, const std::string& destination) {
  const int status = read.total().status();
  if (status == 0 || given.force) return 0;
  tell({.what = "nothing is written to " + filewords(destination),
        .why =
            status == statusunusable ? "a file could not be read" : "there are errors in the files",
        .notes = {"--force writes it all the same"}});
  return status;
}

int delivered(const request& given, const run& read, const std::string& destination,
              std::string_view product) {
  const std::vector<identity> inputs = given.force ? std::vector<identity>() : inputsof(read);
  if (!given.force)
    for (const enteredfile& each : read.files())
      if (each.unknown != 0)
        return tell({.what = each.name + ": cannot be told from " + filewords(destination),
                     .error = each.unknown});
  const std::optional<failure> failed = delivered(destination, product, inputs);
  return failed ? tell(*failed) : read.total().status();
}

int shownproduct(std::string_view text) {
  const std::optional<failure> failed = delivered("", text);
  return failed ? tell(*failed) : 0;
}

int replaced(const std::string& file, std::string_view text) {
  const std::optional<failure> failed = delivered(file == "-" ? "" : file, text);
  return failed ? tell(*failed) : 0;
}

const optxv::tzmaoptions& tableof(const run& read) {
  return *static_cast<const optxv::tzmaoptions*>(read.options().handle());
}

int document(const request& given, documentform form) {
  run read(tostandarderror());
  if (!read.read(readingof(given))) return read.total().status();
  if (const int status = withheld(given, read, given.output); status != 0) return status;
  const optxv::tzmaoptionwriter writer(tableof(read));
  return delivered(given, read, given.output, (writer.*form)());
}

}  // namespace command
