// The rules about definitions. Each tells what it finds in the order of the table; what a record
// with a fault declares is left out.
#pragma once

#include "lint/rules.h"

namespace command {

// Texts
void optionswithouttext(const declaredtable& table, const telling& tell);
void itemswithouttext(const declaredtable& table, const telling& tell);
void unusedgroups(const declaredtable& table, const telling& tell);
void groupswithouttext(const declaredtable& table, const telling& tell);

// Names
void namesbehindothers(const declaredtable& table, const telling& tell);
void namesoutofreach(const declaredtable& table, const telling& tell);
void hiddensynonyms(const declaredtable& table, const telling& tell);
void namesofotherstyle(const declaredtable& table, const telling& tell);
void namesalike(const declaredtable& table, const telling& tell);

// Values
void choicesofone(const declaredtable& table, const telling& tell);
void defaultsthatnobodycanwrite(const declaredtable& table, const telling& tell);
void unexplaineddefaults(const declaredtable& table, const telling& tell);
void foreignmarks(const declaredtable& table, const telling& tell);

// Marks
void markswithouttext(const declaredtable& table, const telling& tell);
void markswithoutreplacement(const declaredtable& table, const telling& tell);
void markedreplacements(const declaredtable& table, const telling& tell);

}  // namespace command
