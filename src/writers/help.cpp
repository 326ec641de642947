#include "writers/help.h"

#include <algorithm>
#include <numeric>
#include <unordered_map>
#include <utility>
#include <vector>

#include "foundation/numtext.h"
#include "foundation/runtime.h"
#include "foundation/strutilx.h"
#include "foundation/textfile.h"
#include "options/optionkinds.h"
#include "options/zmaoptions.h"
#include "writers/valueforms.h"

namespace optxv {

namespace {

constexpr int namecolumn = 22;
constexpr int definitioncolumn = 24;

/// A name without the digits at its end, and those as a number, 0 where there are none.
struct numberedname {
  explicit numberedname(std::string_view name)
      : text(name.substr(0, name.find_last_not_of("0123456789") + 1)),
        number(strasint(name.substr(text.size()))) {}
  std::string_view text;
  std::int32_t number;
};

}  // namespace

int tmysortstringlist::compare(std::int32_t i, std::int32_t j) {
  const numberedname first(getname(i));
  const numberedname second(getname(j));
  const int difference = strucmp(first.text, second.text);
  // Neither number is negative, so their difference is in range.
  return difference != 0 ? difference : first.number - second.number;
}

namespace {

/// Writes help into the queue of one object; one run of optshowhelp.
class helpwriter {
 public:
  explicit helpwriter(tzmaoptions& options) : options_(options) {}

  /// The block of one option: its name and help, its kind with range and default, its long help or
  /// its allowed values.
  void writedefinition(const toption& option);
  /// The parts of the listing that the bits of a mode select.
  void list(std::int32_t mode);
  /// A line that says for which option a synonym stands.
  void synonymline(std::string_view synonym, std::string_view name);

 private:
  /// Appends a piece to the line.
  /// KEEP: an empty piece ends the line where it stands, so that an empty field ends it early.
  void addbuf(std::string_view piece) {
    if (!piece.empty()) {
      line_.append(piece);
    } else if (!line_.empty()) {
      options_.addmessage(optMsgHelp, line_);
      line_.clear();
    }
  }
  template <class... Pieces>
  void addline(const Pieces&... pieces) {
    (addbuf(pieces), ...);
    addbuf({});
  }
  void blankline() {
    addbuf({});
    options_.addmessage(optMsgHelp, {});
  }
  void indent(std::string_view piece = {}) {
    addbuf(blankstr(definitioncolumn));
    if (!piece.empty()) addbuf(piece);
  }

  void collect();
  void sort();
  const toption* optionof(std::int32_t entry) const;
  std::unordered_map<std::int32_t, std::vector<std::int32_t>> entriesbygroup() const;
  void summary(bool marks);
  void entryline(std::int32_t entry, const toption& option, bool marks);
  shortstring entryname(std::int32_t entry, const toption& option, bool marks) const;
  void definitions();
  void debuglisting() const;
  void kindfields(const toption& option);
  void kindlines(const toption& option);
  void bigtextlines(const toption& option);
  void itemlines(const tenumstroption& option);
  void itemlines(const tenumintoption& option);

  tzmaoptions& options_;
  tmysortstringlist items_;
  shortstring line_;
};

void helpwriter::synonymline(std::string_view synonym, std::string_view name) {
  addline(synonym, " is a synonym for ", name);
}

// --- The definition of one option --------------------------------------------------------------

void helpwriter::writedefinition(const toption& option) {
  addline(option.getname(), ": ", option.helptext.view());
  indent(kindof(option).keyword);
  addbuf(", ");
  kindfields(option);
  addbuf({});
  kindlines(option);
}

void helpwriter::kindfields(const toption& option) {
  withkind(option, [this](const auto& typed) {
    using Option = std::remove_cvref_t<decltype(typed)>;
    const auto pieces = [this](const auto&... piece) { (addbuf(piece), ...); };
    if constexpr (boundedkind<Option>)
      pieces(" range: ", numberform(typed.lowbound), " to ", numberform(typed.highbound),
             " default: ", defaultform(typed));
    else if constexpr (std::is_same_v<Option, tenumintoption>)  // KEEP: here a limit has its name
      pieces(" default: ", numberform(typed.defaultvalue));
    else if constexpr (integerkind<Option>)
      pieces(" default: ", defaultform(typed));
    else if constexpr (scalarkind<Option>)
      pieces(" default: ", "\"", typed.defaultvalue.view(), "\"");
  });
}

void helpwriter::kindlines(const toption& option) {
  withkind(option, [this](const auto& typed) {
    using Option = std::remove_cvref_t<decltype(typed)>;
    if constexpr (enumerationkind<Option>)
      itemlines(typed);
    else if constexpr (integerkind<Option> || doublekind<Option>)
      bigtextlines(typed);
  });
}

void helpwriter::bigtextlines(const toption& option) {
  if (!option.bigtext) return;
  for (std::int32_t i = 0; i < option.bigtext->count(); ++i) {
    indent();
    addline(option.bigtext->get(i));
  }
}

void helpwriter::itemlines(const tenumstroption& option) {
  std::size_t longest = 0;
  for (std::int32_t i = 0; i < option.enumitems.count(); ++i)
    longest = std::max(longest, option.enumitems.getname(i).size());
  for (std::int32_t i = 0; i < option.enumitems.count(); ++i) {
    indent("   ");
    addline(padright(option.enumitems.getname(i), static_cast<int>(longest) + 1), " ",
            objectof<toptionx>(option.enumitems.getobject(i))->helptext.view());
  }
}

void helpwriter::itemlines(const tenumintoption& option) {
  std::int32_t largest = 0;
  for (std::int32_t i = 0; i < option.enumitems.count(); ++i)
    largest = std::max(largest, option.item(i).itemvalue);
  for (std::int32_t i = 0; i < option.enumitems.count(); ++i) {
    indent("    ");
    addline(inttostrw(option.item(i).itemvalue, largest > 99 ? 3 : 2), " ",
            option.item(i).helptext.view());
  }
}

// --- The listing -------------------------------------------------------------------------------

void helpwriter::list(std::int32_t mode) {
  collect();
  if ((mode & helpSummary) != 0) summary((mode & helpMarks) != 0);
  if ((mode & helpDefinitions) != 0) definitions();
  if ((mode & helpDebug) != 0 && options_.printing) debuglisting();
}

/// Gathers and sorts what the listings show: options and synonyms with a help context and a group.
void helpwriter::collect() {
  const auto shown = [](const toption* option) {
    return option != nullptr && option->helpcontext > 0 && option->group > 0;
  };
  for (std::int32_t i = 0; i < options_.getcount(); ++i)
    if (toption* option = options_.getobjects(i); shown(option))
      items_.addobject(options_.getstrings(i), ownedobject(option));
  for (std::int32_t i = 0; i < options_.synonymlist.count(); ++i)
    if (shown(options_.synonymtarget(i))) items_.add(options_.synonymlist.getname(i));
  sort();
}

/// Sorts the entries. Where no two are alike only one order is right, and a sort finds it that no
/// order of the names makes slow. Only where some are alike do the steps of the list's own sort
/// decide.
void helpwriter::sort() {
  std::vector<std::int32_t> order(static_cast<std::size_t>(items_.count()));
  std::iota(order.begin(), order.end(), 0);
  std::sort(order.begin(), order.end(),
            [this](std::int32_t i, std::int32_t j) { return items_.compare(i, j) < 0; });
  const auto alike = [this](std::int32_t i, std::int32_t j) { return items_.compare(i, j) == 0; };
  if (std::adjacent_find(order.begin(), order.end(), alike) != order.end())
    return items_.sortn(items_.count());
  // Each place gets its entry from the next place of its cycle, and is then its own.
  for (std::int32_t start = 0; start < items_.count(); ++start) {
    std::int32_t place = start, next = start;
    while ((next = std::exchange(order[static_cast<std::size_t>(place)], place)) != start) {
      items_.exchange(place, next);
      place = next;
    }
  }
}

/// The option of an entry, for a synonym the one it stands for: nil if the first synonym of that
/// name has none, which a faulty definition can cause.
const toption* helpwriter::optionof(std::int32_t entry) const {
  if (void* option = items_.getobject(entry)) return objectof<toption>(option);
  return options_.synonymtarget(options_.synonymindex.find(items_.getname(entry)));
}

/// The entries of each group number, in their order.
std::unordered_map<std::int32_t, std::vector<std::int32_t>> helpwriter::entriesbygroup() const {
  std::unordered_map<std::int32_t, std::vector<std::int32_t>> entries;
  for (std::int32_t entry = 0; entry < items_.count(); ++entry)
    if (const toption* option = optionof(entry)) entries[option->group].push_back(entry);
  return entries;
}

void helpwriter::summary(bool marks) {
  auto entries = entriesbygroup();
  blankline();
  addbuf("Options summary by group");
  for (std::int32_t g = 0; g < options_.getgroupcount(); ++g) {
    const tgroupobj& group = *options_.groupat(g);
    if (group.helpcontext <= 0) continue;
    blankline();
    addline(group.helptext.view());
    for (const std::int32_t entry : entries[group.groupnr])
      entryline(entry, *optionof(entry), marks);
  }
}

shortstring helpwriter::entryname(std::int32_t entry, const toption& option, bool marks) const {
  shortstring name = options_.nounderscore(items_.getname(entry));
  if (items_.getobject(entry) == nullptr)
    name = concat(name, " (Synonym for ", option.getname(), ")");
  if (!marks || option.deprecation == 0) return name;
  const bool deprecated =
      option.marked(markDeprecatedOption) || option.marked(markDeprecatedSynonym);
  return name.append(deprecated ? " (Deprecated)" : " (Obsolete)");
}

void helpwriter::entryline(std::int32_t entry, const toption& option, bool marks) {
  const shortstring name = entryname(entry, option, marks);
  if (name.length() > namecolumn) {
    addline(name);
    addbuf(blankstr(namecolumn));
  } else {
    addbuf(padright(name, namecolumn));
  }
  addline(": ", option.helptext.view());
}

void helpwriter::definitions() {
  blankline();
  addline("Options in alphabetical order");
  blankline();
  for (std::int32_t entry = 0; entry < items_.count(); ++entry)
    if (items_.getobject(entry) != nullptr) writedefinition(*optionof(entry));
}

/// The one thing that the option functions ever print, and only when asked to.
void helpwriter::debuglisting() const {
  textfile output;
  output.rewrite();
  output.writeln();
  for (std::int32_t entry = 0; entry < items_.count(); ++entry) {
    output.write(items_.getname(entry));
    output.write(items_.getobject(entry) == nullptr ? " *****Nil = Syn\n" : " \n");
  }
  output.close();
  ioresult();  // nobody is told of a failure
}

}  // namespace

void tzmaoptions::optshowhelp(std::string_view helpstr) {
  static constexpr charset blank(" ");
  const shortstring request = replacechar(blank, '_', helpstr);
  helpwriter writer(*this);
  int code = 0;
  const std::int32_t number = _Q9_Val_SPD(request, code);
  if (code == 0) return writer.list(number < 1 ? helpSummary | helpDefinitions : number);
  const toption* option = optionasobj(request);
  if (option == nullptr) return writer.list(helpSummary);
  const shortstring name = option->getname();
  if (!struequal(helpstr, name)) writer.synonymline(helpstr, name);
  writer.writedefinition(*option);
}

}  // namespace optxv
