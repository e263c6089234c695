// Linked into the tests that are declared to have one thread, which therefore do not run under the
// thread sanitizer: aborts them if the project's code starts another thread. Libraries may have
// threads of their own.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <pthread.h>

namespace {

using Create = int(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);

bool isOfProject(const void* caller) {
  Dl_info calling{};
  Dl_info own{};
  if (dladdr(caller, &calling) == 0 || dladdr(__builtin_return_address(0), &own) == 0) return true;
  return calling.dli_fbase == own.dli_fbase ||
         std::strstr(calling.dli_fname, "libstdc++") != nullptr;
}

}  // namespace

extern "C" int pthread_create(pthread_t* thread, const pthread_attr_t* attributes,
                              void* (*body)(void*), void* argument) {
  if (isOfProject(__builtin_return_address(0))) {
    std::fputs("These tests start a thread: declare them with THREADS in CMake\n", stderr);
    std::abort();
  }
  static Create* const create = reinterpret_cast<Create*>(dlsym(RTLD_NEXT, "pthread_create"));
  return create(thread, attributes, body, argument);
}
