// The exported functions: those that take a handle are made from the rows of api.def, the few
// others are written out. The public header declares them all.
//
// The rows hold the mixed-case names, which are not to be replaced.
#define OPTXV_NO_MIXED_CASE_NAMES
#include "frame/boundary.h"
#include "frame/compatibility.h"
#include "frame/lifecycle.h"
#include "frame/signatures.h"
#include "optxv/optxv.h"
#include "platform/arguments.h"
#include "platform/q9helpers.h"

// A body made from a row has the types of the row's kinds, and is a definition of what the public
// header declares: extern "C" functions are not overloaded, so where the two differ, this does not
// compile.

#define OPTXV_COUNT_(a1, a2, a3, a4, a5, a6, a7, count, ...) count
#define OPTXV_COUNT(...) OPTXV_COUNT_(__VA_ARGS__ __VA_OPT__(, ) 7, 6, 5, 4, 3, 2, 1, 0)
#define OPTXV_JOIN_(a, b) a##b
#define OPTXV_JOIN(a, b) OPTXV_JOIN_(a, b)

#define OPTXV_TYPED_0(form)
#define OPTXV_TYPED_1(form, k1) , k1::form a1
#define OPTXV_TYPED_2(form, k1, k2) OPTXV_TYPED_1(form, k1), k2::form a2
#define OPTXV_TYPED_3(form, k1, k2, k3) OPTXV_TYPED_2(form, k1, k2), k3::form a3
#define OPTXV_TYPED_4(form, k1, k2, k3, k4) OPTXV_TYPED_3(form, k1, k2, k3), k4::form a4
#define OPTXV_TYPED_5(form, k1, k2, k3, k4, k5) OPTXV_TYPED_4(form, k1, k2, k3, k4), k5::form a5
#define OPTXV_TYPED_6(form, k1, k2, k3, k4, k5, k6) \
  OPTXV_TYPED_5(form, k1, k2, k3, k4, k5), k6::form a6
#define OPTXV_TYPED_7(form, k1, k2, k3, k4, k5, k6, k7) \
  OPTXV_TYPED_6(form, k1, k2, k3, k4, k5, k6), k7::form a7
#define OPTXV_TYPED(form, ...) \
  OPTXV_JOIN(OPTXV_TYPED_, OPTXV_COUNT(__VA_ARGS__))(form __VA_OPT__(, ) __VA_ARGS__)

#define OPTXV_NAMED_0
#define OPTXV_NAMED_1 , a1
#define OPTXV_NAMED_2 OPTXV_NAMED_1, a2
#define OPTXV_NAMED_3 OPTXV_NAMED_2, a3
#define OPTXV_NAMED_4 OPTXV_NAMED_3, a4
#define OPTXV_NAMED_5 OPTXV_NAMED_4, a5
#define OPTXV_NAMED_6 OPTXV_NAMED_5, a6
#define OPTXV_NAMED_7 OPTXV_NAMED_6, a7
#define OPTXV_NAMED(...) OPTXV_JOIN(OPTXV_NAMED_, OPTXV_COUNT(__VA_ARGS__))

#define OPTXV_PLAIN(api, linkage, result, ...)                              \
  result::opt linkage(optHandle handle OPTXV_TYPED(opt, __VA_ARGS__)) {     \
    return optcall<&tzmaoptions::linkage>(handle OPTXV_NAMED(__VA_ARGS__)); \
  }
#define OPTXV_TWIN(api, linkage, result, ...)                                \
  OPTXV_PLAIN(api, linkage, result, __VA_ARGS__)                             \
  result::copt c##linkage(optHandle handle OPTXV_TYPED(copt, __VA_ARGS__)) { \
    return coptcall<&tzmaoptions::linkage>(handle OPTXV_NAMED(__VA_ARGS__)); \
  }

using namespace optxv;
using namespace optxv::kinds;

namespace {
void getloadpath(shortstring& path) {
  path = dllloadpath();
}
void setloadpath(std::string_view path) {
  dllloadpath() = path;
}
}  // namespace

extern "C" {

#include "frame/api.def"

void xcreate(optHandle* handle) {
  atboundary([&] { createobject(*handle); });
}
void xfree(optHandle* handle) {
  atboundary([&] { freeobject(*handle); });
}

std::int32_t xcheck(const unsigned char* function, std::int32_t count,
                    const std::int32_t* signature, unsigned char* message) {
  return optcall<checkfunction>(nullptr, function, count, signature, message);
}
std::int32_t cxcheck(const char* function, std::int32_t count, const std::int32_t* signature,
                     char* message) {
  return coptcall<checkfunction>(nullptr, function, count, signature, message);
}
std::int32_t xapiversion(std::int32_t version, unsigned char* message, std::int32_t* status) {
  return optcall<checkversion>(nullptr, version, message, status);
}
std::int32_t cxapiversion(std::int32_t version, char* message, std::int32_t* status) {
  return coptcall<checkversion>(nullptr, version, message, status);
}

void optgetloadpath(unsigned char* path) {
  optcall<getloadpath>(nullptr, path);
}
void coptgetloadpath(char* path) {
  coptcall<getloadpath>(nullptr, path);
}
void optsetloadpath(const unsigned char* path) {
  optcall<setloadpath>(nullptr, path);
}
void coptsetloadpath(const char* path) {
  coptcall<setloadpath>(nullptr, path);
}

// The platform helpers. None of them raises.

std::int32_t get_cpu_time(std::int64_t* nanoseconds) {
  return q9helpers::get_cpu_time(*nanoseconds);
}
std::int32_t get_time(std::int64_t* nanoseconds) {
  return q9helpers::get_time(*nanoseconds);
}
std::int64_t gettickcount() {
  return q9helpers::gettickcount();
}
std::int32_t get_cwd(char* path, std::size_t size) {
  return q9helpers::get_cwd(path, size);
}
std::int32_t get_env(const char* name, char* value, std::size_t size) {
  return q9helpers::get_env(name, value, size);
}
std::int32_t get_file_stat(std::int32_t handle, std::int64_t* size, std::int64_t* modified,
                           std::int32_t* mode) {
  return q9helpers::get_file_stat(handle, {*size, *modified, *mode});
}
std::int32_t get_file_stat_by_name(const char* name, std::int64_t* size, std::int64_t* modified,
                                   std::int32_t* mode) {
  return q9helpers::get_file_stat_by_name(name, {*size, *modified, *mode});
}
std::int32_t get_uname(char* sysname, char* nodename, char* release, char* version, char* machine,
                       std::size_t size) {
  return q9helpers::get_uname(sysname, nodename, release, version, machine, size);
}
std::int32_t getosfilesys() {
  return q9helpers::getosfilesys();
}
std::int32_t unixgetmodulefilename(char* path, std::size_t size) {
  return optxv::unixgetmodulefilename(path, size);
}

}  // extern "C"
