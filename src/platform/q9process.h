// Other programs: run through the shell or directly, the lists of their arguments, the program's
// own command line, and a handler for the interrupt signal.
//
// A failure to run is a result. The only exceptions are eassertionfailed, for a file-system type
// (osfiletype) that has no implementation, and eoutofmemory.
#pragma once

#include <cstdint>
#include <string_view>

#include "foundation/boundedstring.h"
#include "foundation/runtime.h"
#include "foundation/strutilx.h"
#include "foundation/visibility.h"

namespace optxv {

// Arguments --------------------------------------------------------------------------------------

/// A list of arguments. An empty one is kept as nil.
///
/// Indices count from 0, and none is ever checked. It grows as txlist does (foundation/lists.h).
/// OWNS: its heap strings.
class OPTXV_EXPORT texecarglist : public tobject {
 public:
  texecarglist() = default;
  texecarglist(const texecarglist&) = delete;
  texecarglist& operator=(const texecarglist&) = delete;
  ~texecarglist() override;

  std::int32_t count() const noexcept { return fcount; }
  std::int32_t capacity() const noexcept { return fcapacity; }

  /// Appends, and gives the index.
  std::int32_t add(std::string_view s);
  /// REQUIRES: 0 <= i <= count().
  void insert(std::int32_t i, std::string_view s);
  /// Replaces the text; s may be the one that is replaced.
  void put(std::int32_t i, std::string_view s);
  /// BORROWS: good until the argument is replaced or leaves.
  std::string_view get(std::int32_t i) const noexcept { return getstring(flist[i]); }
  /// The last argument, empty if there is none.
  std::string_view getlast() const noexcept;
  void delete_(std::int32_t i);
  /// Releases the text of argument i, which is empty then and stays in the list.
  void freeitem(std::int32_t i) noexcept;
  /// Releases all arguments, the last one first, and the array.
  void clear();
  /// Reallocates to n slots, or to count() if that is more.
  void setcapacity(std::int32_t n);
  /// Makes room; called when count() equals capacity().
  void grow();

  /// Add the words of s after the list or, in their order, before it; give how many there were.
  ///
  /// Bytes of 32 and below separate words. A double quote opens a stretch in which they do not, up
  /// to the next double quote or to the end; the quotes themselves are dropped, wherever they
  /// stand, and none can be escaped. A word is cut at 255 bytes. A pair of quotes with nothing in
  /// it is no argument. The text ends at a zero byte.
  /// KEEP: such a pair that stands alone is an empty word, and an empty word ends the text: a "" b
  /// is the one word a.
  std::int32_t split(bool append, std::string_view s);
  std::int32_t splitappend(std::string_view s) { return split(true, s); }
  std::int32_t splitprepend(std::string_view s) { return split(false, s); }

  /// For q9systeml on Windows only; nothing looks at it elsewhere.
  bool sysflag() const noexcept { return fsysflag; }
  void setsysflag(bool flag) noexcept { fsysflag = flag; }

 protected:
  // KEEP: in this order.
  std::int32_t fcapacity = 0;
  bool fsysflag = true;
  std::int32_t fcount = 0;
  pstring* flist = nullptr;
};

// Through the shell ------------------------------------------------------------------------------
// POSIX system(). Results:
//     0  the command ran, and code is its exit code
//     1  it was killed, and code is the signal
//     2  it could not be waited for; code 0
//   127  the shell could not run it; code 0. KEEP: a command that exits with 127 looks the same.
// An empty command runs "sh" itself, which reads the standard input.

/// cmd is cut at 255 bytes.
OPTXV_EXPORT int q9system(std::string_view cmd, std::int32_t& code);
/// cmd is a zero-terminated text of any length.
OPTXV_EXPORT int q9systemp(const char* cmd, std::int32_t& code);
/// Runs cmd, a blank and params.
OPTXV_EXPORT int q9system2(std::string_view cmd, const char* params, std::int32_t& code);

/// Runs cmd and the arguments, each after a blank.
///
/// An argument is wrapped in double quotes if it is empty or holds a byte of 32 or below, unless it
/// begins and ends with one already, blanks and the like at its ends aside. KEEP: nothing else that
/// the shell reads in a special way is quoted or escaped: the arguments are no place for text that
/// is not trusted.
OPTXV_EXPORT int q9systeml(std::string_view cmd, const texecarglist& args, std::int32_t& code);

// Directly ---------------------------------------------------------------------------------------
// POSIX fork() and execvp(): the program is looked for along PATH, and no shell reads the
// arguments. Result 0 if the program ran to its end, with its exit code in code; else 1, with code
// 0: it does not exist, was killed, or there was nothing to run.
//
// KEEP: exit code 255 gives 1 too, as that is how the child reports that it could not start.
// KEEP: the status of any other child that ends in the meantime is taken and lost: the caller has
// no other children to care for.

/// cmd is split into words, the first of which is the program; see texecarglist::split.
OPTXV_EXPORT int q9exec(std::string_view cmd, std::int32_t& code);
/// The same for a zero-terminated text of any length.
OPTXV_EXPORT int q9execp(const char* cmd, std::int32_t& code);
/// cmd is the program, blanks and all; params is split into its arguments.
OPTXV_EXPORT int q9exec2(std::string_view cmd, const char* params, std::int32_t& code);
/// The program and its arguments as they are.
OPTXV_EXPORT int q9execl(std::string_view cmd, const texecarglist& args, std::int32_t& code);

// This program -----------------------------------------------------------------------------------

/// The path of the program in double quotes, a blank, and then a blank and the text of each
/// argument, which is not quoted. Made when it is first asked for and kept.
/// BORROWS: good for as long as the library is loaded.
OPTXV_EXPORT const char* q9getcommandline();

/// What is called when the user interrupts the program (SIGINT), in signal context: it may do no
/// more than what POSIX calls async-signal-safe.
using tctrlhandler = void (*)();

/// Installs a handler, or replaces the one that is there; nil uninstalls.
/// Result 0; 2 if the system refuses; for nil that of q9uninstallctrlhandler.
OPTXV_EXPORT int q9installctrlhandler(tctrlhandler handler) noexcept;

/// Takes the handler away and puts back what was there before the first. Result 0; 1 if there is no
/// handler; 2 if the system refuses or somebody else has changed the action of the signal since.
/// KEEP: with 2 the handler is gone and the old action is back all the same.
OPTXV_EXPORT int q9uninstallctrlhandler() noexcept;

/// The handler in place, or nil.
OPTXV_EXPORT tctrlhandler q9getctrlhandler() noexcept;

/// Uninstalls a handler that is still there, as its code may go with the library; an action that is
/// somebody else's stays. The frame calls it when the library is unloaded.
void finalq9process();

}  // namespace optxv
