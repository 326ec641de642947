// Files that are laid out. The first byte chooses the language and the settings; the rest is the
// text. Laying out looks itself whether the result is read as the text was, and refuses its own
// work if not, which it never should; and what was laid out is not changed again.
#include "grammar.h"
#include "layout/layout.h"
#include "richdefinition.h"
#include "support.h"

namespace optxv::fuzz {
namespace {

using command::laidout;
using command::layoutsettings;

const std::string& definition(unsigned rule) {
  static const std::string normal = richdefinition("Normal"), path = richdefinition("Path"),
                           minos = richdefinition("Minos");
  return rule == 1 ? path : rule == 2 ? minos : normal;
}

template <class Layout>
void demandsteady(std::string_view text, Layout layout) {
  const laidout once = layout(text);
  demand(!once.refused, "a text that was laid out is read as before");
  const laidout twice = layout(once.text);
  demand(!twice.refused && twice.text == once.text, "once is enough");
}

void run(unsigned way, std::string_view text) {
  const layoutsettings settings = {.tokens = (way & 2) != 0,
                                   .nobounds = (way & 4) != 0,
                                   .bygroup = (way & 8) != 0,
                                   .width = (way & 16) != 0 ? 20U : 100U};
  if ((way & 1) != 0)
    return demandsteady(text,
                        [&](std::string_view each) { return layoutdefinition(each, settings); });
  const std::string& table = definition(way >> 5 & 3);
  demandsteady(text,
               [&](std::string_view each) { return layoutparameters(table, each, settings); });
}

vocabulary wordsof(const std::uint8_t* data, std::size_t size) {
  return size > 0 && (data[0] & 1) != 0 ? vocabulary(definitionwords) : vocabulary(parameterwords);
}

}  // namespace
}  // namespace optxv::fuzz

OPTXV_FUZZ_GRAMMAR(1, optxv::fuzz::wordsof(data, size))

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 0) optxv::fuzz::run(data[0], {reinterpret_cast<const char*>(data) + 1, size - 1});
  return 0;
}
