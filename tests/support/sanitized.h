// Whether a sanitizer watches the program: it needs memory, files and allocation functions of its
// own.
#pragma once

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define OPTXV_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define OPTXV_SANITIZED 1
#endif
#endif
#ifndef OPTXV_SANITIZED
#define OPTXV_SANITIZED 0
#endif
