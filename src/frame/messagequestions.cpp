// The functions of the second public header for the queue of messages, and for the names that may
// have been meant.

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "foundation/pchutil.h"
#include "frame/boundary.h"
#include "frame/status.h"
#include "options/suggestions.h"

using namespace optxv;

namespace {

/// Puts names into an array, good until the object is freed, and gives how many.
std::int32_t namesout(tzmaoptions& options, const std::vector<std::string>& names,
                      optxv_text* out) {
  std::transform(names.begin(), names.end(), out,
                 [&](const std::string& name) { return endedtext(options.keeptext(name)); });
  return static_cast<std::int32_t>(names.size());
}

/// Runs what gives a number of names. There are none where memory runs out.
template <class Body>
std::int32_t withnames(optxv_handle handle, Body body) noexcept {
  const std::int32_t found = withobject(handle, body);
  return found > 0 && found <= static_cast<std::int32_t>(nearestnames::maximum) ? found : 0;
}

/// The names that may have been meant where a message is about a wrong one.
std::vector<std::string> meantby(tzmaoptions& options, const messagedetail& message) {
  switch (message.fault) {
    case optxv_fault_unknown_option:
    case optxv_fault_unknown_suffix:
      return options.nearnames().names(message.about);
    case optxv_fault_unknown_member:
    case optxv_fault_unknown_target:
    case optxv_fault_unknown_marked:
      return options.nearnames().names(message.seen);  // it is about the record
    case optxv_fault_unknown_value: {
      const toption* const option = options.getobjects(message.option - 1);
      if (option == nullptr) return {};
      return options.nearnames().values(*option, message.seen);
    }
    default:
      return {};
  }
}

}  // namespace

// The queue --------------------------------------------------------------------------------------

int32_t optxv_message_count(optxv_handle handle) {
  return handle == nullptr ? 0 : objectof(handle).getmessagecount();
}

void optxv_error_count(optxv_handle handle, int32_t* errors, int32_t* warnings) {
  std::int32_t counted[2] = {};
  if (handle != nullptr) objectof(handle).opterrorcount(counted[0], counted[1]);
  if (errors != nullptr) *errors = counted[0];
  if (warnings != nullptr) *warnings = counted[1];
}

int32_t optxv_show_message(optxv_handle handle, int32_t number, char* text) {
  return withobject(handle, [&](const tzmaoptions& options) -> std::int32_t {
    if (positionin(number, options.getmessagecount()) < 0) return optxv_unknown;
    if (text == nullptr) return optxv_bad_argument;
    shortstring shown;
    std::int32_t kind = 0;
    options.optgetmessage(number, shown, kind);
    strpcopy(text, shown);
    return optxv_ok;
  });
}

int32_t optxv_add_message(optxv_handle handle, const char* bytes, size_t size) {
  return withtext(bytes, size, [&](std::string_view text) {
    return withobject(handle, [&](tzmaoptions& options) {
      options.optaddmessage(text);
      return optxv_ok;
    });
  });
}

void optxv_clear_messages(optxv_handle handle) {
  if (handle != nullptr) atboundary([&] { objectof(handle).optclearmessages(); });
}

int32_t optxv_message_place(optxv_handle handle, int32_t number, optxv_place* place) {
  *place = noplace;
  if (handle == nullptr) return 0;
  const tzmaoptions& options = objectof(handle);
  const std::int32_t at = positionin(number, options.getmessagecount());
  if (at < 0) return 0;
  const sourceplace found = options.messageplaces.get(at);
  *place = placeof(options, found.at, found.source);
  return found.at.known() ? 1 : 0;
}

int32_t optxv_message_info(optxv_handle handle, int32_t number, optxv_message* message) {
  return withobject(handle, [&](const tzmaoptions& options) -> std::int32_t {
    if (positionin(number, options.getmessagecount()) < 0) return optxv_unknown;
    if (message == nullptr) return optxv_bad_argument;
    optxv_message found = options.messageinfo(number);
    optxv_message_place(handle, number, &found.place);
    *message = found;
    return optxv_ok;
  });
}

// Names that may have been meant -----------------------------------------------------------------

int32_t optxv_message_nearest(optxv_handle handle, int32_t number, optxv_text nearest[3]) {
  return withnames(handle, [&](tzmaoptions& options) {
    const std::int32_t at = positionin(number, options.getmessagecount());
    return at < 0 || nearest == nullptr
               ? 0
               : namesout(options, meantby(options, options.messagedetails.get(at)), nearest);
  });
}

int32_t optxv_nearest_names(optxv_handle handle, const char* name, size_t size,
                            optxv_text nearest[3]) {
  return withtext(
      name, size,
      [&](std::string_view text) {
        return withnames(handle, [&](tzmaoptions& options) {
          return nearest == nullptr ? 0
                                    : namesout(options, options.nearnames().names(text), nearest);
        });
      },
      std::string_view::npos);
}
