#include "writers/facts.h"

#include <utility>

#include "options/zmaoptions.h"
#include "writers/valueforms.h"

namespace optxv {

namespace {

std::string text(std::string_view bytes) {
  return std::string(bytes);
}

valuefacts valueof(std::string_view value, const toptionx& item) {
  return {text(value), item.helpcontext, text(item.helptext)};
}

void values(const tenumstroption& option, optionfacts& facts) {
  for (std::int32_t i = 0; i < option.enumitems.count(); ++i)
    facts.values.push_back(valueof(strexternal(option.enumitems.getname(i)),
                                   *objectof<toptionx>(option.enumitems.getobject(i))));
}

void values(const tenumintoption& option, optionfacts& facts) {
  for (std::int32_t i = 0; i < option.enumitems.count(); ++i)
    facts.values.push_back(valueof(numberform(option.item(i).itemvalue), option.item(i)));
}

template <scalarkind Option>
void ownfacts(const Option& option, optionfacts& facts) {
  facts.hasdefault = true;
  facts.defaultvalue = defaultform(option).view();
  if constexpr (boundedkind<Option>) {
    facts.low = numberform(option.lowbound).view();
    facts.high = numberform(option.highbound).view();
  }
  if constexpr (enumerationkind<Option>) values(option, facts);
}

void ownfacts(const tmultilistoption& option, optionfacts& facts) {
  for (std::int32_t i = 0; i < option.members.count(); ++i)
    if (const toption* member = option.owner->getobjects(option.member(i)))
      facts.members.push_back(text(member->optname));
}

void ownfacts(const tmacrooption& option, optionfacts& facts) {
  for (std::int32_t i = 0; i < option.members.count(); ++i)
    facts.members.push_back(text(option.member(i)->optname));
}

void ownfacts(const timmediateoption& option, optionfacts& facts) {
  facts.action = immediatetypenames[option.immediatekind];
}

void ownfacts(const tstrlistoption&, optionfacts&) {}

void deprecation(const toption& option, optionfacts& facts) {
  facts.deprecated = option.marked(markDeprecatedOption);
  facts.obsolete = option.marked(markObsoleteOption);
  facts.deprecatedtext = option.deprecatedtext();
  facts.synonymdeprecated = option.marked(markDeprecatedSynonym);
  facts.synonymobsolete = option.marked(markObsoleteSynonym);
  facts.synonymdeprecatedtext = option.synonymdeprecatedtext();
}

optionfacts factsof(const toption& option) {
  optionfacts facts;
  facts.tablename = option.optname.view();
  facts.name = option.getname().view();
  facts.kind = kindof(option).keyword;
  facts.modifier = strtypemodifier[option.subtype].modifier;
  facts.refnr = option.refnr;
  facts.helpcontext = option.helpcontext;
  facts.group = option.group;
  facts.help = option.helptext.view();
  for (std::int32_t i = 0; option.bigtext && i < option.bigtext->count(); ++i)
    facts.longhelp.push_back(text(option.bigtext->get(i)));
  withkind(option, [&](const auto& typed) { ownfacts(typed, facts); });
  deprecation(option, facts);
  return facts;
}

/// The synonyms, each with its option; those of an option that was not found are left out.
void addsynonyms(const tzmaoptions& options, tablefacts& table) {
  for (std::int32_t i = 0; i < options.synonymlist.count(); ++i)
    if (const std::int32_t position = options.synonymposition(i); position >= 0) {
      const synonymmarks marks = options.marksof(i);
      table.options[static_cast<std::size_t>(position)].synonyms.push_back(
          {.name = std::string(options.nounderscore(options.synonymlist.getname(i)).view()),
           .deprecated = marks.deprecated,
           .obsolete = marks.obsolete,
           .text = std::string(marks.text.view())});
    }
}

groupfacts factsof(const tzmaoptions& options, std::int32_t position) {
  const tgroupobj& group = *options.groupat(position);
  return {text(options.grouplist.getname(position)), group.groupnr, group.helpcontext,
          text(group.helptext)};
}

}  // namespace

tablefacts describe(const tzmaoptions& options) {
  tablefacts table;
  for (std::int32_t i = 0; i < options.getcount(); ++i)
    table.options.push_back(factsof(*options.getobjects(i)));
  addsynonyms(options, table);
  for (std::int32_t i = 0; i < options.getgroupcount(); ++i)
    table.groups.push_back(factsof(options, i));
  table.indicatorkey = options.indicatorkey.view();
  return table;
}

std::string numbertext(std::int32_t number) {
  return text(numberform(number));
}

std::string numbertext(double number) {
  return text(numberform(number));
}

}  // namespace optxv
