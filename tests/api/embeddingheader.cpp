// The header for programs that embed the library, in C++11 with every warning an error, without the
// classic one: what a file needs that only names its types and asks.
#include <optxv/embedding.h>

namespace {
struct counter {
  int lines;
};
}  // namespace

int main() {
  counter counted = {0};
  optxv_listener listener = optxv_listener();
  listener.size = sizeof listener;
  listener.context = &counted;
  listener.line = [](void* context, const optxv_place*, const optxv_text* text) {
    static_cast<counter*>(context)->lines += text->size == 0 ? 0 : 1;
  };
  const char *word = nullptr, *fields = nullptr, *lines = nullptr;
  const bool form = optxv_record_form(1, &word, &fields, &lines) == 1 && word != nullptr;
  listener.line(listener.context, nullptr, &static_cast<const optxv_text&>(optxv_text{"a", 1}));
  optxv_handle options = nullptr;
  optxv_text value = {nullptr, 0};
  bool good = optxv_create(&options) == optxv_ok;
  good = good && optxv_get_text(options, "Help", &value) == optxv_unknown;
  optxv_free(&options);
  return form && good && counted.lines == 1 && optxv_fault_name(optxv_faults) == nullptr ? 0 : 1;
}
