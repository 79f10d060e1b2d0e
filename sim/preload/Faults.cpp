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

bool onFlash(const std::string& path) { return path.starts_with("/mnt/flash/") || path.starts_with("/mnt/sysinfo/"); }

std::string pathOf(int descriptor) {
  std::array<char, 64> link{};
  std::array<char, PATH_MAX> path{};
  std::snprintf(link.data(), link.size(), "/proc/self/fd/%d", descriptor);
  const ssize_t size = readlink(link.data(), path.data(), path.size());
  return size < 0 ? "" : std::string(path.data(), static_cast<std::size_t>(size));
}

/** The path behind all symbolic links; the last part need not exist. */
std::string resolve(const std::string& path) {
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

bool decide(Operation operation) {
  if (page()->dark != 0) stayDark();
  const bool chosen = ++page()->operations == page()->at;
  switch (page()->fault) {
    case Fault::None:
      return false;
    case Fault::Cut:
      if (chosen) cutPower();
      return false;
    case Fault::Fail:
      if (chosen) errno = page()->error;
      return chosen;
    case Fault::Full:
      if (operation == Operation::Write) errno = ENOSPC;
      return operation == Operation::Write;
  }
  return false;
}

}  // namespace

bool denied(Operation operation, const char* path) {
  if (!armed()) return false;
  const int savedErrno = errno;
  const bool counts = onFlash(resolve(path));
  errno = savedErrno;
  return counts && decide(operation);
}

bool denied(Operation operation, int directory, const char* path) {
  if (!armed()) return false;
  if (path[0] == '/' || directory == AT_FDCWD) return denied(operation, path);
  return denied(operation, (pathOf(directory) + "/" + path).c_str());
}

bool denied(Operation operation, int descriptor) {
  if (!armed()) return false;
  const int savedErrno = errno;
  const bool counts = onFlash(pathOf(descriptor));
  errno = savedErrno;
  return counts && decide(operation);
}

void countSync() {
  if (armed()) ++page()->syncs;
}

void countWait(unsigned microseconds) {
  if (armed()) page()->waited += microseconds / 1000;
}

}  // namespace sim
