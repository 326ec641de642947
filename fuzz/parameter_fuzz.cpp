// Parameter text against a fixed definition. The first byte chooses how it is read: mode, bounds,
// echo, lookup rule and source; the rest is the text.
#include "grammar.h"
#include "richdefinition.h"
#include "support.h"

namespace optxv::fuzz {
namespace {

const memoryfile& definition(unsigned rule) {
  static const memoryfile normal(richdefinition("Normal")), path(richdefinition("Path")),
      minos(richdefinition("Minos"));
  return rule == 1 ? path : rule == 2 ? minos : normal;
}

void readfile(tzmaoptions& options, std::string_view text) {
  static memoryfile file;
  file.fill(text);
  demand(options.optreadparameterfile(file.path()) == 0, "the file opens");
}

void run(unsigned way, const std::string& text) {
  tzmaoptions options;
  demand(options.optreaddefinition(definition(way >> 5 & 3).path()) == 0, "the definition opens");
  options.optclearmessages();
  options.opteolonlyset((way & 1) == 0);
  options.optnoboundsset((way & 2) != 0);
  options.optechoset((way & 4) != 0);
  if ((way & 8) == 0) readfile(options, text);
  checkstate(options);
  if ((way & 16) == 0) options.optreadfromstr(text);
  checkstate(options);
  options.optreadfrompchar(text.c_str());
  checkstate(options);
  static memoryfile written;
  demand(options.optwriteparameterfile(written.path()) == 0, "the file can be written");
  askall(options);
  options.optresetall();
  demand(options.optmessagecount() == 0, "a reset empties the queue");
}

}  // namespace
}  // namespace optxv::fuzz

OPTXV_FUZZ_GRAMMAR(1, optxv::fuzz::parameterwords)

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 0) optxv::fuzz::run(data[0], {reinterpret_cast<const char*>(data) + 1, size - 1});
  return 0;
}
