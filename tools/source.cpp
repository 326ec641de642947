#include "source.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <system_error>

namespace command {
namespace {

/// The size of a regular file, nothing for any other.
std::optional<std::size_t> regularsize(const std::string& path) {
  struct stat status = {};
  if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  return static_cast<std::size_t>(status.st_size);
}

int whynotopen(const std::string& path) {
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return errno;
  close(descriptor);
  return 0;
}

}  // namespace

int whynotreadable(const std::string& path) {
  struct stat status = {};
  if (stat(path.c_str(), &status) != 0) return errno;
  if (S_ISDIR(status.st_mode)) return EISDIR;
  return S_ISREG(status.st_mode) ? whynotopen(path) : 0;
}

std::string systemtext(int error) {
  return std::generic_category().message(error);
}

sourcefile::sourcefile(const std::string& path) {
  const std::optional<std::size_t> size = regularsize(path);
  if (!size || *size > largest) return;
  std::ifstream file(path, std::ios::binary);
  content_.resize(*size);
  file.read(content_.data(), static_cast<std::streamsize>(*size));
  known_ = file.good();
  content_.resize(known_ ? *size : 0);
  for (std::size_t start = 0; start < content_.size();) {
    starts_.push_back(start);
    const std::size_t feed = content_.find('\n', start);
    start = feed == content_.npos ? content_.size() : feed + 1;
  }
}

std::optional<std::string_view> sourcefile::line(std::int32_t number) const {
  if (number < 1 || number > linecount()) return std::nullopt;
  std::string_view text =
      std::string_view(content_).substr(starts_[static_cast<std::size_t>(number - 1)]);
  text = text.substr(0, text.find('\n'));
  if (text.ends_with('\r')) text.remove_suffix(1);
  return text;
}

const sourcefile& sourcefiles::at(const std::string& path) {
  return files_.try_emplace(path, path).first->second;
}

}  // namespace command
