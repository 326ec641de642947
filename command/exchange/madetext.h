// Parameter text that is made line by line of another text, and whose faults are told there.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "exchange/lineplaces.h"

namespace command {

/// BORROWS: the source.
class madetext {
 public:
  /// The source, its file, and who is told of faults.
  madetext(const std::string& file, std::string_view source, findingtaker tell)
      : places_(file, source), tell_(std::move(tell)) {}

  /// Adds a line that is made of a piece of the source. REQUIRES: it has no line feed.
  void addline(const std::string& line, textspan from);
  /// The lines so far, and whether all of them from one on are good.
  std::size_t count() const { return lines_.size(); }
  bool good(std::size_t first, std::size_t last) const;

  const std::string& text() const { return text_; }
  /// The text without its bad lines.
  std::string product() const;
  /// A finding in a line of the text as one about the source. An error makes the line a bad one.
  finding origin(finding found);

  /// A fault in the source, with what could be written instead, if anything.
  finding fault(ownfinding what, textspan where, std::string text) const {
    return places_.found(what, where, std::move(text));
  }
  void tell(const finding& found) const { tell_(found); }
  place at(textspan where) const { return places_.at(where); }

 private:
  struct madeline {
    std::size_t begin;  ///< in the text
    textspan from;
    bool bad = false;
  };

  lineplaces places_;
  findingtaker tell_;
  std::string text_;
  std::vector<madeline> lines_;
};

/// Findings in the order of a text that is not read from its start to its end.
class orderedfindings {
 public:
  void add(finding found) { all_.push_back(std::move(found)); }
  void report(const findingtaker& to);

 private:
  std::vector<finding> all_;
};

}  // namespace command
