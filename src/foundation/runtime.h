// What every other module stands on: counted memory, the root class, the exceptions for failures of
// the run itself, the one I/O error code, and the program's arguments.
//
// There are no locks. Two threads may run at once, each with objects of its own: the I/O error code
// is a thread's own, as errno is, and the counts of memory may then miss a change. The program's
// arguments are for one thread to set.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "foundation/boundedstring.h"
#include "foundation/visibility.h"

namespace optxv {

// Memory -----------------------------------------------------------------------------------------

/// A block of size bytes, its content undefined, aligned for any object.
///
/// Returns nil for a size of zero or less. Raises eoutofmemory if there is no such block,
/// after the handler of std::set_new_handler, if the program has set one, has been asked for room.
/// OWNS: the caller, who gives it back with freemem and the same size.
OPTXV_EXPORT void* getmem(std::int64_t size);

/// Gives back a block of getmem or reallocmem; nil is accepted and does nothing.
/// REQUIRES: size is the one the block was last asked for with.
OPTXV_EXPORT void freemem(void* block, std::int64_t size) noexcept;

/// The block moved to newsize bytes; the bytes that both sizes share are kept.
///
/// A nil block makes it a getmem. A newsize of zero or less frees the block and gives nil. If there
/// is no memory, raises an `exception` (not eoutofmemory), and the old block is gone: a caller sets
/// the variable that held it to nil before the call.
/// REQUIRES: oldsize is the size of the block.
void* reallocmem(void* block, std::int64_t oldsize, std::int64_t newsize);

/// As getmem for the size of a text, after which one more byte follows that is 0 and is not
/// counted.
void* gettextmem(std::int64_t size);

/// Moves a block to newsize bytes, more than it has, as reallocmem does; but if there is no memory,
/// the old block stays, and stays good.
void* growmem(void* block, std::int64_t oldsize, std::int64_t newsize);

/// Bytes and blocks allocated and not yet given back.
std::int64_t allocmemsize() noexcept;
std::int64_t allocmemcount() noexcept;

// The root class ---------------------------------------------------------------------------------

/// The root of all classes whose objects live on the heap or are raised; its memory is counted.
///
/// An object is freed with `delete`, which accepts nil.
class tobject {
 public:
  tobject() = default;
  tobject(const tobject&) = default;
  tobject& operator=(const tobject&) = default;
  virtual ~tobject() = default;

  static void* operator new(std::size_t size) { return getmem(static_cast<std::int64_t>(size)); }
  static void operator delete(void* block, std::size_t size) noexcept {
    freemem(block, static_cast<std::int64_t>(size));
  }
};

// Exceptions -------------------------------------------------------------------------------------

/// A failure of the run itself: exhausted memory, an I/O error, a broken assertion. Raised by
/// value.
///
/// A fault in what a user wrote is never an exception: it is a result or a message in the queue.
class OPTXV_EXPORT exception : public tobject {
 public:
  explicit exception(std::string_view text) noexcept : message(text) {}
  shortstring message;
};

/// Ends what is under way silently: the standard handler prints nothing for it.
class eabort : public exception {
  using exception::exception;
};
class eabstracterror : public exception {
  using exception::exception;
};
class OPTXV_EXPORT eassertionfailed : public exception {
  using exception::exception;
};
class OPTXV_EXPORT einouterror : public exception {
  using exception::exception;
};
class einvalidcast : public exception {
  using exception::exception;
};
class OPTXV_EXPORT eoutofmemory : public exception {
  using exception::exception;
};
class erangeerror : public exception {
  using exception::exception;
};
// These exist for callers to name; no module raises them by a cause.
class econverterror : public exception {
  using exception::exception;
};
class elisterror : public exception {
  using exception::exception;
};
class eoserror : public exception {
  using exception::exception;
};

/// Why an exception is raised; it decides the class and the first words of the message.
enum class cause {
  iocheck,       ///< einouterror
  iounknown,     ///< einouterror
  allocation,    ///< eoutofmemory
  reallocation,  ///< exception
  assertion,     ///< eassertionfailed
  abstractcall,  ///< eabstracterror
  classcast,     ///< einvalidcast
  variantcast,   ///< einvalidcast
  rangecheck,    ///< erangeerror
  emptyset,      ///< exception
  halt,          ///< exception
  unknown        ///< exception
};

/// Raises the exception of a cause.
///
/// The message is the text of the cause, then site, then the I/O error code if it is not 0, then,
/// for the two I/O causes, errno and its text; all of it cut at 255 bytes. The two I/O causes clear
/// the I/O error code and errno.
[[noreturn]] void raisecause(cause why, std::string_view site = {});

/// Raises eassertionfailed; source and line say where the assertion stands.
[[noreturn]] void raiseassertion(std::string_view text, std::string_view source, int line);

/// Raises eabstracterror for an operation that the class of the instance ought to override; nil if
/// no instance is at hand.
[[noreturn]] void raiseabstract(const tobject* instance);

/// Raises erangeerror for a value outside lower to upper.
[[noreturn]] void raiserange(std::int32_t value, std::int32_t lower, std::int32_t upper);

/// What becomes of an exception that nobody caught: prints "Q9 Standard Exception Handler: ", its
/// message and a line feed to standard output, flushes it, restores the default action of SIGABRT
/// and aborts. Prints nothing for an eabort or for a foreign exception; std::bad_alloc counts as a
/// failed allocation of our own.
/// REQUIRES: called inside a catch block.
[[noreturn]] void standardexceptionhandler() noexcept;

// The I/O error code -----------------------------------------------------------------------------

/// Stores the error number of an I/O operation, 0 for none. Operations store and go on.
void setioresult(int code) noexcept;

/// The last stored error number; reading it clears it.
OPTXV_EXPORT int ioresult() noexcept;

/// Raises einouterror if the I/O error code is not 0.
void _Q9error_check();

// Program arguments ------------------------------------------------------------------------------

/// The arguments of the program, its name first, as they were last set: by the load step, from what
/// the system reports (platform/arguments.h), or by a host. -1 and nil until then.
int argumentcount() noexcept;
char** argumentvector() noexcept;

/// BORROWS: the vector stays the caller's and has to outlive its use.
OPTXV_EXPORT void setarguments(int count, char** vector) noexcept;

}  // namespace optxv
