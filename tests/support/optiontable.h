// An option object for tests of the option model: definition and parameter texts in, messages and
// values out, all as text.
#pragma once

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "options/zmaoptions.h"

namespace optxv::test {

using lines = std::vector<std::string>;

inline std::string str(std::string_view text) {
  return std::string(text);
}

/// A text with every `from` replaced by `to`.
inline std::string replaced(std::string text, const std::string& from, const std::string& to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
    text.replace(at, from.size(), to);
  return text;
}

/// "a | b | c".
inline std::string joined(const lines& all) {
  std::string text;
  for (const std::string& line : all) text += (&line == &all.front() ? "" : " | ") + line;
  return text;
}

/// Reads a table of rows: one a line, its fields between ">>" and without the blanks round them, to
/// four fields, missing ones empty. A line with "#" in front is a remark; one with a blank in front
/// goes on with the last field, behind " | ". "\\t" stands for a tab.
inline std::vector<lines> rowsof(std::string_view table) {
  const auto trimmed = [](const std::string& text) {
    const std::size_t first = std::min(text.find_first_not_of(' '), text.size());
    return replaced(text.substr(first, text.find_last_not_of(' ') + 1 - first), "\\t", "\t");
  };
  std::vector<lines> rows;
  std::istringstream in{str(table)};
  for (std::string line; std::getline(in, line);) {
    if (line.empty() || line[0] == '#') continue;
    if (line[0] == ' ') {
      rows.back().back() += " | " + trimmed(line);
      continue;
    }
    rows.emplace_back();
    for (std::size_t at = 0, end = 0; end != std::string::npos; at = end + 2)
      rows.back().push_back(trimmed(line.substr(at, (end = line.find(">>", at)) - at)));
  }
  for (lines& row : rows)
    if (row.size() < 4 && row.size() > 0) row.insert(row.end(), 4 - row.size(), "");
  return rows;
}

/// A file of the test's own, in memory.
class scratchfile {
 public:
  scratchfile() = default;
  scratchfile(const scratchfile&) = delete;
  scratchfile& operator=(const scratchfile&) = delete;
  ~scratchfile() { close(descriptor_); }
  std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }
  void put(std::string_view content) const {
    EXPECT_EQ(ftruncate(descriptor_, 0), 0);
    EXPECT_EQ(pwrite(descriptor_, content.data(), content.size(), 0),
              static_cast<ssize_t>(content.size()));
  }

 private:
  int descriptor_ = memfd_create("scratch", MFD_CLOEXEC);
};

/// An option object and the files that it reads. A file has a short name; "{name}" in a text that
/// is read stands for its path, and in the messages the path is turned back.
class optiontable {
 public:
  optiontable() = default;
  /// From a definition that is free of faults.
  explicit optiontable(std::string_view definition) {
    define(definition);
    EXPECT_EQ(queue(), lines()) << definition;
  }

  tzmaoptions* operator->() { return &options_; }
  tzmaoptions& operator*() { return options_; }

  void put(const std::string& name, const std::string& content) {
    std::unique_ptr<scratchfile>& file = files_[name];
    if (!file) file = std::make_unique<scratchfile>();
    file->put(withpaths(content));
  }
  std::string path(const std::string& name) { return files_.at(name)->path(); }

  void define(std::string_view text) {
    put("def", str(text));
    EXPECT_EQ(options_.optreaddefinition(path("def")), 0);
  }
  /// Reads a text as the file {par}, so that its messages tell the line.
  void readfile(const std::string& text) {
    put("par", "");
    put("par", text);
    EXPECT_EQ(options_.optreadparameterfile(path("par")), 0);
  }
  /// Reads a text in one line.
  void readline(const std::string& text) { options_.optreadfrompchar(withpaths(text).c_str()); }

  toption& option(std::string_view name) {
    toption* found = options_.optionasobj(name);
    EXPECT_NE(found, nullptr) << name;
    return *found;
  }
  std::int32_t number(std::string_view name) { return options_.optlookup(name) + 1; }

  /// The messages as the user sees them; those that a read begins and ends with only on request.
  lines queue(bool reads = false) {
    lines all;
    for (std::int32_t i = 1; i <= options_.optmessagecount(); ++i) {
      shortstring text;
      std::int32_t kind = -1;
      options_.optgetmessage(i, text, kind);
      if (!reads && (kind == optMsgFileEnter || kind == optMsgFileLeave)) continue;
      all.push_back(str(text));
      for (const auto& [name, file] : files_)
        all.back() = replaced(all.back(), file->path(), "{" + name + "}");
    }
    return all;
  }

  /// The queue without the messages round a read, in one text: "V3: " stands for the words of a
  /// value error in line 3, "E", "D" and "W" for the other kinds; "'" for a double quote.
  std::string brief() {
    lines all = queue();
    for (std::string& text : all) {
      for (const auto& [words, letter] :
           {std::pair("*** Value Error ", "V "), std::pair("*** Definition Error ", "D "),
            std::pair("*** Error ", "E "), std::pair("*** Warning ", "W ")})
        text = replaced(replaced(text, words, letter), str(letter) + "line ", {letter[0]});
      text = replaced(replaced(text, "\"", "'"), "\n", "\\n");
    }
    return joined(all);
  }

  /// What is set, in table order: "i=5 two=1/2 second=/2 wild=11!1 list=[a|b]" ("!" is the mask of
  /// values out of bounds).
  std::string state() {
    std::string all;
    for (std::int32_t i = 0; i < options_.getcount(); ++i)
      if (toption& option = *options_.getobjects(i); option.defined != 0)
        all += (all.empty() ? "" : " ") + str(options_.getstrings(i)) + "=" + valueof(option);
    return all;
  }

  /// What the table holds behind number 1, a line an option and one for each thing in it.
  lines described() {
    lines all;
    for (std::int32_t i = 1; i < options_.getcount(); ++i) describe(*options_.getobjects(i), all);
    return all;
  }

 private:
  std::string withpaths(std::string text) {
    for (const auto& [name, file] : files_) text = replaced(text, "{" + name + "}", file->path());
    return text;
  }

  static std::string valueof(const toption& option) {
    std::string value;
    if (const auto* list = dynamic_cast<const tstrlistoption*>(&option)) {
      for (std::int32_t i = 0; i < list->count(); ++i)
        value += (i == 0 ? "[" : "|") + str(list->items.get(i));
      return value.empty() ? "[]" : value + "]";
    }
    if ((option.defined & 1) != 0) value = str(option.getasstring());
    if ((option.defined & 2) != 0) value += "/" + str(option.getasstring2());
    if (option.outofbounds != 0) value += "!" + std::to_string(option.outofbounds);
    return value;
  }

  template <class Option>
  static std::string bounds(const Option& option) {
    return str(option.getasstring()) + " " + str(dbltostr(option.lowbound)) + " " +
           str(dbltostr(option.highbound)) + " ";
  }

  void describe(const toption& option, lines& all) {
    static const char* const kinds[] = {"int",  "dbl",   "str",  "bool",  "estr",
                                        "eint", "mlist", "list", "macro", "imm"};
    static const char* const modifiers[] = {"", ".NV", ".OPT", ".TWO"};
    std::string line = str(option.optname) + " " + kinds[option.opttype] +
                       modifiers[option.subtype] + " " + std::to_string(option.refnr) + " ";
    lines more;
    if (const auto* integer = dynamic_cast<const tintoption*>(&option)) {
      line += bounds(*integer);
    } else if (const auto* real = dynamic_cast<const tdbloption*>(&option)) {
      line += bounds(*real);
    } else if (const auto* acting = dynamic_cast<const timmediateoption*>(&option)) {
      line += std::to_string(acting->immediatekind) + " ";
    } else if (option.opttype <= optTypeEnumInt) {
      line += "'" + str(option.getasstring()) + "' ";
    }
    for (std::int32_t i = 0; option.bigtext && i < option.bigtext->count(); ++i)
      more.push_back("  | " + str(option.bigtext->get(i)));
    const auto item = [&](const std::string& value, const toptionx& help) {
      more.push_back("  - " + value + " " + std::to_string(help.helpcontext) + " " +
                     str(help.helptext));
    };
    if (const auto* texts = dynamic_cast<const tenumstroption*>(&option))
      for (std::int32_t i = 0; i < texts->enumitems.count(); ++i)
        item(str(texts->enumitems.getname(i)), *objectof<toptionx>(texts->enumitems.getobject(i)));
    if (const auto* numbers = dynamic_cast<const tenumintoption*>(&option))
      for (std::int32_t i = 0; i < numbers->enumitems.count(); ++i)
        item(std::to_string(numbers->item(i).itemvalue), numbers->item(i));
    if (const auto* spread = dynamic_cast<const tmultilistoption*>(&option))
      for (std::int32_t i = 0; i < spread->members.count(); ++i)
        more.push_back("  - " + std::to_string(spread->member(i)));
    if (const auto* macro = dynamic_cast<const tmacrooption*>(&option))
      for (std::int32_t i = 0; i < macro->members.count(); ++i)
        more.push_back("  - " + str(macro->member(i)->optname));
    if (option.deprecation != 0)
      more.push_back("  ! " + std::to_string(option.deprecation) + " " +
                     str(option.deprecatedtext) + ";" + str(option.synonymdeprecatedtext));
    all.push_back(line + std::to_string(option.helpcontext) + " " + std::to_string(option.group) +
                  " " + str(option.helptext));
    all.insert(all.end(), more.begin(), more.end());
  }

  tzmaoptions options_;
  std::map<std::string, std::unique_ptr<scratchfile>> files_;
};

/// A definition with most record kinds, free of faults.
inline constexpr std::string_view sampledefinition =
    "* solver options\n"
    "general group 1 0 General options\n"
    "steplim integer 1 1000 0 maxint 10 1 Step limit\n"
    " Ends the run after so many steps.\n"
    " \n"
    "    Restarts count.\n"
    "tol double 2 1.0e-6 0 1 11 1 Feasibility tolerance\n"
    "logname string 3 \"run log\" 12 1 Log file name\n"
    "scale boolean 4 1 13 1 Scale the model\n"
    "verbose boolean.NV 5 0 14 1 Talk more\n"
    "cmt eolcomm !\n"
    "method enumstr 6 auto 20 1 Solution method\n"
    " auto 21 By model size\n"
    " primal 22 Primal simplex\n"
    "printlevel enumint 7 1 23 1 Output volume\n"
    " 0 24 Silent\n"
    " 1 25 Normal\n"
    "stplim synonym steplim\n"
    "paths strlist 8 26 1 Search paths\n"
    "fast macro 27 1 Fast settings\n"
    " scale\n"
    "rf immediate ReadFile 28 1 Read a parameter file\n"
    "gone deprecated\n"
    " stplim Use steplim\n"
    "rowtype indicator\n"
    ".scale double 9 1 0 maxdouble 29 1 Scale factor\n";

}  // namespace optxv::test
