// The former name of two headers, for sources that still include it; goes with the last of them.
#pragma once

#include "text/names.h"
#include "text/printable.h"

namespace command {

inline std::string withoutcontrols(std::string_view text) {
  return printableline(text);
}

}  // namespace command
