#include "options/messages.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "support/optiontable.h"

namespace optxv {
namespace {

using namespace std::string_literals;

std::pair<std::string, int> message(const tzmaoptions& options, std::int32_t number) {
  shortstring text = "untouched";
  std::int32_t kind = -1;
  options.optgetmessage(number, text, kind);
  return {str(text), kind};
}

void fill(tzmaoptions& options, int count) {
  for (int i = 0; i < count; ++i) options.addmessage(optMsgValueError, "full");
}

TEST(MessageKinds, AreShownAndCounted) {
  const struct {
    messagekind kind;
    std::string shown;
    const char* counts;  // of errors inside, errors and warnings
  } rows[] = {{optMsgInputEcho, ">> a \"text", "000"},
              {optMsgHelp, "a \"text", "100"},
              {optMsgDefineError, "*** Definition Error a \"text", "110"},
              {optMsgValueError, "*** Value Error a \"text", "110"},
              {optMsgValueWarning, "*** Warning a \"text", "001"},
              {optMsgDeprecated, "*** Warning a \"text", "001"},
              {optMsgFileEnter, "Reading parameter(s) from \"a \"text\"", "000"},
              {optMsgFileLeave, "Finished reading from \"a \"text\"", "000"},
              {optMsgTooManyMsgs, "a \"text", "110"},
              {optMsgUserError, "*** Error a \"text", "110"}};
  for (const auto& row : rows) {
    tzmaoptions options;
    options.addmessage(row.kind, "a \"text");
    std::int32_t errors = -1, warnings = -1;
    options.opterrorcount(errors, warnings);
    EXPECT_EQ(message(options, 1), std::make_pair(row.shown, int{row.kind}));
    EXPECT_EQ(
        std::to_string(options.errorcount()) + std::to_string(errors) + std::to_string(warnings),
        row.counts)
        << row.shown;
  }
}

TEST(MessageQueue, AnswersForBadNumbersAndKeepsThem) {
  tzmaoptions options;
  for (int i = 0; i < 7; ++i) options.optaddmessage(std::to_string(i));
  EXPECT_EQ(message(options, 7), std::make_pair("*** Error 6"s, 9));
  EXPECT_EQ(message(options, 8), std::make_pair("Bad message number = 7"s, 9));
  EXPECT_EQ(message(options, -12), std::make_pair("Bad message number = -13"s, 9));
  options.optaddmessage(std::string(255, 'x'));
  EXPECT_EQ(message(options, 8).first, "*** Error " + std::string(245, 'x'));
}

TEST(MessageQueue, ALeaveRightBehindItsEnterTakesItAway) {
  using added = std::vector<std::pair<messagekind, std::string>>;
  const auto in = optMsgFileEnter, out = optMsgFileLeave;
  const std::string from = "Finished reading from \"a\"";
  const std::pair<added, std::string> rows[] = {
      {{{in, "a"}, {out, "a"}}, ""},
      {{{in, "A"}, {out, "a"}}, "Reading parameter(s) from \"A\" | " + from},
      {{{optMsgHelp, "a"}, {out, "a"}}, "a | " + from},
      {{{in, "a"}, {in, "b"}, {out, "b"}, {out, "a"}}, ""}};
  for (const auto& [messages, left] : rows) {
    optiontable table;
    for (const auto& [kind, text] : messages) table->addmessage(kind, text);
    EXPECT_EQ(joined(table.queue(true)), left);
  }
}

TEST(MessageQueue, ClosesWithOneMarker) {
  tzmaoptions options;
  fill(options, 4999);
  options.addmessage(optMsgFileEnter, "f");  // a pair at the limit counts back again
  options.addmessage(optMsgFileLeave, "f");
  EXPECT_EQ(options.optmessagecount(), 4999);
  fill(options, 1);
  options.addmessage(optMsgFileEnter, "f");  // becomes the marker, so that the leave has no partner
  options.addmessage(optMsgFileLeave, "f");
  EXPECT_EQ(message(options, 5001), std::make_pair("Maximum of 5000 messages reached"s, 8));
  fill(options, 3);
  options.addmessagefrom(optMsgHelp, [] { return ADD_FAILURE() << "made for nothing", "text"; });
  EXPECT_EQ(options.optmessagecount(), 5001);
}

TEST(MessageQueue, EchoedLinesPassByTheLimit) {
  optiontable table;
  table->optechoset(1);
  fill(*table, 5000);
  table->optreadfromstr("bad 1");  // 5001 without a marker: nothing more is taken, and none comes
  fill(*table, 1);
  EXPECT_EQ(table->optmessagecount(), 5001);
  EXPECT_EQ(message(*table, 5001).second, optMsgInputEcho);
}

}  // namespace
}  // namespace optxv
