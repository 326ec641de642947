#include "analysis/optionvalues.h"

#include "text/printable.h"
#include "writers/facts.h"

namespace command {
namespace {

std::string lastitem(optxv_handle options, std::int32_t optnr) {
  optxv_text item;
  const bool any = optxv_list_item(options, optnr, optxv_list_count(options, optnr), &item) == 1;
  return any ? std::string(item.bytes, item.size) : std::string();
}

}  // namespace

optionvalue valuenow(optxv_handle options, std::int32_t optnr, std::int32_t which) {
  std::int32_t integer = 0;
  if (optxv_get_integer_nr(options, optnr, which, &integer) == optxv_ok) return integer;
  double real = 0;
  if (optxv_get_real_nr(options, optnr, which, &real) == optxv_ok) return real;
  optxv_text text;
  if (optxv_get_text_nr(options, optnr, which, &text) == optxv_ok)
    return std::string(text.bytes, text.size);
  return lastitem(options, optnr);
}

std::string shownvalue(std::int32_t kind, const optionvalue& value) {
  if (const auto* text = std::get_if<std::string>(&value)) return externalform(*text);
  if (const auto* real = std::get_if<double>(&value)) return optxv::numbertext(*real);
  const std::int32_t integer = std::get<std::int32_t>(value);
  return kind == optxv_kind_integer ? optxv::numbertext(integer) : std::to_string(integer);
}

}  // namespace command
