#include "bench/Flash.h"

#include <fcntl.h>
#include <unistd.h>

#include <fstream>
#include <thread>

namespace bench {

Flash::Flash(std::string file, std::size_t bytes) : m_file(std::move(file)), m_content(bytes, 'x') {
  std::ofstream(m_file) << m_content;
}

Flash::~Flash() { unlink(m_file.c_str()); }

bool Flash::saveOnce() const {
  const int fd = open(m_file.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
  if (fd < 0) return false;
  const bool isWritten = write(fd, m_content.data(), m_content.size()) == static_cast<ssize_t>(m_content.size());
  const bool isOnFlash = fsync(fd) == 0;
  // As in the simulated camera, a sync writes out the camera's own file system and not the host's others.
  for (int i = 0; i < 3; ++i)
    syncfs(fd);
  close(fd);
  std::this_thread::sleep_for(kWaitAfterUnlock);
  return isWritten && isOnFlash;
}

Cost Flash::save(int times) const {
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < times; ++i) {
    if (!saveOnce()) return {-1, 0};
  }
  return {std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() / times, 0};
}

}  // namespace bench
