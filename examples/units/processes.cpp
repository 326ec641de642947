// Runs other programs and looks at what became of them: the way in which a program hands a model to
// a solver that is a program of its own.
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

// What a user wrote behind the name of the solver, with what the program puts in front.
void arguments(optxv::texecarglist& list) {
  list.splitappend("steplim=500 title=\"spring run\" \"\" trace");
  list.splitprepend("model.dat -q");
  for (std::int32_t i = 0; i < list.count(); ++i)
    std::printf("%d %s\n", i, text(list.get(i)).c_str());
}

void run(const char* what, int result, std::int32_t code) {
  std::printf("%s: result %d, code %d\n", what, result, code);
}

void programs() {
  std::int32_t code = 0;
  run("through the shell", optxv::q9system("exit 3", code), code);
  run("killed", optxv::q9system("kill -9 $$", code), code);
  run("directly", optxv::q9exec2("sh", "-c \"exit 3\"", code), code);
  run("absent", optxv::q9exec("no-such-solver model.dat", code), code);
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
