// What the readers of the library tell while they read, as calls of a class.
#pragma once

#include <cstdint>
#include <exception>
#include <optional>
#include <string_view>
#include <vector>

#include "optxv/embedding.h"

namespace command {

inline std::string_view viewof(const optxv_text& text) {
  return text.bytes == nullptr ? std::string_view() : std::string_view(text.bytes, text.size);
}

/// Hears what it overrides. The calls come in the order of the text; optxv/embedding.h tells of
/// each, and of what may be asked meanwhile. What is handed over is good until the call returns.
class listener {
 public:
  virtual ~listener() = default;
  virtual void entered(const optxv_source&) {}
  virtual void left(const optxv_source&, std::int32_t /*error*/) {}
  virtual void line(const optxv_place&, std::string_view /*text*/) {}
  virtual void comment(const optxv_place&) {}
  virtual void cut(const optxv_cut&) {}
  virtual void declared(const optxv_declaration&) {}
  virtual void field(const optxv_field&) {}
  virtual void ended(const optxv_place&) {}
  virtual void key(const optxv_key&) {}
  virtual void separator(const optxv_place&) {}
  virtual void value(const optxv_value&) {}
  virtual void stored(const optxv_store&) {}
  virtual void dotoption(const optxv_entry&) {}
  virtual void indicator(const optxv_entry&) {}
  virtual void message(const optxv_message&) {}
  /// The bytes that are to be read in place of a file that the text names, if this has any; the
  /// first listener that has some is heard. They stay as they are for the read.
  virtual std::optional<std::string_view> opening(const char* /*name*/) { return std::nullopt; }
};

/// Has listeners hear a handle as long as it lives, each call in their order.
/// BORROWS: the handle and the listeners.
class hearing {
 public:
  hearing(optxv_handle handle, std::vector<listener*> listeners);
  ~hearing();
  hearing(const hearing&) = delete;
  hearing& operator=(const hearing&) = delete;

  /// Throws what a listener threw: nothing may pass through the library, so that it is kept, and
  /// nobody is called any more. To be asked after each read.
  void rethrow() const {
    if (failure_) std::rethrow_exception(failure_);
  }

 private:
  template <auto Method>
  struct relay;
  static std::int32_t opening(void* context, const char* name, optxv_text* text);
  static optxv_listener relays(hearing* context);

  optxv_handle handle_;
  std::vector<listener*> listeners_;
  std::exception_ptr failure_;
};

}  // namespace command
