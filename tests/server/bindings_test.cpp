// What optxv.json says: its patterns, its members, and `optxv check` without words.

#include "analysis/bindings.h"

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "command/commandrun.h"

namespace command {
namespace {

TEST(Bindings, MeanFilesByPatterns) {
  const std::tuple<const char*, const char*, bool> rows[] = {
      {"*.opt", "a.opt", true},
      {"*.opt", "sub/a.opt", false},
      {"sub/*.opt", "sub/a.opt", true},
      {"**/*.opt", "a.opt", true},
      {"**/*.opt", "x/y/a.opt", true},
      {"**", "x/y", true},
      {"**", "", false},
      {"x/y", "./x//y", true},
      {"x/**/y", "x/y", true},
      {"x/**/y", "x/a/b/y", true},
      {"x/**/y", "y", false},
      {"./a?c", "abc", true},
      {"a?c", "ac", false},
      {"*", ".hidden", false},
      {".*", ".hidden", true},
      {"**/a", ".git/a", false},
      {"", "a", false},
      {"a*b*c", "aXbYbZc", true},
      {"**/**/**/**/b", "a/a/a/a/a/a/a/a", false}};
  for (const auto& [pattern, path, good] : rows)
    EXPECT_EQ(meant(pattern, path), good) << pattern << ' ' << path;
}

TEST(Bindings, TellWhatIsWrong) {
  const std::pair<const char*, const char*> rows[] = {
      {"{\n ]", "2:2 this is no JSON"},
      {"[]", "0:0 all of it is not an object"},
      {R"({"definition": []})", "0:0 no member is called \"definition\""},
      {R"({"definitions": [7]})", "0:0 definitions[0] is not an object"},
      {R"({"definitions": [{"files": []}]})", "0:0 definitions[0] has no definition"},
      {R"({"definitions": [{"definition": "a", "files": [1]}]})",
       "0:0 definitions[0].files is not a string"},
      {"", "1:1 this is no JSON"},
      {R"({"definitions": [{"definition": "a", "colour": 1}]})",
       "0:0 no member is called \"definitions[0].colour\""},
      {R"({"lint": 1})", "0:0 lint is not true or false"}};
  for (const auto& [text, told] : rows) {
    const auto said = parsebindings(text, "/");
    const auto* fault = std::get_if<finding>(&said);
    ASSERT_NE(fault, nullptr) << text;
    EXPECT_EQ(std::to_string(fault->where.line) + ':' + std::to_string(fault->where.column) + ' ' +
                  fault->text,
              told);
  }
}

/// Each member of the schema is taken, with a value of its type.
TEST(Bindings, TakeWhatTheirSchemaHas) {
  using nlohmann::json;
  const json schema = json::parse(std::ifstream(OPTXV_SOURCE_DIR "/editors/optxv.schema.json"));
  const auto exampleof = [](const json& of) {
    return of["type"] == "boolean" ? json(true) : of["type"] == "array" ? json::array() : json("x");
  };
  const json& row = schema["properties"]["definitions"]["items"]["properties"];
  json all, one;
  for (const auto& [name, of] : schema["properties"].items()) all[name] = exampleof(of);
  for (const auto& [name, of] : row.items()) one[name] = exampleof(of);
  all["definitions"].push_back(one);
  const auto said = parsebindings(all.dump(), "/f");
  ASSERT_TRUE(std::holds_alternative<bindings>(said)) << std::get<finding>(said).text;
  EXPECT_TRUE(std::get<bindings>(said).all[0].tokens);
}

class BoundCheck : public optxv::test::commandrun {};

TEST_F(BoundCheck, ChecksAllThatIsBound) {
  save("s.def", "steps integer 1 10 0 99 1 1 Steps\nrf immediate ReadFile 1 1 R\n");
  save("a.opt", "steps 5 steps x\n");
  save("b.opt", "rf sub/c.txt\n");
  std::filesystem::create_directories(folder_.path() + "/sub");
  save("sub/c.txt", "stesp 1\n");
  EXPECT_TRUE(run("check").err.starts_with("optxv: error: DEFINITION is required\n"));
  save("optxv.json", R"({"definitions": [{"definition": "s.def", "files": ["*.opt"]},
                                         {"definition": "t.def"}]})");
  const auto told = run("check --format gcc");
  EXPECT_EQ(told.status, 2);
  EXPECT_TRUE(told.out.starts_with("a.opt:1:7: error: Integer expected")) << told.out;
  EXPECT_NE(told.out.find("\nsub/c.txt:1:1: error: Unknown option \"stesp\""), std::string::npos);
  EXPECT_NE(told.out.find("\nt.def:1:1: error: cannot be read"), std::string::npos) << told.out;
  EXPECT_TRUE(run("check").out.ends_with("\n2 errors in 4 files, 1 not read\n"));
  save("optxv.json", R"({"definitions": [{"definition": "s.def", "files": ["**/*.opt", "**"]}]})");
  std::filesystem::create_directories(folder_.path() + "/.hidden");
  save("sub/d.opt", "stesp 2\n");
  save(".hidden/e.opt", "stesp 3\n");
  const std::string deep = run("check --format gcc").out;
  EXPECT_NE(deep.find("sub/d.opt:1:1: error"), deep.npos) << deep;
  EXPECT_EQ(deep.find("e.opt"), deep.npos) << deep;
  save("optxv.json", R"({"definitions": [{"definition": "s.def", "tokens": true,
                                          "files": ["a.opt"]}]})");
  save("a.opt", "steps 1\nsteps 2\n");
  const auto hint = nlohmann::json::parse(run("check --json").out)["diagnostics"][0]["hints"][0];
  EXPECT_FALSE(hint.contains("edits")) << "a line of tokens may go on";
  save("optxv.json", "{");
  EXPECT_NE(run("check").err.find("optxv.json:1:2: this is no JSON"), std::string::npos);
}

}  // namespace
}  // namespace command
