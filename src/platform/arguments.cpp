#include "platform/arguments.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/interrupted.h"
#include "foundation/pchutil.h"
#include "foundation/q9private.h"
#include "foundation/runtime.h"

namespace optxv {

namespace {

static_assert(EINVAL == 22);

// Constants, so that a constructor of the load step may set them before anything else runs.
int hostcount = 0;
char** hostvector = nullptr;

std::string contentof(const char* file) {
  std::string content;
  const int descriptor = untilnotinterrupted([&] { return open(file, O_RDONLY | O_CLOEXEC); });
  if (descriptor < 0) return content;
  char block[4096];
  ssize_t got = 0;
  const auto more = [&] {
    return untilnotinterrupted([&] { return read(descriptor, block, sizeof block); });
  };
  while ((got = more()) > 0) content.append(block, static_cast<std::size_t>(got));
  close(descriptor);
  return got == 0 ? content : std::string();  // a part of the arguments would pass for all of them
}

/// The arguments as a file holds them, as long as the library is loaded.
struct readarguments {
  std::string text;
  std::vector<char*> words;

  void read(const char* file) {
    text = contentof(file);
    words.clear();
    for (std::size_t at = 0; at < text.size(); at += std::strlen(&text[at]) + 1)
      words.push_back(&text[at]);
  }
};

readarguments& fromfile() {
  static readarguments arguments;
  return arguments;
}

/// A path that is being put together; what is beyond 4095 bytes is cut.
class pathtext {
 public:
  std::string_view view() const noexcept { return {text_, length_}; }
  const char* zeroterminated() const noexcept { return text_; }
  bool isabsolute() const noexcept { return length_ != 0 && text_[0] == '/'; }

  void assign(std::string_view text) noexcept {
    length_ = 0;
    append(text);
  }
  void append(std::string_view text) noexcept {
    const std::size_t count = std::min(text.size(), sizeof text_ - 1 - length_);
    std::copy_n(text.data(), count, text_ + length_);
    length_ += count;
    text_[length_] = '\0';
  }
  void cutafterslash() noexcept { length_ = view().rfind('/') + 1; }

  bool assigncurrentdirectory() noexcept {
    if (getcwd(text_, sizeof text_) == nullptr) return false;
    length_ = std::strlen(text_);
    return true;
  }

 private:
  char text_[4096] = "";
  std::size_t length_ = 0;
};

/// The current directory, a slash, and name without a leading "./".
bool belowcurrentdirectory(std::string_view name, pathtext& path) noexcept {
  if (name.starts_with("./")) name.remove_prefix(2);
  if (!path.assigncurrentdirectory()) return false;
  path.append("/");
  path.append(name);
  return true;
}

bool isprogram(const char* path) noexcept {
  struct stat status {};
  return access(path, X_OK) == 0 && stat(path, &status) == 0 && !S_ISDIR(status.st_mode);
}

/// The path of name in one directory of PATH.
bool inentry(std::string_view entry, std::string_view name, pathtext& path) noexcept {
  if (entry.empty() || entry == ".") {
    if (!path.assigncurrentdirectory()) return false;
  } else {
    path.assign(entry);
  }
  if (!path.view().ends_with('/')) path.append("/");
  path.append(name);
  return isprogram(path.zeroterminated());
}

bool alongpath(std::string_view name, pathtext& path) noexcept {
  const char* const entries = std::getenv("PATH");
  if (entries == nullptr) return false;
  std::string_view rest(entries);
  for (;;) {
    const std::size_t colon = rest.find(':');
    if (inentry(rest.substr(0, colon), name, path)) return true;
    if (colon == std::string_view::npos) return false;
    rest.remove_prefix(colon + 1);
  }
}

bool calledas(std::string_view name, pathtext& path) noexcept {
  if (name.empty()) return false;
  if (name.find('/') == std::string_view::npos) return alongpath(name, path);
  if (name.front() != '/') return belowcurrentdirectory(name, path);
  path.assign(name);
  return true;
}

/// KEEP: one link and no further, whatever that one leads to.
bool followlink(pathtext& path) noexcept {
  char target[4096];
  const ssize_t length = readlink(path.zeroterminated(), target, sizeof target);
  if (length < 0) return errno == EINVAL;  // there, and no link
  if (target[0] == '/') {
    path.assign({});
  } else {
    path.cutafterslash();
  }
  path.append({target, static_cast<std::size_t>(length)});
  return true;
}

bool makeabsolute(pathtext& path) noexcept {
  if (path.isabsolute()) return true;
  const pathtext relative = path;
  return belowcurrentdirectory(relative.view(), path);
}

}  // namespace

void keephostarguments(int count, char** vector) noexcept {
  hostcount = count;
  hostvector = vector;
}

void initarguments() {
  initarguments("/proc/self/cmdline");
}

void initarguments(const char* file) {
  if (hostcount > 0 && hostvector != nullptr) return setarguments(hostcount, hostvector);
  fromfile().read(file);
  std::vector<char*>& words = fromfile().words;
  if (!words.empty()) setarguments(static_cast<int>(words.size()), words.data());
}

std::string_view argumenttext(std::int32_t i) noexcept {
  if (i < 0 || i >= argumentcount()) return {};
  const char* const text = argumentvector()[i];  // nil if the host cleared its own arguments
  return text == nullptr ? std::string_view() : std::string_view(text);
}

std::int32_t paramcount() noexcept {
  return std::max(argumentcount() - 1, 0);
}

shortstring paramstr(std::int32_t i) noexcept {
  if (i != 0) return argumenttext(i);
  char path[shortstring::maximum];
  unixgetmodulefilename(path, sizeof path);
  return q9private::pchartostr(path);
}

int unixgetmodulefilename(char* path, std::size_t size) noexcept {
  pathtext found;
  const bool good = calledas(argumenttext(0), found) && followlink(found) && makeabsolute(found) &&
                    found.view().size() < size;
  if (good) {
    strpcopy(path, found.view());
    return 0;
  }
  if (size != 0) *path = '\0';
  setioresult(EINVAL);
  return EINVAL;
}

}  // namespace optxv
