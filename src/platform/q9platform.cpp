#include "platform/q9platform.h"

#include <sys/utsname.h>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace optxv {

// All constants, so that the load step finds them made, in whatever order the sources are
// initialised.
std::int32_t osfiletype = 4;
std::int32_t osplatform = missingplatform;
bool nativeislittleendian = true;
std::string_view osconsolename;
std::string_view osnullfilename;

namespace {

/// The first row of a system whose machine and release fit is its platform.
struct platformrow {
  std::string_view sysname;
  std::string_view machine;  ///< empty: any
  std::string_view release;  ///< what it begins with
  std::int32_t platform;
};

constexpr platformrow platformrows[] = {
    {"AIX", "", "", 4},          {"HP-UX", "", "", 5}, {"IRIX64", "", "", 6},
    {"Linux", "x86_64", "", 11}, {"Linux", "", "", 7}, {"SunOS", "i86pc", "", 12},
    {"SunOS", "", "5", 8},       {"OSF1", "", "", 9},  {"Darwin", "i386", "", 14},
    {"Darwin", "", "", 10},
};

struct devicerow {
  std::string_view nullfile;
  std::string_view console;
};

/// By file-system type.
constexpr devicerow devicerows[osfiletypetext.size()] = {
    {"nul", "con"}, {}, {}, {"", "SYS$OUTPUT"}, {"/dev/null", "/dev/tty"}, {}, {}};

std::int32_t thisplatform() noexcept {
  utsname system{};
  if (uname(&system) < 0) return missingplatform;
  return platformof(system.sysname, system.release, system.machine);
}

bool firstbyteislowest() noexcept {
  const std::int32_t one = 1;
  char first = 0;
  std::memcpy(&first, &one, 1);
  return first == 1;
}

}  // namespace

std::int32_t platformof(std::string_view sysname, std::string_view release,
                        std::string_view machine) noexcept {
  const auto row =
      std::find_if(std::begin(platformrows), std::end(platformrows), [&](const platformrow& r) {
        return r.sysname == sysname && (r.machine.empty() || r.machine == machine) &&
               release.starts_with(r.release);
      });
  return row == std::end(platformrows) ? missingplatform : row->platform;
}

void initq9platform() {
  osplatform = thisplatform();
  nativeislittleendian = firstbyteislowest();
  const bool known = osfiletype >= 0 && osfiletype < std::ssize(osfiletypetext);
  const devicerow devices = known ? devicerows[osfiletype] : devicerow{};
  osnullfilename = devices.nullfile;
  osconsolename = devices.console;
}

}  // namespace optxv
