// The mark of a class or function that a C++ program may link to.
//
// Everything without it is hidden, and frame/exports.map has the last word: a mark
// shows nothing that the list there does not name.
#pragma once

#if defined(__GNUC__)
#define OPTXV_EXPORT __attribute__((visibility("default")))
#else
#define OPTXV_EXPORT
#endif
