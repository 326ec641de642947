#include "server/hover.h"

#include <algorithm>
#include <array>

#include "text/names.h"
#include "text/printable.h"

namespace command {
namespace {

using optxv::optionfacts;

/// What the fields of a definition are. In the order of optxv_field_...
constexpr std::array<std::string_view, optxv_fields> fieldwords = {
    "",
    "the name of the record",
    "the type word: what the record declares; after a dot, how many values the option takes",
    "usermap: a whole number of the program's own",
    "default: the value of an option that is not set",
    "low: the least value that is allowed",
    "high: the greatest value that is allowed",
    "help context, such as the page of a manual; 0 hides it from the lists of help",
    "group: the number of a group record; 0 hides the option from the lists of help",
    "text: one line of help",
    "a line of the long help",
    "an allowed value",
    "a member: an option that gets the value",
    "the option that the synonym stands for",
    "action: what the option has the reader do",
    "the number of the group, which options name",
    "a name that is marked",
    "a heading that nobody reads",
    "characters that begin a comment at the end of a line",
};

/// What is said, and what about.
struct answer {
  std::string text;
  const mark* about = nullptr;
};

std::string helpof(const subject& of, std::int32_t option) {
  if (of.option(option) == nullptr) return {};
  return of.table.help->block(option);
}

/// What an option is set to once all of the text is read, and where that is.
std::string setnow(const subject& of, std::int32_t number) {
  const optionfacts* option = of.option(number);
  if (option == nullptr || of.what.isdefinition || !option->hasdefault) return {};
  std::string text;
  for (const std::int32_t which : {1, 2}) {
    const setting& now = of.table.kept->values().of(number, which);
    if (now.road == optxv_road_none || now.road == optxv_road_dot) continue;
    text += "set to " + externalform(of.table.kept->options().shown(number, which)) + " in " +
            printable(now.where.file) + ':' + std::to_string(now.where.line);
    if (const optionfacts* through = of.option(now.through))
      text += " by " + inquotes(through->name);
    text += '\n';
  }
  return text;
}

std::string optiontext(const subject& of, std::int32_t option) {
  return helpof(of, option) + setnow(of, option);
}

/// The text of the value of an enumeration; else that of its option.
std::string valuetext(const subject& of, const mark& at) {
  const optionfacts* option = of.option(at.option);
  if (option == nullptr) return {};
  for (const optxv::valuefacts& each : option->values)
    if (samename(each.value, of.textat(at)))
      return externalform(each.value) + ": " + printable(each.help) + '\n';
  return optiontext(of, at.option);
}

std::string grouptext(const subject& of, const mark& at) {
  for (const optxv::groupfacts& each : of.table.facts.groups)
    if (std::to_string(each.number) == of.textat(at))
      return "group " + printable(each.name) + ": " + printable(each.title) + '\n';
  return {};
}

std::string fieldtext(const subject& of, const mark& at) {
  std::string text(fieldwords[static_cast<std::size_t>(at.number)]);
  if (!text.empty()) text += '\n';
  if (at.number == optxv_field_group) text += grouptext(of, at);
  if (at.number == optxv_field_type) {
    const std::string word = folded(of.textat(at).substr(0, of.textat(at).find('.')));
    if (const recordform* form = recordformof(word))
      text += std::string(form->word) + ' ' + std::string(form->fields) + '\n' +
              (form->lines.empty() ? "" : "then lines of: " + std::string(form->lines) + '\n');
  }
  return text;
}

answer answerat(const subject& of) {
  answer found;
  const auto [begin, end] = marksin(of.marks, of.line);
  for (auto each = begin; each != end; ++each) {
    if (!each->touches(of.line, of.column) || each->length == 0) continue;
    std::string text;
    if (each->kind == markkind::field) text = fieldtext(of, *each);
    if (each->kind == markkind::value) text = valuetext(of, *each);
    if (each->kind == markkind::key || each->kind == markkind::attribute ||
        each->kind == markkind::reference ||
        (each->kind == markkind::declared && each->number == optxv_declared_option))
      text = optiontext(of, each->option);
    const bool better = found.about == nullptr || each->kind != markkind::field;
    if (!text.empty() && better) found = {std::move(text), &*each};
  }
  return found;
}

/// A block of text as it is; what would end it in Markdown looks like it and does not.
std::string fenced(std::string text) {
  for (std::size_t at = text.find("```"); at != text.npos; at = text.find("```"))
    text.replace(at, 3, "'''");
  return "```text\n" + text + "```";
}

}  // namespace

json hover(session& in, const json& params) {
  positionfrom(member(params, "position"));
  const auto of = subjectof(in, params);
  if (!of) return nullptr;
  const answer found = answerat(*of);
  if (found.about == nullptr) return nullptr;
  const json content = {{"kind", in.client.markdown ? "markdown" : "plaintext"},
                        {"value", in.client.markdown ? fenced(found.text) : found.text}};
  return {{"contents", content}, {"range", rangejson(of->text(), *found.about, in.counts)}};
}

}  // namespace command
