#include "tasks/documents.h"

#include <cerrno>
#include <memory>

#include "foundation/runtime.h"
#include "output/outputs.h"
#include "output/reporter.h"

namespace command {

int withtable(const request& given, const std::function<int(const optxv::tzmaoptions&)>& make) {
  if (const int error = whynotreadable(given.definition); error != 0)
    return unusable(given.definition, error);
  optionset options;
  const std::unique_ptr<reporter> report = makelines(stderr);
  session run(options, *report);
  if (!run.read(reading(given))) return run.total().status();
  const int status = make(*static_cast<const optxv::tzmaoptions*>(options.handle()));
  return status != 0 ? status : run.total().status();
}

int document(const request& given, documentform form) {
  return withtable(given, [&](const optxv::tzmaoptions& options) {
    const optxv::tzmaoptionwriter writer(options);
    const auto text = captured([&](const std::string& name) {
      try {
        (writer.*form)(name);
        return 0;
      } catch (const optxv::einouterror&) {
        return EIO;  // a file in memory fails for want of memory alone
      }
    });
    return text ? deliverto(given.output, *text) : unusable(given.output, errno);
  });
}

int deliverto(const std::string& file, std::string_view text) {
  const int error = deliver(file, text);
  return error == 0 ? 0 : unusable(file, error);
}

}  // namespace command
