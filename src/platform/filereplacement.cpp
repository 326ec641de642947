#include "platform/filereplacement.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <filesystem>

#include "foundation/interrupted.h"
#include "platform/descriptors.h"
#include "platform/heldsignals.h"

namespace optxv {
namespace {

namespace fs = std::filesystem;

using fault = replacefault;
using result = std::optional<fault>;

constexpr const char* unopened = "cannot be opened";
constexpr const char* unwritten = "cannot be written";
constexpr const char* unreplaced = "cannot be renamed into place";

// --- Where a name leads

/// An entry of a folder that is not a link, or an open descriptor of this process or another one.
struct place {
  fs::path path;
  enum { entry, owndescriptor, otherdescriptor } kind = entry;
};

bool isprocess(const fs::path& folder) {
  return folder.native().starts_with("/proc/");
}

/// Whether a folder has the open descriptors of this process. Sets the error if that is not known.
bool isowndescriptors(const fs::path& folder, std::error_code& error) {
  for (const char* name : {"/proc/self/fd", "/proc/thread-self/fd"}) {
    const fs::path own = fs::canonical(name, error);
    if (error == std::errc::no_such_file_or_directory) error.clear();  // no such file system here
    if (error || folder == own) return !error;
  }
  return false;
}

/// Where a link leads; empty for what is none, or not there. Sets the error if that is not known.
fs::path targetof(const fs::path& path, std::error_code& error) {
  const fs::path target = fs::read_symlink(path, error);
  if (error == std::errc::invalid_argument || error == std::errc::no_such_file_or_directory)
    error.clear();
  return target;
}

/// Follows the links of a name, even to a file that does not exist yet. Nothing, with errno set, if
/// a folder on the way does not exist, or if the system does not tell where it leads. As many links
/// are followed as the system itself follows.
std::optional<place> placeof(fs::path name) {
  constexpr int mostlinks = 40;
  for (int links = 0; links <= mostlinks; links++) {
    std::error_code error;
    const fs::path folder = fs::canonical(name.has_parent_path() ? name.parent_path() : ".", error);
    const fs::path path = folder / name.filename();
    if (!error && isowndescriptors(folder, error)) return place{path, place::owndescriptor};
    const fs::path target = error ? fs::path() : targetof(path, error);
    errno = error.value();
    if (error) return std::nullopt;
    if (target.empty()) return place{path};
    if (isprocess(folder) && folder.filename() == "fd") return place{path, place::otherdescriptor};
    name = folder / target;
  }
  errno = ELOOP;
  return std::nullopt;
}

// --- Ways of writing

/// Syncs a file or a folder to the disk. Some file systems cannot do that, which is not a failure.
bool synced(int file) {
  return untilnotinterrupted([&] { return fsync(file); }) == 0 || errno == EINVAL ||
         errno == ENOTSUP || errno == EROFS;
}

result writethrough(int number, std::string_view product) {
  descriptor out(number);
  if (out.number() < 0) return fault{unopened};
  if (!writeall(out.number(), product) || !out.finish()) return fault{unwritten};
  return std::nullopt;
}

int descriptornumber(const fs::path& path) {
  const std::string digits = path.filename();
  int number = -1;
  const char* end = digits.data() + digits.size();
  return std::from_chars(digits.data(), end, number).ptr == end ? number : -1;
}

int duplicate(int number) {
  return fcntl(number, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
}

int openas(const fs::path& path, int flags) {
  return untilnotinterrupted(
      [&] { return open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY | flags); });
}

result writeinplace(const fs::path& path, std::string_view product) {
  descriptor out(openas(path, O_TRUNC));
  if (out.number() < 0) return fault{unopened};
  if (writeall(out.number(), product) && synced(out.number()) && out.finish()) return std::nullopt;
  return fault{"cannot be written completely; it was being written in place"};
}

/// A name for a new file that no other thread or process takes at the same moment.
std::string freshname() {
  static std::atomic<unsigned> made{0};
  std::array<char, 48> name{};
  std::snprintf(name.data(), name.size(), ".optxv-%x-%x", static_cast<unsigned>(getpid()), made++);
  return name.data();
}

/// A new file that will replace an old one, or take a free name. OWNS: the file, which is removed
/// unless it is renamed.
class newfile {
 public:
  newfile(const fs::path& place, mode_t mode)
      : place_(place), out_(openfresh(mode)), exists_(out_.number() >= 0) {}
  ~newfile() {
    if (exists_) unlink(path_.c_str());
  }
  newfile(const newfile&) = delete;
  newfile& operator=(const newfile&) = delete;

  bool exists() const { return exists_; }
  /// Gives it the owner and group of an old file; false if that is not permitted.
  bool changeowner(const struct stat& old) const {
    struct stat mine = {};
    if (fstat(out_.number(), &mine) != 0) return false;
    const bool same = mine.st_uid == old.st_uid && mine.st_gid == old.st_gid;
    return same || fchown(out_.number(), old.st_uid, old.st_gid) == 0;
  }
  bool changemode(mode_t mode) const { return fchmod(out_.number(), mode) == 0; }
  bool write(std::string_view product) const { return writeall(out_.number(), product); }
  bool finish() { return synced(out_.number()) && out_.finish(); }
  /// Renames it to its final name.
  bool rename() {
    exists_ = std::rename(path_.c_str(), place_.c_str()) != 0;
    return !exists_;
  }

 private:
  int openfresh(mode_t mode) {
    constexpr int mosttries = 100;  // a process before may have had our number, and have crashed
    int number = -1;
    for (int tries = 0; tries < mosttries && number < 0; tries++) {
      path_ = place_.parent_path() / freshname();
      number = untilnotinterrupted(
          [&] { return open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode); });
      if (number < 0 && errno != EEXIST) break;
    }
    return number;
  }

  fs::path place_;
  std::string path_;
  descriptor out_;
  bool exists_;
};

/// The new name exists already; this makes sure that it stays. A folder that cannot be read cannot
/// be synced to the disk either.
result syncfolder(const fs::path& folder) {
  const descriptor opened(untilnotinterrupted(
      [&] { return open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
  if (opened.number() < 0 || synced(opened.number())) return std::nullopt;
  return fault{"is written, but its folder cannot be synced to the disk"};
}

/// Writes a new file and renames it to its final name.
result fill(newfile& fresh, const fs::path& path, std::string_view product,
            const struct stat* old) {
  if (!fresh.exists()) return fault{"cannot be created"};
  if (!fresh.write(product)) return fault{unwritten};
  if (old != nullptr && !fresh.changemode(old->st_mode & 07777))
    return fault{"cannot be given its mode"};
  if (!fresh.finish()) return fault{unwritten};
  if (!fresh.rename()) return fault{unreplaced};
  return syncfolder(path.parent_path());
}

result create(const fs::path& path, std::string_view product) {
  const heldsignals held;
  newfile fresh(path, 0666);
  return fill(fresh, path, product, nullptr);
}

/// Whether an error means that a file cannot be replaced, though it may be possible to write it.
bool isrefusal(int error) {
  constexpr std::array<int, 4> refusals = {EACCES, EPERM, EROFS, EBUSY};
  return std::ranges::find(refusals, error) != refusals.end();
}

result replace(const fs::path& path, std::string_view product, const struct stat& old) {
  newfile fresh(path, 0600);
  const bool takes = fresh.exists() ? fresh.changeowner(old) : !isrefusal(errno);
  if (!takes) return writeinplace(path, product);
  const result failed = fill(fresh, path, product, &old);
  const bool refused = failed && failed->what == unreplaced && isrefusal(failed->error);
  return refused ? writeinplace(path, product) : failed;
}

// --- The choice of a way

result writeentry(const fs::path& path, std::string_view product) {
  struct stat old = {};
  if (stat(path.c_str(), &old) != 0)
    return errno == ENOENT ? create(path, product) : fault{unopened};
  if (!S_ISREG(old.st_mode)) return writethrough(openas(path, 0), product);
  if (faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0) return fault{unopened};
  const heldsignals held;
  return old.st_nlink > 1 ? writeinplace(path, product) : replace(path, product, old);
}

}  // namespace

std::optional<replacefault> replacefile(const std::string& destination, std::string_view product) {
  if (destination.empty()) return writethrough(duplicate(STDOUT_FILENO), product);
  const std::optional<place> where = placeof(destination);
  if (!where) return fault{unopened};
  if (where->kind == place::owndescriptor)
    return writethrough(duplicate(descriptornumber(where->path)), product);
  if (where->kind == place::otherdescriptor)
    return writethrough(openas(where->path, O_APPEND), product);
  return writeentry(where->path, product);
}

}  // namespace optxv
