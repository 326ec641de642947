#include <gtest/gtest.h>

#include <map>
#include <string>

#include "optxv/embedding.h"
#include "support/everykind.h"
#include "support/optiontable.h"

namespace optxv {
namespace {

std::string text(const optxv_text& of) {
  return {of.bytes, of.size};
}

std::string shown(const optxv_message& m) {
  std::string all;
  for (const std::int64_t number :
       {std::int64_t{m.kind}, std::int64_t{m.fault}, std::int64_t{m.detail}, std::int64_t{m.option},
        std::int64_t{m.field}, m.place.line, m.place.column, m.place.length})
    all += std::to_string(number) + " ";
  return all + text(m.text) + " / " + text(m.about) + " / " + text(m.seen) + " / " + m.place.file;
}

/// All messages of the queue as the listener gets them, by number.
class heard {
 public:
  explicit heard(optxv_handle handle) {
    calls_.size = sizeof calls_;
    calls_.context = &told_;
    calls_.message = [](void* to, const optxv_message* message) {
      auto& told = *static_cast<std::map<std::int32_t, std::string>*>(to);
      if (message->number == 0)
        told.erase(std::prev(told.end()));  // the end of a read, which took away its beginning
      else
        told[message->number] = shown(*message);
    };
    optxv_listen(handle, &calls_);
  }
  const std::map<std::int32_t, std::string>& told() const { return told_; }

 private:
  std::map<std::int32_t, std::string> told_;
  optxv_listener calls_ = {};
};

TEST(MessageInfo, IsWhatTheListenerGot) {
  optiontable table(everykind());
  const heard ear(&*table);
  table.read("steplim 9999999999\nmethod primel\nnosuch 1\nscale 1 2\nx.scal = 2\nlogname a\"b");
  table.read("tol 2");
  table.read("tol 0.5");  // its two messages of the read take each other away
  table.read("tie a$b$");
  optxv_add_message(&*table, "mine", OPTXV_ENDED);
  table->optshowhelp("steplim");
  std::map<std::int32_t, std::string> asked;
  for (std::int32_t i = 1; i <= optxv_message_count(&*table); i++) {
    optxv_message message;
    ASSERT_EQ(optxv_message_info(&*table, i, &message), optxv_ok);
    asked[i] = shown(message);
  }
  EXPECT_GT(asked.size(), 15U);
  EXPECT_EQ(asked, ear.told());
  EXPECT_EQ(optxv_message_info(&*table, 0, nullptr), optxv_unknown);
  optxv_clear_messages(&*table);
  table.read("tol 2");
  optxv_message message;
  ASSERT_EQ(optxv_message_info(&*table, 2, &message), optxv_ok);
  EXPECT_EQ(message.fault, optxv_fault_range);
}

TEST(NearestNames, AreThoseOfTheTableAndOfTheValues) {
  optiontable table(everykind());
  // what is read, and what may have been meant with each message of it
  const std::pair<const char*, const char*> rows[] = {
      {"setplim 5", "steplim"}, {"method primel", "primal; -"},
      {"method tol", "-; -"},   {"x.scail = 5", ".scale; -"},
      {"steplim 7000", "-; -"}, {"--lognam 1\nlogmane 1", "logname"}};
  const auto namesat = [&](std::int32_t number) {
    optxv_text names[3];
    std::string all;
    for (std::int32_t k = optxv_message_nearest(&*table, number, names); k > 0; k--) {
      EXPECT_EQ(names[k - 1].bytes[names[k - 1].size], 0);
      all = text(names[k - 1]) + (all.empty() ? "" : " ") + all;
    }
    return all.empty() ? std::string("-") : all;
  };
  for (const auto& [read, wanted] : rows) {
    table->optclearmessages();
    table.read(read);
    lines all;
    for (std::int32_t i = 2; i < optxv_message_count(&*table); i++) all.push_back(namesat(i));
    EXPECT_EQ(joined(all, "; "), wanted) << read;
  }
  table->optclearmessages();
  table->readdefinitiontext("records",
                            "m macro 1 1 M\n setplim\ns synonym logmane\nd deprecated\n scail x");
  lines all;
  for (std::int32_t i = 1; i <= optxv_message_count(&*table); i++)
    if (const std::string names = namesat(i); names != "-") all.push_back(names);
  EXPECT_EQ(joined(all, "; "), "steplim; logname; scale");
  optxv_text names[3];
  optiontable empty("");
  EXPECT_EQ(optxv_nearest_names(&*empty, "setplimX", 7, names), 0);
  table->readdefinitiontext("more", "setplims integer 1 1 1 9 1 1 New");
  ASSERT_EQ(optxv_nearest_names(&*table, "setplimX", 7, names), 2);  // the table has grown
  EXPECT_EQ(text(names[0]) + " " + text(names[1]), "steplim setplims");
}

}  // namespace
}  // namespace optxv
