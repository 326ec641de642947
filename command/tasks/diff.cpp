// diff: what differs between two settings, or between two definitions.

#include <algorithm>

#include "output/changeforms.h"
#include "output/differenceforms.h"
#include "output/failure.h"
#include "output/jsonlists.h"
#include "output/reporter.h"
#include "tasks/product.h"
#include "tasks/tasks.h"
#include "text/printable.h"

namespace command {
namespace {

constexpr int statussame = 0, statusdifferent = 1;

std::string heading(const std::string& left, const std::string& right) {
  return "--- " + printable(left) + "\n+++ " + printable(right) + '\n';
}

/// One side: a definition with a parameter file.
readsettings sideof(const request& given, const std::string& parameters) {
  readsettings what = readingof(given);
  what.parameters = {parameters};
  return what;
}

void putdifferences(const std::vector<difference>& found, const request& given) {
  if (given.json) {
    jsonlists json(stdout);
    json.list("differences");
    for (const difference& each : found) json.row(differencejson(each));
    return json.end();
  }
  if (!found.empty()) put(stdout, heading(given.parameters[0], given.parameters[1]));
  for (const difference& each : found) put(stdout, differencetext(each, wantscolour(stdout)));
}

int diffsettings(const request& given) {
  run left(tostandarderror(), {.origins = true});
  if (!left.read(sideof(given, given.parameters[0]))) return statusunusable;
  const findingtaker take = tostandarderror();
  std::vector<finding> again;  // of the definition, which the other run has told
  run right(
      [&](const finding& found) {
        found.where.file == given.definition ? again.push_back(found) : take(found);
      },
      {.origins = true});
  if (!right.read(sideof(given, given.parameters[1]))) {
    std::ranges::for_each(again, take);
    return statusunusable;
  }
  if (left.total().unreadable + right.total().unreadable > 0) return statusunusable;
  const std::vector<difference> found = differences(left, right);
  putdifferences(found, given);
  if (left.total().status() + right.total().status() > 0) return statusunusable;
  return found.empty() ? statussame : statusdifferent;
}

void putchanges(const std::vector<change>& found, const request& given) {
  if (given.json) {
    jsonlists json(stdout);
    json.list("changes");
    for (const change& each : found) json.row(changejson(each));
    json.member("summary", countsjson(found));
    return json.end();
  }
  for (const change& each : found) put(stdout, changeline(each, wantscolour(stdout)));
  if (!found.empty()) put(stdout, changesummary(found));
}

int diffdefinitions(const request& given) {
  run left(tostandarderror(), {.symbols = true}), right(tostandarderror(), {.symbols = true});
  const bool both = left.read({.definition = given.definition}) &&
                    right.read({.definition = given.parameters.front()});
  if (!both) return statusunusable;
  const std::vector<change> found = tablechanges(left, right);
  putchanges(found, given);
  if (left.total().status() + right.total().status() > 0) return statusunusable;
  return std::ranges::any_of(found, &change::breaking) ? statusdifferent : statussame;
}

/// What is wrong with the number of files.
int miscounted(std::size_t count, const std::string& what, const std::string& usage) {
  return tell({.what = "diff compares two " + what + ", and " + grouped(count) +
                       (count == 1 ? " is given" : " are given"),
               .notes = {usage}});
}

}  // namespace

int diff(const request& given) {
  const std::size_t files = given.parameters.size();
  if (given.definitions)
    return files == 1 ? diffdefinitions(given)
                      : miscounted(files + 1, "definitions", "optxv diff --definitions OLD NEW");
  return files == 2 ? diffsettings(given)
                    : miscounted(files, "parameter files", "optxv diff DEFINITION OLD NEW");
}

}  // namespace command
