// Runs other programs and looks at what became of them: this is how a program passes a model to a
// solver that is a program of its own.
#include <optxv/platform/q9library.h>
#include <optxv/platform/q9platform.h>
#include <optxv/platform/q9process.h>
#include <optxv/platform/q9utils.h>

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace {

std::string text(std::string_view s) {
  return std::string(s);
}

// What a user wrote after the name of the solver, and what the program puts before it.
void arguments(optxv::texecarglist& list) {
  list.splitappend("steplim=500 title=\"spring run\" trace");
  list.splitprepend("model.dat -q");
  for (std::int32_t i = 0; i < list.count(); ++i)
    std::printf("%d %s\n", i, text(list.get(i)).c_str());
}

void shell(const char* command) {
  std::int32_t code = 0;
  const int result = optxv::q9system(command, code);
  std::printf("shell, %s: result %d, code %d\n", command, result, code);
}

void directly(const char* program, const char* parameters) {
  std::int32_t code = 0;
  const int result = optxv::q9exec2(program, parameters, code);
  std::printf("%s %s: result %d, code %d\n", program, parameters, result, code);
}

void programs() {
  shell("exit 3");
  shell("kill -9 $$");
  directly("sh", "-c \"exit 3\"");
  directly("no-such-solver", "model.dat");
}

void names() {
  std::printf("%s\n", text(optxv::q9makelibname("lib/", "solver")).c_str());
  std::printf("%s %s\n", text(optxv::completefileext("model", ".dat")).c_str(),
              text(optxv::replacefileext("model.dat", ".log")).c_str());
  optxv::shortstring message;
  const bool there = optxv::q9loadlibrary("no-such-library", message) != nullptr;
  std::printf("%s, and a message: %s\n", there ? "loaded" : "not loaded",
              message.empty() ? "no" : "yes");
}

}  // namespace

int main() {
  optxv::texecarglist list;
  arguments(list);
  programs();
  names();
  std::printf("[%s]\n", text(optxv::floattoe(-1234.567, 3)).c_str());
  return 0;
}
