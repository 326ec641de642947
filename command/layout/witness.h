// What was heard of a text, in so few bytes that two texts can be compared.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "analysis/hearing.h"

namespace command {

/// Hears a text and keeps a number that stands for all that a program would learn of it: names,
/// values, what was stored by which road, fields, declarations, messages, comments. Where it stands
/// is no part of that; nor are the breaks between the lines of one long help.
class witness : public listener {
 public:
  /// Of a text that is sorted neither the order is a part of it nor the comments, since it gets new
  /// ones.
  explicit witness(bool ordered) : ordered_(ordered) {}

  bool agrees(const witness& other) const {
    return facts_ == other.facts_ && (!ordered_ || comments_ == other.comments_);
  }

  void line(const optxv_place& where, std::string_view text) override;
  void comment(const optxv_place& where) override;
  void declared(const optxv_declaration& declaration) override;
  void field(const optxv_field& field) override;
  void ended(const optxv_place& where) override;
  void key(const optxv_key& key) override;
  void value(const optxv_value& value) override;
  void stored(const optxv_store& store) override;
  void dotoption(const optxv_entry& entry) override;
  void indicator(const optxv_entry& entry) override;
  void message(const optxv_message& message) override;

 private:
  template <class... Facts>
  void note(const Facts&... facts);

  bool ordered_;
  bool inhelp_ = false;  ///< the last field was a line of long help
  std::string line_;
  std::uint64_t facts_ = 0, comments_ = 0;
};

}  // namespace command
