#include "output/reportforms.h"

#include <algorithm>

#include "output/gcc.h"
#include "output/github.h"
#include "output/json.h"
#include "output/limited.h"
#include "output/lines.h"
#include "output/sarif.h"

namespace command {
namespace {

using maker = std::unique_ptr<reporter> (*)(std::FILE* out, reportsettings& settings);

// In the order of reportwords.
constexpr std::array<maker, reportwords.size()> makers = {
    [](std::FILE* out, reportsettings&) { return makelines(out); },
    [](std::FILE* out, reportsettings&) { return makejson(out); },
    [](std::FILE* out, reportsettings& settings) {
      return makesarif(out, std::move(settings.codes), settings.strict);
    },
    [](std::FILE* out, reportsettings&) { return makegithub(out); },
    [](std::FILE* out, reportsettings&) { return makegcc(out); }};

}  // namespace

std::unique_ptr<reporter> makereporter(std::string_view word, std::FILE* out,
                                       reportsettings settings) {
  const auto row =
      static_cast<std::size_t>(std::ranges::find(reportwords, word) - reportwords.begin());
  std::unique_ptr<reporter> made = makers[row](out, settings);
  if (settings.most == 0) return made;
  return makelimited(std::move(made), settings.most);
}

}  // namespace command
