#include "exchange/settingsform.h"

#include <array>

#include "text/characters.h"
#include "text/printable.h"

namespace command {

memberform formof(const optxv::option& option) {
  // In the order of optxv_takes_...
  constexpr std::array<memberform, 4> scalars = {memberform::one, memberform::flag,
                                                 memberform::optional, memberform::pair};
  if ((option.marks & optxv_mark_obsolete) != 0 || option.name.starts_with('.'))
    return memberform::none;
  if (option.kind == optxv_kind_list) return memberform::list;
  return option.kind < optxv_kind_multilist ? scalars[static_cast<std::size_t>(option.takes)]
                                            : memberform::none;
}

bool isattribute(const optxv::option& option) {
  return option.name.starts_with('.') &&
         (option.data == optxv_data_integer || option.data == optxv_data_real);
}

std::size_t goodbytes(std::string_view text) {
  std::size_t good = 0;
  while (good < text.size()) {
    const std::size_t bytes = firstcharacter(text.substr(good)).bytes;
    if (bytes == 0) break;
    good += bytes;
  }
  return good;
}

void addmember(ordered_json& object, std::string_view name, ordered_json value) {
  object.get_ref<ordered_json::object_t&>().emplace_back(std::string(name), std::move(value));
}

std::string jsontext(const ordered_json& value) {
  return printablejson(value.dump(2, ' ', false, ordered_json::error_handler_t::replace)) + '\n';
}

}  // namespace command
