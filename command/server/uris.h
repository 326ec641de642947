// The names of documents as clients give them, and the files that they stand for.
#pragma once

#include <string>
#include <string_view>

namespace command {

/// The path of a `file:` URI, with its escapes resolved and without `.` and `..` in it; empty for
/// every other URI, and for one that names no absolute path of this system.
std::string pathof(std::string_view uri);

/// The URI of an absolute path.
std::string uriof(std::string_view path);

/// A name as a reader in a folder takes it: the path, without `.` and `..` in it.
std::string pathin(std::string_view folder, std::string_view name);

/// How a reader in a folder would name a file: from that folder if the file is below it, else the
/// path as it is.
std::string namein(std::string_view folder, std::string_view path);

}  // namespace command
