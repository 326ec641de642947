#include "server/semantics.h"

#include <array>

namespace command {
namespace {

enum tokentype {
  commenttoken,
  optiontoken,
  operatortoken,
  numbertoken,
  stringtoken,
  membertoken,
  variabletoken,
  keywordtoken,
  typetoken,
  macrotoken,
  notoken
};
constexpr std::array<const char*, notoken> typenames = {
    "comment",    "property", "operator", "number", "string",
    "enumMember", "variable", "keyword",  "type",   "macro"};

constexpr unsigned declaration = 1, deprecated = 2;

tokentype valuetype(const subject& of, const mark& each) {
  const optxv::optionfacts* option = of.option(each.option);
  if (option == nullptr) return numbertoken;
  if (!option->values.empty() || option->kind == "boolean") return membertoken;
  return option->kind == "integer" || option->kind == "double" ? numbertoken : stringtoken;
}

tokentype keytype(const subject& of, const mark& each) {
  const optxv::optionfacts* option = of.option(each.option);
  if (option == nullptr) return optiontoken;
  if (option->kind == "immediate") return keywordtoken;
  return option->members.empty() ? optiontoken : macrotoken;
}

/// By optxv_field_...
tokentype fieldtype(const subject& of, const mark& each) {
  switch (each.number) {
    case optxv_field_record:
    case optxv_field_target:
    case optxv_field_member:
    case optxv_field_marked:
      return optiontoken;
    case optxv_field_type:
      return typetoken;
    case optxv_field_default:
      return valuetype(of, each);
    case optxv_field_item:
      return membertoken;
    case optxv_field_action:
      return keywordtoken;
    case optxv_field_text:
    case optxv_field_longhelp:
    case optxv_field_heading:
      return stringtoken;
    case optxv_field_characters:
      return operatortoken;
    default:
      return numbertoken;
  }
}

tokentype typeof(const subject& of, const mark& each) {
  switch (each.kind) {
    case markkind::comment:
      return commenttoken;
    case markkind::key:
      return keytype(of, each);
    case markkind::separator:
      return operatortoken;
    case markkind::value:
      return valuetype(of, each);
    case markkind::symbol:
      return variabletoken;
    case markkind::attribute:
      return optiontoken;
    case markkind::word:
      return keywordtoken;
    case markkind::field:
      return fieldtype(of, each);
    default:
      return notoken;
  }
}

unsigned modifiersof(const subject& of, const mark& each) {
  if (each.kind == markkind::field) return each.number == optxv_field_record ? declaration : 0;
  const optxv::optionfacts* option = of.option(each.option);
  const bool old = each.kind == markkind::key && option != nullptr &&
                   (each.synonym > 0 ? option->synonymdeprecated : option->deprecated);
  return old ? deprecated : 0;
}

/// The tokens as numbers, each relative to the one before it.
class tokenlist {
 public:
  void add(const position& from, const position& to, tokentype type, unsigned modifiers) {
    if (from.line != to.line || from.character >= to.character || from < end_) return;
    const std::size_t column =
        from.line == last_.line ? from.character - last_.character : from.character;
    for (const std::size_t number : {from.line - last_.line, column, to.character - from.character,
                                     static_cast<std::size_t>(type), std::size_t{modifiers}})
      data_.push_back(number);
    last_ = from;
    end_ = to;
  }
  json data() const { return data_; }

 private:
  std::vector<std::size_t> data_;
  position last_, end_;
};

}  // namespace

json tokenlegend() {
  return {{"tokenTypes", typenames}, {"tokenModifiers", {"declaration", "deprecated"}}};
}

json semantictokens(session& in, const json& params) {
  const auto of = subjectof(in, params);
  tokenlist tokens;
  if (!of) return {{"data", tokens.data()}};
  const json& range = optionalmember(params, "range");
  position first, last{SIZE_MAX, 0};
  if (!range.is_null()) {
    first = positionfrom(member(range, "start"));
    last = positionfrom(member(range, "end"));
  }
  for (const mark& each : of->marks) {
    const tokentype type = typeof(*of, each);
    if (type == notoken) continue;
    const position from = of->text().at(of->text().offset(each.line, each.column), in.counts);
    if (from < first || last < from) continue;
    const position to = of->text().at(of->text().offset(each.line, each.end()), in.counts);
    tokens.add(from, to, type, modifiersof(*of, each));
  }
  return {{"data", tokens.data()}};
}

}  // namespace command
