// The listener, the places and the text from memory, through the built library and its public
// headers. A row is a text as users write it, and what the listener is told of it, an event a line.

#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "optxv/embedding.h"
#include "optxv/optxv.h"
#include "support/everykind.h"
#include "support/rows.h"

namespace {

using optxv::retold;
using optxv::rowsof;
using lines = std::vector<std::string>;

std::string str(const optxv_text& text) {
  return {text.bytes, text.size};
}
std::string shown(const optxv_text& text) {
  return text.size <= 40 ? str(text) : "(" + std::to_string(text.size) + " bytes)";
}
std::string number(std::int64_t value) {
  return std::to_string(value);
}
/// " words 7", or nothing for 0.
std::string with(const char* words, std::int64_t value) {
  return value == 0 ? "" : std::string(" ") + words + " " + number(value);
}
std::string with(const char* words, const optxv_text& text) {
  return text.size == 0 ? "" : std::string(" ") + words + " " + shown(text);
}
std::string plain(const optxv_text& text) {
  return text.size == 0 ? "" : " " + shown(text);
}

std::string joined(const lines& all) {
  std::string text;
  for (const std::string& line : all) text += line + '\n';
  return text;
}

/// A folder of the test's own, in which it runs, so that files have short names.
class ownfolder {
 public:
  ownfolder() {
    std::string name = ::testing::TempDir() + "embeddingXXXXXX";
    EXPECT_NE(mkdtemp(name.data()), nullptr);
    EXPECT_EQ(chdir(name.c_str()), 0);
  }
  static void put(const std::string& name, std::string_view text) {
    std::ofstream(name, std::ios::binary) << text;
  }
};
const ownfolder& folder() {
  static const ownfolder made;
  return made;
}

// The listener -----------------------------------------------------------------------------------

const char* const roads[] = {"no road", "entry", "macro", "list", "dot", "call"};
const char* const kinds[] = {"echo", "help",  "definition", "value", "warning",
                             "mark", "enter", "leave",      "full",  "error"};

/// Writes down what it is told, an event a line, and holds every event to what the header promises
/// of each: sources nest, and a place lies in its line and has the text that is told.
class recorder {
 public:
  recorder() {
    calls_.size = sizeof calls_;
    calls_.context = this;
    calls_.entered = [](void* to, const optxv_source* e) { self(to).entered(*e); };
    calls_.left = [](void* to, const optxv_source* e, std::int32_t error) {
      self(to).left(*e, error);
    };
    calls_.line = [](void* to, const optxv_place* place, const optxv_text* text) {
      self(to).line(*place, *text);
    };
    calls_.comment = [](void* to, const optxv_place* e) { self(to).add("comment", *e); };
    calls_.cut = [](void* to, const optxv_cut* e) { self(to).cut(*e); };
    calls_.declared = [](void* to, const optxv_declaration* e) { self(to).declared(*e); };
    calls_.field = [](void* to, const optxv_field* e) { self(to).field(*e); };
    calls_.ended = [](void* to, const optxv_place* e) { self(to).add("ended", *e); };
    calls_.key = [](void* to, const optxv_key* e) { self(to).key(*e); };
    calls_.separator = [](void* to, const optxv_place* e) { self(to).add("separator", *e); };
    calls_.value = [](void* to, const optxv_value* e) { self(to).value(*e); };
    calls_.stored = [](void* to, const optxv_store* e) { self(to).stored(*e); };
    calls_.dot_option = [](void* to, const optxv_entry* e) { self(to).entry("dot", *e); };
    calls_.indicator = [](void* to, const optxv_entry* e) { self(to).entry("indicator", *e); };
    calls_.message = [](void* to, const optxv_message* e) { self(to).message(*e); };
  }
  recorder(const recorder&) = delete;
  recorder& operator=(const recorder&) = delete;

  optxv_listener& calls() { return calls_; }
  /// What was told since the last time, without the lines and what frames every read.
  std::string take(bool all = false) {
    lines wanted;
    for (const std::string& event : events_)
      if (all || !(event.starts_with("line ") || event.starts_with("enter ") ||
                   event.starts_with("leave ") || event.starts_with("message enter") ||
                   event.starts_with("message leave")))
        wanted.push_back(event);
    events_.clear();
    return joined(wanted);
  }
  bool idle() const { return reading_.empty(); }
  std::size_t numbered() const { return numbered_; }

 private:
  static recorder& self(void* context) { return *static_cast<recorder*>(context); }

  void entered(const optxv_source& e) {
    EXPECT_EQ(e.level, static_cast<std::int32_t>(reading_.size()) + 1);
    std::string told = std::string("enter ") + source(e) + " level " + number(e.level);
    if (e.level > 1) told += " from " + place(e.from);
    EXPECT_EQ(e.level > 1, e.from.line > 0);
    reading_.emplace_back(e.name);
    events_.push_back(told);
  }
  void left(const optxv_source& e, std::int32_t error) {
    ASSERT_FALSE(reading_.empty());
    EXPECT_EQ(reading_.back(), e.name);
    EXPECT_EQ(e.level, static_cast<std::int32_t>(reading_.size()));
    events_.push_back(std::string("leave ") + source(e) + with("error", error));
    reading_.pop_back();
  }
  static std::string source(const optxv_source& e) {
    static const char* const names[] = {"definition", "parameters", "string"};
    return std::string(names[e.kind]) + " " + e.name;
  }
  void line(const optxv_place& at, const optxv_text& text) {
    EXPECT_EQ(reading_.back(), at.file);
    EXPECT_EQ(at.column, 1);
    EXPECT_EQ(static_cast<std::size_t>(at.length), text.size);
    EXPECT_TRUE(std::string_view(at.file) == "string" || std::string_view(at.file) == "pchar" ||
                text.size <= 1020);
    lines_[{at.file, at.line}] = str(text);
    events_.push_back("line " + place(at) + plain(text));
  }
  void cut(const optxv_cut& e) {
    static const char* const names[] = {"line", "rest", "name", "value", "number"};
    const bool line = e.what == optxv_cut_line;
    if (line) {
      EXPECT_GT(static_cast<std::size_t>(e.place.column),
                lines_[std::make_pair(std::string(e.place.file), e.place.line)].size());
      EXPECT_EQ(e.place.length, e.lost);
    }
    EXPECT_EQ(e.what == optxv_cut_number, e.lost == 0);
    if (e.what == optxv_cut_name || e.what == optxv_cut_value) {
      EXPECT_LE(e.kept.size, 255U);
      EXPECT_GE(e.place.length, e.lost);
    }
    events_.push_back(std::string("cut ") + names[e.what] + " " + place(e.place, line) +
                      with("of option", e.option) + with("kept", e.kept) + with("lost", e.lost));
  }
  void declared(const optxv_declaration& e) {
    static const char* const names[] = {"option",     "group",    "synonym",   "item",   "member",
                                        "deprecated", "obsolete", "indicator", "lookup", "comment"};
    at(e.place, e.name);
    events_.push_back(std::string("declared ") + names[e.what] + " " + number(e.number) +
                      plain(e.name) + " " + place(e.place) + with("of", e.option) +
                      with("->", e.target));
  }
  void field(const optxv_field& e) {
    at(e.place, e.text);
    events_.push_back(std::string(e.good != 0 ? "field " : "no field ") +
                      optxv_field_name(e.field) + " " + place(e.place) + with("of", e.option) +
                      with("=", e.text));
  }
  void key(const optxv_key& e) {
    std::string name = str(e.text);
    if (e.dashes > 1) name.erase(0, 2);
    if (name.find('_') == std::string::npos) at(e.place, {name.data(), name.size()});
    events_.push_back("key " + shown(e.text) + " " + place(e.place) + with("->", e.option) +
                      with("by synonym", e.synonym) + with("dashes", e.dashes));
  }
  void value(const optxv_value& e) {
    static const char* const quotes[] = {"", " closed", " open"};
    at(e.place, e.text);
    EXPECT_LE(e.written.column, e.place.column);
    EXPECT_GE(e.written.column + e.written.length, e.place.column + e.place.length);
    events_.push_back("value" + plain(e.text) + " " + place(e.place) + with("of", e.option) +
                      (e.which == 2 ? " second" : "") + quotes[e.quotes] +
                      (e.quotes != 0 ? " written " + place(e.written) : "") +
                      (e.good != 0 ? "" : " given up"));
  }
  void stored(const optxv_store& e) {
    events_.push_back("stored " + number(e.option) + (e.which == 2 ? " second" : "") + " by " +
                      roads[e.road] + with("of", e.through) + " " + place(e.place));
  }
  void entry(const char* what, const optxv_entry& e) {
    at(e.place, e.name);
    at(e.second_place, e.second);
    events_.push_back(std::string(what) + plain(e.name) + " " + place(e.place) + " with" +
                      plain(e.second) + " " + place(e.second_place) + with("->", e.option) +
                      (e.number == 0 ? " dropped" : with("number", e.number)));
  }
  void message(const optxv_message& e) {
    EXPECT_TRUE(e.kind >= 0 && e.kind < static_cast<std::int32_t>(std::size(kinds)));
    EXPECT_NE(optxv_fault_name(e.fault), nullptr);
    if (e.number != 0) ++numbered_;
    const std::string name = e.fault != 0 ? optxv_fault_name(e.fault) : kinds[e.kind];
    events_.push_back("message " + name + " " + place(e.place) + with("option", e.option) +
                      (e.field != 0 ? std::string(" field ") + optxv_field_name(e.field) : "") +
                      with("about", e.about) + with("seen", e.seen) +
                      (e.detail != 0 ? " more" : "") + (e.number == 0 ? " not queued" : ""));
  }
  void add(const char* what, const optxv_place& at) {
    events_.push_back(std::string(what) + " " + place(at));
  }

  /// "1:2+3", with the file in front unless it is the text p; or "nowhere". outside: the place may
  /// lie beyond the line.
  std::string place(const optxv_place& e, bool outside = false) {
    if (e.line == 0) {
      EXPECT_EQ(number(e.column) + e.file + number(e.length), "00");
      return "nowhere";
    }
    const auto found = lines_.find({e.file, e.line});
    EXPECT_NE(found, lines_.end()) << "no line " << e.line << " of " << e.file;
    if (found != lines_.end() && !outside) {
      EXPECT_LE(e.column + e.length, static_cast<std::int64_t>(found->second.size()) + 1)
          << found->second;
    }
    EXPECT_GE(e.column, 1);
    EXPECT_GE(e.length, 0);
    const std::string file = e.file;
    return (file == "p" ? "" : file + ":") + number(e.line) + ":" + number(e.column) + "+" +
           number(e.length);
  }
  /// The text stands at its place, as far as it was kept: with the quote that opens it, or without.
  void at(const optxv_place& e, const optxv_text& text) {
    if (e.line == 0) return;
    std::string_view there = lines_[std::make_pair(std::string(e.file), e.line)];
    there =
        there.substr(static_cast<std::size_t>(e.column) - 1, static_cast<std::size_t>(e.length));
    const auto same = [&](std::string_view part) {
      const std::size_t size = std::min<std::size_t>({part.size(), text.size, 253});
      return part.substr(0, size) == std::string_view(text.bytes, size);
    };
    EXPECT_TRUE(same(there) || (there.starts_with('"') && same(there.substr(1))))
        << there << " is not " << str(text);
  }

  optxv_listener calls_ = {};
  lines events_;
  lines reading_;
  std::map<std::pair<std::string, std::int64_t>, std::string> lines_;
  std::size_t numbered_ = 0;
};

// An object --------------------------------------------------------------------------------------

class options {
 public:
  options() { xcreate(&handle_); }
  explicit options(std::string_view definition) : options() {
    define(definition);
    EXPECT_EQ(joined(queue()), "");
  }
  ~options() { xfree(&handle_); }
  options(const options&) = delete;
  options& operator=(const options&) = delete;

  optHandle handle() const { return handle_; }
  void define(std::string_view text, const char* name = "p") const {
    EXPECT_EQ(optxv_read_definition_text(handle_, name, text.data(), text.size()), 0);
  }
  void read(std::string_view text, const char* name = "p") const {
    EXPECT_EQ(optxv_read_parameter_text(handle_, name, text.data(), text.size()), 0);
  }
  void listen(recorder& to) const { optxv_listen(handle_, &to.calls()); }

  lines queue() const {
    lines all;
    for (std::int32_t i = 1; i <= optMessageCount(handle_); ++i) {
      char text[OPTXV_TEXT_SIZE];
      std::int32_t kind = 0;
      coptGetMessage(handle_, i, text, &kind);
      all.push_back(number(kind) + " " + text);
    }
    return all;
  }
  std::string written() const {
    std::string text;
    const auto take = [](void* to, const char* bytes, std::size_t size) -> std::int32_t {
      static_cast<std::string*>(to)->assign(bytes, size);
      return 0;
    };
    EXPECT_EQ(optxv_write_parameter_text(handle_, take, &text), 0);
    return text;
  }
  /// Everything that the library knows of its options.
  std::string table() const {
    std::string all;
    for (std::int32_t i = 1; i <= optCount(handle_); ++i) {
      char name[OPTXV_TEXT_SIZE], text[OPTXV_TEXT_SIZE], second[OPTXV_TEXT_SIZE];
      std::int32_t info[6] = {};
      coptGetNameNr(handle_, i, name);
      optGetInfoNr(handle_, i, info, info + 1, info + 2, info + 3, info + 4, info + 5);
      coptGetStrNr(handle_, i, text);
      coptGetStr2Nr(handle_, i, second);
      all += std::string(name) + '|' + text + '|' + second;
      for (const std::int32_t each : info) all += ' ' + number(each);
      for (std::int32_t item = 1; item <= optxv_list_count(handle_, i); ++item) {
        optxv_text bytes;
        optxv_list_item(handle_, i, item, &bytes);
        all += '|' + str(bytes);
      }
      all += '\n';
    }
    return all;
  }

 private:
  optHandle handle_ = nullptr;
};

// Entries ----------------------------------------------------------------------------------------

const std::string& definition = optxv::everykind();

// The rows: a text, and the events that are told of it.

enum class mode : std::int32_t { token = 0, eol = 1 };

/// What is told of a text that a fresh object reads.
std::string toldby(const std::string& defined, mode how, const std::string& text,
                   bool all = false) {
  const options made(defined);
  recorder heard;
  made.listen(heard);
  optEOLOnlySet(made.handle(), static_cast<std::int32_t>(how));
  made.read(text);
  EXPECT_TRUE(heard.idle());
  return heard.take(all);
}

TEST(Entries, AreToldInEndOfLineMode) {
  const std::string rows = rowsof("api/entries.rows");
  EXPECT_EQ(retold(rows, [](auto& text) { return toldby(definition, mode::eol, text); }), rows);
}

TEST(Entries, AreToldInTokenMode) {
  const std::string rows = R"(steplim 600 , level=2 tol 0.25 0.75 quick
> key steplim 1:1+7 -> 2
> value 600 1:9+3 of 2
> stored 2 by entry 1:9+3
> key level 1:15+5 -> 6
> separator 1:20+1
> value 2 1:21+1 of 6
> stored 6 by entry 1:21+1
> key tol 1:23+3 -> 3
> value 0.25 1:27+4 of 3
> stored 3 by entry 1:27+4
> value 0.75 1:32+4 of 3 second
> stored 3 second by entry 1:32+4
> key quick 1:37+5 -> 8
> stored 8 by entry 1:37+5
logname "a b
> key logname 1:1+7 -> 4
> value a b 1:10+3 of 4 open written 1:9+4 given up
pair "a :7"
> key pair 1:1+4 -> 11
> value a :7 1:7+4 of 11 closed written 1:6+6
> stored 4 by list of 11 1:7+2
> stored 2 by list of 11 1:10+1
)";
  EXPECT_EQ(retold(rows, [](auto& text) { return toldby(definition, mode::token, text); }), rows);
}

TEST(Entries, JoinWordsUnderMinosLookup) {
  const std::string rows = R"(major iteration limit 7
> key major_iteration_limit 1:1+21 -> 2
> value 7 1:23+1 of 2
> stored 2 by entry 1:23+1
big steps 7
> key big_steps 1:1+9 -> 2 by synonym 1
> value 7 1:11+1 of 2
> stored 2 by entry 1:11+1
)";
  const char* const minos =
      "Minos lookup\n"
      "major_iteration_limit integer 1 5 0 9 1 1 Limit\n"
      "major_print_level integer 2 5 0 9 1 1 Level\n"
      "row_tol double 3 0.5 0 1 1 1 Tolerance\n"
      "big_steps synonym major_iteration_limit\n";
  EXPECT_EQ(retold(rows, [=](auto& text) { return toldby(minos, mode::eol, text); }), rows);
}

TEST(Cuts, TellWhatIsLost) {
  const std::string rows = rowsof("api/cuts.rows");
  EXPECT_EQ(retold(rows, [](auto& text) { return toldby(definition, mode::eol, text); }), rows);
}

TEST(Cuts, TellWhatATokenLoses) {
  const std::string rows = R"(logname <a*256>
> key logname 1:1+7 -> 4
> cut value 1:9+256 of option 4 kept (255 bytes) lost 1
> value (255 bytes) 1:9+256 of 4
> stored 4 by entry 1:9+256
logname "<a*255>"
> key logname 1:1+7 -> 4
> cut value 1:10+255 of option 4 kept (254 bytes) lost 1
> value (254 bytes) 1:10+255 of 4 closed written 1:9+257
> stored 4 by entry 1:10+255
)";
  EXPECT_EQ(retold(rows, [](auto& text) { return toldby(definition, mode::token, text); }), rows);
}

// Definitions ------------------------------------------------------------------------------------

std::string definedby(const std::string& text) {
  const options made;
  recorder heard;
  made.listen(heard);
  made.define(text);
  EXPECT_TRUE(heard.idle());
  return heard.take();
}

/// The events with the fields that follow each other on one line.
std::string withfields(const std::string& events) {
  std::istringstream in(events);
  std::string all;
  bool after = false;
  for (std::string event; std::getline(in, event);) {
    const bool field = event.starts_with("field ");
    const bool more = field && after && all.size() - all.rfind('\n') + event.size() < 100;
    all += (more ? ", " : all.empty() ? "" : "\n") + (more ? event.substr(6) : event);
    after = field;
  }
  return all;
}

TEST(Records, AreToldByField) {
  const std::string rows = rowsof("api/records.rows");
  EXPECT_EQ(retold(rows, [](auto& text) { return withfields(definedby(text)); }), rows);
}

TEST(Records, TellOfFaultsAtTheField) {
  const std::string rows = rowsof("api/faults.rows");
  // What went well is left out.
  const auto faults = [](const std::string& text) {
    std::istringstream in(definedby(text));
    std::string all;
    for (std::string event; std::getline(in, event);)
      if (!event.starts_with("field") && !event.starts_with("declared option")) all += event + '\n';
    return all;
  };
  EXPECT_EQ(retold(rows, faults), rows);
}

// Sources ----------------------------------------------------------------------------------------

/// "3 by macro of 10 p:1:2+3" for an option that is set, else "no road".
std::string origin(const options& made, std::int32_t option) {
  optxv_place at;
  std::int32_t road = -1, through = -1;
  const std::int32_t good = optxv_value_place(made.handle(), option, &at, &road, &through);
  EXPECT_EQ(good == 1, road != optxv_road_none);
  return roads[road] + with("of", through) +
         (at.line == 0 ? ""
                       : std::string(" ") + at.file + ":" + number(at.line) + ":" +
                             number(at.column) + "+" + number(at.length));
}

TEST(Sources, NestWithTheirPlaces) {
  folder();
  ownfolder::put("inner.opt", "level 2\nread missing.opt\nwrong 1\n");
  const std::string rows = R"(read inner.opt\nlevel 1
> message enter nowhere
> enter parameters p level 1
> line 1:1+14 read inner.opt
> key read 1:1+4 -> 14
> value inner.opt 1:6+9 of 14
> message enter 1:6+9
> enter parameters inner.opt level 2 from 1:6+9
> line inner.opt:1:1+7 level 2
> key level inner.opt:1:1+5 -> 6
> value 2 inner.opt:1:7+1 of 6
> stored 6 by entry inner.opt:1:7+1
> line inner.opt:2:1+16 read missing.opt
> key read inner.opt:2:1+4 -> 14
> value missing.opt inner.opt:2:6+11 of 14
> message cannot-open inner.opt:2:6+11 about missing.opt
> message system inner.opt:2:6+11 about missing.opt more
> line inner.opt:3:1+7 wrong 1
> key wrong inner.opt:3:1+5
> message unknown-option inner.opt:3:1+5 about wrong
> leave parameters inner.opt
> message leave 1:6+9
> line 2:1+7 level 1
> key level 2:1+5 -> 6
> value 1 2:7+1 of 6
> stored 6 by entry 2:7+1
> leave parameters p
> message leave nowhere
)";
  EXPECT_EQ(retold(rows, [](auto& text) { return toldby(definition, mode::eol, text, true); }),
            rows);
}

TEST(Sources, EndWhereTheyNestTooDeep) {
  folder();
  ownfolder::put("again.opt", "read again.opt\n");
  const std::string told = toldby(definition, mode::eol, "read again.opt", true);
  EXPECT_NE(told.find("\nmessage file-nesting again.opt:1:6+9 about again.opt\n"), told.npos);
  EXPECT_NE(told.find("level 9"), told.npos) << told;
  EXPECT_EQ(told.find("level 10"), told.npos) << told;
}

/// Both functions that read a string. The second reads on to the end, and says what it left.
TEST(Sources, MayBeStrings) {
  const options made(definition);
  recorder heard;
  made.listen(heard);
  coptReadFromStr(made.handle(), "steplim 7");
  EXPECT_EQ(heard.take(true), R"(enter string string level 1
message enter nowhere
line string:1:1+9 steplim 7
key steplim string:1:1+7 -> 2
value 7 string:1:9+1 of 2
stored 2 by entry string:1:9+1
message leave nowhere not queued
leave string string
)");
  optReadFromPChar(made.handle(), "logname a\nlevel 2");
  EXPECT_EQ(heard.take(), R"(key logname pchar:1:1+7 -> 4
value a pchar:1:9+1 of 4
stored 4 by entry pchar:1:9+1
cut rest pchar:1:11+7 lost 7
)");
}

TEST(Sources, TellWhyAReadFailed) {
  folder();
  const options made(definition);
  recorder heard;
  made.listen(heard);
  // A file that opens, and whose first bytes nobody may read.
  const std::string file = "/proc/self/mem";
  EXPECT_EQ(coptReadParameterFile(made.handle(), file.c_str()), EIO);
  EXPECT_EQ(heard.take(true),
            "message enter nowhere\n"
            "enter parameters /proc/self/mem level 1\n"
            "message cannot-read nowhere about /proc/self/mem\n"
            "message system nowhere about /proc/self/mem more\n"
            "leave parameters /proc/self/mem error 5\n"
            "message leave nowhere\n");
  const options other;
  other.listen(heard);
  EXPECT_EQ(coptReadDefinition(other.handle(), file.c_str()), EIO);
  EXPECT_EQ(heard.take(true),
            "enter definition /proc/self/mem level 1\n"
            "message cannot-read nowhere about /proc/self/mem\n"
            "message system nowhere about /proc/self/mem more\n"
            "leave definition /proc/self/mem error 5\n");
}

/// A handle keeps each name once and for its life, as many as fit.
TEST(Sources, KeepTheirNames) {
  const options made(definition);
  std::vector<const char*> names;
  optxv_listener calls = {};
  calls.size = sizeof calls;
  calls.context = &names;
  calls.entered = [](void* to, const optxv_source* source) {
    static_cast<std::vector<const char*>*>(to)->push_back(source->name);
  };
  optxv_listen(made.handle(), &calls);
  made.read("", "first");
  for (int i = 2; i < 65535; ++i) made.read("", number(i).c_str());
  made.read("", "first");
  made.read("steplim 5", "one too many");
  // The definition has a name too.
  EXPECT_EQ(names.size(), 65536U);
  EXPECT_STREQ(names.front(), "first");
  EXPECT_STREQ(names[65533], "65534");
  EXPECT_EQ(names[65534], names.front());
  EXPECT_STREQ(names.back(), "");
  EXPECT_EQ(origin(made, 2), "entry :1:9+1");
}

TEST(Sources, InMemoryHaveAnyNameAndSize) {
  const options made(definition);
  made.read("steplim 7000", nullptr);
  EXPECT_EQ(made.queue()[0], "6 Reading parameter(s) from \"\"");
  optxv_place place;
  const std::string longname(300, 'n');
  made.read({"logname a\0b", 11}, longname.c_str());
  EXPECT_EQ(optxv_value_place(made.handle(), 4, &place, nullptr, nullptr), 1);
  EXPECT_EQ(place.file, longname.substr(0, 255));
  EXPECT_EQ(place.length, 3);
  EXPECT_EQ(optxv_read_parameter_text(made.handle(), "p", nullptr, 0), 0);
  // A text of several megabytes, whose last line counts.
  std::string large;
  for (int i = 0; i < 200000; ++i) large += "logname a_text_of_some_length\n";
  made.read(large + "level 1");
  EXPECT_EQ(optxv_value_place(made.handle(), 6, &place, nullptr, nullptr), 1);
  EXPECT_EQ(place.line, 200001);
}

// The queue --------------------------------------------------------------------------------------

/// The place of each message, as the question gives it: "file:1:2+3" or "nowhere".
lines placesof(const options& made) {
  lines all;
  for (std::int32_t i = 1; i <= optMessageCount(made.handle()); ++i) {
    optxv_place at;
    const bool known = optxv_message_place(made.handle(), i, &at) == 1;
    EXPECT_EQ(known, at.line != 0);
    all.push_back(known ? std::string(at.file) + ":" + number(at.line) + ":" + number(at.column) +
                              "+" + number(at.length)
                        : "nowhere");
  }
  return all;
}

/// Each fault of parameter text, with its place and what it is about.
TEST(Messages, TellTheirFaults) {
  const auto told = [](const std::string& text) {
    std::istringstream in(toldby(definition, mode::eol, text));
    std::string all;
    for (std::string event; std::getline(in, event);)
      if (event.starts_with("message ")) all += event.substr(8) + '\n';
    return all;
  };
  const std::string rows = rowsof("api/messages.rows");
  EXPECT_EQ(retold(rows, told), rows);
}

// Seventeen macros, each of which names the one before it twice, hand on more than 100,000 values.
TEST(Messages, TellWhatLongMacrosDoNotHandOn) {
  std::string macros = "list strlist 1 1 1 List\nm0 macro 1 1 M\n list\n";
  for (int i = 1; i <= 17; ++i) {
    const std::string below = " m" + number(i - 1) + '\n';
    macros += "m" + number(i) + " macro 1 1 M\n" + below + below;
  }
  const std::string told = toldby(macros, mode::eol, "m17 x");
  const std::string last = told.substr(told.rfind('\n', told.size() - 2) + 1);
  EXPECT_TRUE(last.starts_with("message handed-on 1:5+1 option ")) << last;
  EXPECT_TRUE(last.ends_with(" about m17\n")) << last;
}

TEST(Messages, HaveTheirPlaces) {
  folder();
  ownfolder::put("inner.opt", "wrong 1\n");
  const options made(definition);
  optEchoSet(made.handle(), 1);
  made.read("steplim 7000\nread inner.opt");
  optEchoSet(made.handle(), 0);
  coptReadFromStr(made.handle(), "wrong 2");
  optSetIntNr(made.handle(), 2, 7000);
  coptAddMessage(made.handle(), "mine");
  const lines places = placesof(made), queue = made.queue();
  std::string both;
  for (std::size_t i = 0; i < places.size(); ++i) both += queue[i] + " @ " + places[i] + "\n";
  EXPECT_EQ(both,
            R"(6 Reading parameter(s) from "p" @ nowhere
0 >>  steplim 7000 @ p:1:1+12
3 *** Value Error line 1: Integer range error for option "steplim" saw "7000" @ p:1:9+4
3 *** Value Error line 1:    Valid range is 0 to 5000 @ p:1:9+4
0 >>  read inner.opt @ p:2:1+14
6 Reading parameter(s) from "inner.opt" @ p:2:6+9
0 >>  wrong 1 @ inner.opt:1:1+7
9 *** Error line 1: Unknown option "wrong" @ inner.opt:1:1+5
7 Finished reading from "inner.opt" @ p:2:6+9
7 Finished reading from "p" @ nowhere
6 Reading parameter(s) from "string" @ nowhere
9 *** Error Unknown option "wrong" @ string:1:1+5
7 Finished reading from "string" @ nowhere
3 *** Value Error Integer range error for option "steplim" saw "7000" @ nowhere
3 *** Value Error    Valid range is 0 to 5000 @ nowhere
9 *** Error mine @ nowhere
)");
  optxv_place at;
  for (const std::int32_t bad : {0, -1, static_cast<std::int32_t>(queue.size()) + 1}) {
    EXPECT_EQ(optxv_message_place(made.handle(), bad, &at), 0);
    EXPECT_EQ(at.line, 0);
    EXPECT_STREQ(at.file, "");
  }
  optClearMessages(made.handle());
  coptAddMessage(made.handle(), "mine");
  EXPECT_EQ(placesof(made), lines{"nowhere"});
}

TEST(Messages, AreToldWhenTheQueueIsFull) {
  const options made(definition);
  recorder heard;
  made.listen(heard);
  std::string text;
  for (int i = 0; i < 4999; ++i) text += "wrong 1\n";
  made.read(text);
  EXPECT_EQ(optMessageCount(made.handle()), 5001);  // one for the start, one that it is full
  const std::string first = heard.take(true);
  EXPECT_NE(first.find("message queue-full nowhere\nmessage leave nowhere not queued\n"),
            std::string::npos);
  made.read("wrong 2");
  EXPECT_EQ(heard.take(), "key wrong 1:1+5\nmessage unknown-option 1:1+5 about wrong not queued\n");
  EXPECT_EQ(heard.numbered(), 5001U);
}

// Questions --------------------------------------------------------------------------------------

TEST(Origins, FollowEveryRoad) {
  const options made(definition);
  const struct {
    const char* what;
    std::function<void()> act;
    std::int32_t option;
    const char* from;
  } rows[] = {
      {"nothing yet", [] {}, 2, "no road"},
      {"an entry", [&] { made.read("steplim 5"); }, 2, "entry p:1:9+1"},
      {"a refused value changes nothing", [&] { made.read("\nsteplim x"); }, 2, "entry p:1:9+1"},
      {"a macro", [&] { made.read("both 6", "q"); }, 2, "macro of 10 q:1:6+1"},
      {"the macro itself has no value", [] {}, 10, "no road"},
      {"a list", [&] { made.read("pair a:7"); }, 2, "list of 11 p:1:8+1"},
      {"a name alone", [&] { made.read("quick"); }, 8, "entry p:1:1+5"},
      {"the second of two", [&] { made.read("tol * 0.5"); }, 3, "entry p:1:7+3"},
      {"the first of two, later", [&] { made.read("tol  0.25 *"); }, 3, "entry p:1:6+4"},
      {"a dot option", [&] { made.read("x.scale 5"); }, 13, "dot p:1:9+1"},
      {"a list of texts", [&] { made.read("names a\nnames b"); }, 9, "entry p:2:7+1"},
      {"a string", [&] { coptReadFromStr(made.handle(), "level 2"); }, 6, "entry string:1:7+1"},
      {"a call", [&] { optSetIntNr(made.handle(), 2, 8); }, 2, "call"},
      {"a call by name", [&] { coptSetStrNr(made.handle(), 4, "x"); }, 4, "call"},
      {"a reset", [&] { optResetNr(made.handle(), 2); }, 2, "no road"},
      {"a reset of all", [&] { optResetAll(made.handle()); }, 3, "no road"},
      {"bad numbers", [] {}, 0, "no road"},
      {"bad numbers", [] {}, 99, "no road"},
  };
  for (const auto& row : rows) {
    row.act();
    EXPECT_EQ(origin(made, row.option), row.from) << row.what;
  }
  made.read("steplim 5");
  optxv_place at;
  EXPECT_EQ(optxv_value_place(made.handle(), 2, &at, nullptr, nullptr), 1);
}

TEST(Lists, GiveEveryItemWhole) {
  const options made(definition);
  made.read("names one\n--mine two words\nnames");
  EXPECT_EQ(optxv_list_count(made.handle(), 9), 1);
  EXPECT_EQ(optxv_list_count(made.handle(), 25), 1);
  for (const std::int32_t other : {0, -1, 2, 26})
    EXPECT_EQ(optxv_list_count(made.handle(), other), -1);
  const struct {
    std::int32_t option, position, good;
    const char* text;
  } rows[] = {
      {9, 1, 1, "one"}, {25, 1, 1, "two words"}, {9, 0, 0, ""}, {9, 2, 0, ""}, {2, 1, 0, ""}};
  for (const auto& row : rows) {
    optxv_text item;
    EXPECT_EQ(optxv_list_item(made.handle(), row.option, row.position, &item), row.good);
    EXPECT_EQ(str(item), row.text);
  }
}

TEST(Names, AreThereForEveryNumber) {
  const std::pair<const char* (*)(std::int32_t), std::int32_t> all[] = {
      {&optxv_fault_name, optxv_faults}, {&optxv_field_name, optxv_fields}};
  for (const auto& [name, count] : all) {
    std::set<std::string> seen;
    for (std::int32_t i = 0; i < count; ++i) {
      const std::string word = name(i);
      EXPECT_TRUE(seen.insert(word).second) << word;
      EXPECT_EQ(word.find_first_not_of("abcdefghijklmnopqrstuvwxyz-"), std::string::npos) << word;
    }
    EXPECT_EQ(name(-1), nullptr);
    EXPECT_EQ(name(count), nullptr);
  }
  EXPECT_STREQ(optxv_fault_name(optxv_fault_dollar_expected), "dollar-expected");
  EXPECT_STREQ(optxv_field_name(optxv_field_groupnumber), "number");
}

/// Each word, read as a record, asks for the fields that its form names, and no others: all of them
/// are told as missing where nothing follows the word.
TEST(Forms, NameWhatARecordReads) {
  std::int32_t count = 0;
  const char *word, *fields, *more;
  std::set<std::string> words;
  while (optxv_record_form(count + 1, &word, &fields, &more) == 1) {
    ++count;
    words.insert(word);
    for (const bool continued : {false, true}) {
      if (continued && *more == '\0') continue;
      const options made;
      recorder heard;
      made.listen(heard);
      made.define(std::string("a ") + word + (continued ? "\n Help 1 1" : ""));
      std::istringstream events(heard.take());
      std::string read, wanted = fields;
      // A synonym, a list and the like stop at a field that is missing; their lines show it.
      for (std::string event; std::getline(events, event);) {
        const std::size_t at = event.find("field ");
        if (at != 0 && at != 3) continue;
        const std::string name = event.substr(at + 6, event.find(' ', at + 6) - at - 6);
        if (name != "record" && name != "type") read += (read.empty() ? "" : " ") + name;
      }
      if (continued) wanted += std::string(" ") + more;
      EXPECT_TRUE((read + " ").starts_with(wanted + " "))
          << word << ": " << read << ", not " << wanted;
    }
  }
  EXPECT_EQ(count, 17);
  EXPECT_EQ(words.size(), 17U);
  EXPECT_EQ(optxv_record_form(0, &word, &fields, &more), 0);
  EXPECT_EQ(optxv_record_form(-1, &word, &fields, &more), 0);
}

// The listener as such ---------------------------------------------------------------------------

TEST(Listener, IsCopiedAndTakenAway) {
  const options made(definition), other(definition);
  recorder heard;
  made.listen(heard);
  heard.calls().key = nullptr;
  made.read("steplim 5");
  EXPECT_TRUE(heard.take().starts_with("key steplim")) << "the copy has the function";
  other.read("steplim 5");
  optxv_listen(made.handle(), nullptr);
  made.read("steplim 5");
  EXPECT_EQ(heard.take(true), "");
}

TEST(Listener, MayKnowLessThanTheLibrary) {
  const std::pair<std::size_t, const char*> rows[] = {
      {sizeof(optxv_listener),
       "key steplim 1:1+7 -> 2\nvalue 5 1:9+1 of 2\nstored 2 by entry 1:9+1\n"},
      {offsetof(optxv_listener, stored), "key steplim 1:1+7 -> 2\nvalue 5 1:9+1 of 2\n"},
      {offsetof(optxv_listener, value), "key steplim 1:1+7 -> 2\n"},
      {sizeof(std::size_t) + sizeof(void*), ""},
      {0, ""},
  };
  for (const auto& [size, told] : rows) {
    const options made(definition);
    recorder heard;
    heard.calls().size = size;
    made.listen(heard);
    made.read("steplim 5");
    EXPECT_EQ(heard.take(), told) << size;
  }
}

/// What the header allows a callback to ask, it may ask at any call.
TEST(Listener, MayAskWhileItIsTold) {
  const options made(definition);
  struct asking {
    optHandle handle;
    lines told;
  } asked = {made.handle(), {}};
  optxv_listener calls = {};
  calls.size = sizeof calls;
  calls.context = &asked;
  calls.stored = [](void* to, const optxv_store* store) {
    auto& self = *static_cast<asking*>(to);
    char text[OPTXV_TEXT_SIZE];
    coptGetStrNr(self.handle, store->option, text);
    optxv_place place;
    EXPECT_EQ(optxv_value_place(self.handle, store->option, &place, nullptr, nullptr), 1);
    self.told.push_back(std::string(text) + " " + number(place.column));
    // Another handle, which has a listener of its own, may even read.
    const options other(definition);
    recorder heard;
    other.listen(heard);
    other.read("level 2");
    EXPECT_EQ(heard.take(), "key level 1:1+5 -> 6\nvalue 2 1:7+1 of 6\nstored 6 by entry 1:7+1\n");
  };
  calls.message = [](void* to, const optxv_message* message) {
    auto& self = *static_cast<asking*>(to);
    optxv_place place;
    if (message->number == 0) return;
    EXPECT_EQ(message->number, optMessageCount(self.handle));
    EXPECT_EQ(optxv_message_place(self.handle, message->number, &place), message->place.line != 0);
    EXPECT_EQ(place.column, message->place.column);
  };
  optxv_listen(made.handle(), &calls);
  made.read("steplim 5\nboth 6\nsteplim x\nwrong 1");
  EXPECT_EQ(asked.told, (lines{"5 9", "6 6", "6 6"}));
}

/// The program has the text of the nested file, but not of the one after it.
TEST(Listener, MayHaveTheTextOfAFile) {
  folder();
  ownfolder::put("saved.opt", "level 0");
  ownfolder::put("other.opt", "logname saved");
  const options made(definition);
  recorder heard;
  static const std::string newer = "level 1\nread other.opt\nscael 0";
  heard.calls().opening = [](void*, const char* name, optxv_text* text) -> std::int32_t {
    if (std::string_view(name) != "saved.opt") return 0;
    *text = {newer.data(), newer.size()};
    return 1;
  };
  made.listen(heard);
  made.read("read saved.opt");
  EXPECT_EQ(origin(made, 6), "entry saved.opt:1:7+1");
  EXPECT_EQ(origin(made, 4), "entry other.opt:1:9+5");
  EXPECT_EQ(std::ranges::count(placesof(made), "saved.opt:3:1+5"), 1);
}

TEST(Writing, GivesTheTextToTheProgram) {
  const options made(definition);
  made.read("steplim 5\nlogname a b");
  EXPECT_EQ(made.written(), "steplim=5\nlogname=\"a b\"\n");
  const auto refuse = [](void*, const char*, std::size_t) -> std::int32_t { return 77; };
  EXPECT_EQ(optxv_write_parameter_text(made.handle(), refuse, nullptr), 77);
  recorder heard;
  made.listen(heard);
  EXPECT_EQ(coptWriteParameterFile(made.handle(), "/none/x"), ENOENT);
  EXPECT_EQ(heard.take(),
            "message cannot-write nowhere about /none/x\n"
            "message system nowhere about /none/x more\n");
}

TEST(Writing, ReplacesAFileWholeOrGivesTheError) {
  folder();
  const options made(definition);
  made.read("steplim 5");
  const auto contentof = [](const std::string& name) {
    std::ifstream in(name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
  };
  ownfolder::put("old.opt", "old");
  ASSERT_EQ(symlink("old.opt", "link.opt"), 0);
  EXPECT_EQ(optxv_write_parameters(made.handle(), "link.opt"), 0);
  EXPECT_EQ(contentof("old.opt"), "steplim=5\n");
  EXPECT_EQ(optxv_write_parameters(made.handle(), "no/such/folder"), ENOENT);
  EXPECT_EQ(optxv_write_parameters(made.handle(), "/dev/full"), ENOSPC);
  EXPECT_EQ(optxv_write_parameters(made.handle(), std::string(256, 'a').c_str()), optxv_too_long);
  EXPECT_EQ(optxv_message_count(made.handle()), 0);
}

// Any text ---------------------------------------------------------------------------------------

std::string content(const std::string& name) {
  std::ifstream in(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

/// A text with some of its bytes, pieces and lines changed, doubled, swapped or gone.
std::string changed(std::string text, std::mt19937& chance) {
  static const std::string signs = "\"\x1a\n\t ,=:#*.-$()'!;" + std::string(1, '\0');
  static const std::string pieces[] = {
      ":=", "--", "maxint", "99999999999", std::string(300, 'x'), std::string(1100, 'y')};
  const auto below = [&](std::size_t limit) { return chance() % std::max<std::size_t>(limit, 1); };
  for (std::size_t times = 1 + below(12); times > 0; --times) {
    const std::size_t at = below(text.size() + 1), size = below(40);
    switch (below(5)) {
      case 0:
        text.insert(at, pieces[below(std::size(pieces))]);
        break;
      case 1:
        text.insert(at, 1, signs[below(signs.size())]);
        break;
      case 2:
        text.erase(at, size);
        break;
      case 3:
        text.insert(at, text.substr(below(text.size()), size));
        break;
      default:
        text.replace(at, std::min<std::size_t>(1, text.size() - at), 1,
                     static_cast<char>(below(256)));
    }
  }
  return text;
}

/// A listener hears places that the recorder checks, and changes nothing; and a text in memory is
/// read as the file of that text.
TEST(AnyText, ReadsTheSameWithAListenerAndFromMemory) {
  folder();
  ownfolder::put("inner.opt", "level 2\nread missing.opt\nwrong 1\n");
  const std::string examples = OPTXV_SOURCE_DIR "/examples/";
  const std::string definitions[] = {definition, content(examples + "solver.def")};
  const std::string parameters[] = {
      "steplim 5 # x\ntol 0.25 \"0.75\"\nx.scale('a',*) = 2\ntie b(i)$o(i) = no\n--mine a \"b\"\n"
      "outer l:12\nread inner.opt\nwhole no\nlevel 2 , steplim=5 quick\npair \"a:7\"\nfree yes\n",
      content(examples + "solver.opt"), content(examples + "faulty.opt")};
  std::mt19937 chance(20260101);
  for (int round = 0; round < 400 && !HasFailure(); ++round) {
    std::string defined = definitions[chance() % 2], text = parameters[chance() % 3];
    if (round % 3 == 0) defined = changed(defined, chance);
    if (round % 3 != 0) text = changed(text, chance);
    ownfolder::put("any.def", defined);
    ownfolder::put("any.opt", text);
    const options plain, heard;
    recorder listens;
    heard.listen(listens);
    for (const options* each : {&plain, &heard}) {
      optEOLOnlySet(each->handle(), round % 2);
      optEchoSet(each->handle(), round % 5 == 0);
    }
    coptReadDefinition(plain.handle(), "any.def");
    heard.define(defined, "any.def");
    coptReadParameterFile(plain.handle(), "any.opt");
    heard.read(text, "any.opt");
    const std::string line = text.substr(0, text.find('\n'));
    for (const options* each : {&plain, &heard}) optReadFromPChar(each->handle(), line.c_str());
    EXPECT_TRUE(listens.idle());
    EXPECT_EQ(joined(plain.queue()), joined(heard.queue()));
    EXPECT_EQ(plain.table(), heard.table());
    EXPECT_EQ(plain.written(), heard.written());
    EXPECT_EQ(joined(placesof(plain)), joined(placesof(heard)));
    EXPECT_FALSE(HasFailure()) << "definition:\n" << defined << "\nparameters:\n" << text;
  }
}

}  // namespace
