// tzmaoptionwriter::writedefinition.

#include "options/zmaoptions.h"
#include "writers/optionwriter.h"
#include "writers/outfile.h"
#include "writers/valueforms.h"

namespace optxv {

namespace {

constexpr std::int32_t memberwidth = 80;

/// A section of deprecated or obsolete names: its heading, and the marks of which one is enough.
struct outgoing {
  std::string_view heading;
  deprecationmark option;
  deprecationmark synonym;

  bool holds(const toption& candidate) const {
    return candidate.marked(option) || candidate.marked(synonym);
  }
};

constexpr outgoing sections[] = {
    {"ver deprecated options\n", markDeprecatedOption, markDeprecatedSynonym},
    {"ver obsolete options\n", markObsoleteOption, markObsoleteSynonym},
};

/// KEEP: string lists are left out.
bool hasentry(const toption& option) {
  return kindof(option).data != optDataStrList;
}

/// Writes the entries of one document. BORROWS: the file and the options.
class entrywriter {
 public:
  entrywriter(outfile& file, const tzmaoptions& options) : file_(file), options_(options) {}

  void option(const toption& option) {
    head(option);
    withkind(option, [this](const auto& typed) { rest(typed); });
    longhelp(option);
  }
  void synonym(std::int32_t position) {
    file_.put(options_.synonymlist.getname(position), " synonym ",
              options_.getstrings(options_.synonymposition(position)), "\n");
  }
  void section(const outgoing& kind);

 private:
  void head(const toption& option);
  void longhelp(const toption& option);
  /// The end of an entry's first line.
  void numbers(const toption& option) {
    file_.put(" ", inttostr(option.helpcontext), " ", inttostr(option.group), " ", option.helptext,
              "\n");
  }
  void item(std::string_view value, const toptionx& help) {
    file_.put(" ", value, " ", inttostr(help.helpcontext), " ", help.helptext, "\n");
  }

  template <scalarkind Option>
  void rest(const Option& option);
  void rest(const tmultilistoption& option);
  void rest(const tmacrooption& option);
  void rest(const timmediateoption& option);
  void rest(const tstrlistoption&) {}
  void items(const tenumstroption& option);
  void items(const tenumintoption& option);

  outfile& file_;
  const tzmaoptions& options_;
};

void entrywriter::head(const toption& option) {
  const kindrow& kind = kindof(option);
  const std::string_view modifier = strtypemodifier[option.subtype].modifier;
  file_.put(option.optname, " ", kind.keyword, modifier.empty() ? "" : ".", modifier, " ");
  if (kind.usermap) file_.put(inttostr(option.refnr), " ");
}

template <scalarkind Option>
void entrywriter::rest(const Option& option) {
  file_.put(defaultform(option));
  if constexpr (boundedkind<Option>)
    file_.put(" ", numberform(option.lowbound), " ", numberform(option.highbound));
  // KEEP: a second blank where the default is the only field, except for plain strings.
  else if constexpr (integerkind<Option> || enumerationkind<Option>)
    file_.put(" ");
  numbers(option);
  if constexpr (enumerationkind<Option>) items(option);
}

/// The members fill lines of at most memberwidth characters.
void entrywriter::rest(const tmultilistoption& option) {
  numbers(option);
  std::int32_t column = 0;
  for (std::int32_t i = 0; i < option.members.count(); ++i) {
    const std::string_view name = options_.getstrings(option.member(i));
    const std::int32_t width = static_cast<std::int32_t>(name.size()) + 1;
    if (column + width > memberwidth) {
      file_.put("\n");
      column = 0;
    }
    file_.put(" ", name);
    column += width;
  }
  file_.put("\n");
}

void entrywriter::rest(const tmacrooption& option) {
  numbers(option);
  for (std::int32_t i = 0; i < option.members.count(); ++i)
    file_.put(" ", option.member(i)->optname, "\n");
}

/// KEEP: without the group, which every other entry has.
void entrywriter::rest(const timmediateoption& option) {
  file_.put(immediatetypenames[option.immediatekind], " ", inttostr(option.helpcontext), " ",
            option.helptext, "\n");
}

void entrywriter::items(const tenumstroption& option) {
  for (std::int32_t i = 0; i < option.enumitems.count(); ++i)
    item(option.enumitems.getname(i), *objectof<toptionx>(option.enumitems.getobject(i)));
}

void entrywriter::items(const tenumintoption& option) {
  for (std::int32_t i = 0; i < option.enumitems.count(); ++i)
    item(numberform(option.item(i).itemvalue), option.item(i));
}

void entrywriter::longhelp(const toption& option) {
  if (!option.bigtext) return;
  for (std::int32_t i = 0; i < option.bigtext->count(); ++i)
    file_.put("   ", option.bigtext->get(i), "\n");
}

/// KEEP: a name that is marked only as a synonym comes out as the option's, with an empty text.
/// Whether there is a section at all is decided without the string lists; what it holds includes
/// them.
void entrywriter::section(const outgoing& kind) {
  const std::int32_t count = options_.getcount();
  const auto asks = [&](const toption& option) { return hasentry(option) && kind.holds(option); };
  std::int32_t i = 0;
  while (i < count && !asks(*options_.getobjects(i))) ++i;
  if (i == count) return;
  file_.put(kind.heading);
  for (i = 0; i < count; ++i)
    if (const toption& option = *options_.getobjects(i); kind.holds(option))
      file_.put("   ", options_.getstrings(i), "  ", option.deprecatedtext(), "\n");
}

void writedocument(outfile& file, const tzmaoptions& options) {
  entrywriter entries(file, options);
  for (std::int32_t i = 0; i < options.getcount(); ++i)
    if (const toption& option = *options.getobjects(i); hasentry(option)) entries.option(option);
  for (std::int32_t i = 0; i < options.synonymlist.count(); ++i) entries.synonym(i);
  for (const outgoing& kind : sections) entries.section(kind);
  file.close();
}

}  // namespace

void tzmaoptionwriter::writedefinition(std::string_view fname) const {
  outfile file(fname);
  writedocument(file, options_);
}

std::string tzmaoptionwriter::definitiontext() const {
  std::string text;
  outfile file(inmemory{text});
  writedocument(file, options_);
  return text;
}

}  // namespace optxv
