// reference: what there is to know about the options: a page for a browser, Markdown, or a manual
// page.

#include <sys/stat.h>

#include <cerrno>

#include "output/failure.h"
#include "output/manpage.h"
#include "output/markdown.h"
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

using referenceform = std::string (*)(const optxv::tablefacts&, const std::string& source);

}  // namespace

int reference(const request& given) {
  const referenceform form = given.markdown ? referencemarkdown
                             : given.man    ? referencemanpage
                                            : referencepage;
  const bool isfolder = form == referencepage;
  const std::string file = given.target + (isfolder ? "/index.html" : "");
  run read(tostandarderror());
  if (!read.read(readingof(given))) return read.total().status();
  if (const int status = withheld(given, read, file); status != 0) return status;
  const std::string product = form(optxv::describe(tableof(read)), lastpart(given.definition));
  const int error = isfolder ? makefolder(given.target) : 0;
  if (error != 0) return tell({.what = given.target + ": cannot be made", .error = error});
  return delivered(given, read, file, product);
}

}  // namespace command
