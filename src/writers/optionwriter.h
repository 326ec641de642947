// The writer of documents about an option table. Programs that include it from the installed
// headers (optxv/writers/optionwriter.h) are compiled as C++20, as the library is.
#pragma once

#include <string>
#include <string_view>

#include "foundation/runtime.h"
#include "foundation/visibility.h"

namespace optxv {

class tzmaoptions;

/// Writes the options that a definition declares, in one of three forms. It shows only the
/// definition, never a value that was set, and changes nothing. Call it when the definition has
/// been read.
///
/// Each operation creates or empties the file it is given; an empty name is standard output. It
/// raises einouterror if the file cannot be created or a write fails, and leaves in the file what
/// was written so far.
///
/// What each writes to a file, the operation that ends in "text" gives as a text in memory instead.
///
/// The handle of the C interface is the address of the option object:
///
///     optxv::tzmaoptionwriter writer(*static_cast<optxv::tzmaoptions*>(handle));
///     writer.writeashtml("options.html");
///
/// The bodies are in optiontable.cpp, definitiondocument.cpp and sourceinclude.cpp.
class OPTXV_EXPORT tzmaoptionwriter : public tobject {
 public:
  /// BORROWS: the object, which outlives the writer.
  explicit tzmaoptionwriter(const tzmaoptions& options);
  ~tzmaoptionwriter() override;

  /// One HTML table: a row for each option with the raw data of its definition, below it its
  /// allowed values or its members, then the synonyms. Texts count as ISO 8859-1.
  void writeashtml(std::string_view fname) const;
  std::string htmltext() const;

  /// The table in the definition language: the options with their long help, the synonyms, what is
  /// deprecated and what is obsolete.
  /// KEEP: a listing for people. String lists, groups, and the indicator, lookup and eolcomm
  /// records are left out, an immediate option has one number too few, and the option Help that
  /// every table begins with is written like any other, so the text may not read back.
  void writedefinition(std::string_view fname) const;
  std::string definitiontext() const;

  /// An include file in Object Pascal: for each class of value an enumeration of its options and an
  /// array that maps them to their numbers.
  /// KEEP: names go in as they are, those of dot options too, which no compiler takes.
  void writedelphiinc(std::string_view fname) const;
  std::string delphiinctext() const;

 private:
  const tzmaoptions& options_;
};

}  // namespace optxv
