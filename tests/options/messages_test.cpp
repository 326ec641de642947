#include "options/messages.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "support/optiontable.h"

namespace optxv::test {
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
    std::int32_t inside, errors, warnings;
  } rows[] = {{optMsgInputEcho, ">> a \"text", 0, 0, 0},
              {optMsgHelp, "a \"text", 1, 0, 0},
              {optMsgDefineError, "*** Definition Error a \"text", 1, 1, 0},
              {optMsgValueError, "*** Value Error a \"text", 1, 1, 0},
              {optMsgValueWarning, "*** Warning a \"text", 0, 0, 1},
              {optMsgDeprecated, "*** Warning a \"text", 0, 0, 1},
              {optMsgFileEnter, "Reading parameter(s) from \"a \"text\"", 0, 0, 0},
              {optMsgFileLeave, "Finished reading from \"a \"text\"", 0, 0, 0},
              {optMsgTooManyMsgs, "a \"text", 1, 1, 0},
              {optMsgUserError, "*** Error a \"text", 1, 1, 0}};
  for (const auto& row : rows) {
    tzmaoptions options;
    options.addmessage(row.kind, "a \"text");
    std::int32_t errors = -1;
    std::int32_t warnings = -1;
    options.opterrorcount(errors, warnings);
    EXPECT_EQ(message(options, 1), std::make_pair(row.shown, int{row.kind}));
    EXPECT_EQ(options.errorcount(), row.inside) << row.shown;
    EXPECT_EQ(errors, row.errors) << row.shown;
    EXPECT_EQ(warnings, row.warnings) << row.shown;
    options.optclearmessages();
    EXPECT_EQ(options.optmessagecount(), 0);
  }
}

TEST(MessageQueue, AnswersForBadNumbersAndKeepsThem) {
  tzmaoptions options;
  for (int i = 0; i < 7; ++i) options.optaddmessage(std::to_string(i));
  EXPECT_EQ(message(options, 7), std::make_pair("*** Error 6"s, 9));
  EXPECT_EQ(message(options, 7), std::make_pair("*** Error 6"s, 9));
  EXPECT_EQ(message(options, 8), std::make_pair("Bad message number = 7"s, 9));
  EXPECT_EQ(message(options, 0), std::make_pair("Bad message number = -1"s, 9));
  EXPECT_EQ(message(options, -12), std::make_pair("Bad message number = -13"s, 9));
  EXPECT_EQ(options.optmessagecount(), 7);
  options.optclearmessages();
  options.optaddmessage(std::string(255, 'x'));
  EXPECT_EQ(message(options, 1).first, "*** Error " + std::string(245, 'x'));
}

TEST(MessageQueue, ALeaveRightBehindItsEnterTakesItAway) {
  const std::string in = "Reading parameter(s) from ";
  const std::string out = "Finished reading from ";
  const struct {
    std::vector<std::pair<messagekind, std::string>> added;
    lines left;
  } rows[] = {{{{optMsgFileEnter, "a"}, {optMsgFileLeave, "a"}}, {}},
              {{{optMsgFileEnter, "a"}, {optMsgFileLeave, "A"}}, {in + "\"a\"", out + "\"A\""}},
              {{{optMsgFileLeave, "a"}}, {out + "\"a\""}},
              {{{optMsgHelp, "a"}, {optMsgFileLeave, "a"}}, {"a", out + "\"a\""}},
              {{{optMsgFileEnter, "a"}, {optMsgInputEcho, " x"}, {optMsgFileLeave, "a"}},
               {in + "\"a\"", ">>  x", out + "\"a\""}},
              {{{optMsgFileEnter, "a"},
                {optMsgFileEnter, "b"},
                {optMsgFileLeave, "b"},
                {optMsgFileLeave, "a"}},
               {}}};
  for (const auto& row : rows) {
    optiontable table;
    for (const auto& [kind, text] : row.added) table->addmessage(kind, text);
    EXPECT_EQ(table.queue(true), row.left);
  }
}

TEST(MessageQueue, ClosesWithOneMarker) {
  tzmaoptions options;
  fill(options, 5000);
  EXPECT_EQ(options.optmessagecount(), 5000);
  EXPECT_FALSE(options.queueclosed());
  options.addmessage(optMsgValueWarning, "lost");
  EXPECT_EQ(message(options, 5001), std::make_pair("Maximum of 5000 messages reached"s, 8));
  fill(options, 3);
  options.addmessagefrom(optMsgHelp, [] { return ADD_FAILURE() << "made for nothing", "text"; });
  EXPECT_EQ(options.optmessagecount(), 5001);
  std::int32_t errors = 0;
  std::int32_t warnings = 0;
  options.opterrorcount(errors, warnings);
  EXPECT_EQ(errors, 5001);
  EXPECT_EQ(warnings, 0);
  options.optclearmessages();
  fill(options, 1);
  EXPECT_EQ(options.optmessagecount(), 1);
}

TEST(MessageQueue, APairAtTheLimitCountsBackAgain) {
  tzmaoptions options;
  fill(options, 4999);
  options.addmessage(optMsgFileEnter, "f");
  options.addmessage(optMsgFileLeave, "f");
  EXPECT_EQ(options.optmessagecount(), 4999);
  fill(options, 1);
  options.addmessage(optMsgFileEnter, "f");  // becomes the marker, so that the leave has no partner
  options.addmessage(optMsgFileLeave, "f");
  EXPECT_EQ(options.optmessagecount(), 5001);
  EXPECT_EQ(message(options, 5001).second, optMsgTooManyMsgs);
}

TEST(MessageQueue, EchoedLinesPassByTheLimitAndTheMarker) {
  optiontable table;
  fill(*table, 4998);
  table->optechoset(1);
  table->optreadfromstr("bad 1");  // the echo, then the enter message: 5000; then the marker
  EXPECT_EQ(table->optmessagecount(), 5001);
  EXPECT_EQ(message(*table, 4999), std::make_pair(">>  bad 1"s, 0));
  EXPECT_EQ(message(*table, 5001).second, optMsgTooManyMsgs);
  table->optreadfromstr("more");
  EXPECT_EQ(table->optmessagecount(), 5002);
  EXPECT_EQ(message(*table, 5002), std::make_pair(">>  more"s, 0));

  table->optclearmessages();
  fill(*table, 5000);
  table->optreadfromstr("bad 1");  // 5001 without a marker: nothing more is taken, and none comes
  fill(*table, 1);
  EXPECT_EQ(table->optmessagecount(), 5001);
  EXPECT_EQ(message(*table, 5001).second, optMsgInputEcho);
}

TEST(MessageQueue, TellsTheLineWhileAReaderStandsInOne) {
  optiontable table;
  table.put("text", "* comment\n\nfirst\nsecond\n");
  tminiparser reader(&table->messagelist, false, charset());
  ASSERT_EQ(reader.fileopen(table.path("text")), 0);
  const replacement<tminiparser*> running(table->parser, &reader);
  table->optaddmessage("none");
  reader.nextline();
  for (int kind = optMsgHelp; kind <= optMsgUserError; ++kind)
    table->addmessage(static_cast<messagekind>(kind), kind == optMsgFileLeave ? "u" : "t");
  table->optechoset(1);  // reaches the reader at once
  reader.nextline();
  table->addmessage(optMsgUserError, std::string(255, 'x'));
  EXPECT_EQ(table.queue(true), lines({"*** Error none", "t", "*** Definition Error line 3: t",
                                      "*** Value Error line 3: t", "*** Warning line 3: t",
                                      "*** Warning line 3: t", "Reading parameter(s) from \"t\"",
                                      "Finished reading from \"u\"", "t", "*** Error line 3: t",
                                      ">>  second", "*** Error line 4: " + std::string(237, 'x')}));
}

}  // namespace
}  // namespace optxv::test
