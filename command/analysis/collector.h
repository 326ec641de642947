// Findings from the messages of the library: which add to which, which only follow from another.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "analysis/finding.h"
#include "analysis/hints.h"
#include "analysis/reading.h"

namespace command {

/// Makes findings and hands them on in the order of the text, each as soon as nothing can be added
/// to it any more. What the queue of the library drops for want of room comes here all the same.
/// BORROWS: what it is made with. The reading and the symbols stand before this in the hearing.
class collector : public listener {
 public:
  collector(reading& at, const hintsource& hints, findingtaker take)
      : at_(at), hints_(hints), take_(std::move(take)) {}

  /// A finding of the command itself. It gets its line here.
  void add(finding found);
  /// The same for one that is dropped again if a message about the same place comes next: the
  /// library tells of it itself then.
  void addunlesstold(finding found);
  /// More about the finding that was made last.
  void addnote(std::string text, const place& where = {});
  /// Hands on what is held back.
  void flush();

  const tally& total() const { return total_; }
  tally& total() { return total_; }

  void left(const optxv_source& source, std::int32_t error) override;
  void message(const optxv_message& message) override;

 private:
  /// The message that others may follow from.
  struct cause {
    std::int32_t fault = optxv_fault_none;
    place where = {};
    std::size_t keys = 0;  ///< that were read until then
  };

  bool follows(const optxv_message& message) const;
  void add(const optxv_message& message);
  void explain(finding& found, const optxv_message& message);
  void explainrecord(finding& found, const optxv_message& message) const;
  void hold(finding found, bool droppable);

  reading& at_;
  hintsource hints_;
  findingtaker take_;
  tally total_;
  std::optional<finding> held_;
  bool droppable_ = false;
  cause cause_;
};

}  // namespace command
