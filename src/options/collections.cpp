// The kinds that hold no scalar value: multi-lists, string lists, macros and immediate options.
// They are declared in toption.h.

#include <forward_list>
#include <unordered_set>
#include <vector>

#include "options/optionkinds.h"
#include "options/toption.h"
#include "options/zmaoptions.h"

namespace optxv {

namespace {

/// Lists and macros may be nested to any depth, and a list may be a member of itself. The limit is
/// far deeper than any real table.
constexpr std::int32_t maximumnesting = 500;
/// A macro may name a macro twice, and with a few dozen such levels an entry would not end. The
/// limit is far more than any real table needs, and is reached within milliseconds. All that an
/// entry hands on counts, on whatever level.
constexpr std::int32_t maximumhandedon = 100'000;

/// One list or macro that is being assigned. A limit that is passed causes a message and ends the
/// assignment. While this object lives, it is the origin of the values that members get.
class nesting {
 public:
  nesting(const toption& option, valueroad road)
      : option_(option),
        owner_(*option.owner),
        depth_(owner_.assigndepth, owner_.assigndepth + 1),
        whole_(owner_.assigning.at),
        origin_(owner_.assigning, owner_.assigning) {
    if (owner_.assigndepth == 1) owner_.handedon = 0;
    owner_.assigning.road = road;
    owner_.assigning.through = option.position + 1;
    good_ = owner_.assigndepth <= maximumnesting;
    if (!good_) complain(optxv_fault_nesting, "Members nested too deep for option ");
  }

  /// Counts one more value for a member; false if the member may not get it.
  bool handon() {
    if (!good_ || owner_.handedon > maximumhandedon) return false;
    if (++owner_.handedon <= maximumhandedon) return true;
    complain(optxv_fault_handed_on, "Too many members for option ");
    return false;
  }

  /// Notes which piece of the text is handed on next.
  void handpart(std::size_t from, std::size_t size) {
    if (whole_.known()) owner_.assigning.at = whole_.part(from, size);
  }

  void complain(std::int32_t fault, std::string_view words) {
    owner_.addmessage(optMsgValueError, concat(words, quoted{owner_.curoptname}),
                      {.fault = fault, .option = option_.position + 1, .about = owner_.curoptname});
  }

 private:
  const toption& option_;
  tzmaoptions& owner_;
  replacement<std::int32_t> depth_;
  const textplace whole_;
  replacement<valueorigin> origin_;
  bool good_;
};

/// Cuts a text at the separator of multi-list values, one token per call.
///
/// Blanks before a token are skipped; those within and after it belong to it. A token that begins
/// with a double quote ends at the next one or at a separator.
class tokencutter {
 public:
  explicit tokencutter(std::string_view text) : text_(text) {}

  /// False when there is no further token; an empty one at the very end is none.
  bool next(std::string_view& token) {
    const std::size_t start = text_.find_first_not_of(" \t", position_);
    if (start == std::string_view::npos) return false;
    const bool quote = text_[start] == '"';
    const std::size_t first = start + (quote ? 1 : 0);
    const char delimiters[] = {charpath(), '"'};
    const std::size_t end =
        std::min(text_.find_first_of({delimiters, quote ? 2U : 1U}, first), text_.size());
    position_ = end + 1;
    token = text_.substr(first, end - first);
    return !token.empty() || position_ < text_.size();
  }

 private:
  std::string_view text_;
  std::size_t position_ = 0;
};

/// A list or macro with the text that it hands on.
class level {
 public:
  level(tmultilistoption& list, std::string_view text)
      : list_(&list), text_(text), cutter_(text), nesting_(list, roadList) {}
  level(tmacrooption& macro, std::string_view text)
      : macro_(&macro), text_(text), cutter_(text), nesting_(macro, roadMacro) {}

  /// The next member, nil for one that does not exist, and what is for it; false when that was all.
  bool next(toption*& member, std::string_view& part) {
    return list_ != nullptr ? nextoflist(member, part) : nextofmacro(member, part);
  }

 private:
  bool nextoflist(toption*& member, std::string_view& part) {
    if (!cutter_.next(part) || !nesting_.handon()) return false;
    nesting_.handpart(static_cast<std::size_t>(part.data() - text_.data()), part.size());
    if (index_ == list_->members.count()) {
      nesting_.complain(optxv_fault_list_overflow, "Too many items for multilist ");
      return false;
    }
    member = list_->owner->getobjects(list_->member(index_++));
    return true;
  }

  bool nextofmacro(toption*& member, std::string_view& part) {
    if (index_ == macro_->members.count() || !nesting_.handon()) return false;
    part = text_;
    member = macro_->member(index_++);
    return true;
  }

  tmultilistoption* list_ = nullptr;
  tmacrooption* macro_ = nullptr;
  std::string_view text_;
  tokencutter cutter_;
  std::int32_t index_ = 0;
  nesting nesting_;
};

/// The innermost is the first, and leaves first, also when an exception ends it: each puts back
/// what it replaced.
struct levels : std::forward_list<level> {
  levels() = default;
  levels(const levels&) = delete;
  levels& operator=(const levels&) = delete;
  ~levels() {
    while (!empty()) pop_front();
  }
};

void hand(levels& waiting, toption& option, std::string_view text) {
  auto* const list = askind<tmultilistoption>(&option);
  auto* const macro = askind<tmacrooption>(&option);
  if (list == nullptr && macro == nullptr) return option.setasstring(text);
  if (!option.takestext(text)) return;
  if (list != nullptr)
    waiting.emplace_front(*list, text);
  else
    waiting.emplace_front(*macro, text);
}

/// Hands a text down through lists and macros. Those that are not done yet wait in memory and not
/// on the stack, of which the thread of a host may have little.
template <class Collection>
void handdown(Collection& outermost, std::string_view text) {
  levels waiting;
  waiting.emplace_front(outermost, text);
  while (!waiting.empty()) {
    toption* member = nullptr;
    std::string_view part;
    if (!waiting.front().next(member, part))
      waiting.pop_front();
    else if (member != nullptr)
      hand(waiting, *member, part);
  }
}

}  // namespace

// --- Multi-list --------------------------------------------------------------------------------

tmultilistoption::tmultilistoption(std::string_view name, tzmaoptions* table,
                                   const optionhelp& help)
    : toption(optTypeMultiList, name, table, help) {}

tmultilistoption::~tmultilistoption() = default;

void tmultilistoption::additem(std::int32_t index) {
  members.add(reinterpret_cast<void*>(static_cast<std::intptr_t>(index)));
}

std::int32_t tmultilistoption::member(std::int32_t index) const {
  return static_cast<std::int32_t>(reinterpret_cast<std::intptr_t>(members.get(index)));
}

bool tmultilistoption::hasmember(std::int32_t index) const {
  return places_.find(index, members.count(), [&](std::int32_t i) { return member(i); }) >= 0;
}

void tmultilistoption::setasstring(std::string_view text) {
  handdown(*this, text);
}

void tmultilistoption::reset() {
  members.clear();
  places_.clear();
  toption::reset();
}

// --- String list -------------------------------------------------------------------------------

tstrlistoption::tstrlistoption(std::string_view name, tzmaoptions* table, const optionhelp& help)
    : toption(optTypeStrList, name, table, help) {}

tstrlistoption::~tstrlistoption() = default;

void tstrlistoption::setasstring(std::string_view text) {
  items_.add(text);
  if (count() == 1) owner->noteitems(*this);
  setdefined(1);
}

shortstring tstrlistoption::takefirst() {
  const shortstring first = item(0);
  items_.put(taken_++, {});
  if (taken_ >= count()) closegap();
  if (count() == 0) owner->noteitems(*this);
  return first;
}

void tstrlistoption::closegap() {
  for (std::int32_t i = taken_; i < items_.count(); ++i) items_.exchange(i - taken_, i);
  for (; taken_ > 0; --taken_) items_.delete_(items_.count() - 1);
}

void tstrlistoption::reset() {
  items_.clear();
  taken_ = 0;
  owner->noteitems(*this);
  toption::reset();
}

// --- Macro -------------------------------------------------------------------------------------

tmacrooption::tmacrooption(std::string_view name, tzmaoptions* table, const optionhelp& help)
    : toption(optTypeMacro, name, table, help) {}

tmacrooption::~tmacrooption() = default;

void tmacrooption::additem(toption* option) {
  members.add(ownedobject(option));
}

toption* tmacrooption::member(std::int32_t index) const {
  return objectof<toption>(members.get(index));
}

void tmacrooption::setasstring(std::string_view text) {
  handdown(*this, text);
}

void tmacrooption::reset() {
  // A list of what is still to do, in place of recursion: macros may be nested to any depth, and
  // each needs to be reset only once.
  std::vector<tmacrooption*> pending = {this};
  std::unordered_set<const toption*> seen = {this};
  while (!pending.empty()) {
    tmacrooption& macro = *pending.back();
    pending.pop_back();
    for (std::int32_t i = 0; i < macro.members.count(); ++i) {
      toption* option = macro.member(i);
      if (!seen.insert(option).second) continue;
      if (auto* inner = askind<tmacrooption>(option))
        pending.push_back(inner);
      else
        option->reset();
    }
    macro.toption::reset();
  }
}

// --- Immediate ---------------------------------------------------------------------------------

timmediateoption::timmediateoption(std::string_view name, tzmaoptions* table,
                                   immediateaction action, const optionhelp& help)
    : toption(optTypeImmediate, name, table, help), immediatekind(action) {}

}  // namespace optxv
