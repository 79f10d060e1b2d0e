#pragma once

#include <dlfcn.h>
#include <sys/types.h>

/** Calls the function of this name that would have been called without this library. */
#define CAMERA_REAL(name)                               \
  reinterpret_cast<decltype(&::name)>([] {              \
    static void* const found = dlsym(RTLD_NEXT, #name); \
    return found;                                       \
  }())

namespace sim::real {

int open(const char* path, int flags);
ssize_t write(int descriptor, const void* data, size_t size);

}  // namespace sim::real
