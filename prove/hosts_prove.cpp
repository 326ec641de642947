// One program for many hosts: it does the same with the library whatever its host has changed, and
// writes down all that it gets back. Its arguments: the name of a change, the folder with its
// files, the file for what it notes, and for the change `loads` the library to load. It ends with 3
// where this host cannot make the change.

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <bit>
#include <cfenv>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <string_view>

#include "optxv/embedding.h"
#include "optxv/optxv.h"
#include "support/smallstack.h"

#if defined(__x86_64__)
#include <xmmintrin.h>
#endif

namespace {

std::string folder;  // with a / at its end
std::string noted;

void note(std::string_view what) {
  noted.append(what) += '\n';
}

std::int32_t append(void* text, const char* bytes, std::size_t size) {
  static_cast<std::string*>(text)->append(bytes, size);
  return 0;
}

// --- What is done, and must come out the same

void notemessages(optHandle options) {
  char text[OPTXV_TEXT_SIZE];
  std::int32_t kind = 0;
  for (std::int32_t number = 1; number <= optMessageCount(options); ++number) {
    coptGetMessage(options, number, text, &kind);
    note(std::to_string(kind) + ' ' + text);
  }
  optClearMessages(options);
}

void notevalues(optHandle options) {
  char name[OPTXV_TEXT_SIZE], text[OPTXV_TEXT_SIZE];
  for (std::int32_t number = 1; number <= optCount(options); ++number) {
    coptGetNameNr(options, number, name);
    const std::int32_t good = coptGetValStr(options, name, text);
    double real = 0;
    const std::int32_t isreal = optxv_get_real(options, name, &real);
    note(std::string(name) + ' ' + std::to_string(good) + ' ' + text + ' ' +
         std::to_string(isreal) + ' ' + std::to_string(std::bit_cast<std::uint64_t>(real)));
  }
}

void readlines(optHandle options) {
  for (const char* line :
       {"time_limit 4.9406564584124654e-324", "time_limit 0.1", "time_limit 1e-310",
        "time_limit 2.2250738585072011e-308", "time_limit 0.30000000000000004", "time_limit 1,5",
        "time_limit 179769313486231580793e289", "time_limit 9007199254740993", "method newton"}) {
    coptReadFromStr(options, line);
    notevalues(options);
  }
}

/// Definition, files, texts and values, read and written.
void session() {
  optHandle options = nullptr;
  xcreate(&options);
  note(std::to_string(coptReadDefinition(options, (folder + "solver.def").c_str())));
  for (const char* name : {"faulty.opt", "solver.opt", "tight.opt", "missing.opt"})
    note(std::to_string(coptReadParameterFile(options, (folder + name).c_str())));
  readlines(options);
  coptShowHelp(options, "3");
  notemessages(options);
  std::string written;
  note(std::to_string(optxv_write_parameter_text(options, append, &written)));
  note(written);
  note(std::to_string(coptWriteParameterFile(options, (folder + "own.opt").c_str())));
  optResetAll(options);
  note(std::to_string(coptReadParameterFile(options, (folder + "own.opt").c_str())));
  notevalues(options);
  notemessages(options);
  xfree(&options);
}

/// The same through the functions that give a status; what cannot be done is a status.
void statuses() {
  optxv_handle options = nullptr;
  std::int32_t status = optxv_create(&options);
  note("create " + std::to_string(status));
  if (status != 0) return;
  status = optxv_read_definition(options, (folder + "solver.def").c_str());
  note("definition " + std::to_string(status));
  status = optxv_read_parameters(options, (folder + "solver.opt").c_str());
  note("parameters " + std::to_string(status));
  status = optxv_write_parameters(options, (folder + "own.opt").c_str());
  note("write " + std::to_string(status));
  optxv_free(&options);
}

/// Lists in one another and files in one another, as deep as they may be.
void nested() {
  optHandle options = nullptr;
  xcreate(&options);
  note(std::to_string(coptReadDefinition(options, (folder + "nested.def").c_str())));
  note(std::to_string(coptReadParameterFile(options, (folder + "nested1.opt").c_str())));
  notevalues(options);
  notemessages(options);
  xfree(&options);
}

// --- The changes

void onsmallstack(void (*what)()) {
  if (!optxv::test::onstack(std::size_t{128} << 10, what)) std::exit(3);
}

/// Does it under a limit, which is lifted after it.
void under(int which, rlim_t size, void (*what)()) {
  rlimit before = {};
  if (getrlimit(which, &before) != 0) std::exit(3);
  const rlimit lower = {size, before.rlim_max};
  if (setrlimit(which, &lower) != 0) std::exit(3);
  what();
  setrlimit(which, &before);
}

void control([[maybe_unused]] unsigned set, [[maybe_unused]] unsigned cleared) {
#if defined(__x86_64__)
  _mm_setcsr((_mm_getcsr() & ~cleared) | set);
#else
  std::exit(3);
#endif
}

volatile std::sig_atomic_t ticks = 0;

/// Signals every quarter of a millisecond, whose handler does not restart what it interrupts.
void tick() {
  struct sigaction action = {};
  action.sa_handler = [](int) { ticks = ticks + 1; };
  sigaction(SIGALRM, &action, nullptr);
  const itimerval often = {{0, 250}, {0, 250}};
  setitimer(ITIMER_REAL, &often, nullptr);
}
void untick() {
  const itimerval never = {};
  setitimer(ITIMER_REAL, &never, nullptr);
}

/// What a load of the library's own copy gives: a handle, and a definition that is read.
bool loadonce(const char* library) {
  void* const loaded = dlopen(library, RTLD_NOW | RTLD_LOCAL);
  if (loaded == nullptr) return false;
  const auto create = reinterpret_cast<decltype(&optxv_create)>(dlsym(loaded, "optxv_create"));
  const auto read = reinterpret_cast<decltype(&optxv_read_parameter_text)>(
      dlsym(loaded, "optxv_read_parameter_text"));
  const auto free = reinterpret_cast<decltype(&optxv_free)>(dlsym(loaded, "optxv_free"));
  optxv_handle options = nullptr;
  bool good = create(&options) == 0;
  good = good && read(options, "text", "help\n", 5) == 0;
  free(&options);
  return dlclose(loaded) == 0 && good && dlopen(library, RTLD_NOW | RTLD_NOLOAD) == nullptr;
}

long residentpages() {
  long size = 0, resident = 0;
  if (std::FILE* const file = std::fopen("/proc/self/statm", "r")) {
    if (std::fscanf(file, "%ld %ld", &size, &resident) != 2) resident = 0;
    std::fclose(file);
  }
  return resident;
}

/// So many loads and unloads; each hundredth is made in a child as well, and memory must not grow.
void loads(const char* library, int count) {
  long before = 0;
  int bad = 0;
  for (int i = 0; i < count; ++i) {
    bad += loadonce(library) ? 0 : 1;
    if (i == count / 10) before = residentpages();
    if (i % 100 != 0) continue;
    const pid_t child = fork();
    if (child == 0) _exit(loadonce(library) ? 0 : 1);
    int status = 0;
    waitpid(child, &status, 0);
    bad += status == 0 ? 0 : 1;
  }
  note("bad loads: " + std::to_string(bad));
  note(residentpages() - before < 256 ? "memory as before" : "memory grew");
}

struct change {
  std::string_view name;
  std::function<void()> doing;
};

const change changes[] = {
    {"plain", session},
    {"locale",
     [] {
       if (std::setlocale(LC_ALL, "comma") == nullptr) std::exit(3);
       char text[8];
       std::snprintf(text, sizeof text, "%.1f", 1.5);
       if (std::string_view(text) != "1,5") std::exit(3);
       session();
     }},
    {"upward", [] { std::fesetround(FE_UPWARD), session(); }},
    {"downward", [] { std::fesetround(FE_DOWNWARD), session(); }},
    {"towardzero", [] { std::fesetround(FE_TOWARDZERO), session(); }},
    {"flush", [] { control(0x8000, 0), session(); }},
    {"flushboth", [] { control(0x8040, 0), session(); }},
    {"traps", [] { control(0, 0x1F80), session(); }},
    {"closed", [] { close(0), close(1), close(2), session(); }},
    {"ticks",
     [] {
       tick(), session(), untick();
       if (ticks == 0) std::exit(3);
     }},
    {"smallstack", [] { onsmallstack(session); }},
    {"nested", nested},
    {"nestedsmall", [] { onsmallstack(nested); }},
    {"statuses", statuses},
    {"nofiles", [] { under(RLIMIT_NOFILE, 3, statuses); }},
    {"nobytes", [] { std::signal(SIGXFSZ, SIG_IGN), under(RLIMIT_FSIZE, 0, statuses); }},
    {"fewbytes", [] { std::signal(SIGXFSZ, SIG_IGN), under(RLIMIT_FSIZE, 20, statuses); }},
};

}  // namespace

int main(int count, char** arguments) {
  if (count < 4) return 2;
  folder = std::string(arguments[2]) + '/';
  const std::string_view name = arguments[1];
  // It is open ahead of any limit, and out of the way of the three that are closed.
  const int file = fcntl(open(arguments[3], O_WRONLY | O_CREAT | O_TRUNC, 0666), F_DUPFD, 10);
  if (name == "loads") loads(arguments[4], std::atoi(arguments[5]));
  for (const change& each : changes)
    if (each.name == name) each.doing();
  std::fesetenv(FE_DFL_ENV);
  // A limit holds for a file and not for a pipe, so that the file is one.
  const char* rest = noted.data();
  for (std::size_t left = noted.size(); left > 0;) {
    const ssize_t put = write(file, rest, left);
    if (put < 0) return 4;
    rest += put;
    left -= static_cast<std::size_t>(put);
  }
  return noted.empty() ? 2 : 0;
}
