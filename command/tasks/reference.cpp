// reference: the page about the options, for a browser.

#include <sys/stat.h>

#include <cerrno>

#include "output/failure.h"
#include "output/page.h"
#include "tasks/product.h"
#include "tasks/tasks.h"
#include "writers/facts.h"

namespace command {
namespace {

std::string lastpart(const std::string& path) {
  return path.substr(path.rfind('/') + 1);
}

/// Makes the folder, where there is none; 0 or a system error number.
int makefolder(const std::string& path) {
  return mkdir(path.c_str(), 0777) == 0 || errno == EEXIST ? 0 : errno;
}

}  // namespace

int reference(const request& given) {
  const std::string file = given.folder + "/index.html";
  run read(tostandarderror());
  if (!read.read(readingof(given))) return read.total().status();
  if (const int status = withheld(given, read, file); status != 0) return status;
  const std::string page =
      referencepage(optxv::describe(tableof(read)), lastpart(given.definition));
  if (const int error = makefolder(given.folder); error != 0)
    return tell({.what = given.folder + ": cannot be made", .error = error});
  return delivered(given, read, file, page);
}

}  // namespace command
