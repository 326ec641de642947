// Both public headers in C++11 with every warning an error, the one for programs that embed the
// library first and so alone; the other without its mixed-case names, which are free for the
// program's own use then.
#include <optxv/embedding.h>

namespace {
struct counter {
  int lines;
};

bool knowsforms() {
  const char *word = nullptr, *fields = nullptr, *lines = nullptr;
  return optxv_record_form(1, &word, &fields, &lines) == 1 && word != nullptr;
}
}  // namespace

#define OPTXV_NO_MIXED_CASE_NAMES
#include <optxv/optxv.h>

namespace {
int optCount(optHandle handle) {
  return optcount(handle);
}
}  // namespace

int main() {
  counter counted = {0};
  optxv_listener listener = optxv_listener();
  listener.size = sizeof listener;
  listener.context = &counted;
  listener.line = [](void* context, const optxv_place*, const optxv_text* text) {
    static_cast<counter*>(context)->lines += text->size == 0 ? 0 : 1;
  };
  optHandle options = nullptr;
  xcreate(&options);
  optxv_listen(options, &listener);
  optxv_read_parameter_text(options, "mine", "a", 1);
  const int count = optCount(options);
  xfree(&options);
  return knowsforms() && counted.lines == 1 && count == 0 && options == nullptr ? 0 : 1;
}
