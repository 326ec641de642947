#include "parameter/snapshots.h"

#include <type_traits>
#include <utility>

#include "options/optionkinds.h"
#include "parameter/dotoptions.h"
#include "parameter/indicators.h"

namespace optxv {

namespace {

// Copies of the entries. The lists themselves are not copied, as they own what they hold.

void copyindices(const indexlist& from, indexlist& to) {
  for (std::int32_t i = 0; i < from.count(); ++i) to.add(from.get(i));
}

std::unique_ptr<txstringlistobj> copyof(const tdotobjlist& from, tzmaoptions* owner) {
  auto copy = std::make_unique<tdotobjlist>(owner);
  for (std::int32_t i = 0; i < from.count(); ++i) {
    auto entry = std::make_unique<tdotobj>(from.entry(i).dotoptnr);
    entry->dotvalue = from.entry(i).dotvalue;
    copyindices(from.entry(i).indices, entry->indices);
    copy->addowned(from.getname(i), std::move(entry));
  }
  return copy;
}

std::unique_ptr<txlistobj> copyof(const tindicatorlist& from, tzmaoptions* owner) {
  auto copy = std::make_unique<tindicatorlist>(owner);
  for (std::int32_t i = 0; i < from.count(); ++i) {
    const tindicatoritem& item = from.item(i);
    auto entry = std::make_unique<tindicatoritem>();
    entry->equname = item.equname.view();
    copyindices(item.equindices, entry->equindices);
    entry->varname = item.varname.view();
    copyindices(item.varindices, entry->varindices);
    entry->indicatorvalue = item.indicatorvalue;
    copy->addowned(std::move(entry));
  }
  return copy;
}

/// The indicators that an object is to have: none if the snapshot is from a time without a list.
std::unique_ptr<txlistobj> indicatorsfor(tzmaoptions& options, const txlistobj* taken) {
  if (taken != nullptr) return copyof(static_cast<const tindicatorlist&>(*taken), &options);
  return options.indicatorlist ? makeindicatorlist(&options) : nullptr;
}

}  // namespace

valuesnapshot::valuesnapshot(const tzmaoptions& options)
    : identity_(options.identity),
      dotoptions_(copyof(dotoptionsof(options), nullptr)),
      dotoptionerrors_(options.dotoptionerrors),
      indicatorerrors_(options.indicatorerrors) {
  if (const tindicatorlist* list = indicatorsof(options)) indicators_ = copyof(*list, nullptr);
  for (std::int32_t i = 0; i < options.getcount(); ++i)
    if (const toption& option = *options.getobjects(i); option.defined != 0)
      set_.push_back(taken(option, options.origins.get(i)));
}

valuesnapshot::setoption valuesnapshot::taken(const toption& option, const valueorigin& origin) {
  setoption set = {option.position, option.defined, option.recent, option.outofbounds, origin, {}};
  withkind(option, [&](const auto& typed) {
    using kind = std::remove_cvref_t<decltype(typed)>;
    if constexpr (integerkind<kind>)
      set.value = both<std::int32_t>{typed.value, typed.value2};
    else if constexpr (doublekind<kind>)
      set.value = both<double>{typed.value, typed.value2};
    else if constexpr (scalarkind<const kind>)
      set.value =
          both<std::string>{std::string(typed.value.view()), std::string(typed.value2.view())};
    if constexpr (std::is_same_v<kind, tstrlistoption>) {
      auto& items = set.value.template emplace<std::vector<std::string>>();
      for (std::int32_t k = 0; k < typed.count(); ++k) items.emplace_back(typed.item(k));
    }
  });
  return set;
}

std::unique_ptr<valuesnapshot::madetexts> valuesnapshot::made(const setoption& set) {
  if (const auto* texts = std::get_if<both<std::string>>(&set.value)) {
    auto result = std::make_unique<madetexts>();
    result->first = (*texts)[0];
    result->second = (*texts)[1];
    return result;
  }
  if (const auto* items = std::get_if<std::vector<std::string>>(&set.value)) {
    auto result = std::make_unique<madetexts>();
    for (const std::string& item : *items) result->items.add(item);
    return result;
  }
  return nullptr;
}

void valuesnapshot::put(toption& option, const setoption& set, madetexts* texts) noexcept {
  option.defined = set.defined;
  option.recent = set.recent;
  option.outofbounds = set.outofbounds;
  withkind(option, [&](auto& typed) {
    using kind = std::remove_cvref_t<decltype(typed)>;
    if constexpr (integerkind<kind>) {
      typed.value = std::get_if<both<std::int32_t>>(&set.value)->front();
      typed.value2 = std::get_if<both<std::int32_t>>(&set.value)->back();
    } else if constexpr (doublekind<kind>) {
      typed.value = std::get_if<both<double>>(&set.value)->front();
      typed.value2 = std::get_if<both<double>>(&set.value)->back();
    } else if constexpr (scalarkind<kind>) {
      typed.value.swap(texts->first);
      typed.value2.swap(texts->second);
    } else if constexpr (std::is_same_v<kind, tstrlistoption>) {
      typed.swapitems(texts->items);
    }
  });
}

bool valuesnapshot::restore(tzmaoptions& options) const {
  if (options.identity != identity_) return false;
  // First all that needs memory.
  std::vector<std::unique_ptr<madetexts>> texts;
  std::array<std::set<std::int32_t>, 2> filled;
  for (const setoption& each : set_) {
    texts.push_back(made(each));
    const auto* items = std::get_if<std::vector<std::string>>(&each.value);
    const bool runtime = options.getstrings(each.position).starts_with("--");
    if (items != nullptr && !items->empty()) filled[runtime ? 1 : 0].insert(each.position);
  }
  auto dotoptions = copyof(static_cast<const tdotobjlist&>(*dotoptions_), &options);
  auto indicators = indicatorsfor(options, indicators_.get());
  // From here on nothing fails.
  for (std::int32_t i = 0; i < options.getcount(); ++i) {
    toption& option = *options.getobjects(i);
    option.defined = option.recent = option.outofbounds = 0;
    options.origins.clear(i);
    txstrings none;
    if (auto* list = askind<tstrlistoption>(&option)) list->swapitems(none);
  }
  for (std::size_t i = 0; i < set_.size(); ++i) {
    put(*options.getobjects(set_[i].position), set_[i], texts[i].get());
    if (set_[i].position < options.origins.count())
      options.origins.set(set_[i].position, set_[i].origin);
  }
  options.filledlists.swap(filled);
  options.dotoptionlist.swap(dotoptions);
  options.indicatorlist.swap(indicators);
  options.dotoptionerrors = dotoptionerrors_;
  options.indicatorerrors = indicatorerrors_;
  return true;
}

}  // namespace optxv
