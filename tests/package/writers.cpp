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

bool holds(const char* piece) {
  std::ifstream file(document, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {}).find(piece) != std::string::npos;
}

bool documented(const optxv::tzmaoptions& options) {
  if (optxv::describe(options).options.back().high != "9") return false;
  const optxv::tzmaoptionwriter writer(options);
  writer.writeashtml(document);
  if (!holds("<td> rate </td>")) return false;
  writer.writedefinition(document);
  if (!holds("\nrate integer 1 2 0 9 1 1 Rate\n")) return false;
  writer.writedelphiinc(document);
  return holds("pfrate");
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

  optxv::tzmaoptions own;
  own.optreaddefinition(definition);
  if (optcount(&own) != 2 || !documented(own)) return 2;

  if (!raises("/dev/full") || !raises("/") || raises(document.c_str())) return 3;
  std::cout << "writers: ok\n";
  return 0;
}
