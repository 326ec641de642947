#include "code/generator.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <limits>

#include "code/skeleton.h"
#include "code/tableplan.h"
#include "text/names.h"
#include "text/printable.h"

namespace command {
namespace {

std::string capitals(std::string_view text) {
  std::string result(text);
  for (char& c : result)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - ('a' - 'A'));
  return result;
}

/// Words as the name of a class: print_level is PrintLevel. An underscore stays before a digit, so
/// that different words give different names.
std::string classname(std::string_view words) {
  std::string result;
  bool begins = true;
  for (const char c : folded(words)) {
    if (c == '_') {
      begins = true;
      continue;
    }
    if (begins && isdigit(c)) result += '_';
    result += begins ? capitals({&c, 1}) : std::string(1, c);
    begins = false;
  }
  return result + (words.ends_with('_') ? "_" : "");
}

/// One line of a skeleton, filled.
std::string form(std::string_view line, const datanode& data) {
  std::string result = filled(line, data);
  if (result.ends_with('\n')) result.pop_back();
  return result;
}

std::string lastpart(std::string_view path) {
  return path == "-" ? "options.def" : std::string(path.substr(path.rfind('/') + 1));
}

std::string hexadecimal(std::uint64_t number) {
  std::array<char, 20> digits{};
  std::snprintf(digits.data(), digits.size(), "%016llx", static_cast<unsigned long long>(number));
  return digits.data();
}

/// The same bits as a signed integer of Fortran.
std::string signedmark(std::uint64_t mark) {
  const auto number = static_cast<std::int64_t>(mark);
  if (number == std::numeric_limits<std::int64_t>::min())
    return "-9223372036854775807_c_int64_t - 1_c_int64_t";
  return std::to_string(number) + "_c_int64_t";
}

std::string_view shapeword(shape form) {
  constexpr std::array<std::string_view, 8> words = {"integer", "real",   "text", "boolean",
                                                     "choice",  "listed", "list", ""};
  return words[static_cast<std::size_t>(form)];
}

class generator {
 public:
  generator(optxv_handle handle, const codeorder& order, const meetingtaker& report)
      : handle_(handle),
        order_(order),
        language_(*order.as),
        report_(report),
        options_(planof(handle)),
        prefix_(legalprefix()) {
    if (language_.ascending) sortitems();
    nameoptions();
    language_.scoped ? namescopeditems() : nameflatitems();
  }

  std::string text() { return filled(language_.skeleton, data()); }

 private:
  void sortitems() {
    for (plannedoption& option : options_) {
      if (option.form != shape::listed) continue;
      const std::int32_t standard = option.items[option.standard].integer;
      std::ranges::sort(option.items, {}, &planneditem::integer);
      const auto found = std::ranges::find(option.items, standard, &planneditem::integer);
      option.standard = static_cast<std::size_t>(found - option.items.begin());
    }
  }

  std::string legalprefix() const {
    const std::string file = lastpart(order_.file);
    const std::string wanted =
        order_.prefix.empty() ? file.substr(0, file.find('.')) : order_.prefix;
    namerules rules = language_.rules;
    rules.longest = language_.longestprefix;
    identifiers scope(rules);
    scope.reserve("std");
    scope.reserve("optxv");
    return scope.give({{wordsof(wanted, "options")}}, [](const meeting&) {}).front();
  }

  /// Reports two names of a scope. names: of those that it has; optnr: of the option of the second.
  void meet(const meeting& met, const std::vector<std::string>& names, std::int32_t optnr) {
    const std::string first =
        met.first == identifiers::own ? "a name of the code itself" : inquotes(names[met.first]);
    report_(optnr, first + " and " + inquotes(names[met.second]) + " are both " + met.shared +
                       " in " + std::string(language_.name) + ": the second becomes " + met.given);
  }

  void nameoptions() {
    namerules rules = language_.rules;
    if (rules.longest > 0) rules.longest -= prefix_.size() + language_.longestdecoration;
    identifiers scope(rules);
    for (std::string_view rest = language_.ownwords; !rest.empty();) {
      const std::string_view word = nextword(rest);
      if (!word.empty()) scope.reserve(word);
    }
    std::vector<wantedname> wanted;
    std::vector<std::string> names;
    for (const plannedoption& each : options_) {
      const std::string words = wordsof(each.name, "option");
      wanted.push_back({(each.name.starts_with('.') ? "dot_" : "") + words, each.name == words});
      names.push_back(each.name);
    }
    ids_ = scope.give(wanted, [&](const meeting& met) {
      meet(met, names, static_cast<std::int32_t>(met.second) + 1);
    });
    if (language_.lowercase)
      for (std::string& each : ids_) each = folded(each);
  }

  const std::string& idof(const plannedoption& option) const {
    return ids_[static_cast<std::size_t>(option.number) - 1];
  }

  datanode namesof(const plannedoption& option) const {
    datanode node;
    const std::string& id = idof(option);
    node.texts = {{"prefix", prefix_},
                  {"PREFIX", capitals(prefix_)},
                  {"id", id},
                  {"ID", capitals(id)},
                  {"Id", classname(id)},
                  {"number", std::to_string(option.number)},
                  {"name", plainwords(option.name)}};
    return node;
  }

  /// The name of an item in the scope that it is in.
  std::string itemname(const plannedoption& option, const planneditem& item) const {
    std::string words = wordsof(item.text, language_.scoped ? "value" : "");
    if (words.empty()) words = "value";
    datanode node = namesof(option);
    node.texts["item"] = words;
    node.texts["ITEM"] = capitals(words);
    return form(language_.constant, node);
  }

  void namescopeditems() {
    namerules rules = language_.rules;
    rules.cased = rules.cased || language_.lowercase;  // constants are in capitals there
    for (const plannedoption& option : options_) {
      if (!option.isenumerated()) continue;
      identifiers scope(rules);
      giveitems(scope, {&option});
    }
  }

  void nameflatitems() {
    identifiers scope(language_.rules);
    std::vector<const plannedoption*> enumerated;
    for (const std::string_view word :
         {"_table_mark", "_options", "_values", "_fill", "_apply", "_defaults", "_read_definition"})
      scope.reserve(prefix_ + std::string(word));
    for (const plannedoption& option : options_) {
      for (const std::string_view word : {"_number_", "_reference_"})
        scope.reserve(prefix_ + std::string(word) + idof(option));
      for (const std::string_view word : {"_texts", "_values"})
        scope.reserve(prefix_ + '_' + idof(option) + std::string(word));
      if (option.isenumerated()) enumerated.push_back(&option);
    }
    giveitems(scope, enumerated);
  }

  /// Names the items of these options, which share a scope.
  void giveitems(identifiers& scope, const std::vector<const plannedoption*>& sharing) {
    std::vector<wantedname> wanted;
    std::vector<std::string> names;
    std::vector<const plannedoption*> owners;
    for (const plannedoption* option : sharing)
      for (const planneditem& item : option->items) {
        wanted.push_back({itemname(*option, item), language_.scoped && isplainname(item.text)});
        names.push_back(option->name + ' ' + item.text);
        owners.push_back(option);
      }
    const std::vector<std::string> given = scope.give(
        wanted, [&](const meeting& met) { meet(met, names, owners[met.second]->number); });
    for (std::size_t i = 0; i < given.size(); i++)
      constants_[owners[i]->number].push_back(given[i]);
  }

  static bool isplainname(std::string_view text) { return wordsof(text, "value") == text; }

  std::string plainwords(std::string_view text) const {
    return commentof(text, {.first = "", .next = "", .last = "", .pairs = language_.comment.pairs});
  }

  std::string helpof(const plannedoption& option) const {
    std::string text = idof(option) == option.name ? "" : option.name + ": ";
    for (const std::string& line : option.help) text += line + '\n';
    return commentof(text, language_.comment);
  }

  std::string textliteral(std::string_view text) const { return language_.textliteral(text); }
  std::string rawliteral(std::string_view text) const {
    return language_.rawliteral == nullptr ? textliteral(text) : language_.rawliteral(text);
  }

  std::string onevalue(const plannedoption& option) const {
    const optxv_option& facts = option.facts;
    switch (option.form) {
      case shape::integer:
        return language_.integerliteral(facts.default_integer);
      case shape::real:
        return language_.realliteral(facts.default_real);
      case shape::text:
        return textliteral({facts.default_text.bytes, facts.default_text.size});
      case shape::boolean:
        return std::string(language_.booleans[facts.default_integer != 0 ? 1 : 0]);
      case shape::choice:
      case shape::listed: {
        datanode node = namesof(option);
        node.texts["constant"] = constants_.at(option.number)[option.standard];
        return form(language_.itemvalue, node);
      }
      case shape::list:
      case shape::none:
        break;
    }
    return std::string(language_.listvalue);
  }

  std::string standardof(const plannedoption& option) const {
    const std::string one = onevalue(option);
    if (!option.pair) return one;
    return form(language_.pairvalue, {.texts = {{"first", one}, {"second", one}}});
  }

  std::vector<datanode> partsof(const plannedoption& option) const {
    if (!option.pair) return {{.texts = {{"which", "1"}, {"part", ""}}}};
    return {{.texts = {{"which", "1"}, {"part", std::string(language_.parts[0])}}},
            {.texts = {{"which", "2"}, {"part", std::string(language_.parts[1])}}}};
  }

  datanode fieldof(const plannedoption& option) const {
    datanode node = namesof(option);
    const auto flag = [&](const std::string& name, bool on) { node.texts[name] = on ? "1" : ""; };
    const declarationforms& forms = language_.declarations[static_cast<std::size_t>(option.form)];
    node.texts["comment"] = helpof(option);
    node.texts["shape"] = shapeword(option.form);
    node.texts["declaration"] = form(option.pair ? forms.two : forms.one, node);
    node.texts["default"] = standardof(option);
    node.texts["count"] = std::to_string(option.items.size());
    flag("pair", option.pair);
    flag("choice", option.form == shape::choice);
    flag("listed", option.form == shape::listed);
    flag("list", option.form == shape::list);
    flag("enumerated", option.isenumerated());
    flag("plain", !option.isenumerated());
    node.lists["parts"] = partsof(option);
    return node;
  }

  datanode itemof(const plannedoption& option, std::size_t position) const {
    const planneditem& item = option.items[position];
    const bool ischoice = option.form == shape::choice;
    const std::string integer =
        language_.integerliteral(ischoice ? static_cast<std::int32_t>(position) : item.integer);
    return {.texts = {{"constant", constants_.at(option.number)[position]},
                      {"comment", commentof(item.help, language_.comment)},
                      {"value", integer},
                      {"literal", ischoice ? textliteral(item.text) : integer}}};
  }

  datanode enumerationof(const plannedoption& option) const {
    datanode node = fieldof(option);
    std::size_t longest = 1;
    for (std::size_t i = 0; i < option.items.size(); i++) {
      node.lists["items"].push_back(itemof(option, i));
      longest = std::max(longest, option.items[i].text.size());
    }
    node.texts["longest"] = std::to_string(longest);
    node.texts["lastitem"] = std::to_string(option.items.size() - 1);
    return node;
  }

  void addoption(const plannedoption& option, datanode& all) const {
    all.lists["options"].push_back(namesof(option));
    if (option.hasreference()) {
      datanode node = namesof(option);
      node.texts["reference"] = language_.integerliteral(option.facts.reference);
      all.lists["references"].push_back(std::move(node));
    }
    if (option.isenumerated()) all.lists["enumerations"].push_back(enumerationof(option));
    if (option.form == shape::list) all.lists["lists"].push_back(fieldof(option));
    if (option.form != shape::none && (option.form != shape::list || language_.listfields))
      all.lists["fields"].push_back(fieldof(option));
  }

  void addtext(datanode& all) const {
    std::vector<datanode>& lines = all.lists["lines"];
    for (std::string_view rest = order_.text; !rest.empty();) {
      const std::size_t size = std::min(rest.find('\n'), rest.size() - 1) + 1;
      lines.push_back({.texts = {{"literal", rawliteral(rest.substr(0, size))}}});
      rest.remove_prefix(size);
    }
    all.texts["bytes"] = bytenumbers(order_.text);
    all.texts["size"] = std::to_string(order_.text.size());
    all.texts["lastline"] = std::to_string(lines.size() - 1);
  }

  datanode data() const {
    const std::uint64_t mark = optxv_table_mark(handle_);
    const std::string file = lastpart(order_.file);
    const std::string source = printable(file);
    datanode all;
    all.texts = {{"prefix", prefix_},
                 {"PREFIX", capitals(prefix_)},
                 {"source", source},
                 {"made", "optxv generate " + source + " --lang " + std::string(language_.name) +
                              " --prefix " + prefix_ + (order_.embed ? " --embed" : "")},
                 {"mark", hexadecimal(mark)},
                 {"signedmark", signedmark(mark)},
                 {"file", textliteral(file)},
                 {"embedded", order_.embed ? "1" : ""}};
    for (const char* const list : {"options", "references", "enumerations", "lists", "fields"})
      all.lists[list];
    for (const plannedoption& option : options_) addoption(option, all);
    if (order_.embed) addtext(all);
    return all;
  }

  optxv_handle handle_;
  const codeorder& order_;
  const language& language_;
  const meetingtaker& report_;
  std::vector<plannedoption> options_;
  std::string prefix_;
  std::vector<std::string> ids_;                                ///< of the options, in their order
  std::map<std::int32_t, std::vector<std::string>> constants_;  ///< the items, by option
};

}  // namespace

std::string generated(optxv_handle handle, const codeorder& order, const meetingtaker& report) {
  return generator(handle, order, report).text();
}

}  // namespace command
