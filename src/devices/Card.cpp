#include "devices/Card.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

#include "local/FileDescriptor.h"
#include "local/Process.h"
#include "request/Log.h"

namespace {

constexpr const char* kSectors = "/sys/block/mmcblk0/size";
constexpr const char* kBlockSize = "/sys/block/mmcblk0/queue/logical_block_size";
constexpr uint64_t kUsualBlockSize = 512;
constexpr size_t kLongestNumber = 20;

constexpr const char* kTestProgram = "/bin/SdTestPrg";
constexpr const char* kTestPidFile = "/var/run/SdTestPrg.pid";
constexpr const char* kTestResult = "/tmp/check.data";

/** The number at the head of a file of at most so many characters; 0 when it cannot be read. */
uint64_t m_getDeviceInfo(const char* path, size_t length) {
  const FileDescriptor file(open(path, O_RDONLY | O_CLOEXEC));
  if (!file.isValid()) {
    TMX_LOG(LOG_ERR, "open %s error(%m)", path);
    return 0;
  }
  std::string text(length, '\0');
  if (read(file.get(), text.data(), length) < 0) {
    TMX_LOG(LOG_ERR, "read %s error(%m)", path);
    return 0;
  }
  return std::strtoull(text.c_str(), nullptr, 10);
}

void removeIfThere(const char* path) {
  if (CommonInterface::isFileExist(path)) CommonInterface::removeFile(path);
}

}  // namespace

std::string cardSize() {
  const uint64_t sectors = m_getDeviceInfo(kSectors, kLongestNumber);
  const uint64_t blockSize = m_getDeviceInfo(kBlockSize, kLongestNumber);
  const uint64_t bytes = sectors * (blockSize == 0 ? kUsualBlockSize : blockSize);
  return std::to_string(bytes / 1024 / 1024) + "M";
}

std::string cardVerdict(const std::vector<std::string>& lines) {
  for (const std::string& line : lines) {
    if (line.find("Process complete") == std::string::npos) continue;
    if (line.find("Success") != std::string::npos) return "ok";
    return line.find("Protected") != std::string::npos ? "read_only" : "ng";
  }
  return "ng";
}

std::optional<std::string> testCard() {
  // What an earlier test left behind would stand for this one: its result, and a pid that need not run any more.
  removeIfThere(kTestResult);
  removeIfThere(kTestPidFile);
  const pid_t pid = CommonInterface::Process::Start(kTestPidFile, {kTestProgram, "-outfile", kTestResult});
  const bool ended = pid > 0 && CommonInterface::Process::Wait(pid) == 1;
  removeIfThere(kTestPidFile);
  if (!ended) return std::nullopt;
  if (!CommonInterface::isFileExist(kTestResult)) return "ng";
  return cardVerdict(CommonInterface::readLines(kTestResult));
}
