// Lookup and access by name. The operations are declared in zmaoptions.h.

#include "options/optionkinds.h"
#include "options/zmaoptions.h"

namespace optxv {

namespace {

constexpr int pathletters = 3;   // characters that each word of a key must give under Path
constexpr int minosfirst = 3;    // characters of the first word that count under Minos
constexpr int minosletters = 4;  // and of each later word

/// A name that is walked word by word; words are separated by '_'.
class wordwalk {
 public:
  explicit wordwalk(std::string_view text) : text_(text) {}
  bool atend() const { return position_ == text_.size(); }
  void step() { ++position_; }
  char at() const { return text_[position_ - 1]; }
  /// Moves on to the next '_' or the last character; stays where it is if that is a '_'.
  void finishword() {
    while (!atend() && at() != '_') step();
  }

 private:
  std::string_view text_;
  std::size_t position_ = 0;  ///< characters passed; at() is the last of them
};

/// The Path rule: the key has as many words as the name, and each word agrees in at least its first
/// three characters; what follows in a word does not matter.
/// KEEP: a word of fewer than three characters, on either side, never matches.
bool pathmatches(std::string_view keytext, std::string_view nametext) {
  wordwalk key(keytext);
  wordwalk name(nametext);
  int agreed = 0;
  while (!key.atend() && !name.atend()) {
    key.step();
    name.step();
    if (key.at() != '_' && name.at() != '_') {
      if (upcase(key.at()) == upcase(name.at()))
        ++agreed;
      else if (agreed < pathletters)
        return false;
    } else {
      if (agreed < pathletters) return false;
      key.finishword();
      name.finishword();
      agreed = 0;
    }
  }
  if (agreed < pathletters) return false;
  for (wordwalk* side : {&key, &name}) {
    if (side->atend()) continue;
    side->step();
    side->finishword();
  }
  return key.at() != '_' && name.at() != '_';
}

/// Takes the next word off a text: of what follows the next '_', the four characters that count.
/// False if there is none.
bool takeminosword(std::string_view& text, std::string_view& word) {
  const std::size_t underscore = text.find('_');
  if (underscore == std::string_view::npos) return false;
  text.remove_prefix(underscore + 1);
  word = text.substr(0, minosletters);
  word = word.substr(0, word.find('_'));
  return true;
}

/// The Minos rule: the first three characters agree, so does the number of words, and every later
/// word agrees in its first four characters.
bool minosmatches(std::string_view key, std::string_view name) {
  if (!struequal(key.substr(0, minosfirst), name.substr(0, minosfirst))) return false;
  std::string_view keyword;
  std::string_view nameword;
  while (true) {
    const bool keyhas = takeminosword(key, keyword);
    const bool namehas = takeminosword(name, nameword);
    if (keyhas != namehas) return false;
    if (!keyhas) return true;
    if (!struequal(keyword, nameword)) return false;
  }
}

/// The position of the first name in the table that matches the key by a rule, or -1.
std::int32_t firstmatch(const txstringlist& names, std::string_view key,
                        bool (*matches)(std::string_view, std::string_view)) {
  for (std::int32_t i = 0; i < names.count(); ++i)
    if (matches(key, names.getname(i))) return i;
  return -1;
}

/// The two failures of the list operations: no option has the name, or it is no list.
constexpr std::int32_t unknownname = -2;
constexpr std::int32_t notalist = -1;

}  // namespace

std::int32_t tzmaoptions::optlookup(std::string_view name) const {
  switch (lookupmode) {
    case lookupNormal:
      return optionindex.find(name);
    case lookupPath:
      return firstmatch(optionlist, name, pathmatches);
    case lookupMinos:
      return firstmatch(optionlist, name, minosmatches);
    default:
      return -1;
  }
}

toption* tzmaoptions::optionasobj(std::string_view name) {
  curoptname = name;
  const std::int32_t position = optlookup(name);
  if (position >= 0) return getobjects(position);
  const std::int32_t synonym = synonymindex.find(name);
  return synonym >= 0 ? synonymtarget(synonym) : nullptr;
}

void tzmaoptions::setasstring(std::string_view name, std::string_view text) {
  if (toption* option = optionasobj(name)) option->setasstring(text);
}

shortstring tzmaoptions::getasstring(std::string_view name) {
  const toption* option = optionasobj(name);
  return option != nullptr ? option->getasstring() : shortstring();
}

std::int32_t tzmaoptions::optfindstr(std::string_view name, std::int32_t& optnr,
                                     std::int32_t& refnr) {
  curoptname = name;
  std::int32_t position = optlookup(name);
  if (position < 0) {
    const std::int32_t synonym = synonymindex.find(name);
    if (synonym >= 0) position = synonymposition(synonym);
  }
  const toption* option = getobjects(position);
  optnr = option != nullptr ? position + 1 : -1;
  refnr = option != nullptr ? option->refnr : -1;
  return option != nullptr ? 1 : 0;
}

std::int32_t tzmaoptions::optgetvalstr(std::string_view name, shortstring& text) {
  const toption* option = optionasobj(name);
  text = option != nullptr ? option->getasstring() : shortstring();
  return option != nullptr ? 1 : 0;
}

std::int32_t tzmaoptions::optgetval2str(std::string_view name, shortstring& text) {
  const toption* option = optionasobj(name);
  const bool good = option != nullptr && option->subtype == optsub2Values;
  text = good ? option->getasstring2() : shortstring();
  return good ? 1 : 0;
}

std::int32_t tzmaoptions::optsetrefnrstr(std::string_view name, std::int32_t refnr) {
  toption* option = getobjects(optlookup(name));
  if (option == nullptr) return 0;
  option->refnr = refnr;
  return 1;
}

std::int32_t tzmaoptions::optgetsynonym(std::int32_t position, shortstring& synonym,
                                        shortstring& option) {
  synonym.clear();
  option.clear();
  if (position < 1 || position > synonymlist.count()) return 0;
  synonym = synonymlist.getname(position - 1);
  option = getstrings(synonymposition(position - 1));
  return 1;
}

// --- String lists ------------------------------------------------------------------------------

namespace {

/// Calls use with the string list of that name and gives its result, or the number of a failure.
template <class Use>
std::int32_t withstrlist(tzmaoptions& options, std::string_view name, Use use) {
  toption* option = options.optionasobj(name);
  if (option == nullptr) return unknownname;
  auto* list = askind<tstrlistoption>(option);
  return list != nullptr ? use(*list) : notalist;
}

}  // namespace

std::int32_t tzmaoptions::optlistcountstr(std::string_view name) {
  return withstrlist(*this, name, [](tstrlistoption& list) { return list.count(); });
}

std::int32_t tzmaoptions::optreadfromliststr(std::string_view name, std::int32_t position,
                                             shortstring& item) {
  item.clear();
  return withstrlist(*this, name, [&](tstrlistoption& list) {
    if (position < 1 || position > list.count()) return 0;
    item = list.items.get(position - 1);
    return 1;
  });
}

std::int32_t tzmaoptions::optgetfromliststr(std::string_view name, shortstring& item) {
  item.clear();
  return withstrlist(*this, name, [&](tstrlistoption& list) {
    if (list.count() == 0) return 0;
    item = list.takefirst();
    return 1;
  });
}

std::int32_t tzmaoptions::optgetfromanystrlist(std::int32_t selector, shortstring& option,
                                               shortstring& item) {
  for (std::int32_t i = 0; i < getcount(); ++i) {
    auto* list = askind<tstrlistoption>(getobjects(i));
    if (list == nullptr || list->count() == 0) continue;
    const std::string_view name = getstrings(i);
    option = name;
    if (name.starts_with("--") != (selector != 0)) continue;
    item = list->takefirst();
    return 1;
  }
  return 0;
}

}  // namespace optxv
