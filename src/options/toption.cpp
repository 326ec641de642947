#include "options/toption.h"

#include <new>
#include <utility>

#include "options/optionkinds.h"
#include "options/zmaoptions.h"

namespace optxv {

txstringlistobj::~txstringlistobj() {
  clear();
}

void txstringlistobj::freeobject(std::int32_t index) {
  delete objectof<tobject>(getobject(index));
}

std::int32_t txstringlistobj::addowned(std::string_view name, std::unique_ptr<tobject> object) {
  const std::int32_t index = addobject(name, object.get());
  (void)object.release();
  return index;
}

// The names go with the memory that keeps them, so that none is left here for the base to free.
toptionlist::~toptionlist() {
  for (std::int32_t i = 0; flist != nullptr && i < fcount; ++i) flist[i].fname = nullptr;
}

std::int32_t toptionlist::enter(kepttext name, std::unique_ptr<tobject> option) {
  if (fcount == fcapacity) grow();
  flist[fcount] = {name.asheapstring(), option.release()};
  return fcount++;
}

txlistobj::~txlistobj() {
  clear();
}

std::int32_t txlistobj::addowned(std::unique_ptr<tobject> item) {
  const std::int32_t index = add(item.get());
  (void)item.release();
  return index;
}

void txlistobj::freeitem(std::int32_t index) {
  delete objectof<tobject>(get(index));
}

toptionx::toptionx(std::int32_t context, kepttext text) : helptext(text), helpcontext(context) {}

toptionx::~toptionx() = default;

void toptionx::addbigtext(std::string_view line) {
  if (!bigtext) bigtext = std::make_unique<txstrings>();
  bigtext->add(line);
}

tgroupobj::tgroupobj(std::int32_t number, std::int32_t context, kepttext text)
    : toptionx(context, text), groupnr(number) {}

tlistoptionx::tlistoptionx(std::int32_t item, std::int32_t context, kepttext text)
    : toptionx(context, text), itemvalue(item) {}

// --- The base of all options -----------------------------------------------------------------

toption::toption(optionkind kind, std::string_view name, tzmaoptions* table, const optionhelp& help)
    : toptionx(help.helpcontext, table->memory.keep(help.helptext)),
      group(help.group),
      owner(table),
      optname(table->memory.keep(name)),
      refnr(help.refnr),
      opttype(kind) {}

toption::~toption() = default;

void toption::addmark(deprecationmark mark, kepttext text) {
  deprecation = static_cast<std::uint8_t>(deprecation | 1U << mark);
  if (!marktexts) marktexts = new (owner->memory.take(sizeof(textsofmarks))) textsofmarks();
  const bool own = mark == markDeprecatedOption || mark == markObsoleteOption;
  (own ? marktexts->own : marktexts->synonym) = text;
}

void toption::setdefined(std::int32_t mask) {
  if (mask == 0) {
    defined = 0;
    recent = 0;
    if (position >= 0) owner->origins.clear(position);
    return;
  }
  defined = static_cast<std::uint8_t>(defined | mask);
  if (owner->recentenabled) recent = static_cast<std::uint8_t>(recent | mask);
  owner->stored(*this, mask);
}

void toption::usedefined() {
  withkind(*this, [](auto& option) {
    if constexpr (scalarkind<std::remove_reference_t<decltype(option)>>) {
      if constexpr (requires { option.value.assign(std::string_view()); })
        option.value.assign(option.defaultvalue);
      else
        option.value = option.defaultvalue;
      option.setdefined(1);
    }
  });
}

void toption::reset() {
  setdefined(0);
  outofbounds = 0;
}

shortstring toption::getname() const {
  return owner->nounderscore(optname);
}

namespace {

/// Refuses a text with a double quote, since the language has no escape: a quote that gets here
/// does not belong to a pair around the value.
bool badquote(const toption& option, std::string_view text) {
  if (text.find('"') == std::string_view::npos) return false;
  option.owner->addmessage(
      optMsgValueError, "Bad double-quote in value",
      {.fault = optxv_fault_quote, .option = option.position + 1, .seen = text});
  return true;
}

}  // namespace

bool toption::takestext(std::string_view text) {
  if (subtype != optsubNoValue) return !badquote(*this, text);
  setdefined(1);
  return false;
}

void toption::setasstring(std::string_view text) {
  if (!takestext(text)) return;
  withkind(*this, [text](auto& option) { option.setasstring(text); });
}

void toption::setasstring2(std::string_view text) {
  if (badquote(*this, text)) return;
  withkind(*this, [text](auto& option) {
    if constexpr (scalarkind<std::remove_reference_t<decltype(option)>>) option.setasstring2(text);
  });
}

shortstring toption::getasstring() const {
  return withkind(*this, [](const auto& option) -> shortstring {
    if constexpr (scalarkind<std::remove_cvref_t<decltype(option)>>)
      return option.getasstring();
    else
      return {};
  });
}

shortstring toption::getasstring2() const {
  return withkind(*this, [](const auto& option) -> shortstring {
    if constexpr (scalarkind<std::remove_cvref_t<decltype(option)>>)
      return option.getasstring2();
    else
      return {};
  });
}

}  // namespace optxv
