// A caller in C++ that documents a table: the writers take the object behind a handle, or one of
// the caller's own, and their failures arrive as exceptions.
#include <optxv/options/zmaoptions.h>
#include <optxv/optxv.h>
#include <optxv/writers/facts.h>
#include <optxv/writers/htmlwr.h>
#include <optxv/writers/optionwriter.h>

#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

namespace {

const std::string definition = "writers.def", document = "writers.out";

std::string contents(const std::string& name) {
  std::ifstream file(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

bool documented(const optxv::tzmaoptions& options) {
  if (optxv::describe(options).options.back().high != "9") return false;
  const optxv::tzmaoptionwriter writer(options);
  writer.writeashtml(document);
  if (contents(document).find("<td> rate </td>") == std::string::npos) return false;
  writer.writedefinition(document);
  if (contents(document).find("\nrate integer 1 2 0 9 1 1 Rate\n") == std::string::npos)
    return false;
  writer.writedelphiinc(document);
  return contents(document).find("pfrate") != std::string::npos;
}

bool raises(const char* name) {
  try {
    optxv::thtmlwrite page(name);
    page.addheading(1, optxv::alignCenter, "Title");
    page.close();
  } catch (const optxv::einouterror& failure) {
    return !failure.message.empty();
  }
  return false;
}

}  // namespace

int main() {
  std::ofstream(definition) << "rate integer 1 2 0 9 1 1 Rate\n";
  void* handle = nullptr;
  xcreate(&handle);
  coptreaddefinition(handle, definition.c_str());
  const bool byhandle = documented(*static_cast<optxv::tzmaoptions*>(handle));
  xfree(&handle);
  if (!byhandle) return 1;

  auto* const own = new optxv::tzmaoptions;
  own->optreaddefinition(definition);
  const bool byobject = optcount(own) == 2 && documented(*own);
  delete own;
  if (!byobject) return 2;

  if (!raises("/dev/full") || !raises("/") || raises(document.c_str())) return 3;
  std::cout << "writers: ok\n";
  return 0;
}
