// The listener of a program, as the readers call it. The public header, optxv/embedding.h, says
// what each call means and when it comes.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <type_traits>
#include <vector>

#include "language/places.h"
#include "optxv/embedding.h"

namespace optxv {

/// Bytes in the form of the public header. BORROWS: the text.
inline optxv_text textof(std::string_view text) {
  return {text.data(), text.size()};
}

/// Calls the program's functions. It knows the sources that are being read, so that the caller need
/// not give the file name of a place within the innermost one.
///
/// A handle without a listener has no such object. Callers check for nil first, and prepare nothing
/// that nobody would hear.
/// BORROWS: the context of the program's functions.
class listener {
 public:
  /// Takes as much of the functions as `size` says that the program has; the others are not called.
  explicit listener(const optxv_listener& calls);

  /// Whether the program has a function: for callers to whom the event is a cost to make.
  template <class Event>
  bool hears(void (*optxv_listener::*function)(void*, const Event*)) const {
    return calls_.*function != nullptr;
  }

  /// Calls one function, if the program has it, with the event that it takes:
  /// tell(&optxv_listener::key, {.option = 3}).
  template <class Event>
  void tell(void (*optxv_listener::*function)(void*, const Event*),
            const std::type_identity_t<Event>& event) const {
    if (calls_.*function != nullptr) (calls_.*function)(calls_.context, &event);
  }
  /// The same for an event that is only a place.
  void tellplace(void (*optxv_listener::*function)(void*, const optxv_place*),
                 const textplace& place) const {
    tell(function, placed(place));
  }

  /// A place in the source that is being read.
  optxv_place placed(const textplace& place) const;

  /// Begins a source; each one is left again, innermost first. from: where the source that is being
  /// read names the new one. BORROWS: the name.
  void enter(std::int32_t kind, const char* name, const textplace& from);
  void leave(std::int32_t error);
  bool reading() const { return !reading_.empty(); }

  void line(const textplace& place, std::string_view text) const;
  /// The bytes that the program wants to be read in place of a file, if any. BORROWS: them, for the
  /// read.
  std::optional<std::string_view> textinplaceof(std::string_view filename) const;
  /// Reports a cut if less is kept of a text than was written. besides: how many bytes of the
  /// place are no part of the text, such as its quotes; less than 0 for bytes that only the text
  /// has.
  void cutlong(std::int32_t what, std::int32_t option, std::string_view kept,
               const textplace& place, int besides = 0) const;

 private:
  optxv_listener calls_ = {};
  std::vector<optxv_source> reading_;  ///< outermost first
};

}  // namespace optxv
