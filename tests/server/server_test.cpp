// The protocol: frames, messages, the life of a session, documents, and which definition goes with
// them.

#include <sys/stat.h>

#include "command/commandrun.h"
#include "editor.h"

namespace command {
namespace {

using strings = std::vector<string>;

const char* const definition =
    "g group 1 1 General\nsteps integer 1 10 0 99 1 1 Steps\n"
    "log_file string 2 run.log 1 1 Log\nrf immediate ReadFile 1 1 Read\n";

class Protocol : public editor {
 protected:
  /// The code of the answer that is an error; 0 for a good one.
  int codeof(const string& content) {
    const std::size_t before = heard_.size();
    sendbytes(framed(content));
    if (heard_.size() == before) return -1;
    return heard_.back().contains("error") ? heard_.back()["error"]["code"].get<int>() : 0;
  }
};

TEST_F(Protocol, AnswersWhatIsWrong) {
  const string hello = R"({"jsonrpc":"2.0","id":1,"method":"initialize","params":{}})";
  const std::pair<string, int> rows[] = {
      {"{", parseerror},
      {"\xFF", parseerror},
      {"[]", invalidrequest},
      {"7", invalidrequest},
      {"{}", invalidrequest},
      {R"({"id":1})", invalidrequest},
      {R"({"id":{},"method":"shutdown"})", invalidrequest},
      {R"({"id":1,"method":7})", invalidrequest},
      {R"({"id":1,"result":7})", -1},
      {R"({"id":1,"method":"shutdown"})", notinitialized},
      {R"({"id":1,"method":"textDocument/hover"})", notinitialized},
      {R"({"method":"textDocument/didOpen"})", -1},
      {hello, 0},
      {hello, invalidrequest},
      {R"({"id":"a","method":"no/such"})", methodnotfound},
      {R"({"id":1,"method":"$/no"})", methodnotfound},
      {R"({"id":1,"method":"exit"})", methodnotfound},
      {R"({"method":"no/such"})", -1},
      {R"({"method":"$/no","params":[]})", -1},
      {R"({"id":1,"method":"textDocument/hover"})", invalidparams},
      {R"({"id":1,"method":"textDocument/hover","params":{"textDocument":{"uri":7}}})",
       invalidparams},
      {R"({"id":1,"method":"textDocument/hover","params":{"textDocument":{"uri":"file:///a"},)"
       R"("position":{"line":-1,"character":0}}})",
       invalidparams},
      {R"({"id":1,"method":"textDocument/hover","params":{"textDocument":{"uri":"file:///a"},)"
       R"("position":{"line":"x","character":0}}})",
       invalidparams},
      {R"({"id":1,"method":"textDocument/hover","params":{"textDocument":{"uri":"file:///a"},)"
       R"("position":{"line":0,"character":-1}}})",
       invalidparams},
      {R"({"method":"textDocument/didChange","params":{"textDocument":{"uri":"file:///a",)"
       R"("version":1},"contentChanges":[]}})",
       0},
      {R"({"method":"textDocument/didClose","params":{"textDocument":{"uri":"file:///a"}}})", -1},
      {R"({"method":"$/cancelRequest","params":{"id":{}}})", -1},
      {R"({"id":1,"error":{}})", -1},
      {R"({"method":"textDocument/hover"})", -1},
      {R"({"id":1,"method":"shutdown"})", 0},
      {R"({"id":1,"method":"shutdown"})", invalidrequest}};
  for (const auto& [content, code] : rows) EXPECT_EQ(codeof(content), code) << content;
  EXPECT_FALSE(to_->ended());
  EXPECT_EQ(codeof(R"({"method":"exit"})"), -1);
  EXPECT_TRUE(to_->ended());
  EXPECT_EQ(to_->status(), 0);
}

TEST_F(Protocol, EndsWithOneWhereNobodyHasShutItDown) {
  notify("exit", nullptr);
  EXPECT_TRUE(to_->ended());
  EXPECT_EQ(to_->status(), 1);
}

/// What a frame reader gives: the contents, and `!` for a fault.
strings framesof(const string& bytes, std::size_t piece) {
  framereader reader(1000);
  strings all;
  for (std::size_t at = 0; at < bytes.size(); at += piece) {
    reader.add(std::string_view(bytes).substr(at, piece));
    while (const auto came = reader.next())
      all.push_back(came->fault.empty() ? came->content : "!");
  }
  return all;
}

TEST_F(Protocol, AsksAClientThatCanTell) {
  begin({{"workspace",
          {{"configuration", true}, {"didChangeWatchedFiles", {{"dynamicRegistration", true}}}}}});
  /// The last that was heard by some method; the number of these.
  const auto last = [&](const string& method) {
    std::pair<json, int> found{{}, 0};
    for (const json& each : heard_)
      if (each.value("method", "") == method) found = {each, found.second + 1};
    return found;
  };
  EXPECT_EQ(last("client/registerCapability").second, 1);
  save("s.def", definition);
  const json all = {{"definitions", {{{"definition", "s.def"}, {"files", {"*.opt"}}}}}};
  const json id = last("workspace/configuration").first["id"];
  open("a.opt", "stesp 1\n");
  send({{"jsonrpc", "2.0"}, {"id", id}, {"result", {all}}});
  send({{"jsonrpc", "2.0"}, {"id", id}, {"result", {{{"definitions", 7}}}}});
  EXPECT_EQ(findings("a.opt"), std::vector<string>{"0:0-5 unknown-option"});
  EXPECT_EQ(last("window/showMessage").second, 0) << "an answer comes once";
  notify("workspace/didChangeConfiguration", {{"settings", {{"optxv", {{"definitions", 7}}}}}});
  EXPECT_EQ(last("window/showMessage").first["params"]["message"],
            "optxv: the settings: definitions is not a list");
  notify("workspace/didChangeConfiguration", {{"settings", nullptr}});
  EXPECT_EQ(last("workspace/configuration").second, 2);
  notify("textDocument/didOpen", {{"textDocument", 7}});
  EXPECT_EQ(last("window/logMessage").second, 1);
}

TEST(Uris, AreNamesOfFiles) {
  const std::pair<const char*, const char*> rows[] = {{"file:///a%20b/%c3%A9", "/a b/\xC3\xA9"},
                                                      {"FILE://localhost/a", "/a"},
                                                      {"file://host/a", ""},
                                                      {"file:", ""},
                                                      {"file://", ""},
                                                      {"file:///a%00", ""},
                                                      {"file:///a%2", "/a%2"},
                                                      {"file:///a%zz/%4g", "/a%zz/%4g"},
                                                      {"file:///a/../b", "/b"}};
  for (const auto& [uri, path] : rows) EXPECT_EQ(pathof(uri), path) << uri;
  EXPECT_EQ(uriof("/a b/\xC3"), "file:///a%20b/%C3");
}

class Streams : public optxv::test::commandrun {};

TEST_F(Streams, AreServedToTheirEnd) {
  const auto framed_ = [](const char* content) { return framed(content); };
  const string hello =
      framed_(R"({"jsonrpc":"2.0","id":1,"method":"initialize","params":{"processId":null}})");
  const string bye = framed_(R"({"jsonrpc":"2.0","id":2,"method":"shutdown"})") +
                     framed_(R"({"jsonrpc":"2.0","method":"exit"})");
  save("in", hello + bye);
  const auto whole = run("lsp --log log <in");
  EXPECT_EQ(whole.status, 0) << whole.err;
  EXPECT_NE(whole.out.find("\"id\":2"), string::npos) << whole.out;
  EXPECT_TRUE(get("log").starts_with("<-- Content-Length: ")) << get("log");
  EXPECT_NE(get("log").find("\n--> {"), string::npos) << get("log");
  save("in", hello);
  EXPECT_EQ(run("lsp <in").status, 1) << "without a word of its end";
  EXPECT_EQ(run("lsp --log no/log <in").err,
            "optxv: error: no/log: cannot be written: No such file or directory\n");
}

TEST(Frames, ComeInPiecesOfAnySize) {
  const string good = framed("one") + framed("") + "content-length:3\r\nX: y\r\n\r\ntwo";
  const std::pair<string, strings> rows[] = {
      {good, {"one", "", "two"}},
      {"Content-Type: x\r\n\r\n" + good, {"!", "one", "", "two"}},
      {"Content-Length: -3\r\n\r\n" + good, {"!", "one", "", "two"}},
      {"Content-Length: 3x\r\n\r\n" + good, {"!", "one", "", "two"}},
      {"Content-Length: 99999999999999999999\r\n\r\n" + good, {"!", "one", "", "two"}},
      {"\r\n" + good, {"!", "one", "", "two"}},
      {"Content-Length: 9\r\n\r\nshort", {}}};
  for (const auto& [bytes, contents] : rows)
    for (const std::size_t piece : {1U, 2U, 7U, 1000U})
      EXPECT_EQ(framesof(bytes, piece), contents) << bytes << piece;
  EXPECT_EQ(framesof(string(10'000, 'x'), 4096), strings{"!"});
  EXPECT_EQ(framesof(framed(string(1001, 'x')) + good, 300), (strings{"!", "one", "", "two"}));
}

TEST_F(Protocol, CancelsARequestThatWaits) {
  save("s.def", definition);
  begin();
  open("a.opt", "steps 5\n");
  const json request = {
      {"id", 7}, {"method", "textDocument/foldingRange"}, {"params", document("a.opt")}};
  const json other = {
      {"id", 8}, {"method", "textDocument/foldingRange"}, {"params", document("a.opt")}};
  const json cancel = {{"method", "$/cancelRequest"}, {"params", {{"id", 7}}}};
  sendbytes(framed(request.dump()) + framed(other.dump()) + framed(cancel.dump()));
  EXPECT_EQ(answers_[7]["error"]["code"], requestcancelled);
  EXPECT_TRUE(answers_[8]["result"].is_array());
}

class Documents : public editor {
 protected:
  Documents() { save("s.def", definition); }
};

TEST_F(Documents, AreChangedInPieces) {
  for (const char* counts : {"utf-16", "utf-8"}) {
    begin({{"general", {{"positionEncodings", {"utf-16", counts}}}}});
    const bool bytes = string(counts) == "utf-8";
    open("a.opt", "log_file \u00e9\U0001F600|steps 7\r\nsteps 5\r\n");
    EXPECT_EQ(findings("a.opt"), strings()) << counts;
    // The bar becomes a line feed: after one character of two bytes and one of four.
    const int bar = bytes ? 15 : 12;
    edit("a.opt",
         {{{"range",
            {{"start", {{"line", 0}, {"character", bar}}},
             {"end", {{"line", 0}, {"character", bar + 1}}}}},
           {"text", "\n"}},
          {{"range",
            {{"start", {{"line", 2}, {"character", 6}}}, {"end", {{"line", 9}, {"character", 0}}}}},
           {"text", "x \U0001F600"}}});
    EXPECT_EQ(findings("a.opt"),
              strings{bytes ? "2:6-12 integer-expected" : "2:6-10 integer-expected"});
    change("a.opt", "stesp 1\rsteps 2");
    EXPECT_EQ(findings("a.opt"), strings{"0:0-5 unknown-option"});
    start();
  }
}

TEST_F(Documents, GoWithTheDefinitionThatSomebodyNames) {
  save("t.def", "pace integer 1 10 0 99 1 1 Pace\n");
  std::filesystem::create_directories(path("sub/deep"));
  std::filesystem::create_directories(path("two"));
  save("two/a.def", definition);
  save("two/b.def", definition);
  save("sub/only.def", definition);
  begin();
  // Nobody says: two definitions are in the folder, or none is.
  open("a.opt", "steps x");
  EXPECT_EQ(findings("a.opt"), strings{"0:0-0 no-definition"});
  open("note.txt", "steps x", "plaintext");
  EXPECT_EQ(findings("note.txt"), strings());
  // A comment in the text itself, from its folder; it may be changed.
  change("a.opt", "* night\n* optxv: definition t.def\npace x");
  EXPECT_EQ(findings("a.opt"), strings{"2:5-6 integer-expected"});
  change("a.opt", "* optxv: definition sub/only.def\nsteps x");
  EXPECT_EQ(findings("a.opt"), strings{"1:6-7 integer-expected"});
  change("a.opt", "* optxv: definition none.def\nsteps x");
  EXPECT_EQ(findings("a.opt"), strings{"0:0-0 unreadable"});
  // The only definition of a folder comes first, ...
  open("sub/b.opt", "* optxv: definition ../t.def\nsteps x");
  EXPECT_EQ(findings("sub/b.opt"), strings{"1:6-7 integer-expected"});
  // ... before it the settings, ...
  notify("workspace/didChangeConfiguration",
         {{"settings",
           {{"optxv",
             {{"definitions", {{{"definition", "t.def"}, {"files", {"**/*.opt", "*.txt"}}}}}}}}}});
  EXPECT_EQ(findings("sub/b.opt"), strings{"1:0-5 unknown-option"});
  EXPECT_EQ(findings("note.txt"), strings{"0:0-5 unknown-option"});
  // ... and before them the nearest optxv.json upwards, whose fault is told.
  save("optxv.json",
       R"({"definitions": [{"definition": "s.def", "files": ["**/b.opt"], "tokens": true}]})");
  change("sub/b.opt", "steps 1 steps x");
  notify("textDocument/didSave", document("sub/b.opt"));
  EXPECT_EQ(findings("sub/b.opt"), (strings{"0:14-15 integer-expected"}));
  save("sub/optxv.json", "{\"definitions\": 7}");
  notify("workspace/didChangeWatchedFiles", {{"changes", json::array()}});
  EXPECT_EQ(findings("sub/optxv.json"), strings{"0:0-0 bad-bindings"});
}

TEST_F(Documents, AreReadFromTheirBuffersAndTheRestFromDisk) {
  save("inner.opt", "steps 7\nstesp 1\n");
  save("sub/optxv.json", "{}");
  begin();
  open("a.opt", "rf inner.opt\n");
  EXPECT_EQ(findings("inner.opt"), strings{"1:0-5 unknown-option"}) << "under its own name";
  open("inner.opt", "steps x\n");
  EXPECT_EQ(findings("inner.opt"), strings{"0:6-7 integer-expected"});
  change("inner.opt", "* mended\n");
  EXPECT_EQ(findings("inner.opt"), strings());
  notify("textDocument/didClose", document("inner.opt"));
  EXPECT_EQ(findings("inner.opt"), strings{"1:0-5 unknown-option"});
  change("a.opt", "* nothing\n");
  EXPECT_EQ(findings("inner.opt"), strings());
  // What is no file is none to wait for.
  ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
  change("a.opt", "rf pipe\nrf /dev/stdin\nstesp 1");
  EXPECT_EQ(findings("a.opt"), strings{"2:0-5 unknown-option"});
}

TEST_F(Documents, FollowTheirDefinition) {
  begin();
  open("a.opt", "stride 5\n");
  open("b.opt", "steps 5\nlog_file a\n");
  EXPECT_EQ(findings("a.opt"), strings{"0:0-6 unknown-option"});
  open("s.def", string(definition) + "stride integer 1 1 0 9 1 1\n", "optxv-definition");
  EXPECT_EQ(findings("a.opt"), strings());
  EXPECT_EQ(findings("s.def"), strings{"4:15-16 usermap-twice"});
  change("s.def", "stride integer 1 1 0 4 1 0 S\n");
  EXPECT_EQ(findings("a.opt"), strings{"0:7-8 range"});
  EXPECT_EQ(findings("b.opt"), (strings{"0:0-5 unknown-option", "1:0-8 unknown-option"}));
  change("s.def", "no record");
  EXPECT_EQ(findings("a.opt"), strings());
  notify("textDocument/didClose", document("s.def"));
  EXPECT_EQ(findings("a.opt"), strings{"0:0-6 unknown-option"});
  EXPECT_EQ(findings("s.def"), strings());
}

}  // namespace
}  // namespace command
