// Any bytes as a definition file. What it declares is then read, set, reset, written and asked for,
// with fixed text: a definition may declare a key that reads files, and the text must name none.
#include "grammar.h"
#include "support.h"

namespace optxv::fuzz {
namespace {

void setall(tzmaoptions& options) {
  const std::int32_t count = std::min(options.optcount(), 60);
  for (std::int32_t number = 0; number <= count + 1; ++number) {
    options.optsetintnr(number, 1);
    options.optsetdblnr(number, -0.5);
    options.optsetstrnr(number, "1");
    options.optsetstr2nr(number, "off");
    options.optsetvaluesnr(number, 2, 2.5, "\"two words\"");
    options.optsetvalues2nr(number, 2, 2.5, "");
    options.optresetnr(number % 2 == 0 ? number : 0);
  }
}

void run(std::string_view input) {
  static memoryfile file, written;
  file.fill(input);
  tzmaoptions options;
  demand(options.optreaddefinition(file.path()) == 0, "the file opens");
  checkstate(options);
  demand(options.optcount() >= 1, "Help is always there");
  options.optreadfromstr("a = 1");
  options.optreadfrompchar("a.b('c',*) = 1");
  setall(options);
  demand(options.optwriteparameterfile(written.path()) == 0, "the file can be written");
  askall(options);
  options.optresetrecentchanges();
  options.optresetall();
  demand(options.optmessagecount() == 0, "a reset empties the queue");
  const std::int32_t before = options.optcount();
  options.optreaddefinition(file.path());
  demand(options.optcount() > before, "a second read adds to the table");
  checkstate(options);
}

}  // namespace
}  // namespace optxv::fuzz

OPTXV_FUZZ_GRAMMAR(0, optxv::fuzz::definitionwords)

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  optxv::fuzz::run({reinterpret_cast<const char*>(data), size});
  return 0;
}
