#include "PictureLine.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <fstream>
#include <utility>

namespace sim {

PictureLine::PictureLine(Loop& loop, std::string path, Callback callback)
    : m_loop(loop),
      m_path(std::move(path)),
      m_callback(std::move(callback)),
      m_watch(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
  std::ofstream(m_path, std::ios::app).flush();  // only a file that is there can be watched
  inotify_add_watch(m_watch.number(), m_path.c_str(), IN_CLOSE_WRITE);
  m_loop.watch(m_watch.number(), [this] { receive(); });
}

void PictureLine::receive() {
  alignas(inotify_event) std::array<char, 4096> events{};
  while (::read(m_watch.number(), events.data(), events.size()) > 0) {
  }
  int filter = 0;
  if (std::ifstream(m_path) >> filter) m_callback(filter);
}

}  // namespace sim
