/** The C library's file operations, each asking first whether it may go on (see Faults.h). */
#include <fcntl.h>
#include <stdio_ext.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>

#include "sim/preload/Faults.h"
#include "sim/preload/Real.h"

using sim::Bytes;
using sim::denied;
using sim::Operation;

namespace {

bool changes(int flags) { return (flags & (O_TRUNC | O_CREAT)) != 0; }
bool changes(const char* mode) { return mode[0] == 'w' || mode[0] == 'a'; }

/** Only a call that can make a file has a third argument. */
bool hasMode(int flags) { return (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE; }

/** A stream's buffered text reaches the file by calls inside the C library, so its flush counts as the write. */
bool flushDenied(FILE* stream) {
  return stream != nullptr && __fwritable(stream) != 0 && __fpending(stream) > 0 &&
         denied(Operation::Write, fileno(stream), {stream->_IO_write_base, __fpending(stream)});
}

}  // namespace

namespace sim::real {

int open(const char* path, int flags) { return CAMERA_REAL(open)(path, flags); }
ssize_t write(int descriptor, const void* data, size_t size) { return CAMERA_REAL(write)(descriptor, data, size); }

}  // namespace sim::real

extern "C" {

#define CAMERA_MODE(flags)                                   \
  mode_t mode = 0;                                           \
  if (hasMode(flags)) {                                      \
    va_list arguments;                                       \
    va_start(arguments, flags);                              \
    mode = static_cast<mode_t>(va_arg(arguments, unsigned)); \
    va_end(arguments);                                       \
  }

#define CAMERA_OPEN(name)                                            \
  int name(const char* path, int flags, ...) {                       \
    CAMERA_MODE(flags)                                               \
    if (changes(flags) && denied(Operation::Other, path)) return -1; \
    return CAMERA_REAL(name)(path, flags, mode);                     \
  }
CAMERA_OPEN(open)
CAMERA_OPEN(open64)

#define CAMERA_OPENAT(name)                                                     \
  int name(int directory, const char* path, int flags, ...) {                   \
    CAMERA_MODE(flags)                                                          \
    if (changes(flags) && denied(Operation::Other, directory, path)) return -1; \
    return CAMERA_REAL(name)(directory, path, flags, mode);                     \
  }
CAMERA_OPENAT(openat)
CAMERA_OPENAT(openat64)

// What fortified programs call when a file is opened without a mode.
// NOLINTBEGIN(bugprone-reserved-identifier)
int __open_2(const char* path, int flags);
int __open64_2(const char* path, int flags);
int __open_2(const char* path, int flags) { return open(path, flags); }
int __open64_2(const char* path, int flags) { return open64(path, flags); }
// NOLINTEND(bugprone-reserved-identifier)

int creat(const char* path, mode_t mode) { return open(path, O_WRONLY | O_CREAT | O_TRUNC, mode); }
int creat64(const char* path, mode_t mode) { return open64(path, O_WRONLY | O_CREAT | O_TRUNC, mode); }

FILE* fopen(const char* path, const char* mode) {
  return changes(mode) && denied(Operation::Other, path) ? nullptr : CAMERA_REAL(fopen)(path, mode);
}

FILE* fopen64(const char* path, const char* mode) {
  return changes(mode) && denied(Operation::Other, path) ? nullptr : CAMERA_REAL(fopen64)(path, mode);
}

int fflush(FILE* stream) {
  if (flushDenied(stream)) return EOF;
  return CAMERA_REAL(fflush)(stream);
}

int fclose(FILE* stream) {
  if (!flushDenied(stream)) return CAMERA_REAL(fclose)(stream);
  const int error = errno;
  __fpurge(stream);
  CAMERA_REAL(fclose)(stream);
  errno = error;
  return EOF;
}

ssize_t write(int descriptor, const void* data, size_t size) {
  return denied(Operation::Write, descriptor, {data, size}) ? -1 : CAMERA_REAL(write)(descriptor, data, size);
}

ssize_t pwrite(int descriptor, const void* data, size_t size, off_t at) {
  return denied(Operation::Write, descriptor, {data, size}) ? -1 : CAMERA_REAL(pwrite)(descriptor, data, size, at);
}

ssize_t pwrite64(int descriptor, const void* data, size_t size, off64_t at) {
  return denied(Operation::Write, descriptor, {data, size}) ? -1 : CAMERA_REAL(pwrite64)(descriptor, data, size, at);
}

ssize_t writev(int descriptor, const iovec* parts, int count) {
  Bytes first;
  for (int part = 0; part < count && first.size == 0; ++part)
    first = {parts[part].iov_base, parts[part].iov_len};
  return denied(Operation::Write, descriptor, first) ? -1 : CAMERA_REAL(writev)(descriptor, parts, count);
}

/** The camera's kernel has none; who copies reads and writes instead. */
ssize_t copy_file_range(int /*from*/, off64_t* /*at*/, int /*to*/, off64_t* /*at*/, size_t /*size*/,
                        unsigned /*flags*/) {
  errno = ENOSYS;
  return -1;
}

int ftruncate(int descriptor, off_t size) noexcept {
  return denied(Operation::Other, descriptor) ? -1 : CAMERA_REAL(ftruncate)(descriptor, size);
}

int ftruncate64(int descriptor, off64_t size) noexcept {
  return denied(Operation::Other, descriptor) ? -1 : CAMERA_REAL(ftruncate64)(descriptor, size);
}

int truncate(const char* path, off_t size) noexcept {
  return denied(Operation::Other, path) ? -1 : CAMERA_REAL(truncate)(path, size);
}

int truncate64(const char* path, off64_t size) noexcept {
  return denied(Operation::Other, path) ? -1 : CAMERA_REAL(truncate64)(path, size);
}

#define CAMERA_SYNC(name)                                                                      \
  int name(int descriptor) {                                                                   \
    if (denied(Operation::Other, descriptor) || CAMERA_REAL(name)(descriptor) != 0) return -1; \
    sim::noteSync(descriptor);                                                                 \
    return 0;                                                                                  \
  }
CAMERA_SYNC(fsync)
CAMERA_SYNC(fdatasync)

int rename(const char* from, const char* to) noexcept {
  return sim::renameDenied(AT_FDCWD, from, AT_FDCWD, to) ? -1 : CAMERA_REAL(rename)(from, to);
}

int renameat(int fromFolder, const char* from, int toFolder, const char* to) noexcept {
  return sim::renameDenied(fromFolder, from, toFolder, to) ? -1 : CAMERA_REAL(renameat)(fromFolder, from, toFolder, to);
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) noexcept {
  return sim::renameDenied(fromFolder, from, toFolder, to)
             ? -1
             : CAMERA_REAL(renameat2)(fromFolder, from, toFolder, to, flags);
}

int unlink(const char* path) noexcept { return denied(Operation::Name, path) ? -1 : CAMERA_REAL(unlink)(path); }

int unlinkat(int folder, const char* path, int flags) noexcept {
  return denied(Operation::Name, folder, path) ? -1 : CAMERA_REAL(unlinkat)(folder, path, flags);
}

int remove(const char* path) noexcept { return denied(Operation::Name, path) ? -1 : CAMERA_REAL(remove)(path); }

}  // extern "C"
