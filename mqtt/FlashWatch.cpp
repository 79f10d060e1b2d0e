#include "mqtt/FlashWatch.h"

#include <poll.h>
#include <sys/inotify.h>
#include <syslog.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

namespace mqtt {
namespace {

/** One commit writes several files. */
constexpr std::chrono::milliseconds kTogether{20};

}  // namespace

FlashWatch::FlashWatch(tmx::Reactor& reactor, const std::set<std::string>& files, std::function<void()> written)
    : m_reactor(reactor), m_inotify(inotify_init1(IN_CLOEXEC | IN_NONBLOCK)), m_written(std::move(written)) {
  std::set<std::string> folders;
  for (const std::string& file : files)
    folders.insert(file.substr(0, file.rfind('/')));
  for (const std::string& folder : folders) {
    if (inotify_add_watch(m_inotify.get(), folder.c_str(), IN_CLOSE_WRITE | IN_MOVED_TO) < 0)
      syslog(LOG_WARNING, "changes in %s are noticed late: %s", folder.c_str(), std::strerror(errno));
  }
  if (m_inotify.isValid()) m_reactor.watch(m_inotify.get(), POLLIN, [this](short /*events*/) { take(); });
}

void FlashWatch::take() {
  std::array<char, 4096> events{};
  while (read(m_inotify.get(), events.data(), events.size()) > 0) {
  }
  m_reactor.cancel(m_soon);
  m_soon = m_reactor.after(kTogether, [this] { m_written(); });
}

}  // namespace mqtt
