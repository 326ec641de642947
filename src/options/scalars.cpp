// The six scalar kinds: how each is made, and its checked setters, the only place where a value is
// compared with its option's bounds or allowed values. They are declared in toption.h.

#include "foundation/arithmetic.h"
#include "foundation/strutilx.h"
#include "language/listener.h"
#include "language/words.h"
#include "options/toption.h"
#include "options/zmaoptions.h"

namespace optxv {

namespace {

/// Stores a value and moves the masks. One that is not allowed is refused with a message, or, under
/// nobounds, kept with a warning and marked as out of bounds.
/// KEEP: an allowed value clears all of outofbounds, the bit of the other value too.
template <class Option, class Value, class Complain>
void checkedstore(Option& option, bool second, const Value& v, bool allowed, Complain complain) {
  if (!allowed) {
    if (!option.owner->nobounds) return complain(optMsgValueError);
    complain(optMsgValueWarning);
  }
  const std::int32_t bit = second ? 2 : 1;
  (second ? option.value2 : option.value) = v;
  option.setdefined(bit);
  option.outofbounds = static_cast<std::uint8_t>(allowed ? 0 : option.outofbounds | bit);
}

/// Adds the message of a refusal: the words, the option's name, and what was seen instead of a good
/// value.
void complain(const toption& option, messagekind kind, std::int32_t fault, std::string_view words,
              std::string_view seen) {
  tzmaoptions& owner = *option.owner;
  const messagefacts facts = {
      .fault = fault, .option = option.position + 1, .about = owner.curoptname, .seen = seen};
  owner.addmessagefrom(
      kind, facts, [&] { return concat(words, quoted{owner.curoptname}, " saw ", quoted{seen}); });
}

/// The facts of a message that adds to the one before it.
messagefacts detail(const toption& option, std::int32_t fault) {
  return {.fault = fault,
          .option = option.position + 1,
          .about = option.owner->curoptname,
          .detail = true};
}

template <class Option, class Show>
void sayrange(const Option& option, messagekind kind, Show show) {
  option.owner->addmessagefrom(kind, detail(option, optxv_fault_allowed_range), [&] {
    return concat("   Valid range is ", show(option.lowbound), " to ", show(option.highbound));
  });
}

/// Adds the message "Possible values are  a b c". count: of the entries; text: gives that of each.
template <class Text>
void saypossible(const toption& option, messagekind kind, std::int32_t count, Text text) {
  option.owner->addmessagefrom(kind, detail(option, optxv_fault_allowed_values), [&] {
    shortstring line = "   Possible values are ";
    for (std::int32_t i = 0; i < count && line.length() < shortstring::maximum; ++i)
      line.append(' ').append(text(i));
    return line;
  });
}

// The two messages for a value that is not allowed: what was wrong, and what is allowed.

void refuse(const tintoption& option, messagekind kind, std::int32_t v) {
  complain(option, kind, optxv_fault_range, "Integer range error for option ", inttostr(v));
  sayrange(option, kind, inttostrex);
}

void refuse(const tdbloption& option, messagekind kind, double v) {
  if (option.owner->queueclosed() && !option.owner->told)  // the text of a real is costly
    return option.owner->notefault(kind);
  complain(option, kind, optxv_fault_range, "Double out of range for option ", dbltostr(v));
  sayrange(option, kind, dbltostrex);
}

void refuse(const tbooleanoption& option, messagekind kind, std::int32_t v) {
  complain(option, kind, optxv_fault_range, "Boolean out of range for option ", inttostr(v));
  option.owner->addmessage(kind, "   Valid values are 0 or 1",
                           detail(option, optxv_fault_allowed_range));
}

void refuse(const tenumstroption& option, messagekind kind, std::string_view text) {
  complain(option, kind, optxv_fault_unknown_value, "Unknown value for option ", text);
  saypossible(option, kind, option.enumitems.count(),
              [&](std::int32_t i) { return option.enumitems.getname(i); });
}

void refuse(const tenumintoption& option, messagekind kind, std::int32_t v) {
  complain(option, kind, optxv_fault_unknown_value, "Unknown value for option ", inttostr(v));
  saypossible(option, kind, option.enumitems.count(),
              [&](std::int32_t i) { return inttostr(option.item(i).itemvalue); });
}

/// Reports a number that was replaced by the limit of its type. REQUIRES: there is a listener.
void tellcut(const toption& option, std::string_view text) {
  const tzmaoptions& owner = *option.owner;
  if (!saturatedinteger(text)) return;
  owner.told->tell(&optxv_listener::cut, {.what = optxv_cut_number,
                                          .option = option.position + 1,
                                          .place = owner.told->placed(owner.assigning.at),
                                          .kept = textof(text),
                                          .lost = 0});
}

}  // namespace

tintoption::tintoption(std::string_view name, tzmaoptions* table, std::int32_t standard,
                       std::int32_t low, std::int32_t high, const optionhelp& help)
    : integervalued(optTypeInteger, name, table, help),
      defaultvalue(standard),
      lowbound(low),
      highbound(high) {}

void tintoption::setasinteger12(bool second, std::int32_t v) {
  checkedstore(*this, second, v, lowbound <= v && v <= highbound,
               [&](messagekind kind) { refuse(*this, kind, v); });
}

void tintoption::setasstring12(bool second, std::string_view text) {
  std::int32_t v = 0;
  if (owner->told) tellcut(*this, text);
  if (strasintex2(text, v)) return setasinteger12(second, v);
  complain(*this, optMsgValueError, optxv_fault_integer_expected, "Integer expected, for option ",
           text);
}

tdbloption::tdbloption(std::string_view name, tzmaoptions* table, double standard, double low,
                       double high, const optionhelp& help)
    : toption(optTypeDouble, name, table, help),
      defaultvalue(standard),
      lowbound(low),
      highbound(high) {}

void tdbloption::setasdouble12(bool second, double v) {
  checkedstore(*this, second, v, atmost(lowbound, v) && atmost(v, highbound),
               [&](messagekind kind) { refuse(*this, kind, v); });
}

void tdbloption::setasstring12(bool second, std::string_view text) {
  double v = 0;
  if (strasdoubleex(text, v)) return setasdouble12(second, v);
  complain(*this, optMsgValueError, optxv_fault_real_expected, "Double expected for option ", text);
}

tstringoption::tstringoption(std::string_view name, tzmaoptions* table, std::string_view standard,
                             const optionhelp& help)
    : textvalued(optTypeString, name, table, help), defaultvalue(standard) {}

tstringoption::~tstringoption() = default;

void tstringoption::setasstring(std::string_view text) {
  value = text;
  setdefined(1);
}

void tstringoption::setasstring2(std::string_view text) {
  value2 = text;
  setdefined(2);
}

tbooleanoption::tbooleanoption(std::string_view name, tzmaoptions* table, std::int32_t standard,
                               const optionhelp& help)
    : integervalued(optTypeBoolean, name, table, help), defaultvalue(standard) {}

void tbooleanoption::setasinteger12(bool second, std::int32_t v) {
  checkedstore(*this, second, v, v == 0 || v == 1,
               [&](messagekind kind) { refuse(*this, kind, v); });
}

void tbooleanoption::setasstring12(bool second, std::string_view text) {
  const int word = checkboolean(text);
  if (word <= 1) return setasinteger12(second, word == 0 ? 1 : 0);
  complain(*this, optMsgValueError, optxv_fault_boolean_expected,
           "Boolean value expected for option ", text);
}

tenumstroption::tenumstroption(std::string_view name, tzmaoptions* table, std::string_view standard,
                               const optionhelp& help)
    : textvalued(optTypeEnumStr, name, table, help), defaultvalue(standard) {}

tenumstroption::~tenumstroption() = default;

void tenumstroption::additem(std::string_view text, std::int32_t context, std::string_view help) {
  enumitems.addowned(text, std::make_unique<toptionx>(context, owner->memory.keep(help)));
}

std::int32_t tenumstroption::indexoftext(std::string_view text) const {
  if (enumitems.count() <= shortlist) return enumitems.indexof(text);
  if (!texts_) texts_ = std::make_unique<nameindex>(enumitems);
  texts_->enternew();
  return texts_->find(text);
}

void tenumstroption::setasstring12(bool second, std::string_view text) {
  const std::int32_t entry = indexoftext(text);
  checkedstore(*this, second, entry >= 0 ? enumitems.getname(entry) : std::string_view(),
               entry >= 0, [&](messagekind kind) { refuse(*this, kind, text); });
}

tenumintoption::tenumintoption(std::string_view name, tzmaoptions* table, std::int32_t standard,
                               const optionhelp& help)
    : integervalued(optTypeEnumInt, name, table, help), defaultvalue(standard) {}

tenumintoption::~tenumintoption() = default;

void tenumintoption::additem(std::int32_t itemvalue, std::int32_t context, std::string_view help) {
  enumitems.addowned(std::make_unique<tlistoptionx>(itemvalue, context, owner->memory.keep(help)));
}

const tlistoptionx& tenumintoption::item(std::int32_t index) const {
  return *objectof<tlistoptionx>(enumitems.get(index));
}

std::int32_t tenumintoption::indexofvalue(std::int32_t itemvalue) const {
  return values_.find(itemvalue, enumitems.count(),
                      [&](std::int32_t i) { return item(i).itemvalue; });
}

void tenumintoption::setasinteger12(bool second, std::int32_t v) {
  checkedstore(*this, second, v, indexofvalue(v) >= 0,
               [&](messagekind kind) { refuse(*this, kind, v); });
}

void tenumintoption::setasstring12(bool second, std::string_view text) {
  std::int32_t v = 0;
  if (owner->told) tellcut(*this, text);
  if (strasintex(text, v)) return setasinteger12(second, v);
  complain(*this, optMsgValueError, optxv_fault_integer_expected, "Integer expected, for option ",
           text);
}

}  // namespace optxv
