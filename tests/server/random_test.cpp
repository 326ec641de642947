// Thousands of edits at random: what the server tells is what `optxv check --json` tells of the
// same texts.

#include <fstream>
#include <random>

#include "editor.h"
#include "lint/rules.h"

namespace command {
namespace {

const char* const definition =
    "steps integer 1 10 0 99 1 1 Steps\nstep_size double 3 1 0 5 1 1 Size\n"
    "method enumstr 4 auto 1 2 Method\n auto 1 Chosen\n simplex 1 Old\n"
    "log_file string 5 a.log 1 2 Log\nquiet boolean.NV 6 0 1 2 Quiet\n"
    "range double.TWO 7 1 0 9 1 1 Range\nall macro 1 1 All\n steps\n step_size\n"
    "rf immediate ReadFile 1 1 Read\nlines immediate EolFlag 1 1 Lines\n"
    "free immediate NoBounds 1 1 Free\nold synonym steps\ngone deprecated\n old use steps\n"
    "late obsolete\n quiet\n.prior integer 8 0 0 9 1 2 Priority\nindic indicator\nx eolcomm !\n";

const char* const pieces[] = {"steps",
                              " 5",
                              "\n",
                              "step_size",
                              " = ",
                              ":=",
                              "method simplx",
                              "method auto\n",
                              "\"",
                              "'",
                              " a b",
                              "!",
                              "* c\n",
                              "--steps",
                              "//x",
                              "range 1 ",
                              "\n\n",
                              ",",
                              "old 7",
                              "quiet\n",
                              "lines no\n",
                              "free yes\n",
                              "x.prior('a') = 3\n",
                              "x.",
                              "rf inner.opt\n",
                              "rf none.opt\n",
                              "all 3\n",
                              "indic e$y 1\n",
                              "\u00e9\U0001F600",
                              "1e99",
                              "7,5",
                              "\r\n",
                              "\t",
                              "late",
                              "stesp 1\n",
                              "log_file x\n"};

/// A finding: file, severity, code, first and last byte.
using row = std::tuple<string, int, string, std::size_t, std::size_t>;

class Random : public editor {
 protected:
  std::size_t below(std::size_t limit) { return random_() % std::max<std::size_t>(limit, 1); }

  /// One edit of a text, which the server hears of in pieces, and perhaps a request that is
  /// cancelled.
  void editonce(const string& name) {
    string& text = texts_[name];
    const linedtext before(text);
    std::size_t from = below(text.size() + 1), to = std::min(text.size(), from + below(12));
    if (below(3) > 0) to = from;
    from = before.offset(before.at(from, encoding::utf16), encoding::utf16);
    to = std::max(from, before.offset(before.at(to, encoding::utf16), encoding::utf16));
    const string with = below(4) == 0 ? "" : pieces[below(std::size(pieces))];
    json change = {{"range", rangejson(before, from, to, encoding::utf16)}, {"text", with}};
    text.replace(from, to - from, with);
    if (text.size() > 1500 || below(40) == 0) {
      const linedtext now(text);
      text.resize(now.offset(now.at(below(99), encoding::utf16), encoding::utf16));
      change = {{"text", text}};
    }
    if (below(9) == 0) cancelled(name);
    const json message = {{"method", "textDocument/didChange"},
                          {"params",
                           {{"textDocument", {{"uri", uri(name)}, {"version", ++version_}}},
                            {"contentChanges", {change}}}}};
    send(message, 1 + below(200));
  }
  void cancelled(const string& name) {
    const json request = {
        {"id", ++id_}, {"method", "textDocument/documentSymbol"}, {"params", document(name)}};
    const json cancel = {{"method", "$/cancelRequest"}, {"params", {{"id", id_}}}};
    sendbytes(framed(request.dump()) + framed(cancel.dump()), 1 + below(300));
    ASSERT_TRUE(answers_.contains(id_));
  }

  /// What the server has told.
  std::multiset<row> told() const {
    std::multiset<row> all;
    for (const auto& [name, text] : texts_) {
      const linedtext lines(text);
      const auto found = findings_.find(uri(name));
      if (found == findings_.end()) continue;
      for (const json& each : found->second)
        all.emplace(name, each["severity"], each.value("code", ""),
                    lines.offset(positionfrom(each["range"]["start"]), encoding::utf16),
                    lines.offset(positionfrom(each["range"]["end"]), encoding::utf16));
    }
    return all;
  }
  /// What `optxv check --json` tells of the texts, with the parameter file and what it reads, and
  /// what `optxv lint` does, which a client gets as hints.
  std::multiset<row> checked(const string& flags) {
    for (const auto& [name, text] : texts_) std::ofstream(path(name), std::ios::binary) << text;
    std::multiset<row> all = printed("check " + flags, 0);
    for (const row& each : printed("lint --all --select D,P " + flags, 4))
      if (namesrules(std::get<2>(each))) all.insert(each);
    return all;
  }
  /// The findings of a subcommand; with a severity, if it is not 0, in place of their own.
  std::multiset<row> printed(const string& subcommand, int severity) {
    std::system(("cd '" + folder_.path() + "' && '" OPTXV_COMMAND_FILE "' " + subcommand +
                 " --json s.def a.opt >.out 2>.err")
                    .c_str());
    std::multiset<row> all;
    const std::map<string, int> numbers = {{"error", 1}, {"warning", 2}, {"note", 3}};
    const json found = json::parse(folder_.get(".out"));
    for (const json& each : found["diagnostics"]) {
      const string name = each["file"];
      if (each["severity"] == "help") continue;
      const linedtext lines(texts_[name]);
      const auto line = each.value("line", std::int64_t{0});
      const auto column = each.value("column", std::int64_t{0});
      // A client knows no places within a character.
      const auto whole = [&](std::size_t offset) {
        return lines.offset(lines.at(offset, encoding::utf16), encoding::utf16);
      };
      all.emplace(name, severity > 0 ? severity : numbers.at(each["severity"]),
                  each["code"].is_null() ? "" : each["code"].get<string>(),
                  whole(lines.offset(line, column)),
                  whole(lines.offset(line, column + each.value("length", std::int64_t{0}))));
    }
    return all;
  }

  std::mt19937 random_{14};
  std::map<string, string> texts_;
};

TEST_F(Random, EditsTellWhatCheckTells) {
  for (const bool tokens : {false, true}) {
    start();
    findings_.clear();
    save("optxv.json",
         R"({"definitions": [{"definition": "s.def", "files": ["a.opt"], "tokens": )" +
             string(tokens ? "true" : "false") + R"(}], "lint": true})");
    texts_ = {
        {"s.def", definition}, {"a.opt", "rf inner.opt\nsteps x\n"}, {"inner.opt", "steps 5"}};
    save("s.def", definition);
    begin();
    open("a.opt", texts_["a.opt"]);
    open("inner.opt", texts_["inner.opt"], "plaintext");
    for (int edits = 1; edits <= 1500; edits++) {
      editonce(below(5) == 0 ? "inner.opt" : "a.opt");
      if (edits % 30 != 0) continue;
      ASSERT_EQ(told(), checked(tokens ? "--tokens" : "")) << edits << '\n'
                                                           << texts_["a.opt"] << "\n---\n"
                                                           << texts_["inner.opt"];
    }
  }
}

/// Bytes that no client sends end nothing.
TEST_F(Random, FramesAndMessagesDoNoHarm) {
  save("s.def", definition);
  begin();
  open("a.opt", "steps 5\n");
  const string good = framed(
      R"({"jsonrpc":"2.0","id":5,"method":"textDocument/completion","params":{"textDocument":{"uri":")" +
      uri("a.opt") + R"("},"position":{"line":0,"character":3}}})");
  for (int round = 0; round < 3000; round++) {
    string bytes = good;
    for (std::size_t times = below(6); times > 0; times--) {
      const std::size_t at = below(bytes.size());
      if (below(2) == 0)
        bytes[at] = static_cast<char>(below(256));
      else
        bytes.erase(at, below(9));
    }
    sendbytes(bytes, 1 + below(99));
    heard_.clear();
  }
  ASSERT_FALSE(to_->ended());
  sendbytes(string(3000, '\n'));  // whatever content was begun is over
  EXPECT_TRUE(ask("textDocument/hover", at("a.opt", cursortext("st|eps"))).is_object());
}

}  // namespace
}  // namespace command
