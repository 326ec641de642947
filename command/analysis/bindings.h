// Which definition parameter files belong to, as a project says it in a file optxv.json.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <variant>
#include <vector>

#include "analysis/finding.h"

namespace command {

/// A definition and the parameter files that are read with it.
struct binding {
  std::string definition = {};          ///< a path, from the folder of the bindings
  std::vector<std::string> files = {};  ///< patterns, from there too
  bool tokens = false;                  ///< reads begin in token mode
};

/// What one optxv.json says, or the settings of a client.
struct bindings {
  std::string folder = {};  ///< absolute; nested files are looked for from there too
  std::vector<binding> all = {};
  bool lint = false;        ///< an editor shows what lint tells
  bool inlayhints = false;  ///< an editor shows what macros and multi-lists hand on

  /// The binding of a parameter file, the first that has it; nil if there is none. The path is
  /// absolute.
  const binding* offile(std::string_view path) const;
  /// The binding whose definition that file is, the first; nil if there is none.
  const binding* ofdefinition(std::string_view path) const;
  /// The parameter files of a binding that are there, as paths from the folder, sorted. A folder in
  /// it that may not be listed is passed over. Any other failure of the system is the fault, and
  /// there may be files that are not among those given.
  std::vector<std::string> filesof(const binding& of, std::error_code& fault) const;
};

/// The name of the file.
inline constexpr std::string_view bindingsname = "optxv.json";

/// Reads the JSON of such a file, or of settings. The finding says what is wrong, at its place, or
/// in the file as a whole. Unknown members are faults too, but `$schema` is none.
std::variant<bindings, finding> parsebindings(std::string_view json, const std::string& folder);

/// What is said of such a file that cannot be read.
finding unreadablebindings(const std::string& why);

/// The path of the nearest optxv.json from a folder upwards; nothing if there is none. Where the
/// system does not tell whether there is one, its path: reading it then tells why.
std::optional<std::string> nearestbindings(const std::string& folder);

/// Whether a path, without `.` and `..` in it, is one that a pattern means: `*` is any part of a
/// name, `?` one byte of it, and a name `**` any number of folders, also none. A name that begins
/// with a dot is only meant by a pattern that has the dot.
bool meant(std::string_view pattern, std::string_view path);

}  // namespace command
