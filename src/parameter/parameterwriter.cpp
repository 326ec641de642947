// The writer of parameter files, tzmaoptions::optwriteparameterfile.
//
// A file holds a line for every value that has been set, in table order, then the dot options, then
// the indicators. A value out of its bounds is written between two lines that turn the test of
// bounds off and on; that of a dot option is not. Reading a file gives the same values again
// wherever the language can express them. It has no escape, so quotes within quotes, blanks at the
// ends of a text, a comment character and a name that the rule of lookup does not find are lost.

#include "foundation/runtime.h"
#include "language/words.h"
#include "options/optionkinds.h"
#include "options/zmaoptions.h"
#include "parameter/dotoptions.h"
#include "parameter/entries.h"
#include "parameter/indicators.h"

namespace optxv {

namespace {

/// The table's name of the first option that turns the test of bounds off, or the empty text.
std::string_view boundsswitch(const tzmaoptions& options) {
  for (std::int32_t i = 0; i < options.getcount(); ++i) {
    const auto* option = askind<timmediateoption>(options.getobjects(i));
    if (option != nullptr && option->immediatekind == immediateNoBounds)
      return options.getstrings(i);
  }
  return {};
}

void writescalar(textfile& file, const toption& option) {
  file.write(option.getname());
  if (option.subtype != optsubNoValue) {
    file.write("=");
    file.write(strexternal(option.getasstring()));
  }
  if (option.subtype == optsub2Values) {
    file.write(" ");
    file.write(strexternal(option.getasstring2()));
  }
  endline(file);
}

/// An item goes out in full, unlike a scalar value, whose quotes may not fit a bounded text.
/// KEEP: under the table's name, while a scalar option is written under its display name.
void writeitems(textfile& file, std::string_view tablename, const tstrlistoption& list) {
  for (std::int32_t i = 0; i < list.count(); ++i) {
    const std::string_view item = list.item(i);
    const std::string_view quote = needsquotes(item) ? "\"" : "";
    for (const std::string_view part : {tablename, std::string_view("="), quote, item, quote})
      file.write(part);
    endline(file);
  }
}

/// Writes nothing for the kinds that hold neither a scalar value nor items.
void writeoption(textfile& file, std::string_view tablename, const toption& option) {
  withkind(option, [&](const auto& typed) {
    using kind = std::remove_cvref_t<decltype(typed)>;
    if constexpr (scalarkind<const kind>)
      writescalar(file, typed);
    else if constexpr (std::is_same_v<kind, tstrlistoption>)
      writeitems(file, tablename, typed);
  });
}

void writeswitch(textfile& file, std::string_view name, std::string_view state) {
  file.write(name);
  file.write(state);
  endline(file);
}

/// KEEP: the switch lines are written even if the table has no such switch, then without a name.
void writetable(textfile& file, const tzmaoptions& options) {
  const std::string_view nobounds = boundsswitch(options);
  for (std::int32_t i = 0; i < options.getcount(); ++i) {
    const toption& option = *options.getobjects(i);
    const std::string_view name = options.getstrings(i);
    if (option.defined == 0 || name.starts_with('.')) continue;
    if (option.outofbounds != 0) writeswitch(file, nobounds, " 1");
    writeoption(file, name, option);
    if (option.outofbounds != 0) writeswitch(file, nobounds, " 0");
  }
}

}  // namespace

void tzmaoptions::writeparameters(textfile& file) const {
  writetable(file, *this);
  dotoptionsof(*this).writetoparams(file);
  if (const tindicatorlist* indicators = indicatorsof(*this)) indicators->writetoparams(file);
}

std::int32_t tzmaoptions::optwriteparameterfile(std::string_view filename) {
  textfile file;
  file.assign(filename);
  file.rewrite();
  if (const int error = ioresult(); error != 0) {
    addfilefailure(optMsgUserError, optxv_fault_cannot_write, "Cannot write parameter file ",
                   filename, error, "   ");
    return error;
  }
  writeparameters(file);
  file.close();
  _Q9error_check();
  return 0;
}

}  // namespace optxv
