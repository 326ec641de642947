#include "frame/status.h"

#include <array>
#include <cerrno>
#include <new>
#include <stdexcept>
#include <typeinfo>

#include "foundation/numtext.h"
#include "foundation/pchutil.h"
#include "foundation/runtime.h"

namespace optxv {

std::int32_t failurestatus() noexcept {
  try {
    throw;
  } catch (const std::bad_alloc&) {
  } catch (const std::length_error&) {  // more than memory can hold
  } catch (const eoutofmemory&) {
  } catch (const einouterror&) {
    return EIO;
  } catch (const exception& failure) {
    // The class of a failed reallocation; its descendants are broken assertions and the like.
    if (typeid(failure) != typeid(exception)) standardexceptionhandler();
  } catch (...) {
    standardexceptionhandler();
  }
  return ENOMEM;
}

namespace {

constexpr std::array<const char*, 7> words = {
    "success",
    "no such option or entry",
    "the option is of another kind",
    "the value was refused",
    "the text is too long",
    "made for another handle or definition",
    "bad argument",
};

}  // namespace

}  // namespace optxv

const char* optxv_status_text(int32_t status) {
  using namespace optxv;
  thread_local char text[shortstring::maximum + 1];
  if (status > 0) {
    strpcopy(text, syserrormessage(status));
    return text;
  }
  const auto index = static_cast<std::size_t>(-std::int64_t{status});
  return index < words.size() ? words[index] : "unknown status";
}
