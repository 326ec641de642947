#include "server/uris.h"

#include <filesystem>

#include "text/names.h"

namespace command {
namespace {

constexpr std::string_view scheme = "file://";
constexpr std::string_view hexdigits = "0123456789ABCDEF";

int digit(char c) {
  if (isdigit(c)) return c - '0';
  const char letter = folded(c);
  return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : -1;
}

std::string unescaped(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); i++) {
    const bool escape =
        text[i] == '%' && i + 2 < text.size() && digit(text[i + 1]) >= 0 && digit(text[i + 2]) >= 0;
    result += escape ? static_cast<char>(digit(text[i + 1]) * 16 + digit(text[i + 2])) : text[i];
    if (escape) i += 2;
  }
  return result;
}

/// What may stand in a path of a URI as it is.
bool isplain(char c) {
  return isnamecharacter(c) || c == '-' || c == '.' || c == '~' || c == '/';
}

}  // namespace

std::string pathof(std::string_view uri) {
  if (uri.size() < scheme.size() || !samename(uri.substr(0, scheme.size()), scheme)) return {};
  uri.remove_prefix(scheme.size());
  const std::size_t path = uri.find('/');
  if (path == uri.npos || (path > 0 && uri.substr(0, path) != "localhost")) return {};
  const std::string name = unescaped(uri.substr(path));
  return name.find('\0') == name.npos ? pathin("/", name) : std::string();
}

std::string uriof(std::string_view path) {
  std::string result(scheme);
  for (const char c : path) {
    const auto byte = static_cast<unsigned char>(c);
    if (isplain(c))
      result += c;
    else
      result += {'%', hexdigits[byte >> 4U], hexdigits[byte & 15U]};
  }
  return result;
}

std::string pathin(std::string_view folder, std::string_view name) {
  return (std::filesystem::path(folder) / name).lexically_normal().string();
}

std::string namein(std::string_view folder, std::string_view path) {
  const std::string base = folder == "/" ? "/" : std::string(folder) + '/';
  return std::string(path.starts_with(base) ? path.substr(base.size()) : path);
}

}  // namespace command
