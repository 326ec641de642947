// The record kinds of a definition file beside the four scalar ones. Each function reads what
// stands behind the type word of its record, and the lines that continue it.
#pragma once

#include "definition/definitionreader.h"

namespace optxv {

/// usermap, default, hc, group, text; then a value, hc and text a line. The option is in the table
/// before its items.
void readenumstr(definitionreader& record);
/// The same with integers. KEEP: the option enters the table after its items.
void readenumint(definitionreader& record);
/// usermap, hc, group, text; then any number of members a line, found by the lookup rule in force.
/// The list is in the table before its members, so that it may name itself. A member that is not
/// found is kept as -1. A comma has no place among them: it is reported, and the rest of its line
/// dropped.
void readmultilist(definitionreader& record);
/// usermap, hc, group, text.
void readstrlist(definitionreader& record);
/// hc, group, text; then a member a line, by its whole name. The macro enters the table last.
void readmacro(definitionreader& record);
/// A kind word, hc, group, text. An unknown word makes no option.
void readimmediate(definitionreader& record);
/// The record's name stands for the option that the field names.
void readsynonym(definitionreader& record);
/// Number, hc, text.
void readgroup(definitionreader& record);
/// A heading; then a marked name and its text a line.
void readdeprecated(definitionreader& record);
void readobsolete(definitionreader& record);
/// The record's name opens indicator entries in parameter text.
void readindicatorkey(definitionreader& record);
/// The record's name is the code of the lookup rule, in force from here on.
void readlookup(definitionreader& record);
/// The rest of the line are the characters that begin an end-of-line comment in parameter text;
/// the first one that may not be one ends the list.
void readeolcomm(definitionreader& record);

}  // namespace optxv
