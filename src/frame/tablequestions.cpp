// The functions of the second public header that tell what a table holds.

#include <type_traits>

#include "foundation/strutilx.h"
#include "frame/status.h"
#include "options/optionkinds.h"

using namespace optxv;

namespace {

/// Calls use with the option of a number.
template <class Use>
std::int32_t withoption(optxv_handle handle, std::int32_t number, Use use) noexcept {
  return withobject(handle, [&](tzmaoptions& options) -> std::int32_t {
    const toption* const option = options.getobjects(positionin(number, options.getcount()));
    return option == nullptr ? optxv_unknown : use(options, *option);
  });
}

// Bounds and default -----------------------------------------------------------------------------

void fillvalues(const tintoption& option, optxv_option& out) {
  out.default_integer = option.defaultvalue;
  out.low_integer = option.lowbound;
  out.high_integer = option.highbound;
}
void fillvalues(const tdbloption& option, optxv_option& out) {
  out.default_real = option.defaultvalue;
  out.low_real = option.lowbound;
  out.high_real = option.highbound;
}
void fillvalues(const tbooleanoption& option, optxv_option& out) {
  out.default_integer = option.defaultvalue;
  out.high_integer = 1;
}
void fillvalues(const tenumintoption& option, optxv_option& out) {
  out.default_integer = option.defaultvalue;
  out.low_integer = INT32_MIN;
  out.high_integer = INT32_MAX;
}
void fillvalues(const tstringoption& option, optxv_option& out) {
  out.default_text = endedtext(option.defaultvalue);
}
void fillvalues(const tenumstroption& option, optxv_option& out) {
  out.default_text = endedtext(option.defaultvalue);
}
void fillvalues(const toption&, optxv_option&) {}

// Items ------------------------------------------------------------------------------------------

std::int32_t itemsof(const toption& option) {
  return withkind(option, [](const auto& typed) -> std::int32_t {
    if constexpr (requires { typed.enumitems; }) return typed.enumitems.count();
    if constexpr (requires { typed.members; }) return typed.members.count();
    if constexpr (requires { typed.item(0).size(); }) return typed.count();
    return 0;
  });
}

optxv_item itemwithhelp(const toptionx& help) {
  optxv_item item = {};
  item.helpcontext = help.helpcontext;
  item.help = endedtext(help.helptext);
  return item;
}

optxv_item itemof(tzmaoptions& options, const tenumintoption& option, std::int32_t at) {
  const tlistoptionx& value = option.item(at);
  optxv_item item = itemwithhelp(value);
  item.integer = value.itemvalue;
  item.text = endedtext(options.keeptext(inttostr(value.itemvalue)));
  return item;
}

optxv_item itemof(tzmaoptions&, const tenumstroption& option, std::int32_t at) {
  optxv_item item = itemwithhelp(*objectof<toptionx>(option.enumitems.getobject(at)));
  item.text = endedtext(option.enumitems.getname(at));
  return item;
}

optxv_item memberitem(const tzmaoptions& options, std::int32_t position) {
  optxv_item item = {};
  item.option = position + 1;
  item.text = endedtext(options.getstrings(position));
  item.help = endedtext({});
  return item;
}

optxv_item itemof(tzmaoptions& options, const tmultilistoption& option, std::int32_t at) {
  return memberitem(options, option.member(at));
}

optxv_item itemof(tzmaoptions& options, const tmacrooption& option, std::int32_t at) {
  return memberitem(options, option.member(at)->position);
}

optxv_item itemof(tzmaoptions&, const tstrlistoption& option, std::int32_t at) {
  optxv_item item = {};
  item.text = endedtext(option.item(at));
  item.help = endedtext({});
  return item;
}

// Marks ------------------------------------------------------------------------------------------

std::int32_t marksof(const toption& option) {
  return (option.marked(markDeprecatedOption) ? optxv_mark_deprecated : 0) |
         (option.marked(markObsoleteOption) ? optxv_mark_obsolete : 0);
}

std::int32_t flagsof(const synonymmarks& marks) {
  return (marks.obsolete ? optxv_mark_obsolete : 0) |
         (marks.deprecated ? optxv_mark_deprecated : 0);
}

// The mark of a table ----------------------------------------------------------------------------

bool madeatruntime(const tzmaoptions& options, std::int32_t position) {
  return options.getstrings(position).starts_with("--");
}

}  // namespace

int32_t optxv_option_count(optxv_handle handle) {
  return handle == nullptr ? 0 : objectof(handle).getcount();
}

int32_t optxv_option_info(optxv_handle handle, int32_t number, optxv_option* option) {
  return withoption(handle, number, [&](const tzmaoptions& options, const toption& from) {
    if (option == nullptr) return optxv_bad_argument;
    optxv_option out = {};
    out.kind = from.opttype;
    out.takes = from.subtype;
    out.data = kindof(from).data;
    out.reference = from.refnr;
    out.group = from.group;
    out.helpcontext = from.helpcontext;
    out.marks = marksof(from);
    out.defined = from.defined;
    out.recent = from.recent;
    out.items = itemsof(from);
    out.helplines = from.bigtext ? from.bigtext->count() : 0;
    out.runtime = madeatruntime(options, number - 1) ? 1 : 0;
    out.default_text = endedtext({});
    out.name = endedtext(options.getstrings(number - 1));
    out.help = endedtext(from.helptext);
    out.markedtext = endedtext(from.deprecatedtext());
    withkind(from, [&](const auto& typed) { fillvalues(typed, out); });
    *option = out;
    return optxv_ok;
  });
}

int32_t optxv_item_info(optxv_handle handle, int32_t number, int32_t position, optxv_item* item) {
  return withoption(handle, number, [&](tzmaoptions& options, const toption& option) {
    const std::int32_t at = positionin(position, itemsof(option));
    if (at < 0) return optxv_unknown;
    if (item == nullptr) return optxv_bad_argument;
    withkind(option, [&](const auto& typed) {
      if constexpr (requires { itemof(options, typed, at); }) *item = itemof(options, typed, at);
    });
    return optxv_ok;
  });
}

int32_t optxv_help_line(optxv_handle handle, int32_t number, int32_t position, optxv_text* line) {
  return withoption(handle, number, [&](const tzmaoptions&, const toption& option) {
    const std::int32_t at = positionin(position, option.bigtext ? option.bigtext->count() : 0);
    if (at < 0) return optxv_unknown;
    if (line == nullptr) return optxv_bad_argument;
    *line = endedtext(option.bigtext->get(at));
    return optxv_ok;
  });
}

int32_t optxv_group_count(optxv_handle handle) {
  return handle == nullptr ? 0 : objectof(handle).getgroupcount();
}

int32_t optxv_group_info(optxv_handle handle, int32_t position, optxv_group* group) {
  return withobject(handle, [&](const tzmaoptions& options) {
    const std::int32_t at = positionin(position, options.getgroupcount());
    if (at < 0) return optxv_unknown;
    if (group == nullptr) return optxv_bad_argument;
    const tgroupobj& from = *options.groupat(at);
    *group = {.number = from.groupnr,
              .helpcontext = from.helpcontext,
              .name = endedtext(options.grouplist.getname(at)),
              .help = endedtext(from.helptext)};
    return optxv_ok;
  });
}

int32_t optxv_synonym_count(optxv_handle handle) {
  return handle == nullptr ? 0 : objectof(handle).optsynonymcount();
}

int32_t optxv_synonym_info(optxv_handle handle, int32_t position, optxv_synonym* synonym) {
  return withobject(handle, [&](const tzmaoptions& options) {
    const std::int32_t at = positionin(position, options.synonymlist.count());
    if (at < 0) return optxv_unknown;
    if (synonym == nullptr) return optxv_bad_argument;
    const synonymmarks marks = options.marksof(at);
    *synonym = {.option = options.synonymposition(at) + 1,
                .marks = flagsof(marks),
                .name = endedtext(options.synonymlist.getname(at)),
                .markedtext = endedtext(marks.text)};
    return optxv_ok;
  });
}

uint64_t optxv_table_mark(optxv_handle handle) {
  if (handle == nullptr) return bytehash().value();
  tzmaoptions& options = objectof(handle);
  for (; options.markedoptions < options.getcount(); ++options.markedoptions) {
    const std::int32_t position = options.markedoptions;
    if (madeatruntime(options, position)) continue;
    const toption& option = *options.getobjects(position);
    const shortstring name = lowercase(options.getstrings(position));
    for (const char each : name.view()) options.markhash.add(static_cast<unsigned char>(each));
    options.markhash.add(0);
    options.markhash.add(option.opttype);
    options.markhash.add(option.subtype);
  }
  return options.markhash.value();
}
