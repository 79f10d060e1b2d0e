#pragma once

#include <cerrno>

/** Makes a system call, and makes it again as often as a signal interrupts it. */
template <class Call>
auto uninterrupted(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR)
    result = call();
  return result;
}
