// The functions of the second public header. Each is one hop to what the object knows.

#include "optxv/embedding.h"

#include <cerrno>
#include <new>
#include <string>

#include "definition/definitionreader.h"
#include "foundation/textfile.h"
#include "frame/boundary.h"
#include "language/listener.h"
#include "options/optionkinds.h"

using namespace optxv;

namespace {

tzmaoptions& objectof(optxv_handle handle) {
  return *static_cast<tzmaoptions*>(handle);
}

optxv_place placeof(const tzmaoptions& options, const textplace& at, std::uint16_t source) {
  if (!at.known()) return {"", 0, 0, 0};
  return {options.sources.name(source), at.line, at.column, at.length};
}

const tstrlistoption* listat(optxv_handle handle, std::int32_t optnr) {
  const toption* option = optnr < 1 ? nullptr : objectof(handle).getobjects(optnr - 1);
  return askind<tstrlistoption>(option);
}

std::string_view viewof(const char* text) {
  return text == nullptr ? std::string_view() : std::string_view(text);
}

/// As much of a name as a bounded string has of it.
std::string_view nameof(const char* name) {
  return viewof(name).substr(0, shortstring::maximum);
}

std::string_view viewof(const char* bytes, std::size_t size) {
  return size == 0 ? std::string_view() : std::string_view(bytes, size);
}

}  // namespace

void optxv_listen(optxv_handle handle, const optxv_listener* listener) {
  atboundary([&] {
    objectof(handle).told =
        listener != nullptr ? std::make_unique<optxv::listener>(*listener) : nullptr;
  });
}

int32_t optxv_message_place(optxv_handle handle, int32_t number, optxv_place* place) {
  const tzmaoptions& options = objectof(handle);
  const bool good = number >= 1 && number <= options.getmessagecount();
  const sourceplace found = good ? options.messageplaces.get(number - 1) : sourceplace();
  *place = placeof(options, found.at, found.source);
  return found.at.known() ? 1 : 0;
}

int32_t optxv_value_place(optxv_handle handle, int32_t optnr, optxv_place* place, int32_t* road,
                          int32_t* through) {
  const tzmaoptions& options = objectof(handle);
  const valueorigin found = optnr >= 1 ? options.origins.get(optnr - 1) : valueorigin();
  *place = placeof(options, found.at, found.source);
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
  *item = textof(good ? list->items.get(position - 1) : std::string_view());
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

int32_t optxv_read_definition_text(optxv_handle handle, const char* name, const char* bytes,
                                   size_t size) {
  return atboundary(
      [&] { return objectof(handle).readdefinitiontext(nameof(name), viewof(bytes, size)); });
}

int32_t optxv_read_parameter_text(optxv_handle handle, const char* name, const char* bytes,
                                  size_t size) {
  return atboundary(
      [&] { return objectof(handle).readparametertext(nameof(name), viewof(bytes, size)); });
}

int32_t optxv_write_parameter_text(optxv_handle handle,
                                   int32_t (*take)(void* context, const char* bytes, size_t size),
                                   void* context) {
  return atboundary([&]() -> int32_t {
    std::string text;
    try {
      textfile file;
      file.rewritememory(text);
      objectof(handle).writeparameters(file);
      file.close();
    } catch (const std::bad_alloc&) {
      return ENOMEM;
    }
    return take(context, text.data(), text.size());
  });
}
