#include "local/CommonInterface.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>

#include "local/Uninterrupted.h"
#include "request/Log.h"

namespace {

/** The flash lock for the length of one file service. */
class ScopedFlashLock {
 public:
  ScopedFlashLock() : m_isHeld(CommonInterface::lockFlash() == 1) {}
  ~ScopedFlashLock() {
    if (m_isHeld) CommonInterface::unlockFlash();
  }
  ScopedFlashLock(const ScopedFlashLock&) = delete;
  ScopedFlashLock& operator=(const ScopedFlashLock&) = delete;

  [[nodiscard]] bool isHeld() const { return m_isHeld; }

 private:
  bool m_isHeld;
};

bool writeAll(int descriptor, const std::string& text) {
  size_t done = 0;
  while (done < text.size()) {
    const ssize_t count = uninterrupted([&] { return write(descriptor, text.data() + done, text.size() - done); });
    if (count < 0) return false;
    done += static_cast<size_t>(count);
  }
  return uninterrupted([descriptor] { return fsync(descriptor); }) == 0;
}

/** The content gets the name when it is whole: a part of it never takes the place of what was there. */
bool replace(const std::string& path, const std::string& text) {
  const std::string whole = path + ".new";
  const auto make = [&] { return open(whole.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644); };
  const FileDescriptor file(uninterrupted(make));
  if (file.isValid() && writeAll(file.get(), text) && rename(whole.c_str(), path.c_str()) == 0) return true;
  TMX_LOG(LOG_ERR, "write error %s(%m)", path.c_str());
  unlink(whole.c_str());
  return false;
}

}  // namespace

bool CommonInterface::isFileExist(const std::string& path) {
  const ScopedFlashLock lock;
  struct stat status {};
  return lock.isHeld() && lstat(path.c_str(), &status) == 0;
}

bool CommonInterface::removeFile(const std::string& path) {
  const ScopedFlashLock lock;
  return lock.isHeld() && remove(path.c_str()) == 0;
}

std::vector<std::string> CommonInterface::readLines(const std::string& path) {
  std::vector<std::string> lines;
  const ScopedFlashLock lock;
  if (!lock.isHeld()) return lines;
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);)
    lines.push_back(line);
  return lines;
}

bool CommonInterface::writeLines(const std::string& path, const std::vector<std::string>& lines) {
  if (lines.empty()) return true;
  std::string text;
  for (const std::string& line : lines)
    text += line + '\n';

  const ScopedFlashLock lock;
  return lock.isHeld() && replace(path, text);
}

pid_t CommonInterface::readPid(const std::string& pidFile, pid_t whenEmpty) {
  const std::vector<std::string> lines = readLines(pidFile);
  return lines.empty() ? whenEmpty : static_cast<pid_t>(strtol(lines.front().c_str(), nullptr, 10));
}

void CommonInterface::usleepRetry(int32_t microseconds) {
  if (microseconds > 999999) return;
  timespec remaining{.tv_sec = 0, .tv_nsec = microseconds * 1000L};
  while (nanosleep(&remaining, &remaining) < 0 && errno == EINTR) {
  }
}
