#include "text/source.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <map>

#include "text/memoryfile.h"

namespace command {
namespace {

constexpr std::size_t longestname = 255;  // bytes that the library can hold

std::map<std::string, memoryfile>& copies() {
  static std::map<std::string, memoryfile> all;
  return all;
}

int readerror(const readresult& result) {
  const auto* failure = std::get_if<readfailure>(&result);
  return failure == nullptr ? 0 : failure->error;
}

int whynotopen(const std::string& path) {
  const descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  return file.number() < 0 ? errno : 0;
}

}  // namespace

std::string readablepath(const textdocument& text) {
  const std::string& name = text.name();
  if (text.isregular() && name.size() <= longestname) return name;
  const auto [copy, fresh] = copies().try_emplace(name);
  const int file = copy->second.number();
  if (!fresh || (file >= 0 && writeall(file, text.text()))) return copy->second.path();
  copies().erase(copy);
  return {};
}

std::string readablepath(const std::string& file) {
  const auto copy = copies().find(file);
  return copy == copies().end() ? file : copy->second.path();
}

int whynotreadable(const std::string& file) {
  if (file == "-") return readerror(textdocument::read(file));
  struct stat status = {};
  if (stat(file.c_str(), &status) != 0) return errno;
  if (S_ISDIR(status.st_mode)) return EISDIR;
  return S_ISREG(status.st_mode) ? whynotopen(file) : 0;
}

}  // namespace command
