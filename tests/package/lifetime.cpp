// A program that holds the library: it uses it before main, and after main until its own objects
// are gone.
#include <optxv/optxv.h>

#include <cstdio>
#include <cstring>

namespace {

void onunload() {
  SYSTEM_exitproc = nullptr;
  std::printf("unloaded %d\n", static_cast<int>(_Q9_Finalizing));
}

class holder {
 public:
  holder() {
    char line[OPTXV_TEXT_SIZE];
    xcreate(&handle_);
    coptVersion(handle_, line);  // the load step makes it
    early_ = std::strlen(line);
  }
  ~holder() {
    coptReadFromStr(handle_, "help");
    xfree(&handle_);
  }
  std::size_t early() const { return early_; }

 private:
  optHandle handle_;
  std::size_t early_;
};

holder options;

}  // namespace

int main() {
  std::printf("early %u, loaded %d\n", static_cast<unsigned>(options.early()),
              static_cast<int>(SYSTEM_dll_refcount));
  SYSTEM_exitproc = onunload;
  return 0;
}
