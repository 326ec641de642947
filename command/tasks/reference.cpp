// reference: the page about the options, for a browser.

#include <sys/stat.h>

#include <cerrno>

#include "output/outputs.h"
#include "output/page.h"
#include "tasks/documents.h"
#include "tasks/tasks.h"
#include "writers/facts.h"

namespace command {
namespace {

std::string lastpart(const std::string& path) {
  return path.substr(path.rfind('/') + 1);
}

}  // namespace

int reference(const request& given) {
  return withtable(given, [&](const optxv::tzmaoptions& options) {
    const std::string page = referencepage(optxv::describe(options), lastpart(given.definition));
    if (mkdir(given.folder.c_str(), 0777) != 0 && errno != EEXIST)
      return unusable(given.folder, errno);
    return deliverto(given.folder + "/index.html", page);
  });
}

}  // namespace command
