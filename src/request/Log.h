#pragma once

#include <syslog.h>

#include <cerrno>
#include <cstdarg>

// clang checks the formats; g++ with -Wpedantic would refuse the C library's %m, the text of errno.
#ifdef __clang__
[[gnu::format(printf, 2, 3)]]
#endif
inline void
writeLog(int priority, const char* format, ...) {
  const int error = errno;  // the caller's caller may log the same one
  va_list arguments;
  va_start(arguments, format);
  vsyslog(priority, format, arguments);
  va_end(arguments);
  errno = error;
}

/** One log line behind the common prefix: function, source line, source file. The format is a literal. */
#define TMX_LOG(priority, format, ...) \
  writeLog((priority), "%s line %d in %s : " format, __func__, __LINE__, __FILE_NAME__ __VA_OPT__(, ) __VA_ARGS__)
