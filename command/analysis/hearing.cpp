#include "analysis/hearing.h"

namespace command {
namespace {

const optxv_place& heard(const optxv_place* place) {
  return *place;
}
std::string_view heard(const optxv_text* text) {
  return viewof(*text);
}
template <class Fact>
const Fact& heard(const Fact* fact) {
  return *fact;
}
std::int32_t heard(std::int32_t number) {
  return number;
}

}  // namespace

/// A function for the library that calls one method of each listener.
template <auto Method>
struct hearing::relay {
  template <class... Facts>
  static void call(void* context, Facts... facts) {
    auto& self = *static_cast<hearing*>(context);
    if (self.failure_) return;
    try {
      for (listener* each : self.listeners_) (each->*Method)(heard(facts)...);
    } catch (...) {
      self.failure_ = std::current_exception();
    }
  }
};

std::int32_t hearing::opening(void* context, const char* name, optxv_text* text) {
  auto& self = *static_cast<hearing*>(context);
  if (self.failure_) return 0;
  try {
    for (listener* each : self.listeners_)
      if (const auto found = each->opening(name)) {
        *text = {found->data(), found->size()};
        return 1;
      }
  } catch (...) {
    self.failure_ = std::current_exception();
  }
  return 0;
}

optxv_listener hearing::relays(hearing* context) {
  optxv_listener all{};
  all.size = sizeof all;
  all.context = context;
  all.entered = relay<&listener::entered>::call;
  all.left = relay<&listener::left>::call;
  all.line = relay<&listener::line>::call;
  all.comment = relay<&listener::comment>::call;
  all.cut = relay<&listener::cut>::call;
  all.declared = relay<&listener::declared>::call;
  all.field = relay<&listener::field>::call;
  all.ended = relay<&listener::ended>::call;
  all.key = relay<&listener::key>::call;
  all.separator = relay<&listener::separator>::call;
  all.value = relay<&listener::value>::call;
  all.stored = relay<&listener::stored>::call;
  all.dot_option = relay<&listener::dotoption>::call;
  all.indicator = relay<&listener::indicator>::call;
  all.message = relay<&listener::message>::call;
  all.opening = opening;
  return all;
}

hearing::hearing(optxv_handle handle, std::vector<listener*> listeners)
    : handle_(handle), listeners_(std::move(listeners)) {
  const optxv_listener all = relays(this);
  optxv_listen(handle_, &all);
}

hearing::~hearing() {
  optxv_listen(handle_, nullptr);
}

}  // namespace command
