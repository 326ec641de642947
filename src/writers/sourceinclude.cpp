// tzmaoptionwriter::writedelphiinc.

#include <array>

#include "options/optionkinds.h"
#include "options/zmaoptions.h"
#include "writers/optionwriter.h"
#include "writers/outfile.h"

namespace optxv {

namespace {

/// The words of the buckets in the names that are made of them.
/// KEEP: reals are called so here, unlike their kind, and the bucket of macros has no word.
constexpr std::array<std::string_view, 10> keyname = {
    "integer", "real", "string", "boolean", "enumstr", "enumint", "", "", "", ""};

constexpr int nobucket = -1;

/// The bucket of an option: kinds whose values are passed alike share one, and kinds without a
/// value have none, except macros.
int bucketof(const toption& option) {
  return withkind(option, []<class Option>(const Option&) {
    if constexpr (integerkind<Option>) return 0;
    if constexpr (doublekind<Option>) return 1;
    if constexpr (scalarkind<const Option>) return 2;
    if constexpr (std::is_same_v<Option, tmacrooption>) return 8;
    return nobucket;
  });
}

/// Lays out the items of one list: all padded alike, with a comma before all but the first.
class itemlayout {
 public:
  itemlayout(outfile& file, int width, int perline)
      : file_(file), width_(width), perline_(perline) {}

  void writeitem(std::string_view text) {
    if (count_ < 0) {
      file_.put("       ");
      count_ = 0;
    } else {
      if (count_ == perline_) {
        file_.put("\n");
        count_ = 0;
      }
      file_.put("     , ");
    }
    file_.put(padrightmod(text, width_));
    ++count_;
  }

 private:
  outfile& file_;
  int width_;
  int perline_;
  int count_ = -1;  // items on the line; -1 before the first
};

/// The options that have a bucket; the object word is the position in the table.
using buckets = std::array<txstringlist, keyname.size()>;

void fill(buckets& lists, const tzmaoptions& options) {
  for (std::int32_t i = 0; i < options.getcount(); ++i)
    if (const int bucket = bucketof(*options.getobjects(i)); bucket != nobucket)
      lists[static_cast<std::size_t>(bucket)].addobject(options.getstrings(i),
                                                        reinterpret_cast<void*>(std::intptr_t{i}));
}

void enumeration(outfile& file, std::string_view word, const txstringlist& options) {
  file.put("\n   Tpf", word, "keys = (\n");
  itemlayout items(file, 14, 5);
  for (std::int32_t i = 0; i < options.count(); ++i)
    items.writeitem(concat("pf", options.getname(i)));
  file.put(");\n");
}

void map(outfile& file, std::string_view word, const txstringlist& options) {
  file.put("\n   pf", word, "map: array[Tpf", word, "keys] of integer = (\n");
  itemlayout items(file, 4, 10);
  for (std::int32_t i = 0; i < options.count(); ++i)
    items.writeitem(inttostr(reinterpret_cast<std::intptr_t>(options.getobject(i)) + 1));
  file.put(" );\n");
}

/// Writes what each bucket that is not empty leads to.
template <class Write>
void foreachbucket(outfile& file, const buckets& lists, Write write) {
  for (std::size_t i = 0; i < lists.size(); ++i)
    if (lists[i].count() != 0) write(file, keyname[i], lists[i]);
}

void writeinclude(outfile& file, const tzmaoptions& options) {
  shortstring auditline;
  tzmaoptions::optversion(auditline);
  file.put("// file created by ", auditline, "\ntype\n");
  buckets lists;
  fill(lists, options);
  foreachbucket(file, lists, enumeration);
  file.put("\nconst\n");
  foreachbucket(file, lists, map);
  file.put("\n");
  file.close();
}

}  // namespace

void tzmaoptionwriter::writedelphiinc(std::string_view fname) const {
  outfile file(fname);
  writeinclude(file, options_);
}

std::string tzmaoptionwriter::delphiinctext() const {
  std::string text;
  outfile file(inmemory{text});
  writeinclude(file, options_);
  return text;
}

}  // namespace optxv
