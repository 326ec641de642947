#include "exchange/valuetext.h"

#include <array>
#include <cmath>
#include <limits>

#include "foundation/numtext.h"
#include "text/entrytext.h"
#include "text/names.h"
#include "text/printable.h"

namespace command {
namespace {

// --- What an option takes, in words

std::string rangeof(const optxv::option& option) {
  return " from " + realtext(option.low) + " to " + realtext(option.high);
}

/// Not all of a long list is of use to a reader.
std::string itemsof(const optxv::options& table, std::int32_t optnr, bool quoted) {
  constexpr std::size_t most = 12;
  const auto items = table.items(optnr);
  std::string text;
  for (std::size_t i = 0; i < std::min(items.size(), most); i++) {
    const std::string each = printable(items[i].text);
    text += (i == 0 ? "" : ", ") + (quoted ? '"' + each + '"' : each);
  }
  return text + (items.size() > most ? ", ..." : "");
}

std::string scalarwords(const optxv::options& table, const optxv::option& option) {
  switch (option.kind) {
    case optxv_kind_integer:
      return "a whole number" + rangeof(option);
    case optxv_kind_real:
      return "a number" + rangeof(option);
    case optxv_kind_boolean:
      return "true or false";
    case optxv_kind_text:
      return "a text";
    default:
      return "one of " + itemsof(table, option.number, option.data == optxv_data_text);
  }
}

// --- Numbers

/// A number of JSON as a real; an infinity beyond the reals, as all who read JSON take it.
double realof(const std::string& text) {
  return optxv::realfromtext(text).value_or(0);
}

/// A number as a whole one of 32 bits. It may be written as 1e3 or 5.0, which are whole ones too.
std::optional<std::int32_t> wholeof(const std::string& text) {
  using limits = std::numeric_limits<std::int32_t>;
  const double value = realof(text);
  if (std::trunc(value) != value || value < limits::min() || value > limits::max())
    return std::nullopt;
  return static_cast<std::int32_t>(value);
}

/// A number with a name in parameter text.
struct namednumber {
  std::string_view word, text;
};
constexpr std::array<namednumber, 5> namednumbers = {{{"maxint", "2147483647"},
                                                      {"minint", "-2147483648"},
                                                      {"maxdouble", "1e299"},
                                                      {"mindouble", "-1e299"},
                                                      {"eps", "1e-20"}}};

// --- Texts

/// Why a text cannot be in parameter text; empty if it can be.
std::string whynotext(std::string_view text) {
  constexpr std::array<std::string_view, 3> words = {"a double quote", "a line feed", "byte 26"};
  if (text.size() > longesttext)
    return "has a text of " + grouped(text.size()) + " bytes, and parameter text holds " +
           grouped(longesttext);
  const std::size_t at = text.find_first_of(unwritable);
  if (at == text.npos) return {};
  return "has a text with " + std::string(words[unwritable.find(text[at])]) +
         " in it, which parameter text has no way to write";
}

bool hasblankends(std::string_view text) {
  constexpr std::string_view blanks = " \t";
  return !text.empty() &&
         (blanks.find(text.front()) != blanks.npos || blanks.find(text.back()) != blanks.npos);
}

// --- The values of each kind

class converter {
 public:
  converter(const optxv::options& table, const optxv::option& option, const jsonvalue& value,
            std::string_view commentcharacters)
      : table_(table), option_(option), value_(value), commentcharacters_(commentcharacters) {}

  valuetext result() const;

 private:
  bool is(jsonvalue::kind kind) const { return value_.is == kind; }
  valuetext integer() const;
  valuetext real() const;
  valuetext boolean() const;
  valuetext text() const;
  valuetext wrong() const;
  std::string numbernamed() const;
  bool isitem(std::int32_t number) const;

  const optxv::options& table_;
  const optxv::option& option_;
  const jsonvalue& value_;
  std::string_view commentcharacters_;
};

valuetext converter::result() const {
  if (option_.data == optxv_data_real) return real();
  if (option_.data == optxv_data_text) return text();
  return option_.kind == optxv_kind_boolean ? boolean() : integer();
}

valuetext converter::wrong() const {
  const bool shown = is(jsonvalue::kind::number);
  const bool number = option_.data == optxv_data_integer || option_.data == optxv_data_real;
  valuefault fault;
  fault.text = "takes " + scalarwords(table_, option_) + ", not " +
               (shown ? value_.text : std::string(wordof(value_.is)));
  if (number && is(jsonvalue::kind::text)) fault.write = numbernamed();
  return {.fault = std::move(fault)};
}

/// The number that the text stands for in parameter text, if the option takes it; or nothing.
std::string converter::numbernamed() const {
  for (const namednumber& each : namednumbers) {
    const double number = realof(std::string(each.text));
    if (samename(each.word, value_.text) && option_.low <= number && number <= option_.high)
      return std::string(each.text);
  }
  return {};
}

bool converter::isitem(std::int32_t number) const {
  for (const optxv::item& each : table_.items(option_.number))
    if (each.integer == number) return true;
  return false;
}

valuetext converter::integer() const {
  if (!is(jsonvalue::kind::number)) return wrong();
  const std::optional<std::int32_t> number = wholeof(value_.text);
  if (!number) return wrong();
  const bool inside = option_.kind == optxv_kind_integer
                          ? option_.low <= *number && *number <= option_.high
                          : isitem(*number);
  return {.text = std::to_string(*number), .wanted = *number, .outside = !inside};
}

valuetext converter::real() const {
  if (!is(jsonvalue::kind::number)) return wrong();
  const double number = realof(value_.text);
  if (!std::isfinite(number)) return wrong();
  return {.text = realtext(number),
          .wanted = number,
          .outside = number < option_.low || number > option_.high};
}

valuetext converter::boolean() const {
  if (!is(jsonvalue::kind::boolean)) return wrong();
  return {.text = value_.yes ? "1" : "0", .wanted = value_.yes};
}

/// An allowed value may be written in any case, as in parameter text.
valuetext converter::text() const {
  if (!is(jsonvalue::kind::text)) return wrong();
  valuetext result = valuetextof(value_.text, commentcharacters_);
  if (result.fault || option_.kind != optxv_kind_enumerated_text) return result;
  result.outside = true;
  for (const optxv::item& each : table_.items(option_.number)) {
    if (!result.outside || !samename(each.text, value_.text)) continue;
    result.wanted = each.text;
    result.outside = false;
  }
  return result;
}

}  // namespace

valuetext valuetextof(const optxv::options& table, const optxv::option& option,
                      const jsonvalue& value, std::string_view commentcharacters) {
  return converter(table, option, value, commentcharacters).result();
}

valuetext valuetextof(const std::string& text, std::string_view commentcharacters) {
  if (std::string why = whynotext(text); !why.empty())
    return {.fault = valuefault{std::move(why), "", true}};
  return {
      .text = textvalue(text, commentcharacters), .wanted = text, .blankends = hasblankends(text)};
}

std::string takenby(const optxv::options& table, const optxv::option& option) {
  const std::string scalar = option.kind == optxv_kind_list ? "" : scalarwords(table, option);
  switch (formof(option)) {
    case memberform::flag:
      return "true or false";
    case memberform::optional:
      return scalar + ", or null";
    case memberform::pair:
      return "a list of two, each " + scalar + " or null";
    case memberform::list:
      return "a list of texts";
    default:
      return scalar;
  }
}

}  // namespace command
