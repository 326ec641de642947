// The rules about parameter text. Entries with a fault never come here.
#pragma once

#include "lint/rules.h"

namespace command {

// Values and their effect
void equalsdefault(const entryfacts& entry, const telling& tell);
void overridden(const entryfacts& entry, const telling& tell);
void overriddenelsewhere(const entryfacts& entry, const telling& tell);
void deprecatedname(const entryfacts& entry, const telling& tell);
void obsoletename(const entryfacts& entry, const telling& tell);
void modedependent(const entryfacts& entry, const telling& tell);
void listedtwice(const entryfacts& entry, const telling& tell);
void boundsleftoff(const leavingfacts& left, const telling& tell);

// Spelling
void namecase(const entryfacts& entry, const telling& tell);
void itemcase(const entryfacts& entry, const telling& tell);

}  // namespace command
