// The functions of the second public header for dot options and indicators.

#include "frame/status.h"
#include "language/listener.h"
#include "parameter/dotoptions.h"
#include "parameter/indicators.h"

using namespace optxv;

namespace {

std::int32_t labelat(const indexlist& labels, std::int32_t index, optxv_text* label,
                     std::string_view (*form)(std::string_view)) {
  const std::int32_t at = positionin(index, labels.count());
  if (at < 0) return optxv_unknown;
  if (label == nullptr) return optxv_bad_argument;
  *label = textof(form(labels.get(at)));
  return optxv_ok;
}

std::string_view asitis(std::string_view label) {
  return label;
}

/// Calls use with the entry at a position from 1.
template <class Use>
std::int32_t withdotoption(optxv_handle handle, std::int32_t position, Use use) noexcept {
  return withobject(handle, [&](const tzmaoptions& options) -> std::int32_t {
    const tdotobjlist& list = dotoptionsof(options);
    const std::int32_t at = positionin(position, list.count());
    return at < 0 ? optxv_unknown : use(list.getname(at), list.entry(at));
  });
}

template <class Use>
std::int32_t withindicator(optxv_handle handle, std::int32_t position, Use use) noexcept {
  return withobject(handle, [&](const tzmaoptions& options) -> std::int32_t {
    const tindicatorlist* const list = indicatorsof(options);
    const std::int32_t at = list == nullptr ? -1 : positionin(position, list->count());
    return at < 0 ? optxv_unknown : use(list->item(at));
  });
}

/// A count of the object, with the one beside it.
template <auto Count>
std::int32_t counted(optxv_handle handle, std::int32_t* dropped) noexcept {
  std::int32_t lost = 0;
  const std::int32_t count = handle == nullptr ? 0 : (objectof(handle).*Count)(lost);
  if (dropped != nullptr) *dropped = lost;
  return count;
}

}  // namespace

int32_t optxv_dot_option_count(optxv_handle handle, int32_t* dropped) {
  return counted<&tzmaoptions::optdotoptcount>(handle, dropped);
}

int32_t optxv_dot_option_info(optxv_handle handle, int32_t position, optxv_dot_option* entry) {
  return withdotoption(handle, position, [&](std::string_view symbol, const tdotobj& from) {
    if (entry == nullptr) return optxv_bad_argument;
    *entry = {.option = from.dotoptnr + 1,
              .labels = from.indices.count(),
              .value = from.dotvalue,
              .symbol = endedtext(symbol)};
    return optxv_ok;
  });
}

int32_t optxv_dot_option_label(optxv_handle handle, int32_t position, int32_t index,
                               optxv_text* label) {
  return withdotoption(handle, position, [&](std::string_view, const tdotobj& from) {
    return labelat(from.indices, index, label, unquoted);
  });
}

int32_t optxv_indicator_count(optxv_handle handle, int32_t* dropped) {
  return counted<&tzmaoptions::optindicatorcount>(handle, dropped);
}

int32_t optxv_indicator_info(optxv_handle handle, int32_t position, optxv_indicator* entry) {
  return withindicator(handle, position, [&](const tindicatoritem& from) {
    if (entry == nullptr) return optxv_bad_argument;
    *entry = {.equation_labels = from.equindices.count(),
              .variable_labels = from.varindices.count(),
              .mark = from.indicatorvalue ? 1 : 0,
              .equation = endedtext(from.equname),
              .variable = endedtext(from.varname)};
    return optxv_ok;
  });
}

int32_t optxv_indicator_label(optxv_handle handle, int32_t position, int32_t side, int32_t index,
                              optxv_text* label) {
  return withindicator(handle, position, [&](const tindicatoritem& from) -> std::int32_t {
    if (side < 1 || side > 2) return optxv_bad_argument;
    return labelat(side == 1 ? from.equindices : from.varindices, index, label, asitis);
  });
}
