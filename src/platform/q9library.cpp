#include "platform/q9library.h"

#include <dlfcn.h>

#include <array>

#include "foundation/q9private.h"
#include "platform/q9platform.h"
#include "platform/strbuf.h"

namespace optxv {

namespace {

std::string_view onthisplatform(const std::array<std::string_view, 16>& table) noexcept {
  const bool known = osplatform >= 0 && osplatform < missingplatform;
  return table[static_cast<std::size_t>(known ? osplatform : missingplatform)];
}

}  // namespace

bool q9libhandleisnil(tq9libhandle handle) noexcept {
  return handle == nullptr;
}
tq9libhandle q9nillibhandle() noexcept {
  return nullptr;
}

shortstring q9libraryprefix() noexcept {
  return onthisplatform(osdllprefix);
}
shortstring q9libraryext() noexcept {
  return onthisplatform(osdllextension);
}

shortstring q9makelibname(std::string_view path, std::string_view base) noexcept {
  shortstring name;
  if (!path.empty()) name = concat(path.substr(0, path.size() - path.ends_with('/')), '/');
  return name.append(q9libraryprefix()).append(base).append(q9libraryext());
}

tq9libhandle q9loadlibrary(std::string_view name, shortstring& message) noexcept {
  const tq9libhandle handle = dlopen(strbuf(name), RTLD_NOW);
  message.clear();
  if (handle != nullptr) return handle;
  const char* const text = dlerror();
  message = text == nullptr ? "No message available" : q9private::pchartostr(text);
  return nullptr;
}

void* q9getprocaddress(tq9libhandle handle, std::string_view name) noexcept {
  dlerror();
  void* const address = dlsym(handle, strbuf(name));
  return dlerror() == nullptr ? address : nullptr;
}

bool q9freelibrary(tq9libhandle handle) noexcept {
  return handle != nullptr && dlclose(handle) == 0;
}

}  // namespace optxv
