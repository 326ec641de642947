// help: what a definition says of its options, by group, by name, or by words to look for.

#include <algorithm>
#include <charconv>

#include "output/failure.h"
#include "output/reporter.h"
#include "output/tables.h"
#include "tasks/helpwriter.h"
#include "tasks/optionview.h"
#include "tasks/product.h"
#include "tasks/tasks.h"
#include "text/names.h"
#include "text/printable.h"

namespace command {
namespace {

bool isnumber(const std::string& text) {
  return !text.empty() && text.find_first_not_of("+-0123456789") == text.npos;
}

int unknown(run& read, const std::string& name) {
  const std::vector<std::string> nearest = read.names().nearest(name);
  failure told{.what = "no option is called " + inquotes(name)};
  told.notes.push_back(nearest.empty() ? "--search looks through the names and texts of all options"
                                       : question(nearest));
  tell(told);
  return statuserrors;
}

int unfound(const std::vector<std::string>& words) {
  std::string all;
  for (const std::string& each : words) all += (all.empty() ? "" : " and ") + inquotes(each);
  tell({.what = "no option has " + all + " in its names and texts"});
  return statuserrors;
}

/// What the library says by itself, line by line. A warning goes out at once.
std::string librarytext(optxv::options& options, const std::string& mode) {
  std::string text;
  options.show_help(mode);
  for (const optxv::message& each : options.messages()) {
    if (each.kind == optxv_said_queue_full)
      tellwarning("the help is cut short: " + each.text);
    else
      text += printableline(each.kind == optxv_said_help ? each.text : each.shown) + '\n';
  }
  return text;
}

/// The library prints its list for debugging as it is, so that this one stands in for it.
std::string modetext(optxv::options& options, const helpwriter& writer, const std::string& mode) {
  constexpr std::int32_t debugging = 4;
  std::int32_t number = 0;
  std::from_chars(mode.data(), mode.data() + mode.size(), number);
  if (number < 1 || (number & debugging) == 0) return librarytext(options, mode);
  const std::int32_t others = number & ~debugging;
  return writer.debuglist() + (others == 0 ? "" : librarytext(options, std::to_string(others)));
}

/// The help by group is empty where the definition names no group that is shown.
std::string alltext(const helpwriter& writer) {
  std::string text = writer.bygroup();
  if (!text.empty()) return text;
  tellnote("no option stands in a group that the help shows");
  return writer.byname();
}

/// For somebody who asked for an option by another name.
std::string synonymline(const optxv::optionfacts& option, const std::string& name) {
  const bool other = std::ranges::any_of(
      option.synonyms, [&](const optxv::synonymfacts& each) { return samename(each.name, name); });
  return other ? printable(name) + " is a synonym for " + printable(option.name) + '\n' : "";
}

int puttopic(run& read, const optxv::tablefacts& table, const helpwriter& writer,
             const std::string& topic) {
  const std::int32_t optnr = optionof(read.options(), topic);
  if (optnr == 0) return unknown(read, topic);
  put(stdout,
      synonymline(table.options[static_cast<std::size_t>(optnr) - 1], topic) + writer.block(optnr));
  return 0;
}

int putmatches(const helpwriter& writer, const std::vector<std::string>& words) {
  const std::vector<std::int32_t> found = writer.search(words);
  if (found.empty()) return unfound(words);
  for (const std::int32_t optnr : found) put(stdout, writer.block(optnr));
  return 0;
}

/// Prints what is asked for; 1 if there is no such thing.
int puthelp(run& read, const request& given) {
  const optxv::tablefacts table = optxv::describe(tableof(read));
  const helpwriter writer(table, terminalwidth(stdout));
  if (!given.search.empty()) return putmatches(writer, given.search);
  if (!given.topic.empty() && !isnumber(given.topic))
    return puttopic(read, table, writer, given.topic);
  put(stdout,
      given.topic.empty() ? alltext(writer) : modetext(read.options(), writer, given.topic));
  return 0;
}

}  // namespace

int help(const request& given) {
  run read(tostandarderror());
  if (!read.read(readingof(given))) return read.total().status();
  return std::max(puthelp(read, given), read.total().status());
}

}  // namespace command
