#include "options/messages.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

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
    bool counts;  ///< for the setters, which see by the errors whether a value was taken
    bool iserror, iswarning;
  } rows[] = {{optMsgInputEcho, ">> a \"text", false, false, false},
              {optMsgHelp, "a \"text", true, false, false},
              {optMsgDefineError, "*** Definition Error a \"text", true, true, false},
              {optMsgValueError, "*** Value Error a \"text", true, true, false},
              {optMsgValueWarning, "*** Warning a \"text", false, false, true},
              {optMsgDeprecated, "*** Warning a \"text", false, false, true},
              {optMsgFileEnter, "Reading parameter(s) from \"a \"text\"", false, false, false},
              {optMsgFileLeave, "Finished reading from \"a \"text\"", false, false, false},
              {optMsgTooManyMsgs, "a \"text", true, true, false},
              {optMsgUserError, "*** Error a \"text", true, true, false}};
  for (const auto& row : rows) {
    tzmaoptions options;
    options.addmessage(row.kind, "a \"text");
    std::int32_t errors = -1, warnings = -1;
    options.opterrorcount(errors, warnings);
    EXPECT_EQ(message(options, 1), std::make_pair(row.shown, int{row.kind}));
    EXPECT_EQ(options.errorcount() == 1, row.counts) << row.shown;
    EXPECT_EQ(errors == 1, row.iserror) << row.shown;
    EXPECT_EQ(warnings == 1, row.iswarning) << row.shown;
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
  options.addmessagefrom(optMsgHelp, {},
                         [] { return ADD_FAILURE() << "made for nothing", "text"; });
  EXPECT_EQ(options.optmessagecount(), 5001);
}

TEST(MessageQueue, EchoedLinesAreNotLimited) {
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
