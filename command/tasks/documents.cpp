// html, definition, include, reference: documents about a definition.

#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <memory>

#include "foundation/runtime.h"
#include "output/outputs.h"
#include "output/page.h"
#include "output/reporter.h"
#include "tasks/subcommands.h"
#include "writers/facts.h"
#include "writers/optionwriter.h"

namespace command {
namespace {

using optxv::tzmaoptionwriter;

// In the order of documentform.
constexpr std::array<void (tzmaoptionwriter::*)(std::string_view) const, 3> writers = {
    &tzmaoptionwriter::writeashtml, &tzmaoptionwriter::writedefinition,
    &tzmaoptionwriter::writedelphiinc};

/// Reads a definition, tells what is wrong with it, and hands the table to make, which gives the
/// status of its own work: the result, unless it is 0 and there were errors. What was read up to an
/// error is documented all the same.
template <class Make>
int document(const std::string& definition, Make make) {
  if (const int error = whynotreadable(definition); error != 0) return unusable(definition, error);
  optionset options;
  const std::unique_ptr<reporter> report = makelines(stderr);
  session run(options, *report);
  if (!run.read({.definition = definition})) return run.total().status();
  const int status = make(*static_cast<const optxv::tzmaoptions*>(options.handle()));
  return status != 0 ? status : run.total().status();
}

int deliverto(const std::string& file, std::string_view text) {
  const int error = deliver(file, text);
  return error == 0 ? 0 : unusable(file, error);
}

std::string lastpart(const std::string& path) {
  return path.substr(path.rfind('/') + 1);
}

}  // namespace

int document(documentform form, const std::string& definition, const std::string& file) {
  return document(definition, [&](const optxv::tzmaoptions& options) {
    const tzmaoptionwriter writer(options);
    const auto text = captured([&](const std::string& name) {
      try {
        (writer.*writers[static_cast<std::size_t>(form)])(name);
        return 0;
      } catch (const optxv::einouterror&) {
        return EIO;  // a file in memory fails for want of memory alone
      }
    });
    return text ? deliverto(file, *text) : unusable(file, errno);
  });
}

int reference(const std::string& definition, const std::string& folder) {
  return document(definition, [&](const optxv::tzmaoptions& options) {
    const std::string page = referencepage(optxv::describe(options), lastpart(definition));
    if (mkdir(folder.c_str(), 0777) != 0 && errno != EEXIST) return unusable(folder, errno);
    return deliverto(folder + "/index.html", page);
  });
}

}  // namespace command
