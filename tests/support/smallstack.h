// A thread with little stack, as the threads of some hosts have.
#pragma once

#include <pthread.h>

#include <cstddef>
#include <functional>

namespace optxv::test {

/// Runs it in a thread with a stack of so many bytes; false where there can be no such thread.
inline bool onstack(std::size_t size, std::function<void()> what) {
  const auto run = [](void* call) -> void* {
    (*static_cast<std::function<void()>*>(call))();
    return nullptr;
  };
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_t thread;
  const bool good = pthread_attr_setstacksize(&attributes, size) == 0 &&
                    pthread_create(&thread, &attributes, run, &what) == 0;
  pthread_attr_destroy(&attributes);
  return good && pthread_join(thread, nullptr) == 0;
}

}  // namespace optxv::test
