// What a definition left in an option object, as text.
#pragma once

#include "support/optiontable.h"

namespace optxv {

/// A text of a row whole: "~" is a name of 64 characters, "^" and "%" are a record.
inline std::string longer(const std::string& text) {
  const std::string named = replaced(text, "~", std::string(64, 'n'));
  return replaced(replaced(named, "^", "l strlist 1 0 0"), "%", "x integer 1 0 0 9 0 0");
}

/// A text with single blanks, and none at the end.
inline std::string flat(std::string text) {
  while (text.find("  ") != text.npos) text = replaced(text, "  ", " ");
  if (text.ends_with(' ')) text.pop_back();
  return text;
}

/// What the table holds behind number 1, a line an option and one for each thing in it.
inline lines described(optiontable& table) {
  lines all;
  const auto add = [&](const auto&... parts) { all.push_back((str(parts) + ...)); };
  const auto n = [](std::int32_t number) { return std::to_string(number) + " "; };
  const auto help = [&](const toptionx& o) { return n(o.helpcontext) + str(o.helptext); };
  for (std::int32_t i = 1; i < table->getcount(); ++i) {
    const toption& o = *table->getobjects(i);
    static const char* const kinds[] = {"int",  "dbl",   "str",  "bool",  "estr",
                                        "eint", "mlist", "list", "macro", "imm"};
    static const char* const modifiers[] = {" ", ".NV ", ".OPT ", ".TWO "};
    std::string value = o.opttype <= optTypeEnumInt ? "'" + str(o.getasstring()) + "' " : "";
    if (const auto* integer = dynamic_cast<const tintoption*>(&o))
      value = str(o.getasstring()) + " " + n(integer->lowbound) + n(integer->highbound);
    if (const auto* real = dynamic_cast<const tdbloption*>(&o))
      value = joined(
          {str(o.getasstring()), str(dbltostr(real->lowbound)), str(dbltostr(real->highbound)), ""},
          " ");
    if (const auto* acting = dynamic_cast<const timmediateoption*>(&o))
      value = n(acting->immediatekind);
    add(o.optname, " ", kinds[o.opttype], modifiers[o.subtype], n(o.refnr), value, n(o.helpcontext),
        n(o.group), o.helptext);
    for (std::int32_t k = 0; o.bigtext && k < o.bigtext->count(); ++k)
      add("  | ", o.bigtext->get(k));
    if (const auto* texts = dynamic_cast<const tenumstroption*>(&o))
      for (std::int32_t k = 0; k < texts->enumitems.count(); ++k)
        add("  - ", texts->enumitems.getname(k), " ",
            help(*objectof<toptionx>(texts->enumitems.getobject(k))));
    if (const auto* numbers = dynamic_cast<const tenumintoption*>(&o))
      for (std::int32_t k = 0; k < numbers->enumitems.count(); ++k)
        add("  - ", n(numbers->item(k).itemvalue), help(numbers->item(k)));
    if (const auto* spread = dynamic_cast<const tmultilistoption*>(&o))
      for (std::int32_t k = 0; k < spread->members.count(); ++k)
        add("  - ", std::to_string(spread->member(k)));
    if (const auto* macro = dynamic_cast<const tmacrooption*>(&o))
      for (std::int32_t k = 0; k < macro->members.count(); ++k)
        add("  - ", macro->member(k)->optname);
    if (o.deprecation != 0)
      add("  ! ", n(o.deprecation), o.deprecatedtext, ";", o.synonymdeprecatedtext);
  }
  return all;
}

}  // namespace optxv
