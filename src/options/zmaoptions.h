// The option object: one option database with its table, its message queue and its readers.
//
// Every exported function only calls the method of the same name here. The class is declared in
// this one header, and the bodies of its methods are in the file of their concern:
//   options/zmaoptions.cpp          life, table and counts
//   options/messages.cpp            the message queue
//   options/bynumber.cpp            access by number
//   options/byname.cpp              lookup and access by name
//   definition/definitionreader.cpp optreaddefinition
//   parameter/parameterreader.cpp   optreadparameterfile, optreadfromstr, optreadfrompchar, parse
//   parameter/dotoptions.cpp        optgetdotoptnr, optgetdotoptuel
//   parameter/indicators.cpp        the indicator getters
//   parameter/parameterwriter.cpp   optwriteparameterfile
//   writers/help.cpp                optshowhelp
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/boundedstring.h"
#include "foundation/lists.h"
#include "foundation/strutilx.h"
#include "foundation/visibility.h"
#include "language/listener.h"
#include "language/places.h"
#include "options/messages.h"
#include "options/nameindex.h"
#include "options/origins.h"
#include "options/tablememory.h"
#include "options/toption.h"

namespace optxv {

class suggestions;
class textfile;
struct linesource;
class tminiparser;

/// The rule by which a name finds an option; the definition's lookup record sets it.
enum lookuprule : std::uint8_t {
  lookupNormal,  ///< the whole name
  lookupPath,    ///< words of three characters or more
  lookupMinos,   ///< a first word of three characters, later words of four
};

/// The names of the rules in the definition language, in the order of their numbers.
inline constexpr std::array<std::string_view, 3> lookupcodes = {"Normal", "Path", "Minos"};

/// Prepares the module: empties dllloadpath and sets charpath from the file-system type of the
/// platform (0 to 5; any other number leaves charpath as it is). The frame calls it when the
/// library is loaded.
void initzmaoptions(int osfiletype);

/// The load path that the caller stores and reads back. It is empty after loading and shared by all
/// objects, and has no effect inside the library.
shortstring& dllloadpath();

/// The character between the values of a multi-list, ':' on POSIX systems.
char charpath();

/// Make the empty lists that an object holds for the entries of its parameter text. They are
/// declared here and defined with the readers of the entries, so that the object needs to know the
/// lists only as owning lists.
/// BORROWS: owner, which outlives the list.
std::unique_ptr<txstringlistobj> makedotoptionlist(tzmaoptions* owner);
std::unique_ptr<txlistobj> makeindicatorlist(tzmaoptions* owner);

/// The 64-bit hash of Fowler, Noll and Vo, form 1a, of bytes as they come.
class bytehash {
 public:
  void add(std::uint8_t byte) { value_ = (value_ ^ byte) * 0x100000001B3U; }
  std::uint64_t value() const { return value_; }

 private:
  std::uint64_t value_ = 0xCBF29CE484222325U;
};

/// What a definition marks a synonym with. For reading, a mark is kept with the option and holds
/// for all its synonyms; this is of the one that the definition named.
struct synonymmarks {
  bool obsolete = false;
  bool deprecated = false;
  kepttext text = {};  ///< of the last mark
};

/// One option database. The exported handle is its address.
///
/// OWNS: the four lists, and through them every option, group, synonym and message; the dot options
/// and the indicators. BORROWS: nothing but the reader that a running read holds in `parser`.
/// INVARIANTS: optionlist only grows and is never sorted, so a number stays good for the life of
/// the object; `parser` is nil and filedepth 0 whenever no read is running. One thread at a time.
/// Nothing here prints, and no fault in any text is an exception. The only exceptions that leave a
/// method are those for memory that ran out, and for a failed write after a file was opened.
///
/// Conventions of the methods of the exported interface: an optnr counts from 1 in table order; a
/// result is 1 for success and 0 for failure unless another one is described; a bad number or a
/// wrong kind gives a result, never a message; "cleared" means set to 0 or the empty text before
/// anything else, and an out argument that is not said to be cleared stays untouched on failure.
class tzmaoptions : public toptionx {
 public:
  OPTXV_EXPORT tzmaoptions();
  OPTXV_EXPORT ~tzmaoptions() override;
  tzmaoptions(const tzmaoptions&) = delete;
  tzmaoptions& operator=(const tzmaoptions&) = delete;

  // --- The table -----------------------------------------------------------------------------

  /// Makes an option of a class: the arguments of its constructor without the table.
  template <class Option, class... Arguments>
  std::unique_ptr<Option> make(std::string_view name, const Arguments&... arguments) {
    static_assert(alignof(Option) <= tablememory::alignment);
    return std::unique_ptr<Option>(new (memory) Option(name, this, arguments...));
  }
  /// Appends an option under that name, without any check, and gives its 0-based position.
  /// OWNS: the option from here on.
  std::int32_t addoption(std::string_view name, std::unique_ptr<toption> option);
  /// Keeps it known whether a string list holds items.
  void noteitems(const tstrlistoption& list);
  /// Appends a synonym for the option at a 0-based position (-1 where none was found).
  void addsynonym(std::string_view name, std::int32_t position);
  /// Appends a group. OWNS: the group from here on.
  void addgroup(std::string_view name, std::unique_ptr<tgroupobj> group);

  std::int32_t getcount() const { return optionlist.count(); }
  std::int32_t getgroupcount() const { return grouplist.count(); }
  std::int32_t getmessagecount() const { return messagelist.count(); }
  /// The table's name of a 0-based position, empty outside the table.
  std::string_view getstrings(std::int32_t position) const;
  /// The option at a 0-based position, nil outside the table.
  toption* getobjects(std::int32_t position) const {
    return position >= 0 && position < getcount()
               ? objectof<toption>(optionlist.getobject(position))
               : nullptr;
  }
  /// The group at a 0-based position. REQUIRES: the position is in grouplist.
  tgroupobj* groupat(std::int32_t position) const;
  /// The option of the synonym at a 0-based position, nil for one whose target was not found.
  /// REQUIRES: the position is in synonymlist.
  toption* synonymtarget(std::int32_t position) const;
  /// The 0-based position in optionlist of that option; -1 and REQUIRES likewise.
  std::int32_t synonymposition(std::int32_t position) const;
  /// Marks that synonym, after which the text is that of all its marks. REQUIRES likewise; the mark
  /// is one of synonyms.
  void marksynonym(std::int32_t position, deprecationmark mark, kepttext text);
  /// What marks that synonym; nothing does for most.
  synonymmarks marksof(std::int32_t position) const;
  /// deffilename without its directory.
  std::string_view getfilename() const;
  /// The display form of a name: under Minos lookup every '_' is a blank.
  shortstring nounderscore(std::string_view name) const;
  tzmaoptions* optgethandle() { return this; }

  // --- Counts and switches -------------------------------------------------------------------

  void optdefinitionfile(shortstring& name) const { name = getfilename(); }
  std::int32_t optcount() const { return getcount(); }
  std::int32_t optgroupcount() const { return getgroupcount(); }
  std::int32_t optmessagecount() const { return getmessagecount(); }
  std::int32_t optsynonymcount() const { return synonymlist.count(); }
  /// The dot options; errors becomes the number of entries dropped for their faults.
  std::int32_t optdotoptcount(std::int32_t& errors) const;
  /// The indicators, 0 where the definition has none; errors as above.
  std::int32_t optindicatorcount(std::int32_t& errors) const;
  std::int32_t optrecentenabled() const { return recentenabled ? 1 : 0; }
  void optrecentenabledset(std::int32_t flag) { recentenabled = flag != 0; }
  /// Sets the mode in which each read begins, and gives the old one.
  std::int32_t opteolonlyset(std::int32_t flag);
  void optnoboundsset(std::int32_t flag) { nobounds = flag != 0; }
  /// Sets the echo for later reads, and for the one that is running.
  void optechoset(std::int32_t flag);
  /// The audit line of the build. The object is not used.
  static void optversion(shortstring& auditline);

  // --- The message queue ---------------------------------------------------------------------

  /// Adds a message. A leave message directly after its own enter message (same text) removes that
  /// one instead. A queue of maximummessages entries takes one marker in place of the message, and
  /// nothing after that. The kinds that are `located` get "line N: " before the text once a reader
  /// has read a line of a file; the whole is cut at 255 bytes.
  /// The listener gets the message with the facts, whether the queue takes it or not.
  void addmessage(messagekind kind, std::string_view text, const messagefacts& facts = {});
  /// As addmessage, for a text that is costly to make: make() is called only if the queue would
  /// take the text or there is a listener.
  template <class Make>
  void addmessagefrom(messagekind kind, const messagefacts& facts, Make make) {
    if (!queueclosed() || told)
      addmessage(kind, make(), facts);
    else
      notefault(kind);
  }
  /// Counts a message, of a kind that counts as an error, in faultsmet.
  void notefault(messagekind kind) {
    if (messagekinds[kind].counted) ++faultsmet;
  }
  /// The message of a number from 1, without a place: as the listener gets it, but without the end
  /// of a text that the queue had no room for after its line number.
  /// REQUIRES: the queue has that message. BORROWS: the texts, until the queue changes.
  optxv_message messageinfo(std::int32_t number) const;
  /// The two messages of a file that could not be opened or read: the words and the quoted name,
  /// then the system's number and its text after the indent.
  void addfilefailure(messagekind kind, std::int32_t fault, std::string_view words,
                      std::string_view filename, int code, std::string_view indent = {});
  /// Whether the queue has passed its limit, so that addmessage drops everything.
  bool queueclosed() const { return messagelist.count() > maximummessages; }
  /// The number of messages from a 0-based position on that count as errors inside the library,
  /// help lines among them.
  std::int32_t errorssince(std::int32_t first) const;
  std::int32_t errorcount() const { return errorssince(0); }

  void optclearmessages();
  void optaddmessage(std::string_view text) {
    addmessage(optMsgUserError, text, {.fault = optxv_fault_own});
  }
  /// Gives the message of that number (from 1) as the user should see it, and its kind. A bad
  /// number gives a text that says so and the kind optMsgUserError.
  void optgetmessage(std::int32_t number, shortstring& text, std::int32_t& kind) const;
  void opterrorcount(std::int32_t& errors, std::int32_t& warnings) const;

  // --- Facts for the listener ----------------------------------------------------------------

  /// Notes that an option got a value from where `assigning` says, and reports it to the listener.
  /// which: 1 or 2.
  void stored(const toption& option, std::int32_t which);
  /// Prepares a reader for a source of that name, and `assigning` for the values that it will
  /// assign.
  /// REQUIRES: the caller restores `assigning` after the read.
  void beginsource(tminiparser& reader, std::int32_t kind, std::string_view name);
  /// Ends the innermost source.
  void endsource(std::int32_t error);
  /// Ends, for the listener, all sources of a read that an exception ended.
  void abandonsources(std::int32_t error);
  /// A copy of a text that is good until the object is freed, zero-terminated; each text is kept
  /// once.
  std::string_view keeptext(std::string_view text);
  /// What knows the names that are near to a wrong one.
  suggestions& nearnames();

  // --- Readers and writers -------------------------------------------------------------------

  /// Adds the option Help and then the options of a definition file to what the table holds. Gives
  /// 0, or the system's error number with two messages if the file could not be opened or a read
  /// failed; what was read until then stays. Faults in the text are messages of kind
  /// optMsgDefineError.
  OPTXV_EXPORT std::int32_t optreaddefinition(std::string_view filename);
  /// Reads a parameter file; the result as for optreaddefinition.
  std::int32_t optreadparameterfile(std::string_view filename);
  /// As the two above for a file of that name with these bytes, any number of them. Files that the
  /// text names are opened as files. BORROWS: both texts, for the call.
  std::int32_t readdefinitiontext(std::string_view name, std::string_view bytes);
  std::int32_t readparametertext(std::string_view name, std::string_view bytes);
  /// Reads one line of parameter text.
  void optreadfromstr(std::string_view text);
  /// The same for bytes of any number, under the name of optreadfrompchar. BORROWS: the bytes, for
  /// the call.
  void readline(std::string_view bytes);
  /// The same for a zero-terminated text of any length; nil reads as empty. BORROWS: the text, for
  /// the call.
  void optreadfrompchar(const char* text);
  /// Reads the entries of the source that `parser` was given, beginning in end-of-line mode (true)
  /// or token mode. REQUIRES: a read is running, and no line has been read.
  void parse(bool toeol);
  /// Writes what has been set as a parameter file; an empty name is standard output. Gives 0, or
  /// the system's error number with two messages. A failed write raises the I/O exception.
  std::int32_t optwriteparameterfile(std::string_view filename);
  /// Writes the same lines to a file, or a text in memory, that is open for writing, and leaves it
  /// open. A failed write raises the I/O exception.
  void writeparameters(textfile& file) const;
  /// Adds help lines to the queue: those of one option by name, or by mode (see writers/help.h).
  void optshowhelp(std::string_view helpstr);

  // --- Lookup and access by name -------------------------------------------------------------

  /// The 0-based position of the first option that the lookup rule finds, or -1. Sees no synonyms.
  std::int32_t optlookup(std::string_view name) const;
  /// The option of that name or synonym, or nil. Keeps the name as given in curoptname, so that
  /// messages quote what the user wrote.
  toption* optionasobj(std::string_view name);
  /// Assigns a text to the option of that name; an unknown name does nothing.
  void setasstring(std::string_view name, std::string_view text);
  /// The value of that option as text, empty for an unknown name.
  shortstring getasstring(std::string_view name);

  /// optnr (from 1) and refnr of an option or synonym; 0 and both -1 for an unknown name.
  std::int32_t optfindstr(std::string_view name, std::int32_t& optnr, std::int32_t& refnr);
  /// text cleared; 0 for an unknown name.
  std::int32_t optgetvalstr(std::string_view name, shortstring& text);
  /// text cleared; 0 for an unknown name or an option without two values.
  std::int32_t optgetval2str(std::string_view name, shortstring& text);
  /// KEEP: finds by optlookup, so synonyms are unknown here.
  std::int32_t optsetrefnrstr(std::string_view name, std::int32_t refnr);
  /// The synonym at a position from 1 and its option's name, both cleared first. A synonym whose
  /// target was not found gives an empty option name.
  std::int32_t optgetsynonym(std::int32_t position, shortstring& synonym, shortstring& option);
  /// The number of items; -1 if the option is no string list, -2 if no option has that name.
  std::int32_t optlistcountstr(std::string_view name);
  /// The item at a position from 1: 1, or 0 for a bad position, -1, -2. item cleared.
  std::int32_t optreadfromliststr(std::string_view name, std::int32_t position, shortstring& item);
  /// Takes the first item off the list: 1, or 0 for an empty list, -1, -2. item cleared.
  std::int32_t optgetfromliststr(std::string_view name, shortstring& item);
  /// Takes the first item off the first non-empty string list that the selector allows: those made
  /// at run time, named "--...", for non-zero, all others for 0. Gives 1, or 0 if none fits.
  /// KEEP: option becomes the name of each non-empty list looked at, even on failure; item is
  /// untouched then.
  std::int32_t optgetfromanystrlist(std::int32_t selector, shortstring& option, shortstring& item);

  // --- Access by number: what an option is ---------------------------------------------------

  /// For a bad number defined, recent and refnr are 0, the three others -1.
  std::int32_t optgetinfonr(std::int32_t optnr, std::int32_t& defined, std::int32_t& recent,
                            std::int32_t& refnr, std::int32_t& data, std::int32_t& type,
                            std::int32_t& sub) const;
  std::int32_t optgetdefinednr(std::int32_t optnr, std::int32_t& defined) const;
  /// The display name, cleared first.
  std::int32_t optgetnamenr(std::int32_t optnr, shortstring& name) const;
  /// KEEP: the name as it is in the table, underscores and all; optgetopthelpnr gives the
  /// display name. Both cleared first.
  std::int32_t optgethelpnr(std::int32_t optnr, shortstring& name, shortstring& help) const;
  /// For a bad number the name is empty, the others -1.
  std::int32_t optgetopthelpnr(std::int32_t optnr, shortstring& name, std::int32_t& helpcontext,
                               std::int32_t& group) const;
  /// The group number, or -1.
  std::int32_t optgetoptgroupnr(std::int32_t optnr) const;
  std::int32_t optgetboundsint(std::int32_t optnr, std::int32_t& low, std::int32_t& high,
                               std::int32_t& defaultvalue) const;
  std::int32_t optgetboundsdbl(std::int32_t optnr, double& low, double& high,
                               double& defaultvalue) const;
  /// KEEP: only the default of a string option; an enumerated string has none here. Cleared.
  std::int32_t optgetdefaultstr(std::int32_t optnr, shortstring& text) const;

  // --- Access by number: values --------------------------------------------------------------

  /// All four cleared. Every option gives its name and text; the result is 1 only for scalar kinds.
  std::int32_t optgetvaluesnr(std::int32_t optnr, shortstring& name, std::int32_t& integer,
                              double& real, shortstring& text) const;
  // Programs ask for numbers in loops; that these two raise nothing spares the boundary its guard.
  std::int32_t optgetintnr(std::int32_t optnr, std::int32_t& value) const noexcept;
  std::int32_t optgetdblnr(std::int32_t optnr, double& value) const noexcept;
  std::int32_t optgetint2nr(std::int32_t optnr, std::int32_t& value) const;
  std::int32_t optgetdbl2nr(std::int32_t optnr, double& value) const;
  std::int32_t optgetstrnr(std::int32_t optnr, shortstring& text) const;
  std::int32_t optgetstr2nr(std::int32_t optnr, shortstring& text) const;

  /// The setters put the option's display name in curoptname and give 1 unless the queue gained an
  /// error. KEEP: so a warning is success, and a full queue hides a refusal.
  std::int32_t optsetintnr(std::int32_t optnr, std::int32_t value);
  std::int32_t optsetint2nr(std::int32_t optnr, std::int32_t value);
  std::int32_t optsetdblnr(std::int32_t optnr, double value);
  std::int32_t optsetdbl2nr(std::int32_t optnr, double value);
  std::int32_t optsetstrnr(std::int32_t optnr, std::string_view text);
  std::int32_t optsetstr2nr(std::int32_t optnr, std::string_view text);
  /// Assign the one of the arguments that fits the kind. KEEP: only these skip the rules for double
  /// quotes and for options without a value.
  std::int32_t optsetvaluesnr(std::int32_t optnr, std::int32_t integer, double real,
                              std::string_view text);
  std::int32_t optsetvalues2nr(std::int32_t optnr, std::int32_t integer, double real,
                               std::string_view text);
  std::int32_t optsetrefnr(std::int32_t optnr, std::int32_t refnr);
  /// Turns a number into a position and curoptname into the display name ("?" if the number is
  /// bad); true if it is good.
  bool checkoptnr(std::int32_t& optnr);

  // --- Access by number: reset, enumerations, groups, constants ------------------------------

  std::int32_t optresetnr(std::int32_t optnr);
  /// Resets every option, empties dot options, indicators and queue, clears both error counters.
  void optresetall();
  /// Clears `recent` of every option; empties dot options and indicators.
  void optresetallrecent();
  /// Resets every option with a non-zero `recent`; empties dot options and indicators.
  void optresetrecentchanges();

  /// Entries of an enumeration, numbered from 1. Cleared, in this and the three after it: count to
  /// -1; value to -1 and text to empty; helpcontext to -1 and help to empty; text to empty and
  /// entry to -1.
  std::int32_t optgetenumcount(std::int32_t optnr, std::int32_t& count) const;
  std::int32_t optgetenumvalue(std::int32_t optnr, std::int32_t entry, std::int32_t& value,
                               shortstring& text) const;
  std::int32_t optgetenumhelp(std::int32_t optnr, std::int32_t entry, std::int32_t& helpcontext,
                              shortstring& help) const;
  /// Only for enumerated strings: the current text and its entry, 0 for a text that is not listed.
  std::int32_t optgetenumstrnr(std::int32_t optnr, shortstring& text, std::int32_t& entry) const;
  /// The group at a position from 1. All cleared.
  std::int32_t optgetgroupnr(std::int32_t position, shortstring& name, std::int32_t& groupnr,
                             std::int32_t& helpcontext, shortstring& help) const;
  /// The position from 1 of the first group with that number, or -1.
  std::int32_t optgetgroupgrpnr(std::int32_t groupnr) const;
  /// The definition language's word for a kind; empty and 0 for a bad number.
  static std::int32_t optgettypename(std::int32_t type, shortstring& name);
  /// The name of a constant: group 1 data types, 2 kinds, 3 sub-types, 4 message kinds.
  /// KEEP: group 4 ends at 8; the name of the tenth kind of message is not given.
  static std::int32_t optgetconstname(std::int32_t group, std::int32_t index, shortstring& name);

  // --- Dot options and indicators ------------------------------------------------------------

  std::int32_t optgetdotoptnr(std::int32_t position, shortstring& name, std::int32_t& optnr,
                              std::int32_t& dimension, double& value) const;
  std::int32_t optgetdotoptuel(std::int32_t position, std::int32_t index, shortstring& label) const;
  std::int32_t optgetindicatornr(std::int32_t position, shortstring& equation,
                                 shortstring& variable, std::int32_t& equationdimension,
                                 std::int32_t& variabledimension, std::int32_t& mark) const;
  std::int32_t optgetequindicatornr(std::int32_t position, std::int32_t index,
                                    shortstring& label) const;
  std::int32_t optgetvarindicatornr(std::int32_t position, std::int32_t index,
                                    shortstring& label) const;

  // --- Fields --------------------------------------------------------------------------------

  heapstring deffilename;         ///< path of the definition file
  tablememory memory;             ///< of the options and of the texts that stay
  toptionlist optionlist;         ///< names and toption objects, in definition order
  txstringlist synonymlist;       ///< names; the object word is a 0-based position in optionlist
  txstringlistobj grouplist;      ///< names and tgroupobj objects
  txstringlist messagelist;       ///< texts; the object word is the kind
  tminiparser* parser = nullptr;  ///< the reader of the read that is running
  bool eolonly = true;            ///< reads begin in end-of-line mode
  shortstring curoptname;         ///< the option name that value messages quote
  bool echoflag = false;
  bool nobounds = false;
  std::unique_ptr<txstringlistobj> dotoptionlist;
  heapstring indicatorkey;
  std::unique_ptr<txlistobj> indicatorlist;  ///< nil without an indicator record
  std::int32_t filedepth = 0;                ///< parameter files that are open, one within another
  std::int32_t filesopened = 0;              ///< parameter files of the outermost read so far
  bool recentenabled = true;
  bool printing = true;  ///< help may print on standard output
  std::int32_t indicatorerrors = 0;
  std::int32_t dotoptionerrors = 0;
  std::uint8_t lookupmode = lookupNormal;
  charset eolcommset;
  std::int32_t assigndepth = 0;  ///< lists and macros being assigned, one within another
  std::int32_t handedon = 0;     ///< values given to members since the outermost of them began
  /// The argument or variable that is being read, with which messages begin in place of a line.
  std::string_view outersource = {};
  const std::uint64_t identity = nextidentity();  ///< of no other object of this process
  std::int64_t faultsmet = 0;  ///< messages of errors so far, also those that a full queue lost
  nameindex optionindex{optionlist};
  nameindex synonymindex{synonymlist};
  nameindex groupindex{grouplist};
  // Lookups under these rules and by number enter what is new: few definitions need them.
  mutable ruleindex pathindex{optionlist, pathkey};
  mutable ruleindex minosindex{optionlist, minoskey};
  mutable numberindex groupnumbers;  ///< of the groups in grouplist
  /// The positions of the string lists that hold items: those that programs define, and those made
  /// at run time, named "--...".
  std::array<std::set<std::int32_t>, 2> filledlists;
  std::optional<listener> told;  ///< in place, so that to listen takes no memory
  sourcenames sources;
  placelist messageplaces;  ///< of the entries of messagelist
  detaillist messagedetails;
  originlist origins;  ///< of the entries of optionlist
  /// Where the value that is being assigned comes from; outside reads, from a call.
  valueorigin assigning = {.road = roadCall};
  std::vector<synonymmarks> markedsynonyms;  ///< as synonymlist, up to the last that is marked
  /// The hash of the table as far as it was asked for: the value, and how many options are in it.
  /// Options are only ever added, so it goes on from there.
  bytehash markhash;
  std::int32_t markedoptions = 0;
  std::set<std::string, std::less<>> kepttexts;
  std::unique_ptr<suggestions> similar;  ///< nil until the first question for near names

 private:
  static std::uint64_t nextidentity();
  bool undoenter(messagekind kind, std::string_view text);
  std::int32_t enqueue(messagekind kind, std::string_view line, std::string_view text,
                       const messagefacts& facts, const textplace& place);
  void closequeue();
  void tellmessage(std::int32_t number, messagekind kind, std::string_view text,
                   const messagefacts& facts, const textplace& place) const;

  /// The option of a number, nil for a bad one.
  toption* optionat(std::int32_t optnr) const {
    return optnr < 1 ? nullptr : getobjects(optnr - 1);
  }
  /// Empties the dot options and the indicators.
  void clearentries();
  std::int32_t readdefinition(const linesource& source);
  std::int32_t readparameters(const linesource& source);
  /// If a read of the current source failed, reports that with the system's error number, clears
  /// the I/O error code and gives the number; else gives 0.
  int readfailure(messagekind kind, std::string_view words, std::string_view filename);
  template <class Setter>
  std::int32_t setbynumber(std::int32_t optnr, bool second, Setter setter);
};

/// Puts another value in place of one for the life of this object, and restores it at the end.
/// Reads that nest use it.
template <class Value>
class replacement {
 public:
  replacement(Value& place, Value next) : place_(place), saved_(place) { place = next; }
  ~replacement() { place_ = saved_; }
  replacement(const replacement&) = delete;
  replacement& operator=(const replacement&) = delete;

 private:
  Value& place_;
  Value saved_;
};

}  // namespace optxv
