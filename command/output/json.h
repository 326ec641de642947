// Findings for a program, as JSON.
#pragma once

#include <initializer_list>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "output/reporter.h"

namespace command {

/// A text as a JSON string, with its quotes. Printable; bytes that are not UTF-8 are replaced.
std::string jsonstring(std::string_view text);

/// A name, and a value that is JSON already.
using jsonmember = std::pair<std::string_view, std::string>;

/// An object in one line. Members whose value is empty are left out. Where there are millions to
/// write, this takes a fraction of the time of a tree of values.
std::string jsonobject(std::initializer_list<jsonmember> members);
/// A list of such values in one line.
std::string jsonlist(const std::vector<std::string>& values);

/// A value as text, each line after so many blanks, without a line feed at the end. Printable;
/// bytes that are not UTF-8 are replaced.
std::string jsontext(const nlohmann::ordered_json& value, std::size_t blanks = 0);

/// Writes one JSON object: the list `diagnostics`, a row at a time as the findings come, and at the
/// end `summary`. The line of a finding is left out where the row before has the same.
/// BORROWS: the stream.
std::unique_ptr<reporter> makejson(std::FILE* out);

}  // namespace command
