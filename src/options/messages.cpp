#include "options/messages.h"

#include "foundation/numtext.h"
#include "foundation/runtime.h"
#include "foundation/strutilx.h"
#include "options/zmaoptions.h"

namespace optxv {

namespace {

void* kindword(messagekind kind) {
  return reinterpret_cast<void*>(static_cast<std::uintptr_t>(kind));
}

messagekind kindat(const txstringlist& queue, std::int32_t index) {
  return static_cast<messagekind>(reinterpret_cast<std::uintptr_t>(queue.getobject(index)));
}

}  // namespace

void tzmaoptions::addmessage(messagekind kind, std::string_view text) {
  const std::int32_t count = messagelist.count();
  if (kind == optMsgFileLeave && count > 0 && kindat(messagelist, count - 1) == optMsgFileEnter &&
      messagelist.getname(count - 1) == text)
    return messagelist.delete_(count - 1);
  if (count > maximummessages) return;
  if (count == maximummessages) {
    messagelist.addobject(concat("Maximum of ", inttostr(maximummessages), " messages reached"),
                          kindword(optMsgTooManyMsgs));
    return;
  }
  if (messagekinds[kind].located && parser != nullptr && parser->linenr() != 0)
    messagelist.addobject(concat("line ", inttostr(parser->linenr()), ": ", text), kindword(kind));
  else
    messagelist.addobject(text, kindword(kind));
}

void tzmaoptions::addfilefailure(messagekind kind, std::string_view words,
                                 std::string_view filename, int code, std::string_view indent) {
  addmessage(kind, concat(words, quoted{filename}));
  addmessage(kind, concat(indent, "Error code = ", inttostr(code), "; ", syserrormessage(code)));
}

int tzmaoptions::readfailure(messagekind kind, std::string_view words, std::string_view filename) {
  const int code = parser->failure();
  if (code == 0) return 0;
  ioresult();
  addfilefailure(kind, words, filename, code);
  return code;
}

std::int32_t tzmaoptions::errorssince(std::int32_t first) const {
  std::int32_t errors = 0;
  for (std::int32_t i = first; i < messagelist.count(); ++i)
    if (messagekinds[kindat(messagelist, i)].counted) ++errors;
  return errors;
}

void tzmaoptions::optgetmessage(std::int32_t number, shortstring& text, std::int32_t& kind) const {
  if (number < 1 || number > messagelist.count()) {
    text = concat("Bad message number = ", inttostr(std::int64_t{number} - 1));
    kind = optMsgUserError;
    return;
  }
  const messagekind found = kindat(messagelist, number - 1);
  const messagerow& row = messagekinds[found];
  const std::string_view stored = messagelist.getname(number - 1);
  text = row.quotes ? concat(row.prefix, quoted{stored}) : concat(row.prefix, stored);
  kind = found;
}

void tzmaoptions::opterrorcount(std::int32_t& errors, std::int32_t& warnings) const {
  errors = 0;
  warnings = 0;
  for (std::int32_t i = 0; i < messagelist.count(); ++i) {
    const severity reported = messagekinds[kindat(messagelist, i)].reported;
    if (reported == severity::error) ++errors;
    if (reported == severity::warning) ++warnings;
  }
}

void tzmaoptions::optechoset(std::int32_t flag) {
  echoflag = flag != 0;
  if (parser != nullptr) parser->echoset(echoflag);
}

}  // namespace optxv
