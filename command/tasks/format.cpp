// format: files laid out anew, and nothing that they say changed.

#include <algorithm>
#include <map>

#include "layout/layout.h"
#include "output/failure.h"
#include "output/reporter.h"
#include "tasks/product.h"
#include "tasks/tasks.h"
#include "text/printable.h"
#include "text/shelf.h"

namespace command {
namespace {

class formatting {
 public:
  explicit formatting(const request& given);

  /// Reads the files. Gives the exit status if one cannot be laid out, else 0.
  int open();
  /// Tells the errors in the files, for which lines stay as they are. Gives the exit status.
  int tellfaults() const;
  /// Lays the files out and delivers them. Gives the exit status.
  int deliver();

 private:
  int checkwords() const;
  int read(const std::string& name);
  int tellfaults(const readsettings& what) const;
  std::string_view text(const std::string& name) {
    return std::get<textdocument>(shelf_.input(name)).text();
  }
  laidout layout(const std::string& name);
  int deliver(const std::string& name);

  const request& given_;
  shelf shelf_;
  std::vector<std::string> files_;  ///< to lay out
};

formatting::formatting(const request& given) : given_(given) {
  if (given.definitions) files_.push_back(given.definition);
  files_.insert(files_.end(), given.parameters.begin(), given.parameters.end());
}

int formatting::checkwords() const {
  if (files_.empty())
    return tell({.what = "FILE is required",
                 .notes = {"with --definitions, the first file is laid out, too"}});
  return 0;
}

int formatting::read(const std::string& name) {
  const auto* failed = std::get_if<readfailure>(&shelf_.input(name));
  return failed == nullptr ? 0 : tell({.what = name + ": cannot be read", .why = failed->words()});
}

int formatting::open() {
  int status = std::max(checkwords(), read(given_.definition));
  std::map<identity, std::string> known;
  for (const std::string& name : files_) {
    if (status == 0) status = read(name);
    if (status != 0) return status;
    const auto [at, fresh] = known.emplace(std::get<textdocument>(shelf_.input(name)).id(), name);
    if (!fresh)
      return tell(
          {.what = name + ": cannot be laid out", .why = "it is the same file as " + at->second});
  }
  return status;
}

int formatting::tellfaults() const {
  if (!given_.definitions) return tellfaults(readingof(given_));
  int status = 0;
  for (const std::string& name : files_)
    status = std::max(status, tellfaults({.definition = name}));
  return status;
}

/// A message that a file itself asks for is no error in it.
int formatting::tellfaults(const readsettings& what) const {
  const findingtaker take = tostandarderror();
  int status = 0;
  run reading([&](const finding& found) {
    if (found.level != severity::error || found.code == optxv_fault_name(optxv_fault_own)) return;
    take(found);
    status = statuserrors;
  });
  reading.read(what);
  return reading.total().unreadable > 0 ? statusunusable : status;
}

laidout formatting::layout(const std::string& name) {
  layoutsettings settings = {
      .tokens = given_.tokens, .nobounds = given_.nobounds, .bygroup = !given_.sort.empty()};
  if (given_.width > 0) settings.width = given_.width;
  return given_.definitions ? layoutdefinition(text(name), settings)
                            : layoutparameters(text(given_.definition), text(name), settings);
}

int formatting::deliver(const std::string& name) {
  const laidout result = layout(name);
  if (result.refused)
    tellwarning(name + " stays as it is: laid out, it would not be read as before");
  const bool changes = result.text != text(name);
  if (given_.namesonly) {
    if (changes) put(stdout, printable(name) + '\n');
    return changes ? statuserrors : 0;
  }
  if (!given_.write) return shownproduct(result.text);
  return changes ? replaced(name, result.text) : 0;
}

int formatting::deliver() {
  int status = 0;
  for (const std::string& name : files_) status = std::max(status, deliver(name));
  return status;
}

}  // namespace

int format(const request& given) {
  formatting all(given);
  if (const int status = all.open(); status != 0) return status;
  const int faults = all.tellfaults();
  return faults == statusunusable ? faults : std::max(faults, all.deliver());
}

}  // namespace command
