// An option object that tests of parameter text fill and look into: texts in, texts out.
#pragma once

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "options/zmaoptions.h"

namespace optxv {

using texts = std::vector<std::string>;

/// A file of the test's own, in memory.
class scratchfile {
 public:
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

/// An object with a table from a definition text, which must be free of faults.
struct table {
  explicit table(std::string_view definition) {
    file.put(definition);
    EXPECT_EQ(options.optreaddefinition(file.name()), 0);
    EXPECT_EQ(messages(), texts());
  }

  /// Reads one line as a string and more than one as a file; the messages then have line numbers.
  table& read(std::string_view text) {
    if (text.find('\n') == std::string_view::npos) {
      options.optreadfrompchar(std::string(text).c_str());
    } else {
      file.put(text);
      EXPECT_EQ(options.optreadparameterfile(file.name()), 0);
    }
    return *this;
  }

  /// The messages as users see them, less the stars in front and those round a read.
  texts messages() const {
    texts all;
    for (std::int32_t i = 1; i <= options.optmessagecount(); ++i) {
      shortstring text;
      std::int32_t kind = 0;
      options.optgetmessage(i, text, kind);
      if (kind != optMsgFileEnter && kind != optMsgFileLeave)
        all.emplace_back(text.view().substr(text.view().starts_with("*** ") ? 4 : 0));
    }
    return all;
  }

  std::int32_t number(std::string_view name) { return options.optlookup(name) + 1; }

  std::string written() {
    file.put("");
    EXPECT_EQ(options.optwriteparameterfile(file.name()), 0);
    return file.content();
  }

  tzmaoptions options;
  scratchfile file;
};

/// "a,b,c", n times.
inline std::string repeated(std::string_view piece, int times) {
  std::string all(piece);
  while (--times > 0) all.append(",").append(piece);
  return all;
}

}  // namespace optxv
