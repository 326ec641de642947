// The functions of the second public header. Each is one hop to what the object knows.

#include "optxv/embedding.h"

#include <unistd.h>

#include <algorithm>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "definition/definitionreader.h"
#include "foundation/pchutil.h"
#include "foundation/textfile.h"
#include "frame/boundary.h"
#include "frame/lifecycle.h"
#include "frame/status.h"
#include "language/listener.h"
#include "options/optionkinds.h"
#include "parameter/commandarguments.h"
#include "parameter/environmentvariables.h"
#include "parameter/snapshots.h"
#include "platform/filereplacement.h"

using namespace optxv;

namespace {

const tstrlistoption* listat(optxv_handle handle, std::int32_t optnr) {
  if (handle == nullptr || optnr < 1) return nullptr;
  const toption* option = objectof(handle).getobjects(optnr - 1);
  return askind<tstrlistoption>(option);
}

std::string_view viewof(const char* text) {
  return text == nullptr ? std::string_view() : std::string_view(text);
}

/// As much of a name as a bounded string has of it.
std::string_view nameof(const char* name) {
  return viewof(name).substr(0, shortstring::maximum);
}

/// Reads with a method that takes the name of a file, or else gives what is wrong with the name.
template <auto Method>
std::int32_t readnamed(optxv_handle handle, const char* filename) noexcept {
  return withtext(
      filename, OPTXV_ENDED,
      [&](std::string_view name) {
        return withreader(handle, [&](tzmaoptions& options) { return (options.*Method)(name); });
      },
      shortstring::maximum);
}

/// Reads with a method that takes a name and the bytes of a text.
template <auto Method>
std::int32_t readbytes(optxv_handle handle, const char* name, const char* bytes,
                       std::size_t size) noexcept {
  return withtext(
      bytes, size,
      [&](std::string_view text) {
        return withreader(
            handle, [&](tzmaoptions& options) { return (options.*Method)(nameof(name), text); });
      },
      std::string_view::npos);
}

/// Sets one switch and gives what it was.
bool exchangeswitch(tzmaoptions& options, std::int32_t which, bool on) {
  switch (which) {
    case optxv_switch_line_mode:
      return options.opteolonlyset(on) != 0;
    case optxv_switch_no_bounds:
      return std::exchange(options.nobounds, on);
    case optxv_switch_echo: {
      const bool before = options.echoflag;
      options.optechoset(on);
      return before;
    }
    case optxv_switch_recent:
      return std::exchange(options.recentenabled, on);
    default:
      return std::exchange(options.printing, on);
  }
}

}  // namespace

// The handle -------------------------------------------------------------------------------------

int32_t optxv_create(optxv_handle* handle) {
  if (handle == nullptr) return optxv_bad_argument;
  return atstatus([&]() -> std::int32_t {
    void* made = nullptr;
    createobject(made);
    *handle = made;
    return optxv_ok;
  });
}

void optxv_free(optxv_handle* handle) {
  if (handle != nullptr) atboundary([&] { freeobject(*handle); });
}

int32_t optxv_switch(optxv_handle handle, int32_t which, int32_t on) {
  return withobject(handle, [&](tzmaoptions& options) -> std::int32_t {
    if (which < optxv_switch_line_mode || which > optxv_switch_print) return optxv_bad_argument;
    return exchangeswitch(options, which, on != 0) ? 1 : 0;
  });
}

// Reading ----------------------------------------------------------------------------------------

int32_t optxv_read_definition(optxv_handle handle, const char* filename) {
  return readnamed<&tzmaoptions::optreaddefinition>(handle, filename);
}

int32_t optxv_read_parameters(optxv_handle handle, const char* filename) {
  return readnamed<&tzmaoptions::optreadparameterfile>(handle, filename);
}

int32_t optxv_read_line(optxv_handle handle, const char* bytes, size_t size) {
  return withtext(
      bytes, size,
      [&](std::string_view text) {
        return withreader(handle, [&](tzmaoptions& options) {
          options.readline(text);
          return optxv_ok;
        });
      },
      std::string_view::npos);
}

int32_t optxv_read_definition_text(optxv_handle handle, const char* name, const char* bytes,
                                   size_t size) {
  return readbytes<&tzmaoptions::readdefinitiontext>(handle, name, bytes, size);
}

int32_t optxv_read_parameter_text(optxv_handle handle, const char* name, const char* bytes,
                                  size_t size) {
  return readbytes<&tzmaoptions::readparametertext>(handle, name, bytes, size);
}

int32_t optxv_read_arguments(optxv_handle handle, int* argc, char** argv, uint32_t flags) {
  if (argc == nullptr || argv == nullptr || *argc < 0) return optxv_bad_argument;
  if ((flags & ~std::uint32_t{optxv_arguments_keep_unknown}) != 0) return optxv_bad_argument;
  return withreader(handle, [&](tzmaoptions& options) {
    if (*argc == 0) return optxv_ok;
    const std::span<char* const> all(argv, static_cast<std::size_t>(*argc));
    const std::vector<char*> kept =
        readarguments(options, all, (flags & optxv_arguments_keep_unknown) != 0);
    if (kept.size() < all.size()) *std::copy(kept.begin(), kept.end(), argv) = nullptr;
    *argc = static_cast<int>(kept.size());
    return optxv_ok;
  });
}

int32_t optxv_read_environment(optxv_handle handle, const char* prefix) {
  if (prefix == nullptr || *prefix == 0) return optxv_bad_argument;
  return withreader(handle, [&](tzmaoptions& options) {
    readenvironment(options, prefix, environ);
    return optxv_ok;
  });
}

int32_t optxv_show_help(optxv_handle handle, const char* request) {
  return withobject(handle, [&](tzmaoptions& options) {
    options.optshowhelp(nameof(request));
    return optxv_ok;
  });
}

// What the listener gets, and its questions ------------------------------------------------------

void optxv_listen(optxv_handle handle, const optxv_listener* listener) {
  if (handle == nullptr) return;
  atboundary([&] {
    auto& told = objectof(handle).told;
    listener != nullptr ? void(told.emplace(*listener)) : told.reset();
  });
}

int32_t optxv_value_place(optxv_handle handle, int32_t optnr, optxv_place* place, int32_t* road,
                          int32_t* through) {
  valueorigin found;
  *place = noplace;
  if (handle != nullptr && optnr >= 1) {
    found = objectof(handle).origins.get(optnr - 1);
    *place = placeof(objectof(handle), found.at, found.source);
  }
  if (road != nullptr) *road = found.road;
  if (through != nullptr) *through = found.through;
  return found.road != roadNone ? 1 : 0;
}

int32_t optxv_list_count(optxv_handle handle, int32_t optnr) {
  const tstrlistoption* list = listat(handle, optnr);
  return list != nullptr ? list->count() : -1;
}

int32_t optxv_list_item(optxv_handle handle, int32_t optnr, int32_t position, optxv_text* item) {
  const tstrlistoption* list = listat(handle, optnr);
  const bool good = list != nullptr && position >= 1 && position <= list->count();
  *item = textof(good ? list->item(position - 1) : std::string_view());
  return good ? 1 : 0;
}

const char* optxv_fault_name(int32_t fault) {
  return faultname(fault);
}

const char* optxv_field_name(int32_t field) {
  return fieldname(field);
}

int32_t optxv_record_form(int32_t number, const char** word, const char** fields,
                          const char** lines) {
  const recordform* form = formof(number);
  if (form == nullptr) return 0;
  *word = form->word;
  *fields = form->fields;
  *lines = form->lines;
  return 1;
}

// Snapshots --------------------------------------------------------------------------------------

struct optxv_snapshot {
  valuesnapshot values;
};

int32_t optxv_take_snapshot(optxv_handle handle, optxv_snapshot** snapshot) {
  if (snapshot == nullptr) return optxv_bad_argument;
  return withobject(handle, [&](const tzmaoptions& options) {
    *snapshot = new optxv_snapshot{valuesnapshot(options)};
    return optxv_ok;
  });
}

int32_t optxv_restore_snapshot(optxv_handle handle, const optxv_snapshot* snapshot) {
  if (snapshot == nullptr) return optxv_bad_argument;
  return withobject(handle, [&](tzmaoptions& options) -> std::int32_t {
    return snapshot->values.restore(options) ? optxv_ok : optxv_other_table;
  });
}

void optxv_free_snapshot(optxv_snapshot** snapshot) {
  if (snapshot != nullptr) delete std::exchange(*snapshot, nullptr);
}

// Writing ----------------------------------------------------------------------------------------

namespace {

/// Writes to a file, or a text in memory, that is open. Gives the system's error number.
int writeto(textfile& file, const tzmaoptions& options) {
  options.writeparameters(file);
  file.close();
  return ioresult();
}

/// What a parameter file would hold.
std::string writtentext(const tzmaoptions& options) {
  std::string text;
  textfile file;
  file.rewritememory(text);
  writeto(file, options);
  return text;
}

std::int32_t writestandard(const tzmaoptions& options) {
  textfile file;
  file.assign({});
  file.rewrite();
  const int failed = ioresult();
  return failed != 0 ? failed : writeto(file, options);
}

}  // namespace

int32_t optxv_write_parameters(optxv_handle handle, const char* filename) {
  const auto write = [&](std::string_view name) {
    return withobject(handle, [&](const tzmaoptions& options) -> std::int32_t {
      if (name.empty()) return writestandard(options);
      const auto failed = replacefile(std::string(name), writtentext(options));
      return failed ? failed->error : optxv_ok;
    });
  };
  return withtext(filename, OPTXV_ENDED, write, shortstring::maximum);
}

int32_t optxv_write_parameter_text(optxv_handle handle,
                                   int32_t (*take)(void* context, const char* bytes, size_t size),
                                   void* context) {
  std::string text;
  const std::int32_t status = withobject(handle, [&](const tzmaoptions& options) {
    text = writtentext(options);
    return optxv_ok;
  });
  return status != optxv_ok ? status : take(context, text.data(), text.size());
}
