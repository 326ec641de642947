#include "platform/q9process.h"

#include <signal.h>  // sigaction is from POSIX
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "foundation/lists.h"
#include "foundation/q9private.h"
#include "platform/arguments.h"
#include "platform/q9platform.h"

namespace optxv {

namespace {

constexpr std::int32_t windowsfiles = 0;
constexpr std::int32_t unixfiles = 4;

enum systemresult { ran = 0, killed = 1, notwaitedfor = 2, notrun = 127 };
enum execresult { started = 0, notstarted = 1 };

int outcome(int result, std::int32_t value, std::int32_t& code) noexcept {
  code = value;
  return result;
}

// Words ------------------------------------------------------------------------------------------

constexpr bool parts(char c) noexcept {
  return static_cast<unsigned char>(c) <= ' ';
}

/// The words of a zero-terminated text, one after the other.
class wordsof {
 public:
  explicit wordsof(const char* text) noexcept : at_(text == nullptr ? "" : text) {}

  /// Stores the next word; false, with an empty one, at the end. KEEP: a pair of quotes that stands
  /// alone is the end as well.
  bool next(shortstring& word) noexcept {
    word.clear();
    skip();
    while (!parts(*at_)) {
      if (*at_ == '"') {
        quotedstretch(word);
      } else {
        word.append(*at_++);
      }
    }
    return !word.empty();
  }

 private:
  /// Skips what separates words, and then a pair of quotes with nothing between them.
  void skip() noexcept {
    while (*at_ != '\0' && parts(*at_)) ++at_;
    if (at_[0] == '"' && at_[1] == '"') at_ += 2;
  }

  void quotedstretch(shortstring& word) noexcept {
    const std::size_t length = std::strcspn(++at_, "\"");
    word.append({at_, length});
    at_ += length;
    if (*at_ == '"') ++at_;
  }

  const char* at_;
};

/// The texts of a program's arguments in the form that the system wants.
class programwords {
 public:
  void add(std::string_view text) { texts_.emplace_back(text); }

  /// Adds the words of text, in two passes: one to count, and one to take them.
  void addwords(const char* text, const char* tooshort, const char* toolong) {
    shortstring word;
    std::size_t count = 0;
    for (wordsof words(text); words.next(word);) ++count;
    texts_.reserve(texts_.size() + count);
    wordsof words(text);
    for (; count != 0; --count) {
      if (!words.next(word)) raiseassertion(tooshort, "q9process", __LINE__);
      add(word);
    }
    if (words.next(word)) raiseassertion(toolong, "q9process", __LINE__);
  }

  bool empty() const noexcept { return texts_.empty(); }

  /// BORROWS: good until a text is added.
  char* const* pointers() {
    pointers_.clear();
    for (std::string& text : texts_) pointers_.push_back(text.data());
    pointers_.push_back(nullptr);
    return pointers_.data();
  }

 private:
  std::vector<std::string> texts_;
  std::vector<char*> pointers_;
};

// Command lines ----------------------------------------------------------------------------------

std::string_view trimmed(std::string_view text) noexcept {
  while (!text.empty() && parts(text.front())) text.remove_prefix(1);
  while (!text.empty() && parts(text.back())) text.remove_suffix(1);
  return text;
}

bool isquoted(std::string_view text) noexcept {
  const std::string_view inner = trimmed(text);
  return inner.size() >= 2 && inner.front() == '"' && inner.back() == '"';
}

bool wantsquotes(std::string_view text) noexcept {
  if (isquoted(text)) return false;
  for (const char c : text)
    if (parts(c)) return true;
  return text.empty();
}

void appendquoted(std::string& line, std::string_view text) {
  const bool quotes = wantsquotes(text);
  if (quotes) line += '"';
  line += text;
  if (quotes) line += '"';
}

/// Appends each argument after a blank.
std::string withargs(std::string line, const texecarglist& args) {
  std::size_t most = line.size() + 3;
  for (std::int32_t i = 0; i < args.count(); ++i) most += args.get(i).size() + 3;
  line.reserve(most);
  for (std::int32_t i = 0; i < args.count(); ++i) appendquoted(line += ' ', args.get(i));
  return line;
}

// The Windows branch -----------------------------------------------------------------------------

/// Starts a process there; this build has no such call, so that nothing can be started.
int win32createproc(const std::string&, bool, std::int32_t& code) noexcept {
  return outcome(notrun, 0, code);
}

std::string windowsinterpreter() {
  constexpr std::int32_t dos = 0;
  const char* const named = std::getenv("COMSPEC");
  if (named != nullptr && *named != '\0') return named;
  return osplatform == dos ? "c:\\command.com" : "c:\\windows\\command.com";
}

int system4win(const std::string& command, bool sysflag, std::int32_t& code) {
  return win32createproc(windowsinterpreter() + " /C " + command, sysflag, code);
}

int exec4win(const std::string& line, std::int32_t& code) noexcept {
  return win32createproc(line, false, code) == ran ? started : notstarted;
}

// The POSIX branch -------------------------------------------------------------------------------

int readstatus(int status, std::int32_t& code) noexcept {
  constexpr int notrunnable = 127;
  const auto bits = static_cast<unsigned>(status);
  const auto signal = static_cast<int>(bits & 127U);
  const auto exitcode = static_cast<int>(bits >> 8 & 255U);
  if (signal == 127) return outcome(notwaitedfor, 0, code);
  if (signal != 0) return outcome(killed, signal, code);
  if (exitcode == notrunnable) return outcome(notrun, 0, code);
  return outcome(ran, exitcode, code);
}

int systemonunix(const char* cmd, std::int32_t& code) {
  const bool nothing = cmd == nullptr || *cmd == '\0';
  return readstatus(std::system(nothing ? "sh" : cmd), code);
}

constexpr int cannotstart = 255;

[[noreturn]] void becomeprogram(char* const* argv) noexcept {
  execvp(argv[0], argv);
  execl("/bin/sh", "sh", "-c", "exit 255", nullptr);
  _exit(cannotstart);
}

/// Waits for a child. KEEP: by wait, so that the status of another child is lost.
bool waitfor(pid_t child, int& status) noexcept {
  for (;;) {
    const pid_t ended = wait(&status);
    if (ended == child) return true;
    if (ended < 0 && errno != EINTR) return false;
  }
}

int libcforkexec(char* const* argv, std::int32_t& code) noexcept {
  const pid_t child = fork();
  if (child == 0) becomeprogram(argv);
  int status = 0;
  const bool ended = child > 0 && waitfor(child, status) && WIFEXITED(status);
  if (!ended || WEXITSTATUS(status) == cannotstart) return outcome(notstarted, 0, code);
  return outcome(started, WEXITSTATUS(status), code);
}

/// Starts a program directly; on Windows it is given as one line.
int runwords(programwords& words, const std::string& windowsline, const char* unimplemented,
             std::int32_t& code) {
  if (osfiletype == windowsfiles) return exec4win(windowsline, code);
  if (osfiletype != unixfiles) raiseassertion(unimplemented, "q9process", __LINE__);
  return libcforkexec(words.pointers(), code);
}

/// Passes a text to the shell of the file-system type.
int runcommand(const char* cmd, bool sysflag, const char* unimplemented, std::int32_t& code) {
  if (osfiletype == windowsfiles) return system4win(cmd == nullptr ? "" : cmd, sysflag, code);
  if (osfiletype != unixfiles) raiseassertion(unimplemented, "q9process", __LINE__);
  return systemonunix(cmd, code);
}

constexpr char unimplementedsystemp[] = "unimplemented Q9SystemP for OSFileType";

// The interrupt signal ---------------------------------------------------------------------------

std::atomic<tctrlhandler> ctrlhandler = nullptr;
static_assert(std::atomic<tctrlhandler>::is_always_lock_free, "it is read in signal context");
struct sigaction oldaction;

extern "C" void oninterrupt(int) {
  const int error = errno;
  if (const tctrlhandler handler = ctrlhandler.load(); handler != nullptr) handler();
  errno = error;
}

bool isours(const struct sigaction& action) noexcept {
  return (action.sa_flags & SA_SIGINFO) == 0 && action.sa_handler == oninterrupt;
}

}  // namespace

// texecarglist

texecarglist::~texecarglist() {
  clear();
}

std::int32_t texecarglist::add(std::string_view s) {
  insert(fcount, s);
  return fcount - 1;
}

void texecarglist::insert(std::int32_t i, std::string_view s) {
  heapstring text(s);  // first: s may lie in the list, and without memory the list is as it was
  if (fcount == fcapacity) grow();
  std::memmove(flist + i + 1, flist + i, static_cast<std::size_t>(fcount - i) * sizeof *flist);
  flist[i] = text.release();
  ++fcount;
}

void texecarglist::put(std::int32_t i, std::string_view s) {
  heapstring text(s);  // before the old text goes, which may be s
  freeitem(i);
  flist[i] = text.release();
}

std::string_view texecarglist::getlast() const noexcept {
  return fcount < 1 ? std::string_view() : get(fcount - 1);
}

void texecarglist::delete_(std::int32_t i) {
  freeitem(i);
  --fcount;
  std::memmove(flist + i, flist + i + 1, static_cast<std::size_t>(fcount - i) * sizeof *flist);
}

void texecarglist::freeitem(std::int32_t i) noexcept {
  disposestring(std::exchange(flist[i], nullptr));
}

void texecarglist::clear() {
  if (flist != nullptr)  // an array that was lost while it grew has nothing left to release
    for (std::int32_t i = fcount - 1; i >= 0; --i) freeitem(i);
  fcount = 0;
  setcapacity(0);
}

void texecarglist::setcapacity(std::int32_t n) {
  if (n == fcapacity) return;
  n = std::max(n, fcount);
  constexpr std::int64_t slot = sizeof *flist;
  pstring* const old = std::exchange(flist, nullptr);
  flist = static_cast<pstring*>(reallocmem(old, fcapacity * slot, n * slot));
  fcapacity = n;
}

void texecarglist::grow() {
  setcapacity(growncapacity(fcapacity));
}

std::int32_t texecarglist::split(bool append, std::string_view s) {
  const std::string text(s);
  shortstring word;
  std::int32_t count = 0;
  for (wordsof words(text.c_str()); words.next(word); ++count)
    insert(append ? fcount : count, word);
  return count;
}

// Through the shell

int q9system(std::string_view cmd, std::int32_t& code) {
  const std::string text(cmd.substr(0, shortstring::maximum));
  return runcommand(text.c_str(), true, "unimplemented Q9system for OSFileType", code);
}

int q9systemp(const char* cmd, std::int32_t& code) {
  return runcommand(cmd, true, unimplementedsystemp, code);
}

int q9system2(std::string_view cmd, const char* params, std::int32_t& code) {
  const shortstring command(cmd);
  const std::int64_t length = command.length() + 1 + pcharlen(params);
  std::string text(static_cast<std::size_t>(length), '\0');
  std::int32_t w = 0;
  if (length <= std::numeric_limits<std::int32_t>::max()) {
    q9private::pcharconcatstr(text.data(), w, command);
    q9private::pcharconcatstr(text.data(), w, " ");
    q9private::pcharconcatpchar(text.data(), w, params);
  }
  if (w != length) raiseassertion("Strange result of PCharConcatStr", "q9process", __LINE__);
  return q9systemp(text.c_str(), code);
}

int q9systeml(std::string_view cmd, const texecarglist& args, std::int32_t& code) {
  const std::string line = withargs(std::string(cmd.substr(0, shortstring::maximum)), args);
  return runcommand(line.c_str(), args.sysflag(), unimplementedsystemp, code);
}

// Directly

int q9exec(std::string_view cmd, std::int32_t& code) {
  return q9execp(std::string(cmd.substr(0, shortstring::maximum)).c_str(), code);
}

int q9execp(const char* cmd, std::int32_t& code) {
  programwords words;
  words.addwords(cmd, "cmd string should not be out of parameters",
                 "cmd string should be exhausted");
  if (words.empty()) return outcome(notstarted, 0, code);
  return runwords(words, cmd, "unimplemented Q9ExecP for OSFileType", code);
}

int q9exec2(std::string_view cmd, const char* params, std::int32_t& code) {
  const shortstring program(cmd);
  if (program.empty()) return outcome(notstarted, 0, code);
  programwords words;
  words.add(program);
  words.addwords(params, "params string should not be out of parameters",
                 "params string should be exhausted");
  const std::string line = std::string(program) + ' ' + (params == nullptr ? "" : params);
  return runwords(words, line, "unimplemented Q9Exec2 for OSFileType", code);
}

int q9execl(std::string_view cmd, const texecarglist& args, std::int32_t& code) {
  const shortstring program(cmd);
  programwords words;
  words.add(program);
  for (std::int32_t i = 0; i < args.count(); ++i) words.add(args.get(i));
  std::string line;
  appendquoted(line, program);
  return runwords(words, withargs(line, args), "unimplemented Q9Execl for OSFileType", code);
}

// This program

const char* q9getcommandline() {
  static const std::string line = [] {
    std::string text = '"' + std::string(paramstr(0)) + "\" ";
    for (std::int32_t i = 1; i <= paramcount(); ++i) text.append(1, ' ').append(argumenttext(i));
    return text;
  }();
  return line.c_str();
}

int q9installctrlhandler(tctrlhandler handler) noexcept {
  if (handler == nullptr) return q9uninstallctrlhandler();
  const bool first = ctrlhandler.load() == nullptr;
  struct sigaction action {};
  if (first && sigemptyset(&action.sa_mask) != 0) return 2;
  ctrlhandler.store(handler);
  if (!first) return 0;
  action.sa_handler = oninterrupt;
  if (sigaction(SIGINT, &action, &oldaction) == 0) return 0;
  ctrlhandler.store(nullptr);
  return 2;
}

int q9uninstallctrlhandler() noexcept {
  if (ctrlhandler.load() == nullptr) return 1;
  struct sigaction replaced {};
  if (sigemptyset(&replaced.sa_mask) != 0) return 2;
  const bool restored = sigaction(SIGINT, &oldaction, &replaced) == 0;
  ctrlhandler.store(nullptr);
  return restored && isours(replaced) ? 0 : 2;
}

tctrlhandler q9getctrlhandler() noexcept {
  return ctrlhandler.load();
}

void finalq9process() {
  struct sigaction present {};
  if (sigaction(SIGINT, nullptr, &present) == 0 && isours(present)) q9uninstallctrlhandler();
  ctrlhandler.store(nullptr);
}

}  // namespace optxv
