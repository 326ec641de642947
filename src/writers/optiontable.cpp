// tzmaoptionwriter::writeashtml, and the writer's constructor and destructor.

#include "options/zmaoptions.h"
#include "writers/htmlwr.h"
#include "writers/optionwriter.h"
#include "writers/valueforms.h"

namespace optxv {

namespace {

/// Writes the rows of one table. BORROWS: the document and the options.
class tablerows {
 public:
  tablerows(thtmlwrite& page, const tzmaoptions& options) : page_(page), options_(options) {}

  void head() {
    row("Option", "Type", "UserMap", "Default", "Low", "High", "Group", "Hc", "Help Text");
  }
  void option(std::int32_t position);
  void synonym(std::int32_t position) {
    row(options_.synonymlist.getname(position), "synonym",
        options_.getstrings(options_.synonymposition(position)));
  }

 private:
  template <class... Cells>
  void cells(const Cells&... texts) {
    (page_.addcell(texts), ...);
  }
  template <class... Cells>
  void row(const Cells&... texts) {
    page_.startrow();
    cells(texts...);
    page_.endrow();
  }
  /// Ends the row of an option with its value cells and what all options have.
  void finish(const toption& option, std::string_view defaultvalue, std::string_view low = {},
              std::string_view high = {}) {
    cells(defaultvalue, low, high, inttostrex(option.group), inttostr(option.helpcontext),
          option.helptext);
    page_.endrow();
  }

  template <scalarkind Option>
  void rest(const Option& option);
  void rest(const tmultilistoption& option);
  void rest(const timmediateoption& option) {
    finish(option, immediatetypenames[option.immediatekind]);
  }
  // KEEP: the rows of these two end after three cells, and are never closed.
  void rest(const tstrlistoption&) {}
  void rest(const tmacrooption&) {}

  void entries(const tenumstroption& option);
  void entries(const tenumintoption& option);
  void entry(std::string_view value, const toptionx& item) {
    cells("", "", "", value, "", "", "", inttostr(item.helpcontext), item.helptext);
  }

  thtmlwrite& page_;
  const tzmaoptions& options_;
};

void tablerows::option(std::int32_t position) {
  const toption& option = *options_.getobjects(position);
  page_.startrow();
  cells(option.optname, kindof(option).keyword, inttostr(option.refnr));
  withkind(option, [this](const auto& typed) { rest(typed); });
}

template <scalarkind Option>
void tablerows::rest(const Option& option) {
  if constexpr (boundedkind<Option>)
    finish(option, defaultform(option), numberform(option.lowbound), numberform(option.highbound));
  else
    finish(option, defaultform(option));
  if constexpr (enumerationkind<Option>) entries(option);
}

void tablerows::rest(const tmultilistoption& option) {
  finish(option, {});
  for (std::int32_t i = 0; i < option.members.count(); ++i)
    row("", "", options_.getstrings(option.member(i)));
}

void tablerows::entries(const tenumstroption& option) {
  for (std::int32_t i = 0; i < option.enumitems.count(); ++i) {
    page_.startrow();
    entry(option.enumitems.getname(i), *objectof<toptionx>(option.enumitems.getobject(i)));
    page_.endrow();
  }
}

/// KEEP: one row is opened for all of them, and each closes it.
void tablerows::entries(const tenumintoption& option) {
  page_.startrow();
  for (std::int32_t i = 0; i < option.enumitems.count(); ++i) {
    entry(inttostr(option.item(i).itemvalue), option.item(i));
    page_.endrow();
  }
}

void writetable(thtmlwrite& page, const tzmaoptions& options) {
  page.starttable(true);
  tablerows rows(page, options);
  rows.head();
  for (std::int32_t i = 0; i < options.getcount(); ++i) rows.option(i);
  for (std::int32_t i = 0; i < options.synonymlist.count(); ++i) rows.synonym(i);
  page.endtable();
  page.close();
}

}  // namespace

tzmaoptionwriter::tzmaoptionwriter(const tzmaoptions& options) : options_(options) {}

tzmaoptionwriter::~tzmaoptionwriter() = default;

void tzmaoptionwriter::writeashtml(std::string_view fname) const {
  thtmlwrite page(fname);
  writetable(page, options_);
}

std::string tzmaoptionwriter::htmltext() const {
  std::string text;
  thtmlwrite page(inmemory{text});
  writetable(page, options_);
  return text;
}

}  // namespace optxv
