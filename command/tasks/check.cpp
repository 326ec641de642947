// check: everything that is wrong with the files.

#include <filesystem>
#include <memory>

#include "analysis/bindings.h"
#include "analysis/codes.h"
#include "analysis/run.h"
#include "output/failure.h"
#include "output/reportforms.h"
#include "tasks/tasks.h"

namespace command {
namespace {

/// Checks a definition, and each of its parameter files on its own with it.
class boundcheck {
 public:
  boundcheck(const request& given, reporter& report, tally& total)
      : given_(given), report_(report), total_(total) {}

  void check(const binding& of, const std::vector<std::string>& files);

 private:
  /// The text of a file; nothing if it cannot be read, which is told.
  std::optional<textdocument> open(const std::string& file);
  bool begin(const textdocument& definition, bool tokens, bool tells);

  const request& given_;
  reporter& report_;
  tally& total_;
  bool tells_ = true;
  std::unique_ptr<run> reading_;
};

std::optional<textdocument> boundcheck::open(const std::string& file) {
  const readresult result = textdocument::read(file);
  if (const auto* text = std::get_if<textdocument>(&result)) return *text;
  total_ += {.files = 1, .unreadable = 1};
  report_.take(own(ownfinding::unreadable, place(file),
                   "cannot be read: " + std::get<readfailure>(result).words()));
  return std::nullopt;
}

bool boundcheck::begin(const textdocument& definition, bool tokens, bool tells) {
  tells_ = tells;
  reading_ = std::make_unique<run>(
      [this](const finding& found) {
        if (tells_) report_.take(found);
      },
      runparts{.checks = true, .also = report_.hears()});
  const bool good = reading_->readdefinition(definition, tokens || given_.tokens, given_.nobounds);
  if (tells) total_ += reading_->total();
  tells_ = true;
  return good;
}

void boundcheck::check(const binding& of, const std::vector<std::string>& files) {
  const auto definition = open(of.definition);
  if (!definition || !begin(*definition, of.tokens, true)) return;
  for (const std::string& file : files) {
    const auto text = open(file);
    if (!text) continue;
    if (!reading_->readagain(*text)) {
      begin(*definition, of.tokens, false);
      reading_->readagain(*text);
    }
    total_ += reading_->total();
  }
}

/// Gives the exit status of a failure, which is told; else 0, with the counts.
int checkbound(const request& given, reporter& report, tally& total) {
  std::error_code fault;
  const std::string here = std::filesystem::current_path(fault).string();
  if (fault) return tell({.what = "the current folder cannot be found", .error = fault.value()});
  const auto file = nearestbindings(here);
  if (!file)
    return tell({.what = "DEFINITION is required",
                 .notes = {"without one, check looks for " + std::string(bindingsname) +
                           " here and in the folders above"}});
  const readresult text = textdocument::read(*file);
  if (const auto* failed = std::get_if<readfailure>(&text))
    return tell({.what = *file + ": cannot be read", .why = failed->words()});
  const auto said = parsebindings(std::get<textdocument>(text).text(),
                                  std::filesystem::path(*file).parent_path().string());
  if (const auto* wrong = std::get_if<finding>(&said)) {
    std::string where = *file;
    if (wrong->where.line > 0)
      where += ':' + std::to_string(wrong->where.line) + ':' + std::to_string(wrong->where.column);
    return tell({.what = where, .why = wrong->text});
  }
  const auto& all = std::get<bindings>(said);
  std::filesystem::current_path(all.folder, fault);
  if (fault) return tell({.what = all.folder + ": cannot be entered", .error = fault.value()});
  for (const binding& each : all.all) {
    const std::vector<std::string> files = all.filesof(each, fault);
    if (fault) return tell({.what = all.folder + ": cannot be listed", .error = fault.value()});
    boundcheck(given, report, total).check(each, files);
  }
  return 0;
}

void checkwords(const request& given, reporter& report, tally& total) {
  run reading([&](const finding& found) { report.take(found); },
              {.checks = true, .also = report.hears()});
  reading.read(readingof(given));
  total = reading.total();
}

}  // namespace

int check(const request& given) {
  const std::unique_ptr<reporter> report =
      makereporter(given.json ? "json" : given.format, stdout,
                   {.codes = checkcodes(), .strict = given.strict, .most = given.maxerrors});
  tally total;
  if (!given.definition.empty())
    checkwords(given, *report, total);
  else if (const int status = checkbound(given, *report, total); status != 0)
    return status;
  report->summary(total);
  return total.status(given.strict);
}

}  // namespace command
