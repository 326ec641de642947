// An option object for tests: definition and parameter texts in, messages and values out as text.
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

namespace optxv {

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
inline std::string joined(const lines& all, const std::string& between = " | ") {
  std::string text;
  for (const std::string& line : all) text += (&line == &all.front() ? "" : between) + line;
  return text;
}

/// A file of the test's own, in memory.
class scratchfile {
 public:
  scratchfile() = default;
  scratchfile(const scratchfile&) = delete;
  scratchfile& operator=(const scratchfile&) = delete;
  ~scratchfile() { close(descriptor_); }
  std::string name() const { return "/proc/self/fd/" + std::to_string(descriptor_); }
  void put(std::string_view content) const {
    EXPECT_EQ(ftruncate(descriptor_, 0), 0);
    EXPECT_EQ(pwrite(descriptor_, content.data(), content.size(), 0),
              static_cast<ssize_t>(content.size()));
  }
  std::string content() const {
    std::string all(static_cast<std::size_t>(lseek(descriptor_, 0, SEEK_END)), '\0');
    EXPECT_EQ(pread(descriptor_, all.data(), all.size(), 0), static_cast<ssize_t>(all.size()));
    return all;
  }

 private:
  int descriptor_ = memfd_create("scratch", MFD_CLOEXEC);
};

/// An option object and the files that it reads. A file has a short name; "{name}" in a text that
/// is read stands for its path, and in the messages the path is turned back.
struct optiontable {
  optiontable() = default;
  /// From a definition that is free of faults.
  explicit optiontable(std::string_view definition) {
    define(definition);
    EXPECT_EQ(queue(), lines()) << definition;
  }

  tzmaoptions* operator->() { return &options; }
  tzmaoptions& operator*() { return options; }

  void put(const std::string& name, std::string content) {
    for (const auto& [known, file] : files)
      content = replaced(content, "{" + known + "}", file.name());
    files[name].put(content);
  }
  std::string path(const std::string& name) { return files.at(name).name(); }

  void define(std::string_view text) {
    put("def", str(text));
    EXPECT_EQ(options.optreaddefinition(path("def")), 0);
  }
  /// Reads one line as a string and more than one as the file {par}; messages then name the line.
  optiontable& read(const std::string& text) {
    files["par"];
    put("par", text);
    if (text.find('\n') == std::string::npos)
      options.optreadfrompchar(files["par"].content().c_str());
    else
      EXPECT_EQ(options.optreadparameterfile(path("par")), 0);
    return *this;
  }

  toption& option(std::string_view name) {
    toption* found = options.optionasobj(name);
    EXPECT_NE(found, nullptr) << name;
    return *found;
  }
  std::int32_t number(std::string_view name) { return options.optlookup(name) + 1; }

  /// The messages as the user sees them; those at the start and the end of a read only on request.
  lines queue(bool reads = false) {
    lines all;
    for (std::int32_t i = 1; i <= options.optmessagecount(); ++i) {
      shortstring text;
      std::int32_t kind = -1;
      options.optgetmessage(i, text, kind);
      if (!reads && (kind == optMsgFileEnter || kind == optMsgFileLeave)) continue;
      all.push_back(str(text));
      for (const auto& [name, file] : files)
        all.back() = replaced(all.back(), file.name(), "{" + name + "}");
    }
    return all;
  }

  /// What came of it all, a line each: the messages of the queue, then what is set.
  std::string told() {
    lines all = queue();
    if (const std::string set = state(); !set.empty()) all.push_back(set);
    return joined(all, "\n");
  }

  /// What is set, in table order: "i=5 two=1/2 second=/2 wild=11!1 list=[a|b]" ("!" is the mask of
  /// values out of bounds).
  std::string state() {
    lines all;
    for (std::int32_t i = 0; i < options.getcount(); ++i) {
      const toption& option = *options.getobjects(i);
      if (option.defined == 0) continue;
      std::string value((option.defined & 1) != 0 ? str(option.getasstring()) : "");
      if ((option.defined & 2) != 0) value += "/" + str(option.getasstring2());
      if (option.outofbounds != 0) value += "!" + std::to_string(option.outofbounds);
      if (const auto* list = dynamic_cast<const tstrlistoption*>(&option)) {
        lines items;
        for (std::int32_t k = 0; k < list->count(); ++k) items.push_back(str(list->item(k)));
        value = "[" + joined(items, "|") + "]";
      }
      all.push_back(str(options.getstrings(i)) + "=" + value);
    }
    return joined(all, " ");
  }

  tzmaoptions options;
  std::map<std::string, scratchfile> files;
};

}  // namespace optxv
