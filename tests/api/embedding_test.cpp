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

namespace {

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

const char* const definition =
    "limits group 1 1 Limits\n"
    "steplim integer 11 100 0 5000 5 1 Step limit\n"                   // 2
    "tol double.TWO 12 0.5 0 1 6 1 Tolerance\n"                        // 3
    "logname string 13 run.log 8 1 Log file\n"                         // 4
    "method enumstr 14 primal 9 1 Method\n primal 21 P\n dual 22 D\n"  // 5
    "level enumint 15 1 9 1 Level\n 1 21 Low\n 2 22 High\n"            // 6
    "fast boolean.NV 16 0 1 1 Fast\n"                                  // 7
    "quick boolean.OPT 17 0 1 1 Quick\n"                               // 8
    "names strlist 18 10 1 Names\n"                                    // 9
    "both macro 10 1 Both\n steplim\n logname\n"                       // 10
    "pair multilist 19 10 1 Pair\n logname steplim\n"                  // 11
    "outer multilist 20 10 1 Outer\n names both\n"                     // 12
    ".scale double 21 1 0 100 11 1 Scale factor\n"                     // 13
    "read immediate ReadFile 1 1 Reads\n"                              // 14
    "whole immediate EolFlag 1 1 Mode\n"                               // 15
    "say immediate Message 1 1 Says\n"                                 // 16
    "free immediate NoBounds 1 1 Bounds\n"                             // 17
    "explain immediate Help 1 1 Explains\n"                            // 18
    "old integer 22 1 0 9 1 1 Old\n"                                   // 19
    "gone integer 23 1 0 9 1 1 Gone\n"                                 // 20
    "maxsteps synonym steplim\n"
    "passing deprecated\n old Say steplim\n maxsteps Say steplim\n"
    "dead obsolete\n gone Out\n"
    "tie indicator Ties\n"
    "hash eolcomm #\n";

/// Texts and what is told of them. The lines after a text that begin with "> " are the events. In a
/// text \n and \s are a line end and a blank, ^M and ^Z are those bytes, and <a*300> is 300 times
/// the a.
std::string meant(const std::string& text) {
  std::string all;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::string two = text.substr(i, 2);
    if (two == "\\n" || two == "\\s" || two == "^Z" || two == "^M") {
      all += two == "^Z" ? '\x1a' : two == "^M" ? '\r' : two == "\\n" ? '\n' : ' ';
      ++i;
    } else if (text[i] == '<' && text[i + 2] == '*') {
      all += std::string(std::stoul(text.substr(i + 3)), text[i + 1]);
      i = text.find('>', i);
    } else {
      all += text[i];
    }
  }
  return all;
}

/// The rows again, with what `told` gives for their texts.
std::string retold(const std::string& rows,
                   const std::function<std::string(const std::string& text)>& told) {
  std::istringstream in(rows);
  std::string all, text;
  const auto finish = [&] {
    std::istringstream events(told(meant(text)));
    for (std::string event; std::getline(events, event);) all += "> " + event + '\n';
    text.clear();
  };
  bool after = false;
  for (std::string line; std::getline(in, line);) {
    const bool event = line.starts_with('>');
    if (!event && after) finish();
    if (!event) text += line + '\n', all += line + '\n';
    after = event;
  }
  finish();
  return all;
}

enum class mode : std::int32_t { token = 0, eol = 1 };

/// What is told of a text that a fresh object reads.
std::string toldby(const char* defined, mode how, const std::string& text, bool all = false) {
  const options made(defined);
  recorder heard;
  made.listen(heard);
  optEOLOnlySet(made.handle(), static_cast<std::int32_t>(how));
  made.read(text);
  EXPECT_TRUE(heard.idle());
  return heard.take(all);
}

TEST(Entries, AreToldInEndOfLineMode) {
  const std::string rows = R"(steplim = 600  # note
> key steplim 1:1+7 -> 2
> separator 1:9+1
> comment 1:16+6
> value 600 1:11+3 of 2
> stored 2 by entry 1:11+3
# all\n* star\n\nsteplim 6
> comment 1:1+5
> comment 2:1+6
> key steplim 4:1+7 -> 2
> value 6 4:9+1 of 2
> stored 2 by entry 4:9+1
iteration_limt 5 # x
> key iteration_limt 1:1+14
> message unknown-option 1:1+14 about iteration_limt
steplim
> key steplim 1:1+7 -> 2
> message value-expected 1:8+0 option 2 about steplim
free yes\nsteplim 7000
> key free 1:1+4 -> 17
> value yes 1:6+3 of 17
> key steplim 2:1+7 -> 2
> value 7000 2:9+4 of 2
> message range 2:9+4 option 2 about steplim seen 7000
> message allowed-range 2:9+4 option 2 about steplim more
> stored 2 by entry 2:9+4
tol 0.25 0.75
> key tol 1:1+3 -> 3
> value 0.25 1:5+4 of 3
> stored 3 by entry 1:5+4
> value 0.75 1:10+4 of 3 second
> stored 3 second by entry 1:10+4
maxsteps 7
> key maxsteps 1:1+8 -> 2 by synonym 1
> value 7 1:10+1 of 2
> message deprecated 1:1+8 option 2 about maxsteps
> stored 2 by entry 1:10+1
gone 3
> key gone 1:1+4 -> 20
> value 3 1:6+1 of 20
> message obsolete 1:1+4 option 20 about gone
fast 1
> key fast 1:1+4 -> 7
> stored 7 by entry 1:1+4
> message remainder 1:6+1 seen 1
> message key-expected 1:6+1 seen 1
method dial
> key method 1:1+6 -> 5
> value dial 1:8+4 of 5
> message unknown-value 1:8+4 option 5 about method seen dial
> message allowed-values 1:8+4 option 5 about method more
logname "a b"  # note
> key logname 1:1+7 -> 4
> comment 1:16+6
> value a b 1:10+3 of 4 closed written 1:9+5
> stored 4 by entry 1:10+3
logname "a b
> key logname 1:1+7 -> 4
> value a b" 1:10+3 of 4 open written 1:9+4
> message quote 1:10+3 option 4 seen a b"
-steplim 5
> key steplim 1:2+7 -> 2 dashes 1
> value 5 1:10+1 of 2
> stored 2 by entry 1:10+1
both a
> key both 1:1+4 -> 10
> value a 1:6+1 of 10
> message integer-expected 1:6+1 option 2 about both seen a
> stored 4 by macro of 10 1:6+1
pair a:7000:c
> key pair 1:1+4 -> 11
> value a:7000:c 1:6+8 of 11
> stored 4 by list of 11 1:6+1
> message range 1:8+4 option 2 about pair seen 7000
> message allowed-range 1:8+4 option 2 about pair more
> message list-overflow 1:13+1 option 11 about pair
outer list:12
> key outer 1:1+5 -> 12
> value list:12 1:7+7 of 12
> stored 9 by list of 12 1:7+4
> stored 2 by macro of 10 1:12+2
> stored 4 by macro of 10 1:12+2
--mine one two\n--mine three
> key --mine 1:3+4 dashes 2
> value one two 1:8+7 of 21
> stored 21 by entry 1:8+7
> key --mine 2:3+4 -> 21 dashes 2
> value three 2:8+5 of 21
> stored 21 by entry 2:8+5
x.scale('a b',*) = 2
> separator 1:18+1
> value 2 1:20+1 of 13
> stored 13 by dot 1:20+1
> dot x 1:1+1 with .scale 1:2+6 -> 13 number 1
x.scale = 200
> separator 1:9+1
> value 200 1:11+3 of 13
> message range 1:11+3 option 13 about .scale seen 200
> message allowed-range 1:11+3 option 13 about .scale more
> dot x 1:1+1 with .scale 1:2+6 -> 13 dropped
x.scal 2
> message unknown-suffix 1:2+5 about .scal seen x
> message key-expected 1:8+1 seen 2
x.scale('a' 2
> message bracket-expected 1:13+1 about x seen 2
> value 2 1:13+1 of 13
> stored 13 by dot 1:13+1
> dot x 1:1+1 with .scale 1:2+6 -> 13 dropped
x.scale('a\n* more
> comment 2:1+6
> message bracket-expected 2:7+0 about x
> message value-expected 2:7+0 about x
> dot x 1:1+1 with .scale 1:2+6 -> 13 dropped
tie bal(i,'a')$open(i) = no
> key tie 1:1+3
> separator 1:24+1
> value no 1:26+2
> indicator bal 1:5+3 with open 1:16+4 number 1
tie bal open 1
> key tie 1:1+3
> message dollar-expected 1:9+6 about bal
> indicator bal 1:5+3 with nowhere dropped
tie bal$open maybe
> key tie 1:1+3
> value maybe 1:14+5
> message boolean-expected 1:14+5 about bal seen maybe
> indicator bal 1:5+3 with open 1:9+4 dropped
say Hello there
> key say 1:1+3 -> 16
> value Hello 1:5+5 of 16
> message own 1:5+5
> key there 1:11+5
> message unknown-option 1:11+5 about there
whole no\nsteplim 5 level 2
> key whole 1:1+5 -> 15
> value no 1:7+2 of 15
> key steplim 2:1+7 -> 2
> value 5 2:9+1 of 2
> stored 2 by entry 2:9+1
> key level 2:11+5 -> 6
> value 2 2:17+1 of 6
> stored 6 by entry 2:17+1
)";
  EXPECT_EQ(retold(rows, [](auto& text) { return toldby(definition, mode::eol, text); }), rows);
}

TEST(Entries, AreToldInTokenMode) {
  const std::string rows = R"(steplim 600 , level=2
> key steplim 1:1+7 -> 2
> value 600 1:9+3 of 2
> stored 2 by entry 1:9+3
> key level 1:15+5 -> 6
> separator 1:20+1
> value 2 1:21+1 of 6
> stored 6 by entry 1:21+1
logname "a b
> key logname 1:1+7 -> 4
> value a b 1:10+3 of 4 open written 1:9+4 given up
tol 0.25 0.75 level 1
> key tol 1:1+3 -> 3
> value 0.25 1:5+4 of 3
> stored 3 by entry 1:5+4
> value 0.75 1:10+4 of 3 second
> stored 3 second by entry 1:10+4
> key level 1:15+5 -> 6
> value 1 1:21+1 of 6
> stored 6 by entry 1:21+1
unknown = 5
> key unknown 1:1+7
> message unknown-option 1:1+7 about unknown
> message key-expected 1:11+1 seen 5
--mine one two
> key --mine 1:3+4 dashes 2
> value one 1:8+3 of 21
> stored 21 by entry 1:8+3
> key two 1:12+3
> message unknown-option 1:12+3 about two
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
major_iteration 7
> key major_iteration 1:1+15
> message unknown-option 1:1+15 about major_iteration
big steps 7
> key big_steps 1:1+9 -> 2 by synonym 1
> value 7 1:11+1 of 2
> stored 2 by entry 1:11+1
minor steps 7
> key minor_steps 1:1+11
> message unknown-option 1:1+11 about minor_steps
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
  const std::string rows = R"(steplim 5^Z 7\nlevel 2
> key steplim 1:1+7 -> 2
> value 5 1:9+1 of 2
> stored 2 by entry 1:9+1
> cut rest 1:11+2 lost 2
> key level 2:1+5 -> 6
> value 2 2:7+1 of 6
> stored 6 by entry 2:7+1
--<s*254> 5
> cut name 1:3+254 kept (255 bytes) lost 1
> key (255 bytes) 1:3+254 dashes 2
> value 5 1:258+1 of 21
> stored 21 by entry 1:258+1
tie <e*300>$<v*300> 1
> key tie 1:1+3
> cut name 1:5+300 kept (255 bytes) lost 45
> message name-too-long 1:5+300 about (255 bytes)
> cut name 1:306+300 kept (255 bytes) lost 45
> message name-too-long 1:306+300 about (255 bytes)
> value 1 1:607+1
> indicator (255 bytes) 1:5+300 with (255 bytes) 1:306+300 dropped
logname <a*300>  # note
> key logname 1:1+7 -> 4
> comment 1:311+6
> cut value 1:9+300 of option 4 kept (255 bytes) lost 45
> value (255 bytes) 1:9+300 of 4
> stored 4 by entry 1:9+300
logname "<a*255>"
> key logname 1:1+7 -> 4
> value (255 bytes) 1:10+255 of 4 closed written 1:9+257
> stored 4 by entry 1:10+255
logname "<a*300>
> key logname 1:1+7 -> 4
> cut value 1:10+300 of option 4 kept (255 bytes) lost 45
> value (255 bytes) 1:10+300 of 4 open written 1:9+301
> stored 4 by entry 1:10+300
steplim 99999999999
> key steplim 1:1+7 -> 2
> value 99999999999 1:9+11 of 2
> cut number 1:9+11 of option 2 kept 99999999999
> message range 1:9+11 option 2 about steplim seen 2147483647
> message allowed-range 1:9+11 option 2 about steplim more
both 99999999999
> key both 1:1+4 -> 10
> value 99999999999 1:6+11 of 10
> cut number 1:6+11 of option 2 kept 99999999999
> message range 1:6+11 option 2 about both seen 2147483647
> message allowed-range 1:6+11 option 2 about both more
> stored 4 by macro of 10 1:6+11
# <a*252>^Mbcd
> cut line 1:256+3 lost 3
> comment 1:1+254
# <a*1030>
> cut line 1:1021+12 lost 12
> comment 1:1+1020
steplim< *1020>5
> cut line 1:1021+8 lost 8
> key steplim 1:1+7 -> 2
> message value-expected 1:1021+0 option 2 about steplim
)";
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
  const std::string rows = R"(limits group 3 4 The limits
> field record 1:1+6 = limits, type 1:8+5 = group, number 1:14+1 = 3, hc 1:16+1 = 4
> field text 1:18+10 = The limits
> declared group 1 limits 1:1+6
steplim integer 11 100 0 5000 5 1 Step limit
 More of it
  and more
> field record 1:1+7 of 2 = steplim, type 1:9+7 of 2 = integer, usermap 1:17+2 of 2 = 11
> field default 1:20+3 of 2 = 100, low 1:24+1 of 2 = 0, high 1:26+4 of 2 = 5000
> field hc 1:31+1 of 2 = 5, group 1:33+1 of 2 = 1, text 1:35+10 of 2 = Step limit
> declared option 2 steplim 1:1+7
> field longhelp 2:2+10 of 2 = More of it, longhelp 3:3+8 of 2 = and more
logname string.opt 13 "run log" 8 1 Log file
> field record 1:1+7 of 2 = logname, type 1:9+10 of 2 = string.opt, usermap 1:20+2 of 2 = 13
> field default 1:23+9 of 2 = run log, hc 1:33+1 of 2 = 8, group 1:35+1 of 2 = 1
> field text 1:37+8 of 2 = Log file
> declared option 2 logname 1:1+7
fast boolean.NV 16 0 1 1 Fast
 Very fast
> field record 1:1+4 of 2 = fast, type 1:6+10 of 2 = boolean.NV, usermap 1:17+2 of 2 = 16
> field default 1:20+1 of 2 = 0, hc 1:22+1 of 2 = 1, group 1:24+1 of 2 = 1
> field text 1:26+4 of 2 = Fast
> declared option 2 fast 1:1+4
> field longhelp 2:2+9 of 2 = Very fast
method enumstr 14 primal 9 1 Method
 primal 21 Primal
 "two words" 22 Dual
> field record 1:1+6 of 2 = method, type 1:8+7 of 2 = enumstr, usermap 1:16+2 of 2 = 14
> field default 1:19+6 of 2 = primal, hc 1:26+1 of 2 = 9, group 1:28+1 of 2 = 1
> field text 1:30+6 of 2 = Method
> declared option 2 method 1:1+6
> field item 2:2+6 of 2 = primal, hc 2:9+2 of 2 = 21, text 2:12+6 of 2 = Primal
> declared item 1 primal 2:2+6 of 2
> field item 3:2+11 of 2 = two words, hc 3:14+2 of 2 = 22, text 3:17+4 of 2 = Dual
> declared item 2 two words 3:2+11 of 2
level enumint 15 1 9 1 Level
 1 21 Low
 2 22
> field record 1:1+5 of 2 = level, type 1:7+7 of 2 = enumint, usermap 1:15+2 of 2 = 15
> field default 1:18+1 of 2 = 1, hc 1:20+1 of 2 = 9, group 1:22+1 of 2 = 1
> field text 1:24+5 of 2 = Level, item 2:2+1 of 2 = 1, hc 2:4+2 of 2 = 21, text 2:7+3 of 2 = Low
> declared item 1 1 2:2+1 of 2
> field item 3:2+1 of 2 = 2, hc 3:4+2 of 2 = 22
> no field text 3:6+0 of 2
> declared item 2 2 3:2+1 of 2
> declared option 2 level 1:1+5
a strlist 1 1 1 A
b macro 10 1 Both
 a
> field record 1:1+1 of 2 = a, type 1:3+7 of 2 = strlist, usermap 1:11+1 of 2 = 1
> field hc 1:13+1 of 2 = 1, group 1:15+1 of 2 = 1, text 1:17+1 of 2 = A
> declared option 2 a 1:1+1
> field record 2:1+1 of 3 = b, type 2:3+5 of 3 = macro, hc 2:9+2 of 3 = 10
> field group 2:12+1 of 3 = 1, text 2:14+4 of 3 = Both, member 3:2+1 of 3 = a
> declared member 1 a 3:2+1 of 3 -> 2
> declared option 3 b 2:1+1
a strlist 1 1 1 A
b multilist 19 10 1 Pair
 a b

> field record 1:1+1 of 2 = a, type 1:3+7 of 2 = strlist, usermap 1:11+1 of 2 = 1
> field hc 1:13+1 of 2 = 1, group 1:15+1 of 2 = 1, text 1:17+1 of 2 = A
> declared option 2 a 1:1+1
> field record 2:1+1 of 3 = b, type 2:3+9 of 3 = multilist, usermap 2:13+2 of 3 = 19
> field hc 2:16+2 of 3 = 10, group 2:19+1 of 3 = 1, text 2:21+4 of 3 = Pair
> declared option 3 b 2:1+1
> field member 3:2+1 of 3 = a
> declared member 1 a 3:2+1 of 3 -> 2
> field member 3:4+1 of 3 = b
> declared member 2 b 3:4+1 of 3 -> 3
read immediate readfile 1 1 Reads
> field record 1:1+4 of 2 = read, type 1:6+9 of 2 = immediate, action 1:16+8 of 2 = readfile
> field hc 1:25+1 of 2 = 1, group 1:27+1 of 2 = 1, text 1:29+5 of 2 = Reads
> declared option 2 read 1:1+4
a strlist 1 1 1 A
b synonym a
passing deprecated soon out
 a Say b
 b Say a
dead obsolete
 a Out
> field record 1:1+1 of 2 = a, type 1:3+7 of 2 = strlist, usermap 1:11+1 of 2 = 1
> field hc 1:13+1 of 2 = 1, group 1:15+1 of 2 = 1, text 1:17+1 of 2 = A
> declared option 2 a 1:1+1
> field record 2:1+1 = b, type 2:3+7 = synonym, target 2:11+1 = a
> declared synonym 1 b 2:1+1 of 2
> field record 3:1+7 = passing, type 3:9+10 = deprecated, heading 3:20+8 = soon out
> field marked 4:2+1 = a
> declared deprecated 0 a 4:2+1 of 2
> field text 4:4+5 = Say b, marked 5:2+1 = b
> declared deprecated 1 b 5:2+1 of 2
> field text 5:4+5 = Say a, record 6:1+4 = dead, type 6:6+8 = obsolete
> no field heading 6:14+0
> field marked 7:2+1 = a
> declared obsolete 0 a 7:2+1 of 2
> field text 7:4+3 = Out
tie indicator Ties
> field record 1:1+3 = tie, type 1:5+9 = indicator, text 1:15+4 = Ties
> declared indicator 0 tie 1:1+3
Path lookup Words
> field record 1:1+4 = Path, type 1:6+6 = lookup, text 1:13+5 = Words
> declared lookup 1 Path 1:1+4
hash eolcomm #!
> field record 1:1+4 = hash, type 1:6+7 = eolcomm, characters 1:14+2 = #!
> declared comment 0 #! 1:14+2
a strlist 1 1 1 A
5 more
> field record 1:1+1 of 2 = a, type 1:3+7 of 2 = strlist, usermap 1:11+1 of 2 = 1
> field hc 1:13+1 of 2 = 1, group 1:15+1 of 2 = 1, text 1:17+1 of 2 = A
> declared option 2 a 1:1+1
> ended 2:1+6
)";
  EXPECT_EQ(retold(rows, [](auto& text) { return withfields(definedby(text)); }), rows);
}

TEST(Records, TellOfFaultsAtTheField) {
  const std::string rows = R"(a integer x 1 0 9 1 1 A
> no field usermap 1:11+1 of 2 = x
> message bad-field 1:11+1 option 2 field usermap about a seen x
a integer 1 12 0 9 1 1 A
> message default-range 1:13+2 option 2 field default about a seen 12
a integer 1 1
> no field low 1:14+0 of 2
> message bad-field 1:14+0 option 2 field low about a
> no field high 1:14+0 of 2
> message bad-field 1:14+0 option 2 field high about a
> no field hc 1:14+0 of 2
> message bad-field 1:14+0 option 2 field hc about a
> no field group 1:14+0 of 2
> message bad-field 1:14+0 option 2 field group about a
> no field text 1:14+0 of 2
> message default-range 1:13+1 option 2 field default about a seen 1
a double 1 1 0 1 1 1 A
a double 1 1 0 1 1 1 A
> message duplicate-option 2:1+1 option 3 field record about a seen a
a integer 1 99999999999 0 maxint 1 1 A
> cut number 1:13+11 of option 2 kept 99999999999
a intger 1 1 0 9 1 1 A
> message unknown-type 1:3+6 field type about a seen intger
a integer.THREE 1 1 0 9 1 1 A
> message unknown-modifier 1:3+13 field type about a seen integer.THREE
a enumstr 1 no 1 1 A
 yes 1 Y
> declared item 1 yes 2:2+3 of 2
> message default-unknown 1:13+2 option 2 field default about a seen no
b multilist 1 1 1 B
 a,b
> message unknown-member 2:2+1 option 2 field member about b seen a
> declared member 1 a 2:2+1 of 2
> message comma 2:3+1 option 2 field member about b seen ,
a integer 1 1 0 9 1 1 A
b multilist 1 1 1 B
 a a
> declared member 1 a 3:2+1 of 3 -> 2
> message duplicate-member 3:4+1 option 3 field member about b seen a
> declared member 2 a 3:4+1 of 3 -> 2
b synonym a
> message unknown-target 1:11+1 field target about b seen a
> declared synonym 1 b 1:1+1
g group 1 1 G
g group 1 1 G
> declared group 1 g 1:1+1
> message duplicate-group 2:1+1 field record about g seen g
> message duplicate-groupnumber 2:9+1 field number about g seen 1
> declared group 2 g 2:1+1
read immediate Nothing 1 1 R
> message unknown-action 1:16+7 option 2 field action about read seen Nothing
old deprecated
 a Out
> no field heading 1:15+0
> message unknown-marked 2:2+1 field marked about old seen a
<t*64> indicator T
> message name-too-long 1:1+64 field record about (64 bytes) seen (64 bytes)
> declared indicator 0 (64 bytes) 1:1+64
a string 1 "<a*254>" 1 1 A
c string 1 "<a*255>" 1 1 A
> cut value 2:12+257 of option 3 kept (254 bytes) lost 1
)";
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
  ownfolder::put("again.opt", "read again.opt\n");
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
  EXPECT_NE(told.find("enter parameters again.opt level 9 from again.opt:1:6+9\n"
                      "line again.opt:1:1+14 read again.opt\n"
                      "key read again.opt:1:1+4 -> 14\n"
                      "value again.opt again.opt:1:6+9 of 14\n"
                      "message enter again.opt:1:6+9\n"
                      "message file-nesting again.opt:1:6+9 about again.opt\n"
                      "message leave again.opt:1:6+9\n"
                      "leave parameters again.opt\n"),
            std::string::npos)
      << told;
  EXPECT_EQ(told.find("level 10"), std::string::npos);
}

/// Both functions that read a string.
TEST(Sources, MayBeStrings) {
  const options made(definition);
  recorder heard;
  made.listen(heard);
  const std::string rows = R"(string steplim 7
> enter string string level 1
> message enter nowhere
> line string:1:1+9 steplim 7
> key steplim string:1:1+7 -> 2
> value 7 string:1:9+1 of 2
> stored 2 by entry string:1:9+1
> message leave nowhere not queued
> leave string string
string
> enter string string level 1
> message enter nowhere
> line string:1:1+0
> message leave nowhere not queued
> leave string string
pchar logname a\nlevel 2
> enter string pchar level 1
> message enter nowhere
> line pchar:1:1+17 logname a
> level 2
> key logname pchar:1:1+7 -> 4
> value a pchar:1:9+1 of 4
> stored 4 by entry pchar:1:9+1
> cut rest pchar:1:11+7 lost 7
> message leave nowhere not queued
> leave string pchar
pchar logname <a*300>
> enter string pchar level 1
> message enter nowhere
> line pchar:1:1+308 (308 bytes)
> key logname pchar:1:1+7 -> 4
> cut value pchar:1:9+300 of option 4 kept (255 bytes) lost 45
> value (255 bytes) pchar:1:9+300 of 4
> stored 4 by entry pchar:1:9+300
> message leave nowhere not queued
> leave string pchar
)";
  const auto told = [&](const std::string& text) {
    const std::size_t blank = std::min(text.find(' '), text.size() - 2);
    const std::string words = text.substr(blank + 1, text.size() - blank - 2);
    if (text.starts_with("string")) coptReadFromStr(made.handle(), words.c_str());
    if (text.starts_with("pchar")) optReadFromPChar(made.handle(), words.c_str());
    return heard.take(true);
  };
  EXPECT_EQ(retold(rows, told), rows);
}

TEST(Sources, TellWhyAReadFailed) {
  folder();
  const options made(definition);
  recorder heard;
  made.listen(heard);
  EXPECT_EQ(coptReadParameterFile(made.handle(), "/nowhere"), ENOENT);
  EXPECT_EQ(heard.take(true),
            "message cannot-open nowhere about /nowhere\n"
            "message system nowhere about /nowhere more\n");
  // A file that opens, and whose first bytes nobody may read.
  const std::string file = "/proc/self/mem";
  EXPECT_EQ(coptReadParameterFile(made.handle(), file.c_str()), EIO);
  EXPECT_EQ(heard.take(true),
            "message enter nowhere\n"
            "enter parameters /proc/self/mem level 1\n"
            "message cannot-read nowhere about /proc/self/mem\n"
            "message system nowhere about /proc/self/mem more\n"
            "leave parameters /proc/self/mem error " +
                number(EIO) +
                "\n"
                "message leave nowhere\n");
  const options other;
  other.listen(heard);
  EXPECT_EQ(coptReadDefinition(other.handle(), file.c_str()), EIO);
  EXPECT_EQ(heard.take(true),
            "enter definition /proc/self/mem level 1\n"
            "message cannot-read nowhere about /proc/self/mem\n"
            "message system nowhere about /proc/self/mem more\n"
            "leave definition /proc/self/mem error " +
                number(EIO) + "\n");
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

TEST(Messages, TellOfACallToo) {
  const options made(definition);
  recorder heard;
  made.listen(heard);
  optSetIntNr(made.handle(), 2, 7000);
  optSetIntNr(made.handle(), 2, 70);
  coptAddMessage(made.handle(), "mine");
  coptShowHelp(made.handle(), "maxsteps");
  made.read("* nothing");
  EXPECT_EQ(heard.take(true), R"(message range nowhere option 2 about steplim seen 7000
message allowed-range nowhere option 2 about steplim more
stored 2 by call nowhere
message own nowhere
message help nowhere
message help nowhere
message help nowhere
message enter nowhere
enter parameters p level 1
line 1:1+9 * nothing
comment 1:1+9
leave parameters p
message leave nowhere not queued
)");
  EXPECT_EQ(optMessageCount(made.handle()), 6);
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
  EXPECT_EQ(optxv_list_count(made.handle(), 21), 1);
  for (const std::int32_t other : {0, -1, 2, 22})
    EXPECT_EQ(optxv_list_count(made.handle(), other), -1);
  const struct {
    std::int32_t option, position, good;
    const char* text;
  } rows[] = {
      {9, 1, 1, "one"}, {21, 1, 1, "two words"}, {9, 0, 0, ""}, {9, 2, 0, ""}, {2, 1, 0, ""}};
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
  EXPECT_STREQ(optxv_fault_name(optxv_fault_unknown_option), "unknown-option");
  EXPECT_STREQ(optxv_fault_name(optxv_fault_dollar_expected), "dollar-expected");
  EXPECT_STREQ(optxv_field_name(optxv_field_usermap), "usermap");
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

TEST(Writing, GivesTheTextToTheProgram) {
  const options made(definition);
  made.read("steplim 5\nlogname a b");
  EXPECT_EQ(made.written(), "steplim=5\nlogname=\"a b\"\n");
  const auto refuse = [](void*, const char*, std::size_t) -> std::int32_t { return 77; };
  EXPECT_EQ(optxv_write_parameter_text(made.handle(), refuse, nullptr), 77);
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
  static const std::string pieces[] = {"\"",
                                       "\x1a",
                                       "\n",
                                       "\t",
                                       " ",
                                       ",",
                                       "=",
                                       ":=",
                                       "#",
                                       "*",
                                       ".",
                                       "--",
                                       "$",
                                       "(",
                                       ")",
                                       "'",
                                       "!",
                                       ";",
                                       "maxint",
                                       "99999999999",
                                       std::string(300, 'x'),
                                       std::string(1100, 'y'),
                                       std::string(1, '\0')};
  const auto below = [&](std::size_t limit) { return chance() % std::max<std::size_t>(limit, 1); };
  for (std::size_t times = 1 + below(12); times > 0; --times) {
    const std::size_t at = below(text.size() + 1), size = below(40);
    switch (below(4)) {
      case 0:
        text.insert(at, pieces[below(std::size(pieces))]);
        break;
      case 1:
        text.erase(at, size);
        break;
      case 2:
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
