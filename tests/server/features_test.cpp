// What the server answers about a place in a text. A bar in a text is the cursor.

#include <fstream>

#include "editor.h"

namespace command {
namespace {

const char* const definition =
    "lim group 1 1 Limits\nout group 2 2 Output\n"
    "time_limit double 1 3600 0 maxdouble 1 1 Seconds\n The clock is read often.\n"
    "steps integer 2 10 0 99 1 1 Steps\nstep_size double 3 1 0 5 1 1 Size\n"
    "method enumstr 4 auto 1 2 Method\n auto 1 Chosen by size\n simplex 1 Old\n"
    "log_file string 5 \"a b.log\" 1 2 Log\nquiet boolean.NV 6 0 1 2 Quiet\n"
    "range double.TWO 7 1 0 9 1 1 Range\nall macro 1 1 All\n steps\n step_size\n"
    "rf immediate ReadFile 1 1 Read\nsize synonym step_size\nold synonym steps\n"
    "gone deprecated\n old use steps\n.prior integer 8 0 0 9 1 2 Priority\n"
    "indic indicator\nx eolcomm !\n";

class Features : public editor {
 protected:
  Features() {
    save("s.def", definition);
    save("optxv.json",
         R"({"definitions": [{"definition": "s.def", "files": ["*.opt"]}], "inlayHints": true})");
    begin({{"textDocument",
            {{"completion", {{"completionItem", {{"snippetSupport", true}}}}},
             {"documentSymbol", {{"hierarchicalDocumentSymbolSupport", true}}}}}});
  }
  /// The answer to a request about the cursor in the text of a file, which is open from then on.
  json asked(const string& request, const string& name, const string& marked) {
    const cursortext in(marked);
    open(name, in.text, name.ends_with(".def") ? "optxv-definition" : "optxv-parameters");
    return ask("textDocument/" + request, at(name, in));
  }
  string offered(const string& name, const string& marked) {
    string all;
    const json answer = asked("completion", name, marked);
    for (const json& each : answer["items"])
      all += (all.empty() ? "" : " ") + each["label"].get<string>();
    return all;
  }
  /// The text once the first that is offered is taken.
  string taken(const string& name, const string& marked) {
    const json answer = asked("completion", name, marked);
    if (answer["items"].empty()) return "nothing";
    return edited(cursortext(marked).text, json::array({answer["items"][0]["textEdit"]}));
  }
};

TEST_F(Features, OfferWhatCanBeWritten) {
  const string values = "auto simplex", yes = "1 0 yes no on off";
  const std::pair<string, string> rows[] = {
      {"ste|", "steps step_size"},
      {"ste|ps 5", "steps step_size"},
      {"STEP|", "steps step_size"},
      {"steps 5\nsi|", "size step_size"},
      {"limit|", "time_limit"},
      {"zz|", ""},
      {"method |", values},
      {"method = |", values},
      {"method s|i", "simplex"},
      {"method auto |", ""},
      {"time_limit |", "3600 0 maxdouble"},
      {"range 1 |", "1 0 9"},
      {"range 1 2 |", ""},
      {"all |", "10 0 99"},
      {"x.|", ".prior"},
      {"x.pri|", ".prior"},
      {"x.prior = 3\ny.prior = 4\nx|", "x"},
      {"* ste|", ""},
      {"steps 5 ! ste|", ""},
      {"steps: |", ""},
      {"log_file \"a b|\"", "\"a b.log\""},
      {"rf |", "\"b c.opt\" \"e f/ it's.opt optxv.json s.def sub/"},
      {"rf s|", "s.def sub/"},
      {"rf sub/|", "sub/deep.opt"},
      {"rf \"b|\"", "\"b c.opt\""},
      {"rf d|", ""},
      {"rf 'it|'", ""},
      {"rf ../no such/|", ""},
      {"quiet |", ""}};
  for (const char* name : {"sub", "e f"}) std::filesystem::create_directory(path(name));
  for (const char* name :
       {"sub/deep.opt", "b c.opt", ".hidden", "it's.opt", "d\te.opt", "d\"e f.opt"})
    save(name, "");
  for (const auto& [marked, labels] : rows) {
    const string got = offered("a.opt", marked);
    EXPECT_EQ(got, labels) << marked;
  }
  EXPECT_TRUE(offered("a.opt", "|").starts_with("Help time_limit steps old step_size size"));
}

TEST_F(Features, WriteWhatIsTaken) {
  const std::pair<string, string> rows[] = {{"ti|me 5", "time_limit 5"},
                                            {"ti|me", "time_limit ${1:3600}"},
                                            {"log|", "log_file ${1:\"a b.log\"}"},
                                            {"qui|", "quiet"},
                                            {"x.pr|", "x.prior"},
                                            {"x.|(1) = 2", "x.prior(1) = 2"},
                                            {"method si|", "method simplex"}};
  for (const auto& [marked, text] : rows) EXPECT_EQ(taken("a.opt", marked), text) << marked;
}

TEST_F(Features, OfferRecordsOfADefinition) {
  const std::pair<string, string> rows[] = {
      {"foo enum|", "enumstr enumint"},
      {"foo |",
       "integer double string boolean enumstr enumint multilist strlist macro immediate "
       "synonym group deprecated obsolete indicator lookup eolcomm"},
      {"foo integer 9 1 0 2 1 |1 x", "1 2"},
      {"foo macro 1 1 x\n ste|", "steps step_size"},
      {"foo synonym ti|", "time_limit"},
      {"foo deprecated\n qu|", "quiet"},
      {"foo immediate R|", "ReadFile"},
      {"foo boolean 9 |0 1 1 Foo", "1 0"},
      {"foo enumstr 9 lo| 1 1 Foo\n long 1 Long\n low 2 Low\n", "long low"},
      {"M| lookup", "Minos"},
      {"foo integer |", ""},
      {"* fo|", ""}};
  for (const auto& [marked, labels] : rows)
    EXPECT_EQ(offered("s.def", definition + marked), labels) << marked;
}

TEST_F(Features, SayWhatStandsThere) {
  const std::tuple<string, string, string> rows[] = {
      {"a.opt", "ti|me_limit 5",
       "time_limit: Seconds\n    double, range 0 to maxdouble, default "
       "3600\n    The clock is read often.\nset to 5 in a.opt:1\n"},
      {"a.opt", "all 3\nst|eps 4\nall 5",
       "steps: Steps\n    integer, range 0 to 99, default 10\n    Synonyms: old (deprecated)\nset "
       "to 5 in a.opt:3 by \"all\"\n"},
      {"a.opt", "method au|to", "auto: Chosen by size\n"},
      {"a.opt", "stesp |4", ""},
      {"a.opt", "* st|eps", ""},
      {"s.def", "g grou|p 3 1 G",
       "the type word: what the record declares; after a dot, how many "
       "values the option takes\ngroup number hc text\n"},
      {"s.def", "n integer 1 1 0 1 1 |2 n",
       "group: the number of a group record; 0 hides the option from the lists of help\n"
       "group out: Output\n"}};
  for (const auto& [name, marked, text] : rows) {
    const string before = name == "s.def" ? definition : "";
    const json answer = asked("hover", name, before + marked);
    EXPECT_EQ(answer.is_null() ? "" : answer["contents"]["value"], text) << marked;
  }
}

TEST_F(Features, FindANameWhereverItIs) {
  save("closed.opt", "* x\nsteps 4\nold 5\n");
  save("inner.txt", "  steps 6\n");
  open("b.opt", "all 3\nrf inner.txt\nsteps 4\n");
  const json found = asked("definition", "a.opt", "st|eps 5\nold 6\nstesp 1\n");
  EXPECT_EQ(found["uri"], uri("s.def"));
  EXPECT_EQ(shown(found["range"]), "4:0-5");
  json params = at("a.opt", cursortext("st|eps 5"));
  params["context"] = {{"includeDeclaration", false}};
  string all;
  for (const json& each : ask("textDocument/references", params))
    all += each["uri"].get<string>().substr(uri("").size()) + ' ' + shown(each["range"]) + '\n';
  EXPECT_EQ(all,
            "s.def 13:1-6\ns.def 17:12-17\na.opt 0:0-5\nb.opt 2:0-5\ninner.txt 0:2-7\n"
            "closed.opt 1:0-5\n");
}

TEST_F(Features, RenameEverywhere) {
  save("closed.opt", "steps 4\nold 5\n");
  const cursortext in("st|eps 5\nx.prior 3\n");
  open("a.opt", in.text);
  json params = at("a.opt", in);
  EXPECT_EQ(ask("textDocument/prepareRename", params)["placeholder"], "steps");
  for (const char* bad : {"", "5x", "a b", "time_limit", "SIZE", ".steps"}) {
    params["newName"] = bad;
    EXPECT_EQ(ask("textDocument/rename", params)["code"], requestfailed) << bad;
  }
  params["newName"] = "strides";
  const json changes = ask("textDocument/rename", params)["changes"];
  EXPECT_EQ(changes.size(), 3U);
  EXPECT_EQ(edited(in.text, changes[uri("a.opt")]), "strides 5\nx.prior 3\n");
  EXPECT_EQ(edited("steps 4\nold 5\n", changes[uri("closed.opt")]), "strides 4\nold 5\n");
  // The renamed definition takes the renamed files.
  const string renamed = edited(definition, changes[uri("s.def")]);
  EXPECT_NE(renamed.find("old synonym strides"), string::npos);
  open("s.def", renamed, "optxv-definition");
  change("a.opt", "strides 5\nx.prior 3\nall 1\nold 2");
  for (const string& each : findings("a.opt"))
    EXPECT_EQ(each.find("unknown"), string::npos) << each;
  json dotted = at("a.opt", cursortext("strides 5\nx.p|rior 3"));
  dotted["newName"] = ".rank";
  EXPECT_EQ(
      edited("strides 5\nx.prior 3\n", ask("textDocument/rename", dotted)["changes"][uri("a.opt")]),
      "strides 5\nx.rank 3\n");
}

TEST_F(Features, RepairWhatIsFound) {
  open("a.opt", "stesp 5\ntime_limit: 5\nmethod simplx\nsteps 1 ! good\n");
  json params = document("a.opt");
  const auto titles = [&](int first, int last) {
    params["range"] = {{"start", {{"line", first}, {"character", 0}}},
                       {"end", {{"line", last}, {"character", 0}}}};
    params["context"] = {{"diagnostics", json::array()}, {"only", {"quickfix"}}};
    string all;
    for (const json& each : ask("textDocument/codeAction", params))
      all += each["title"].get<string>() + '\n';
    return all;
  };
  EXPECT_EQ(titles(0, 0), "Write \"steps 5\"\n");
  EXPECT_EQ(titles(1, 3), "Write \"time_limit 5\"\nWrite \"method simplex\"\n");
  EXPECT_EQ(titles(3, 3), "");
  params["context"]["only"] = {7};
  EXPECT_TRUE(ask("textDocument/codeAction", params).empty());
  params["context"].erase("only");
  EXPECT_EQ(ask("textDocument/codeAction", params)[0]["kind"], "source.fixAll.optxv");
  params["context"]["only"] = {"source.fixAll"};
  const json all = ask("textDocument/codeAction", params)[0]["edit"]["changes"][uri("a.opt")];
  EXPECT_EQ(edited("stesp 5\ntime_limit: 5\nmethod simplx\nsteps 1 ! good\n", all),
            "steps 5\ntime_limit 5\nmethod simplex\nsteps 1 ! good\n");
}

/// Rules of lint look at each text as it is after an edit, beside the definition that is kept.
TEST_F(Features, HintAtWhatCouldBeBetter) {
  save("optxv.json",
       R"({"definitions": [{"definition": "s.def", "files": ["*.opt"]}], "lint": true})");
  start();
  begin();
  open("s.def", definition + string("spare group 3 9 Spare\n"), "optxv-definition");
  const std::vector<string> ofdefinition = findings("s.def"), none;
  ASSERT_EQ(ofdefinition.size(), 1U);
  const string twice = "STEPS 5\nsteps 6\n";
  const std::vector<string> found{"0:0-5 P201", "1:6-7 set-twice", "0:6-7 P102"};
  open("a.opt", twice);
  EXPECT_EQ(findings("a.opt"), found);
  json params = document("a.opt");
  params["range"] = {{"start", {{"line", 0}, {"character", 0}}},
                     {"end", {{"line", 0}, {"character", 2}}}};
  params["context"] = {{"only", {"quickfix"}}};
  const json actions = ask("textDocument/codeAction", params);
  ASSERT_EQ(actions.size(), 1U);
  EXPECT_EQ(edited(twice, actions[0]["edit"]["changes"][uri("a.opt")]), "steps 5\nsteps 6\n");
  for (const string text : {"* optxv: ignore P\nSTEPS 5\n", "steps 5\n"}) {
    change("a.opt", text);
    EXPECT_EQ(findings("a.opt"), none) << text;
  }
  change("a.opt", twice);
  EXPECT_EQ(findings("a.opt"), found);
  EXPECT_EQ(findings("s.def"), ofdefinition);
}

TEST_F(Features, ShowATextFromAbove) {
  open("a.opt", "* one\n* two\nlog_file x y\nsteps 5\nmethod auto\nall 3 ! end\nx.prior('a') 3\n");
  string symbols;
  for (const json& group : ask("textDocument/documentSymbol", document("a.opt"))) {
    symbols += group["name"].get<string>() + ":";
    for (const json& each : group["children"])
      symbols += ' ' + each["name"].get<string>() + '=' + each["detail"].get<string>();
    symbols += '\n';
  }
  EXPECT_EQ(symbols, "Output: log_file=x y method=auto .prior=3\nLimits: steps=5 all=3\n");
  EXPECT_EQ(ask("textDocument/foldingRange", document("a.opt")),
            json({{{"startLine", 0}, {"endLine", 1}, {"kind", "comment"}}}));
  json params = document("a.opt");
  params["range"] = {{"start", {{"line", 0}, {"character", 0}}},
                     {"end", {{"line", 9}, {"character", 0}}}};
  const json hints = ask("textDocument/inlayHint", params);
  ASSERT_EQ(hints.size(), 1U);
  EXPECT_EQ(hints[0]["label"], "steps 3, step_size 3");
  EXPECT_EQ(hints[0]["position"], json({{"line", 5}, {"character", 5}}));
}

/// The tokens of a text in words, a line of the text each.
TEST_F(Features, ColourEachPieceOfAText) {
  const json& types = hello_["capabilities"]["semanticTokensProvider"]["legend"]["tokenTypes"];
  const std::pair<string, string> rows[] = {
      {"* \u00e9\nsteps = 5 ! x\n", "comment3\nproperty5 operator1 number1 comment3"},
      {"method auto\nall 3\nrf x", "property6 enumMember4\nmacro3 string1\nkeyword2 string1"},
      {"x.prior('a') = 3", "variable1 property6 operator1 number1"},
      {"indic e$y 1", "keyword5 variable1 variable1 number1"},
      {"stesp 5\nold 3", "\nproperty3 number1"},
      {"g group 1 1 G\nn enumstr.TWO 3 a 1 1 x\n a 1 b\n",
       "property1 type5 number1 number1 string1\nproperty1 type11 number1 enumMember1 number1 "
       "number1 string1\nenumMember1 number1 string1"},
      {"a macro 1 1 A\n n\nold deprecated\n a\ne eolcomm !\nr immediate ReadFile 1 1 R",
       "property1 type5 number1 number1 string1\nproperty1\nproperty3 type10\nproperty1\n"
       "property1 type7 operator1\nproperty1 type9 keyword8 number1 number1 string1"}};
  for (const auto& [text, words] : rows) {
    const string name = text.find(" 1 1 ") != string::npos ? "t.def" : "a.opt";
    open(name, text, name == "t.def" ? "optxv-definition" : "optxv-parameters");
    const json data = ask("textDocument/semanticTokens/full", document(name))["data"];
    string got;
    for (std::size_t i = 0; i + 4 < data.size(); i += 5) {
      const auto lines = data[i].get<std::size_t>();
      got += lines > 0 ? string(lines, '\n') : i == 0 ? "" : " ";
      got += types[data[i + 3].get<std::size_t>()].get<string>() + data[i + 2].dump();
    }
    EXPECT_EQ(got, words) << text;
  }
}

TEST_F(Features, AreNothingInATextWithoutADefinition) {
  open("none.txt", "steps 5\n", "plaintext");
  json params = at("none.txt", cursortext("st|eps 5\n"));
  params["range"] = {{"start", params["position"]}, {"end", params["position"]}};
  params["context"] = {{"diagnostics", json::array()}, {"includeDeclaration", true}};
  for (const char* const request :
       {"hover", "definition", "references", "documentHighlight", "prepareRename", "completion",
        "codeAction", "documentSymbol", "foldingRange", "inlayHint", "semanticTokens/full",
        "semanticTokens/range", "formatting"}) {
    const json got = ask(string("textDocument/") + request, params);
    const json& list = got.contains("items")  ? got["items"]
                       : got.contains("data") ? got["data"]
                                              : got;
    EXPECT_TRUE(list.empty()) << request << ' ' << got;
  }
}

TEST_F(Features, RenameWithVersionsWhereTheClientWantsThem) {
  start();
  ask("initialize",
      {{"processId", 1},
       {"workspaceFolders", {{{"uri", uriof(folder_.path())}}}},
       {"capabilities", {{"workspace", {{"workspaceEdit", {{"documentChanges", true}}}}}}}});
  notify("initialized", json::object());
  const cursortext in("st|eps 5\n");
  open("a.opt", in.text);
  json params = at("a.opt", in);
  params["newName"] = "strides";
  const json changes = ask("textDocument/rename", params)["documentChanges"];
  EXPECT_EQ(changes.size(), 2U) << changes;
}

TEST_F(Features, LeaveOutWhatIsTooMuch) {
  string text;
  for (int i = 0; i < 3000; i++) text += "zz 1\n";
  open("a.opt", text);
  const std::vector<string> rows = findings("a.opt");
  EXPECT_LT(rows.size(), 3000U);
  EXPECT_TRUE(rows.back().ends_with("omitted")) << rows.back();
}

TEST_F(Features, ColourAPartAlone) {
  open("a.opt", "steps 1\nsteps 2\nsteps 3\n");
  json params = document("a.opt");
  params["range"] = {{"start", {{"line", 1}, {"character", 0}}},
                     {"end", {{"line", 1}, {"character", 7}}}};
  const json data = ask("textDocument/semanticTokens/range", params)["data"];
  EXPECT_EQ(data.size(), 10U) << data;
}

TEST_F(Features, FormatAText) {
  const std::tuple<string, string, string> rows[] = {
      {"a.opt", "steps=5\ntime_limit   3 ! x\n", "steps      = 5\ntime_limit   3  ! x\n"},
      {"a.opt", "steps 5\n", "steps 5\n"},
      {"t.def", "a  group 1  1 A\nbb integer 1 2 0 9 1 1 B\n",
       "a  group  1  1  A\nbb  integer  1  2  0  9  1  1  B\n"}};
  for (const auto& [name, text, laid] : rows) {
    open(name, text, name == "t.def" ? "optxv-definition" : "optxv-parameters");
    const json edits = ask("textDocument/formatting", document(name));
    EXPECT_EQ(edits.empty(), text == laid) << text;
    EXPECT_EQ(edited(text, edits), laid);
  }
}

TEST_F(Features, MarkANameInItsText) {
  string all;
  for (const json& each :
       asked("documentHighlight", "a.opt", "st|eps 5\nx.prior 1\nold 6\nall 1\n"))
    all += shown(each["range"]) + ' ';
  EXPECT_EQ(all, "0:0-5 ");
  EXPECT_TRUE(asked("documentHighlight", "a.opt", "st|esp 5\n").empty());
}

TEST_F(Features, ShowADefinitionFromAbove) {
  open("s.def", definition, "optxv-definition");
  string symbols;
  for (const json& each : ask("textDocument/documentSymbol", document("s.def"))) {
    symbols += each["name"].get<string>() + ' ' + each.value("detail", "");
    for (const json& child : each.value("children", json::array()))
      symbols += " +" + child["name"].get<string>();
    symbols += '\n';
  }
  EXPECT_EQ(symbols,
            "lim group\nout group\ntime_limit double\nsteps integer\nstep_size double\n"
            "method enumstr +auto +simplex\nlog_file string\nquiet boolean.NV\n"
            "range double.TWO\nall macro +steps +step_size\nrf immediate\nsize synonym\n"
            "old synonym\ngone deprecated\n.prior integer\nindic indicator\nx eolcomm\n");
  string folds;
  for (const json& each : ask("textDocument/foldingRange", document("s.def")))
    folds += each["startLine"].dump() + '-' + each["endLine"].dump() + ' ';
  EXPECT_EQ(folds, "2-3 6-8 12-14 18-19 ");
}

TEST_F(Features, TellRulesWhereTheyAreWanted) {
  save("optxv.json",
       R"({"lint": true, "definitions": [{"definition": "s.def", "files": ["*.opt"]}]})");
  start();
  begin({{"textDocument",
          {{"publishDiagnostics", {{"relatedInformation", true}}},
           {"hover", {{"contentFormat", {"markdown"}}}}}}});
  open("a.opt", "steps 5\nsteps 6\nold 7\n");
  EXPECT_EQ(findings("a.opt"),
            (std::vector<string>{"1:6-7 set-twice", "0:6-7 P102", "2:0-3 deprecated",
                                 "2:4-5 set-twice", "1:6-7 P102", "2:0-3 P104"}));
  open("s.def", definition + string("unused group 9 1 None\n"), "optxv-definition");
  EXPECT_EQ(findings("s.def"), std::vector<string>{"23:0-6 D103"});
  const json answer = asked("hover", "b.opt", "st|eps 5\n");
  EXPECT_EQ(answer["contents"]["value"],
            "```text\nsteps: Steps\n    integer, range 0 to 99, default 10\n    Synonyms: old "
            "(deprecated)\nset to 5 in b.opt:1\n```");
}

}  // namespace
}  // namespace command
