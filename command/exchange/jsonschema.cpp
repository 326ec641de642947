#include "exchange/jsonschema.h"

#include <cmath>
#include <set>

#include "text/names.h"
#include "text/wording.h"

namespace command {
namespace {

constexpr const char* textref = "#/$defs/text";
constexpr const char* identifierref = "#/$defs/identifier";

ordered_json refto(const char* what) {
  return {{"$ref", what}};
}

// --- What the properties have in common. The patterns are written so that an end of text cannot be
// taken for the end of a line.

ordered_json textschema() {
  return {{"type", "string"}, {"maxLength", longesttext}, {"not", {{"pattern", "[\"\\n\\u001a]"}}}};
}

ordered_json identifierschema() {
  return {{"type", "string"},
          {"minLength", 1},
          {"maxLength", longestidentifier},
          {"not", {{"pattern", "[^A-Za-z0-9_]|^[^A-Za-z]"}}}};
}

ordered_json listof(ordered_json items) {
  return {{"type", "array"}, {"items", std::move(items)}};
}

ordered_json labelsof(ordered_json label) {
  ordered_json list = listof(std::move(label));
  list["maxItems"] = mostlabels;
  return list;
}

/// An object that has all of some members, and may have others.
ordered_json entryof(ordered_json properties, ordered_json required) {
  return {{"type", "object"},
          {"properties", std::move(properties)},
          {"required", std::move(required)},
          {"additionalProperties", false}};
}

ordered_json indicatorschema() {
  const ordered_json label = {
      {"type", "string"},
      {"maxLength", longestidentifier + 2},
      {"pattern", "^(?:[A-Za-z][A-Za-z0-9_]*|'[^'\\n]*'|\"[^\"\\n]*\")$(?!\\n)"}};
  ordered_json list = listof(entryof({{"equation", refto(identifierref)},
                                      {"equationlabels", labelsof(label)},
                                      {"variable", refto(identifierref)},
                                      {"variablelabels", labelsof(label)},
                                      {"value", {{"type", "boolean"}}}},
                                     {"equation", "variable", "value"}));
  list["description"] = "Ties of an equation to a variable. A label has quotes, or is a name";
  return list;
}

// --- The schema of one option

class optionschema {
 public:
  optionschema(const optxv::options& table, const optxv::option& option, const schemanote& tell)
      : table_(table), option_(option), tell_(tell) {}

  /// Of the member that the option is.
  ordered_json member() const;
  /// Of one value.
  ordered_json value(bool ornull = false) const;

 private:
  std::string description() const;
  ordered_json shape() const;
  ordered_json pair() const;
  ordered_json typed(const char* type, bool ornull) const;
  ordered_json bounded(ordered_json to, ordered_json low, ordered_json high) const;
  ordered_json text(bool ornull) const;
  ordered_json enumerated(bool ornull) const;
  void adddefault(ordered_json& to) const;
  ordered_json standard() const;

  const optxv::options& table_;
  const optxv::option& option_;
  const schemanote& tell_;
};

ordered_json optionschema::member() const {
  ordered_json result = ordered_json::object();
  if (std::string text = description(); !text.empty()) result["description"] = std::move(text);
  result.update(shape());
  adddefault(result);
  if ((option_.marks & optxv_mark_deprecated) != 0) result["deprecated"] = true;
  return result;
}

/// The help, and what is to be said of a deprecated name.
std::string optionschema::description() const {
  std::string text(option_.help);
  for (const std::string_view line : table_.help_lines(option_.number))
    text.append(text.empty() ? "" : "\n").append(line);
  if ((option_.marks & optxv_mark_deprecated) != 0)
    text.append(text.empty() ? "Deprecated" : "\nDeprecated")
        .append(option_.marked_text.empty() ? "" : ": ")
        .append(option_.marked_text);
  return text;
}

ordered_json optionschema::shape() const {
  switch (formof(option_)) {
    case memberform::flag:
      return {{"type", "boolean"}};
    case memberform::optional:
      return value(true);
    case memberform::pair:
      return pair();
    case memberform::list:
      return listof(refto(textref));
    default:
      return value();
  }
}

ordered_json optionschema::pair() const {
  ordered_json each = value(true);
  // A star stands for the value that is there.
  if (option_.data == optxv_data_text) each["not"] = {{"const", "*"}};
  ordered_json list = listof(std::move(each));
  list["minItems"] = 2;
  list["maxItems"] = 2;
  list["contains"] = {{"not", {{"type", "null"}}}};
  return list;
}

ordered_json optionschema::value(bool ornull) const {
  switch (option_.kind) {
    case optxv_kind_integer:
      return bounded(typed("integer", ornull), static_cast<std::int32_t>(option_.low),
                     static_cast<std::int32_t>(option_.high));
    case optxv_kind_real:
      return bounded(typed("number", ornull), option_.low, option_.high);
    case optxv_kind_boolean:
      return typed("boolean", ornull);
    case optxv_kind_text:
      return text(ornull);
    default:
      return enumerated(ornull);
  }
}

ordered_json optionschema::typed(const char* type, bool ornull) const {
  if (ornull) return {{"type", {type, "null"}}};
  return {{"type", type}};
}

ordered_json optionschema::bounded(ordered_json to, ordered_json low, ordered_json high) const {
  to["minimum"] = std::move(low);
  to["maximum"] = std::move(high);
  return to;
}

ordered_json optionschema::text(bool ornull) const {
  if (!ornull) return refto(textref);
  return {{"anyOf", {refto(textref), {{"type", "null"}}}}};
}

/// Each allowed value once, with its text. The first of two that differ in case alone is the one
/// that counts.
ordered_json optionschema::enumerated(bool ornull) const {
  const bool integers = option_.data == optxv_data_integer;
  ordered_json items = ordered_json::array();
  std::set<std::string> seen;
  for (const optxv::item& each : table_.items(option_.number)) {
    if (!isutf8(each.text))
      tell_(option_.number, "a value of it is no UTF-8, and so is not in the schema");
    else if (seen.insert(folded(each.text)).second) {
      items.push_back({{"const", integers ? ordered_json(each.integer) : ordered_json(each.text)}});
      if (!each.help.empty()) items.back()["description"] = each.help;
    }
  }
  if (ornull) items.push_back({{"const", nullptr}});
  ordered_json result = typed(integers ? "integer" : "string", ornull);
  if (items.empty())
    result["not"] = ordered_json::object();
  else
    result["anyOf"] = std::move(items);
  return result;
}

/// What counts where the option is not set; none for a value that JSON or the option does not have.
ordered_json optionschema::standard() const {
  if (option_.data == optxv_data_real) return option_.default_value;
  if (option_.data == optxv_data_text)
    return isutf8(option_.default_text) ? ordered_json(option_.default_text) : ordered_json();
  if (option_.kind != optxv_kind_boolean) return static_cast<std::int32_t>(option_.default_value);
  if (option_.default_value != 0 && option_.default_value != 1) return nullptr;
  return option_.default_value == 1;
}

void optionschema::adddefault(ordered_json& to) const {
  const memberform form = formof(option_);
  if (form == memberform::list) return;
  if (form == memberform::flag) {
    to["default"] = false;
    return;
  }
  const ordered_json value = standard();
  if (value.is_null())
    tell_(option_.number, "its default has no form in JSON, and so is not in the schema");
  else
    to["default"] = form == memberform::pair ? ordered_json{value, value} : value;
}

// --- The schema of the table

class tableschema {
 public:
  tableschema(const optxv::options& table, bool indicators, const schemanote& tell)
      : table_(table), indicators_(indicators), tell_(tell) {}

  ordered_json all(const std::string& title) const;

 private:
  ordered_json properties() const;
  ordered_json definitions() const;
  ordered_json membersof(std::int32_t group) const;
  ordered_json dotoptions() const;

  const optxv::options& table_;
  bool indicators_;
  const schemanote& tell_;
};

ordered_json tableschema::all(const std::string& title) const {
  return {{"$schema", "https://json-schema.org/draft/2020-12/schema"},
          {"title", title},
          {"type", "object"},
          {"properties", properties()},
          {"patternProperties",
           {{"^--[A-Za-z][A-Za-z0-9_]*$(?!\\n)",
             {{"description", "A list of texts that has no option"},
              {"type", "array"},
              {"items", refto(textref)}}}}},
          {"additionalProperties", false},
          {"$defs", definitions()}};
}

ordered_json tableschema::properties() const {
  ordered_json all = {{schemamember, {{"type", "string"}}}};
  for (const optxv::option& each : table_.table())
    if (formof(each) != memberform::none)
      addmember(all, each.name, optionschema(table_, each, tell_).member());
  if (ordered_json dots = dotoptions(); !dots.is_null()) all[dotmember] = std::move(dots);
  if (indicators_) all[indicatormember] = indicatorschema();
  return all;
}

/// The entries for symbols. The value of each is as its attribute takes it.
ordered_json tableschema::dotoptions() const {
  ordered_json names = ordered_json::array(), rules = names;
  for (const optxv::option& each : table_.table()) {
    if (!isattribute(each)) continue;
    names.push_back(each.name);
    rules.push_back(
        {{"if", {{"properties", {{"attribute", {{"const", each.name}}}}}}},
         {"then", {{"properties", {{"value", optionschema(table_, each, tell_).value()}}}}}});
  }
  if (names.empty()) return nullptr;
  ordered_json entry = entryof({{"symbol", refto(identifierref)},
                                {"attribute", {{"enum", names}}},
                                {"labels", labelsof(refto("#/$defs/label"))},
                                {"value", true}},
                               {"symbol", "attribute", "value"});
  entry["allOf"] = std::move(rules);
  ordered_json list = listof(std::move(entry));
  list["description"] = "Values for symbols of the model. The label * stands for all labels";
  return list;
}

ordered_json tableschema::definitions() const {
  ordered_json all = {{"text", textschema()},
                      {"identifier", identifierschema()},
                      {"label", {{"type", "string"}, {"not", {{"pattern", "[\\n\\u001a]"}}}}}};
  for (const optxv::group& each : table_.groups()) {
    const ordered_json members = membersof(each.number);
    if (!members.empty())
      all["group-" + std::string(each.name)] = {
          {"title", each.help}, {"type", "string"}, {"enum", members}};
  }
  return all;
}

ordered_json tableschema::membersof(std::int32_t group) const {
  ordered_json names = ordered_json::array();
  for (const optxv::option& each : table_.table())
    if (each.group == group && formof(each) != memberform::none) names.push_back(each.name);
  return names;
}

}  // namespace

ordered_json jsonschema(const optxv::options& table, bool indicators, const std::string& title,
                        const schemanote& tell) {
  return tableschema(table, indicators, tell).all(title);
}

}  // namespace command
