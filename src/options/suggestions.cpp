#include "options/suggestions.h"

#include <type_traits>

#include "options/optionkinds.h"
#include "options/zmaoptions.h"

namespace optxv {

namespace {

bool suggested(std::string_view name) {
  return !name.starts_with("--");
}

shortstring valuetext(const tenumintoption& option, std::int32_t i) {
  return inttostr(option.item(i).itemvalue);
}
shortstring valuetext(const tenumstroption& option, std::int32_t i) {
  return option.enumitems.getname(i);
}

std::vector<knownname> valuesof(const toption& option) {
  std::vector<knownname> all;
  withkind(option, [&](const auto& typed) {
    using kind = std::remove_cvref_t<decltype(typed)>;
    if constexpr (enumerationkind<const kind>) {
      for (std::int32_t i = 0; i < typed.enumitems.count(); ++i)
        all.push_back({std::string(valuetext(typed, i)), i});
    }
  });
  return all;
}

}  // namespace

/// Whether the table has gained a name that is to be suggested.
bool suggestions::grown() const {
  if (!names_[0] || options_.synonymlist.count() > synonymsgathered_) return true;
  for (std::int32_t i = optionsgathered_; i < options_.getcount(); ++i)
    if (suggested(options_.getstrings(i))) return true;
  return false;
}

void suggestions::gather() {
  std::array<std::vector<knownname>, 2> all;
  const auto add = [&](std::string_view name, std::int32_t owner) {
    if (suggested(name)) all[name.starts_with('.') ? 1 : 0].push_back({std::string(name), owner});
  };
  for (std::int32_t i = 0; i < options_.getcount(); ++i) add(options_.getstrings(i), i);
  for (std::int32_t i = 0; i < options_.synonymlist.count(); ++i)
    add(options_.synonymlist.getname(i), options_.synonymposition(i));
  for (std::size_t i = 0; i < all.size(); ++i) names_[i].emplace(all[i]);
}

std::vector<std::string> suggestions::names(std::string_view wrong) {
  if (grown()) gather();
  optionsgathered_ = options_.getcount();
  synonymsgathered_ = options_.synonymlist.count();
  return names_[wrong.starts_with('.') ? 1 : 0]->nearest(wrong);
}

std::vector<std::string> suggestions::values(const toption& option, std::string_view wrong) {
  if (valuesof_ != &option) {
    values_.emplace(valuesof(option));
    valuesof_ = &option;
  }
  return values_->nearest(wrong);
}

}  // namespace optxv
