// help: what the library says of the options, by name or by number.

#include <memory>

#include "analysis/run.h"
#include "output/lines.h"
#include "tasks/tasks.h"
#include "text/printable.h"

namespace command {
namespace {

std::string withunderscores(std::string text) {
  for (char& c : text)
    if (c == ' ') c = '_';
  return text;
}

bool isnumber(const std::string& text) {
  return !text.empty() && text.find_first_not_of("+-0123456789") == text.npos;
}

/// The library answers a name that it does not know with the help by group, and says nothing.
void tellunknown(run& read, const std::string& topic) {
  if (topic.empty() || isnumber(topic) || read.options().find(withunderscores(topic)) > 0) return;
  put(stderr, "optxv: note: no option is called " + inquotes(topic) + '\n');
  const std::vector<std::string> nearest = read.names().nearest(topic);
  if (!nearest.empty()) put(stderr, "optxv: note: " + question(nearest) + '\n');
}

/// What the library says on a topic, as lines. A warning goes out at once.
std::string helptext(optionset& options, std::string_view topic) {
  std::string text;
  options.clearmessages();
  options.showhelp(topic);
  for (std::int32_t position = 1; position <= options.messagecount(); position++) {
    const message each = options.messageat(position);
    if (each.kind == optMsgTooManyMsgs)
      put(stderr, "optxv: warning: the help is cut short: " + printable(each.text) + '\n');
    else
      text += printableline(each.text) + '\n';
  }
  return text;
}

bool isblank(const std::string& text) {
  return text.find_first_not_of('\n') == text.npos;
}

/// The help by group is empty where the definition names no group that is shown.
void puthelp(optionset& options, const std::string& topic) {
  constexpr std::string_view alphabetical = "2";
  std::string text = helptext(options, topic);
  if (isblank(text)) {
    put(stderr, "optxv: note: no option stands in a group that the help shows\n");
    text = helptext(options, alphabetical);
  }
  put(stdout, text);
}

}  // namespace

int help(const request& given) {
  const std::unique_ptr<reporter> report = makelines(stderr);
  run read([&](const finding& found) { report->take(found); });
  if (given.topic.size() > optionset::longesttext) {
    put(stderr, "optxv: error: the name has more bytes than any option can have\n");
    return statusunusable;
  }
  if (read.read(readingof(given))) {
    tellunknown(read, given.topic);
    puthelp(read.options(), given.topic);
  }
  return read.total().status();
}

}  // namespace command
