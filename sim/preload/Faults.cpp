#include "sim/preload/Faults.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "sim/preload/FaultPage.h"
#include "sim/preload/Real.h"
#include "sim/preload/Unsynced.h"

namespace sim {

namespace {

FaultPage* mapPage() {
  const int file = real::open("/run/camera/fault", O_RDWR | O_CLOEXEC);
  if (file < 0) return nullptr;
  void* memory = mmap(nullptr, sizeof(FaultPage), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
  close(file);
  return memory == MAP_FAILED ? nullptr : static_cast<FaultPage*>(memory);
}

FaultPage* page() {
  static FaultPage* const mapped = mapPage();
  return mapped;
}

bool armed() { return page() != nullptr && page()->armed != 0; }

bool onFlash(const std::string& path) {
  return path.starts_with("/mnt/flash/") || path.starts_with("/mnt/sysinfo/") || path == "/dev/mtd5";
}

std::string pathOf(int descriptor) {
  std::array<char, 64> link{};
  std::array<char, PATH_MAX> path{};
  std::snprintf(link.data(), link.size(), "/proc/self/fd/%d", descriptor);
  const ssize_t size = readlink(link.data(), path.data(), path.size());
  return size < 0 ? "" : std::string(path.data(), static_cast<std::size_t>(size));
}

/** The path behind all symbolic links; the last part need not exist. */
std::string resolve(int directory, std::string path) {
  if (!path.starts_with('/') && directory != AT_FDCWD) path.insert(0, pathOf(directory) + "/");
  std::array<char, PATH_MAX> resolved{};
  if (realpath(path.c_str(), resolved.data()) != nullptr) return resolved.data();
  const std::size_t slash = path.rfind('/');
  const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
  if (realpath(folder.c_str(), resolved.data()) == nullptr) return path;
  return std::string(resolved.data()) + "/" + path.substr(slash == std::string::npos ? 0 : slash + 1);
}

[[noreturn]] void stayDark() {
  while (true)
    pause();
}

[[noreturn]] void cutPower() {
  page()->fault = Fault::None;
  page()->dark = 1;
  const int power = real::open("/run/camera/power", O_WRONLY | O_CLOEXEC);
  [[maybe_unused]] const ssize_t told = real::write(power, "cut\n", 4);
  stayDark();
}

/** A signal that has a handler interrupts the daemon alone, and never the change of a name. */
bool canBeInterrupted(Operation operation) {
  return operation != Operation::Name && std::strcmp(program_invocation_short_name, "tmxd") == 0;
}

bool decide(Operation operation, const std::string& path, int descriptor = -1, Bytes bytes = {}) {
  if (page()->dark != 0) stayDark();
  const std::uint32_t number = ++page()->operations;
  const std::uint32_t write = operation == Operation::Write ? ++page()->writes : 0;
  const bool chosen = page()->at == (page()->halves != 0 ? write : number);
  if (page()->loses != 0) unsynced::remember(path);
  switch (page()->fault) {
    case Fault::None:
      return false;
    case Fault::Cut:
      if (!chosen) return false;
      if (page()->halves != 0) static_cast<void>(real::write(descriptor, bytes.data, bytes.size / 2));
      cutPower();
    case Fault::Fail:
      if (!chosen || (page()->error == EINTR && !canBeInterrupted(operation))) return false;
      errno = page()->error;
      return true;
    case Fault::Full:
      if (operation == Operation::Write) errno = ENOSPC;
      return operation == Operation::Write;
  }
  return false;
}

}  // namespace

bool denied(Operation operation, int directory, const char* path) {
  if (!armed()) return false;
  const int savedErrno = errno;
  const std::string resolved = resolve(directory, path);
  errno = savedErrno;
  return onFlash(resolved) && decide(operation, resolved);
}

bool denied(Operation operation, const char* path) { return denied(operation, AT_FDCWD, path); }

bool denied(Operation operation, int descriptor, Bytes bytes) {
  if (!armed()) return false;
  const int savedErrno = errno;
  const std::string path = pathOf(descriptor);
  errno = savedErrno;
  return onFlash(path) && decide(operation, path, descriptor, bytes);
}

bool renameDenied(int fromFolder, const char* from, int toFolder, const char* to) {
  if (armed() && page()->loses != 0) {
    const int savedErrno = errno;
    const std::string old = resolve(fromFolder, from);
    if (onFlash(old)) unsynced::remember(old);
    errno = savedErrno;
  }
  return denied(Operation::Name, toFolder, to);
}

void noteSync(int descriptor) {
  if (armed() && page()->loses != 0) unsynced::forget(pathOf(descriptor));
}

void noteSync() {
  if (!armed()) return;
  ++page()->syncs;
  if (page()->loses != 0) unsynced::forget();
}

void countWait(unsigned microseconds) {
  if (armed()) page()->waited += microseconds / 1000;
}

}  // namespace sim
