#include "text/wording.h"

#include <array>

#include "optxv/optxv.h"

namespace command {
namespace {

/// A text as the library gives it, with its length before it, so that any byte comes through.
template <class Function, class... Arguments>
std::string outtext(Function function, Arguments... arguments) {
  std::array<unsigned char, OPTXV_TEXT_SIZE> text{};
  function(arguments..., text.data());
  return {text.begin() + 1, text.begin() + 1 + text[0]};
}

}  // namespace

std::string shownname(optxv_handle options, std::int32_t optnr) {
  return outtext(optgetnamenr, options, optnr);
}

std::string kindword(std::int32_t kind) {
  return outtext(optgettypename, nullptr, kind);
}

std::string constantname(std::int32_t group, std::int32_t index) {
  return outtext(optgetconstname, nullptr, group, index);
}

std::string auditline() {
  return outtext(optversion, nullptr);
}

}  // namespace command
