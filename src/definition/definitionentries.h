// The kinds of record in a definition file, except the four plain scalar ones. Each function reads
// what follows the type word of its record, and the lines that continue it.
#pragma once

#include "definition/definitionreader.h"

namespace optxv {

/// usermap, default, hc, group, text; then one value per line, with its hc and text. The option
/// enters the table before its items.
void readenumstr(definitionreader& record);
/// The same with integers. KEEP: the option enters the table after its items.
void readenumint(definitionreader& record);
/// usermap, hc, group, text; then any number of members per line, found by the lookup rule in
/// force. The list enters the table before its members, so it may name itself. A member that is not
/// found is kept as -1. A comma is not allowed among the members: it is reported, and the rest of
/// its line is dropped.
void readmultilist(definitionreader& record);
/// usermap, hc, group, text.
void readstrlist(definitionreader& record);
/// hc, group, text; then one member per line, by its whole name. The macro enters the table last.
void readmacro(definitionreader& record);
/// A kind word, hc, group, text. An unknown word makes no option.
void readimmediate(definitionreader& record);
/// The record's name stands for the option that the field names.
void readsynonym(definitionreader& record);
/// Number, hc, text.
void readgroup(definitionreader& record);
/// A heading; then one marked name per line, with its text.
void readdeprecated(definitionreader& record);
void readobsolete(definitionreader& record);
/// The record's name opens indicator entries in parameter text.
void readindicatorkey(definitionreader& record);
/// The record's name is the code of the lookup rule, which is in force from here on.
void readlookup(definitionreader& record);
/// The rest of the line is the characters that begin an end-of-line comment in parameter text. The
/// first character that is not allowed as one ends the list.
void readeolcomm(definitionreader& record);

}  // namespace optxv
