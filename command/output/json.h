// Findings for a program, as JSON.
#pragma once

#include <memory>
#include <nlohmann/json.hpp>
#include <string>

#include "output/reporter.h"

namespace command {

/// A value as text, each line after so many blanks, without a line feed at the end. Printable;
/// bytes that are not UTF-8 are replaced.
std::string jsontext(const nlohmann::ordered_json& value, std::size_t blanks = 0);

/// Writes one JSON object: the list `diagnostics`, a row at a time as the findings come, and at the
/// end `summary`. The line of a finding is left out where the row before has the same.
/// BORROWS: the stream.
std::unique_ptr<reporter> makejson(std::FILE* out);

}  // namespace command
