// What the subcommands that document a definition have in common.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "tasks/request.h"
#include "writers/optionwriter.h"

namespace command {

/// Reads the definition, tells what is wrong with it, and hands the table to `make`, which gives
/// the status of its own work: the result, unless it is 0 and there were errors. What was read up
/// to an error is documented all the same.
int withtable(const request& given, const std::function<int(const optxv::tzmaoptions&)>& make);

/// One of the forms in which the library documents a table.
using documentform = void (optxv::tzmaoptionwriter::*)(std::string_view file) const;

/// Reads the definition as above and delivers that form of it to the output. Gives the status.
int document(const request& given, documentform form);

/// Delivers a text to a file, or says why not. Gives the status.
int deliverto(const std::string& file, std::string_view text);

}  // namespace command
