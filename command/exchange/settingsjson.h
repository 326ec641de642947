// What is set of a table, as JSON.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "exchange/settingsform.h"

namespace command {

/// Told what JSON cannot hold of an option: of its first or second value, `which`.
using settingsloss =
    std::function<void(std::int32_t optnr, std::int32_t which, const std::string& text)>;

/// What is set, in the order of the table, in the form of settingsform.h; with `all`, every option,
/// by its default where it is not set. Numbers are written so that they read as the same ones. A
/// loss is left out; but of a text that is no UTF-8, the bytes that are none become other
/// characters.
ordered_json settingsjson(const optxv::options& options, bool all, const settingsloss& lost);

}  // namespace command
