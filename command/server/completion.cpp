#include "server/completion.h"

#include <algorithm>
#include <filesystem>
#include <set>

#include "options/optionkinds.h"
#include "options/zmaoptions.h"
#include "server/uris.h"
#include "text/names.h"
#include "text/printable.h"

namespace command {
namespace {

using optxv::optionfacts;

// The kinds of the protocol.
enum itemkind {
  variableitem = 6,
  optionitem = 10,
  valueitem = 12,
  wordkind = 14,
  fileitem = 17,
  folderitem = 19,
  memberitem = 20
};

/// Something that can be written.
struct offer {
  std::string label;
  int kind = optionitem;
  std::string detail = {}, documentation = {};
  std::string text = {};     ///< to be written; the label if it is empty
  std::string snippet = {};  ///< the same with places to fill in, if it has some
  bool deprecated = false;
};

/// Names as they are looked up: case does not count, and a blank is an underscore.
std::string lookedup(std::string_view name) {
  std::string text = folded(name);
  std::ranges::replace(text, ' ', '_');
  return text;
}

/// Text in a snippet, where three characters mean something.
std::string insnippet(std::string_view text) {
  std::string result;
  for (const char c : text) {
    if (c == '$' || c == '}' || c == '\\') result += '\\';
    result += c;
  }
  return result;
}

std::string detailof(const optionfacts& option) {
  std::string text = option.kind;
  if (!option.low.empty()) text += ", " + option.low + " to " + option.high;
  if (option.hasdefault) text += ", default " + option.defaultvalue;
  return text;
}

/// The offers that go where something stands, which they replace.
class offering {
 public:
  offering(const session& in, const subject& of) : in_(in), of_(of), from_(of.offset), to_(from_) {}

  /// What is there already, from its start to where somebody types, and its end.
  void over(const mark& there) {
    from_ = of_.text().offset(there.line, there.column);
    to_ = std::max(of_.offset, of_.text().offset(there.line, there.end()));
  }
  void add(offer one) {
    const std::string typed = lookedup(typedtext()), name = lookedup(one.label);
    if (name.starts_with(typed))
      all_[0].push_back(std::move(one));
    else if (name.find('_' + typed) != name.npos)
      all_[1].push_back(std::move(one));
  }
  /// What is there from its start to where somebody types.
  std::string_view typedtext() const {
    return std::string_view(of_.text().text()).substr(from_, of_.offset - from_);
  }
  json result() const;

 private:
  /// Whether the line goes on after what is replaced: it has its separator and its value then.
  bool followed() const {
    const std::string_view text = of_.text().text();
    return to_ < text.size() && text[to_] != '\n' && text[to_] != '\r';
  }
  json itemof(const offer& one, const json& range, std::size_t rank) const;

  const session& in_;
  const subject& of_;
  std::size_t from_, to_;
  std::array<std::vector<offer>, 2> all_;  ///< those that begin as typed; that have such a word
};

json offering::itemof(const offer& one, const json& range, std::size_t rank) const {
  const bool snippet = in_.client.snippets && !one.snippet.empty() && !followed();
  const std::string& text = one.text.empty() || followed() ? one.label : one.text;
  std::string order = std::to_string(rank);
  order.insert(0, 5 - std::min<std::size_t>(order.size(), 5), '0');
  json row = {{"label", printable(one.label)},
              {"kind", one.kind},
              {"sortText", order},
              {"filterText", one.label},
              {"textEdit", {{"range", range}, {"newText", snippet ? one.snippet : text}}}};
  if (snippet) row["insertTextFormat"] = 2;
  if (!one.detail.empty()) row["detail"] = printable(one.detail);
  if (!one.documentation.empty()) row["documentation"] = printable(one.documentation);
  if (one.deprecated) row["tags"] = {1};
  return row;
}

json offering::result() const {
  const json range = rangejson(of_.text(), from_, to_, in_.counts);
  json items = json::array();
  for (const auto& list : all_)
    for (const offer& one : list)
      if (items.size() < mostoffered) items.push_back(itemof(one, range, items.size()));
  const bool more = all_[0].size() + all_[1].size() > items.size();
  return {{"isIncomplete", more || !typedtext().empty()}, {"items", std::move(items)}};
}

// --- Parameter text

bool takesvalue(const optionfacts& option) {
  return option.modifier != "NV";
}

offer optionoffer(const optionfacts& option, std::string_view name) {
  offer one{.label = std::string(name),
            .detail = detailof(option),
            .documentation = option.help,
            .deprecated = option.deprecated};
  if (!takesvalue(option)) return one;
  const std::string standard = option.hasdefault ? option.defaultvalue : "";
  one.text = one.label + ' ';
  one.snippet = insnippet(name) + (standard.empty() ? " $0" : " ${1:" + insnippet(standard) + '}');
  return one;
}

void offeroptions(const subject& of, offering& to) {
  for (const optionfacts& option : of.table.facts.options) {
    if (option.name.starts_with('.')) continue;
    if (!option.obsolete) to.add(optionoffer(option, option.name));
    for (const optxv::synonymfacts& each : option.synonyms) {
      if (each.obsolete) continue;
      offer one = optionoffer(option, each.name);
      one.detail = "for " + option.name + ": " + one.detail;
      one.deprecated = each.deprecated;
      to.add(std::move(one));
    }
  }
}

/// The symbols of dot options and indicators that the file has somewhere else.
void offersymbols(const subject& of, offering& to) {
  std::set<std::string> names;
  for (const mark& each : of.marks)
    if (each.kind == markkind::symbol && !each.touches(of.line, of.column))
      names.emplace(of.textat(each));
  for (const std::string& name : names)
    to.add({.label = name, .kind = variableitem, .detail = "symbol", .text = name + '.'});
}

void offerattributes(const subject& of, offering& to) {
  for (const optionfacts& option : of.table.facts.options)
    if (option.name.starts_with('.')) {
      offer one = optionoffer(option, option.name);
      one.text = one.label;
      one.snippet.clear();
      to.add(std::move(one));
    }
}

void offerwords(std::initializer_list<std::pair<std::string_view, std::string_view>> words,
                offering& to) {
  for (const auto& [word, detail] : words)
    to.add({.label = std::string(word), .kind = valueitem, .detail = std::string(detail)});
}

void offerbounds(const optionfacts& option, offering& to) {
  std::set<std::string> told;
  const std::pair<const std::string&, const char*> rows[] = {
      {option.defaultvalue, "default"}, {option.low, "lowest"}, {option.high, "highest"}};
  for (const auto& [value, words] : rows)
    if (!value.empty() && told.insert(value).second)
      to.add({.label = value,
              .kind = valueitem,
              .detail = words,
              .documentation = option.low + " to " + option.high});
}

const optionfacts* named(const subject& of, const std::string& tablename) {
  const auto& all = of.table.facts.options;
  const auto found = std::ranges::find(all, tablename, &optionfacts::tablename);
  return found == all.end() ? nullptr : &*found;
}

void offeryesno(offering& to) {
  offerwords({{"1", "yes"}, {"0", "no"}, {"yes", ""}, {"no", ""}, {"on", ""}, {"off", ""}}, to);
}

/// The files of a folder and the folders in it, these with a slash. Names with a dot in front only
/// if hidden is true, and no name with bytes that cannot be shown as they are.
std::set<std::string> filesin(const std::string& folder, bool hidden) {
  constexpr std::size_t mostfiles = 5000;
  std::set<std::string> names;
  std::error_code error;
  std::filesystem::directory_iterator entry(folder, error);
  for (; !error && entry != std::filesystem::directory_iterator() && names.size() < mostfiles;
       entry.increment(error)) {
    std::string name = entry->path().filename();
    if ((name.starts_with('.') && !hidden) || printable(name) != name) continue;
    std::error_code gone;
    const auto status = entry->status(gone);
    const bool isfolder = std::filesystem::is_directory(status);
    if (isfolder) name += '/';
    if (isfolder || std::filesystem::is_regular_file(status)) names.insert(std::move(name));
  }
  return names;
}

/// The name of a file as a value, in the quotes that were begun, or in such as it needs if none
/// were (0). Those of a folder stay open. Empty if the name has the quote in it, which would end it
/// there.
std::string filevalue(const std::string& name, char quote) {
  const bool isfolder = name.ends_with('/');
  const std::string value = quote == 0 ? externalform(name) : quote + name + quote;
  const bool quoted = value != name;
  if (quoted && name.find(value.front()) != name.npos) return {};
  return isfolder && quoted ? value.substr(0, value.size() - 1) : value;
}

/// The files that somebody may mean who has typed the beginning of a name: those of the folder that
/// is typed so far. Names with a dot in front are shown to who types it.
void offerfiles(const subject& of, offering& to) {
  const std::string_view typed = to.typedtext();
  const bool quoted = typed.starts_with('"') || typed.starts_with('\'');
  const std::string_view name = typed.substr(quoted ? 1 : 0);
  const std::size_t slash = name.rfind('/') + 1;  // 0 if there is none
  const std::string front(name.substr(0, slash));
  const std::string folder = pathin(of.what.folder, front.empty() ? "." : front);
  for (const std::string& each : filesin(folder, name.substr(slash).starts_with('.'))) {
    std::string label = filevalue(front + each, quoted ? typed[0] : '\0');
    const bool isfolder = each.ends_with('/');
    if (!label.empty())
      to.add({.label = std::move(label), .kind = isfolder ? folderitem : fileitem});
  }
}

/// A macro or a multi-list hands its value on, so that it takes what its first member does.
void offervalues(const subject& of, const optionfacts& option, offering& to) {
  if (!option.members.empty()) {
    const optionfacts* first = named(of, option.members.front());
    if (first != nullptr && first->members.empty()) offervalues(of, *first, to);
  } else if (!option.values.empty()) {
    for (const optxv::valuefacts& each : option.values)
      to.add({.label = each.value,
              .kind = memberitem,
              .detail = each.value == option.defaultvalue ? "default" : "",
              .documentation = each.help});
  } else if (option.kind == "boolean") {
    offeryesno(to);
  } else if (option.action == "Help") {
    offeroptions(of, to);
  } else if (option.action == "ReadFile") {
    offerfiles(of, to);
  } else if (option.kind == "immediate") {
    if (option.action == "EolFlag" || option.action == "NoBounds") offeryesno(to);
  } else {
    offerbounds(option, to);
  }
}

/// Whether an entry that has its first value may take a second one.
bool takessecond(const optionfacts& option, const mark& last) {
  return option.modifier == "TWO" && last.kind == markkind::value && last.number == 1;
}

void offerkeys(const subject& of, offering& to) {
  offeroptions(of, to);
  offersymbols(of, to);
}

void inparameters(const subject& of, offering& to) {
  const auto [begin, end] = marksin(of.marks, of.line);
  const mark *last = nullptr, *key = nullptr;
  for (auto each = begin; each != end && each->column <= of.column; ++each) {
    if (each->kind == markkind::comment && (each->column < of.column || each->column == 1)) return;
    if (each->kind == markkind::handed || each->kind == markkind::comment) continue;
    if (each->kind == markkind::key) key = &*each;
    if (last == nullptr || each->column < of.column || each->length > 0) last = &*each;
  }
  const bool touched = last != nullptr && last->touches(of.line, of.column);
  if (last == nullptr) return offerkeys(of, to);
  if (touched && last->kind == markkind::symbol) {
    to.over(*last);
    return offersymbols(of, to);
  }
  if (touched && last->kind == markkind::attribute) {
    to.over(*last);
    return offerattributes(of, to);
  }
  const bool iskey = last->kind == markkind::key || last->kind == markkind::wrongkey;
  if (touched && iskey) {
    to.over(*last);
    return offerkeys(of, to);
  }
  const optionfacts* option = key == nullptr ? nullptr : of.option(key->option);
  if (option == nullptr || !last->good) return;
  if (touched && last->kind == markkind::value) to.over(*last);
  const bool begun = last->kind == markkind::value && !touched;
  if (takesvalue(*option) && (!begun || takessecond(*option, *last)))
    return offervalues(of, *option, to);
  if (of.what.tokens) offerkeys(of, to);
}

// --- Definitions

void offertypes(offering& to) {
  for (const recordform& each : recordforms())
    to.add(
        {.label = std::string(each.word),
         .kind = wordkind,
         .detail = std::string(each.fields),
         .documentation = each.lines.empty() ? "" : "then lines of: " + std::string(each.lines)});
}

void offergroups(const subject& of, offering& to) {
  for (const optxv::groupfacts& each : of.table.facts.groups)
    to.add({.label = std::to_string(each.number),
            .kind = valueitem,
            .detail = each.name,
            .documentation = each.title});
}

void offernames(const subject& of, offering& to) {
  for (const optionfacts& option : of.table.facts.options)
    to.add({.label = option.tablename,
            .detail = detailof(option),
            .documentation = option.help,
            .deprecated = option.deprecated});
}

/// The field that somebody types: of those that begin before the place the last one; of several
/// that are missing there, the first.
const mark* typedfield(const subject& of) {
  const auto [begin, end] = marksin(of.marks, of.line);
  const mark* found = nullptr;
  for (auto each = begin; each != end && each->column <= of.column; ++each) {
    if (each->kind != markkind::field) continue;
    const bool missing = each->length == 0;
    const bool touched =
        found != nullptr && found->length > 0 && found->touches(of.line, of.column);
    if (touched || (missing && found != nullptr && found->length == 0)) continue;
    found = &*each;
  }
  return found;
}

/// The default of an enumeration is one of its items, which may stand below already.
void offerdefaults(const subject& of, const mark& field, offering& to) {
  const optionfacts* option = of.option(field.option);
  if (option == nullptr) return;
  for (const optxv::valuefacts& each : option->values)
    to.add({.label = each.value, .kind = memberitem, .documentation = each.help});
  if (option->kind == "boolean") offerwords({{"1", "yes"}, {"0", "no"}}, to);
}

/// The name of a record is its author's own, but for the rule of lookup.
void offerrecords(const subject& of, offering& to) {
  const auto [begin, end] = marksin(of.marks, of.line);
  const bool lookup = std::any_of(begin, end, [&](const mark& each) {
    return each.kind == markkind::field && each.number == optxv_field_type &&
           samename(of.textat(each), "lookup");
  });
  if (!lookup) return;
  for (const std::string_view rule : optxv::lookupcodes)
    to.add({.label = std::string(rule), .kind = wordkind});
}

void offeractions(offering& to) {
  for (const std::string_view action : optxv::immediatetypenames)
    to.add({.label = std::string(action), .kind = wordkind});
}

void indefinition(const subject& of, offering& to) {
  const mark* field = typedfield(of);
  if (field == nullptr) return;
  if (field->length > 0 && field->touches(of.line, of.column)) to.over(*field);
  switch (field->number) {
    case optxv_field_record:
      return offerrecords(of, to);
    case optxv_field_type:
      return offertypes(to);
    case optxv_field_default:
      return offerdefaults(of, *field, to);
    case optxv_field_action:
      return offeractions(to);
    case optxv_field_group:
      return offergroups(of, to);
    case optxv_field_member:
    case optxv_field_target:
    case optxv_field_marked:
      return offernames(of, to);
    default:
      return;
  }
}

}  // namespace

json completion(session& in, const json& params) {
  positionfrom(member(params, "position"));
  const auto of = subjectof(in, params);
  if (!of) return {{"isIncomplete", false}, {"items", json::array()}};
  offering to(in, *of);
  of->what.isdefinition ? indefinition(*of, to) : inparameters(*of, to);
  return to.result();
}

}  // namespace command
