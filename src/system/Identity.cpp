#include "system/Identity.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/times.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <optional>
#include <sstream>
#include <string_view>
#include <vector>

#include "config/FlashLock.h"
#include "local/CommonInterface.h"
#include "local/FileDescriptor.h"
#include "request/Log.h"
#include "service/Numbers.h"

namespace System {
namespace {

constexpr size_t kStatBytes = 2048;

/** The beginning of a file, at most `bytes` long; none when it cannot be read. */
std::optional<std::string> readBeginning(const char* path, size_t bytes) {
  const FileDescriptor file(open(path, O_RDONLY | O_CLOEXEC));
  if (!file.isValid()) return std::nullopt;
  std::string text(bytes, '\0');
  const ssize_t count = read(file.get(), text.data(), bytes);
  if (count < 0) return std::nullopt;
  text.resize(static_cast<size_t>(count));
  return text;
}

}  // namespace

int32_t askFile(const Peer& file, const Request& /*request*/, std::string& text) {
  const auto beginning = readBeginning(std::string(file.path).c_str(), file.id);
  if (!beginning) return -status::kInternalError;
  constexpr std::string_view kWhite = " \t\r\n\v\f";
  const size_t start = std::min(beginning->find_first_not_of(kWhite), beginning->size());
  text = beginning->substr(start, beginning->find_first_of(kWhite, start) - start).substr(0, file.id - 1);
  return 0;
}

int32_t askFlash(const Peer& file, const Request& request, std::string& text) {
  const FlashLock flash(FlashLock::Patience::Endless);
  return askFile(file, request, text);
}

int32_t CGuid::fetch(const Request& /*request*/, std::string& text) {
  constexpr const char* kPath = "/mnt/sysinfo/uuid";
  constexpr int kRounds = 3;
  for (int round = 0; round < kRounds; ++round) {
    if (round > 0) {
      FlashLock flash(FlashLock::Patience::Endless);
      // The camera keeps what it once has told: the whole line, and on flash before it is read.
      if (std::system("/usr/bin/uuidgen > /mnt/sysinfo/uuid.new && mv -f /mnt/sysinfo/uuid.new /mnt/sysinfo/uuid") < 0)
        TMX_LOG(LOG_ERR, "system(%m)");
      sync();
      static_cast<void>(flash.release());
      usleep(10'000);
    }
    if (!CommonInterface::isFileExist(kPath)) {
      TMX_LOG(LOG_ERR, "uuid not found");
      continue;
    }
    const std::vector<std::string> lines = CommonInterface::readLines(kPath);
    if (!lines.empty()) {
      text = lines.front();
      return 0;
    }
    TMX_LOG(LOG_ERR, "uuid is empty");
  }
  return -status::kInternalError;
}

int32_t askGpioDriver(const Peer& peer, const Request& /*request*/, std::string& text) {
  const FileDescriptor device(open("/dev/gpio", O_RDWR | O_CLOEXEC));
  if (!device.isValid()) {
    TMX_LOG(LOG_ERR, "/dev/gpio open err");
    return -status::kInternalError;
  }
  int32_t value = 0;
  if (ioctl(device.get(), static_cast<unsigned long>(peer.id), &value) < 0) {
    TMX_LOG(LOG_ERR, "ioctl(fd,%ld,&val) err", static_cast<long>(peer.id));
    return -status::kInternalError;
  }
  text = std::to_string(value);
  return 0;
}

int32_t CHardware::CCpu::CUtilization::fetch(const Request& /*request*/, std::string& text) {
  // Ticks at the last read, both 32-bit words that may wrap.
  static uint32_t lastBusy = 0;
  static uint32_t lastTicks = 0;
  constexpr size_t kColumns = 8;  // user nice system idle iowait irq softirq steal
  constexpr size_t kIdle = 3;

  usleep(100'000);
  const auto beginning = readBeginning("/proc/stat", kStatBytes);
  if (!beginning) return -status::kInternalError;
  std::istringstream line(beginning->substr(0, beginning->find('\n')));
  std::string name;
  line >> name;
  uint32_t busy = 0;
  for (size_t column = 0; column < kColumns; ++column) {
    uint64_t ticks = 0;
    line >> ticks;
    if (column != kIdle) busy += static_cast<uint32_t>(ticks);
  }
  tms unused{};
  const auto ticks = static_cast<uint32_t>(times(&unused));
  const float percent = 100.0F * static_cast<float>(busy - lastBusy) / static_cast<float>(ticks - lastTicks);
  lastBusy = busy;
  lastTicks = ticks;
  text = doubleToString(percent);
  return 0;
}

int32_t COzmMac::act(Request& request) {
  if (std::system(("/bin/macman " + request.value).c_str()) < 0) TMX_LOG(LOG_ERR, "system(%m)");
  return 0;
}

}  // namespace System
