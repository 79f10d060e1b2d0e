/** What the camera's kernel does and the host's cannot: the factory partition, two drivers, the link of the card. */
#include <linux/ethtool.h>
#include <linux/sockios.h>
#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <unistd.h>

#include <fcntl.h>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>

#include "sim/common/Journal.h"
#include "sim/preload/Faults.h"
#include "sim/preload/Real.h"

namespace {

constexpr std::uint32_t cpuClockRequest = 0x8004b506;
constexpr std::uint32_t memoryClockRequest = 0x8004b607;
constexpr std::uint32_t rtsOffsetRequest = 0x5471;

bool isDevice(int descriptor, const char* path) {
  std::array<char, 64> link{};
  std::array<char, PATH_MAX> found{};
  std::snprintf(link.data(), link.size(), "/proc/self/fd/%d", descriptor);
  return readlink(link.data(), found.data(), found.size() - 1) > 0 && std::strcmp(found.data(), path) == 0;
}

/** A clock in megahertz, or what /run/camera/NAME says instead; "error" there makes the driver fail. */
int readClock(const char* name, std::uint32_t usual, void* result) {
  std::ifstream file(std::string("/run/camera/") + name);
  std::uint32_t value = usual;
  if (file && !(file >> value)) {
    errno = EIO;
    return -1;
  }
  std::memcpy(result, &value, sizeof value);
  return 0;
}

int setRtsOffset(const void* argument) {
  std::int64_t offset = 0;
  std::memcpy(&offset, argument, sizeof offset);
  sim::Journal("ttyS1", "rts_offset").number("value", offset).write();
  return 0;
}

/** A veth end has no link speed; the camera's card runs at 100 megabits, full duplex. */
int linkSettings(const ifreq& request) {
  if (std::strcmp(request.ifr_name, "eth0") != 0) {
    errno = ENODEV;
    return -1;
  }
  ethtool_cmd settings{};
  std::memcpy(&settings, request.ifr_data, sizeof settings);
  if (settings.cmd != ETHTOOL_GSET) {
    errno = EOPNOTSUPP;
    return -1;
  }
  settings.speed = SPEED_100;
  settings.duplex = DUPLEX_FULL;
  std::memcpy(request.ifr_data, &settings, sizeof settings);
  return 0;
}

}  // namespace

extern "C" {

int ioctl(int descriptor, unsigned long number, ...) noexcept {
  va_list arguments;
  va_start(arguments, number);
  void* argument = va_arg(arguments, void*);
  va_end(arguments);
  const auto request = static_cast<std::uint32_t>(number);
  const bool clock = request == cpuClockRequest || request == memoryClockRequest;
  if (clock && isDevice(descriptor, "/dev/gpio")) {
    return request == cpuClockRequest ? readClock("cpu_clock", 594, argument) : readClock("ddr_clock", 400, argument);
  }
  if (request == rtsOffsetRequest && isDevice(descriptor, "/dev/ttyS1")) return setRtsOffset(argument);
  if (request == SIOCETHTOOL) return linkSettings(*static_cast<const ifreq*>(argument));
  return CAMERA_REAL(ioctl)(descriptor, number, argument);
}

/** The factory partition is a tree at /opt/factory; mounting it binds that tree, which is read-only. */
int mount(const char* source, const char* target, const char* type, unsigned long flags, const void* data) noexcept {
  const bool factory = source != nullptr && std::strcmp(source, "/dev/mtdblock6") == 0;
  if (!factory) return CAMERA_REAL(mount)(source, target, type, flags, data);
  if (access(source, F_OK) != 0) return -1;
  if (type == nullptr || std::strcmp(type, "jffs2") != 0) {
    errno = ENODEV;
    return -1;
  }
  return CAMERA_REAL(mount)("/opt/factory", target, nullptr, MS_BIND, nullptr);
}

/** The camera's flash is all that a sync of the camera concerns; the host's other files are left alone. */
void sync() noexcept {
  sim::noteSync();
  const int flash = sim::real::open("/mnt/flash", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (flash < 0) return;
  syncfs(flash);
  close(flash);
}

// The deliberate waits: they go through, and are added up.
int nanosleep(const timespec* time, timespec* left) {
  sim::countWait(static_cast<unsigned>(time->tv_sec * 1'000'000 + time->tv_nsec / 1000));
  return CAMERA_REAL(nanosleep)(time, left);
}

#if __TIMESIZE == 32
// What a program calls that has a time_t of 64 bits where the machine began with one of 32. Nothing here has the other.
// NOLINTBEGIN(bugprone-reserved-identifier)
struct WideTime {
  std::int64_t seconds;
  std::int32_t nanoseconds;
};

int __nanosleep64(const WideTime* time, WideTime* left);
int __nanosleep64(const WideTime* time, WideTime* left) {
  sim::countWait(static_cast<unsigned>(time->seconds * 1'000'000 + time->nanoseconds / 1000));
  return CAMERA_REAL(__nanosleep64)(time, left);
}

int __ioctl_time64(int descriptor, unsigned long number, ...) __attribute__((alias("ioctl")));
// NOLINTEND(bugprone-reserved-identifier)
#endif

int usleep(useconds_t microseconds) {
  sim::countWait(microseconds);
  return CAMERA_REAL(usleep)(microseconds);
}

unsigned sleep(unsigned seconds) {
  sim::countWait(seconds * 1'000'000);
  return CAMERA_REAL(sleep)(seconds);
}

}  // extern "C"
