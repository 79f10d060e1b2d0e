#pragma once

#include <functional>
#include <set>
#include <string>

#include "access/Reactor.h"
#include "local/FileDescriptor.h"

namespace mqtt {

/** Notices that a configuration file was written. */
class FlashWatch {
 public:
  /** @param written called once for what was written in one go. */
  FlashWatch(tmx::Reactor& reactor, const std::set<std::string>& files, std::function<void()> written);

 private:
  void take();

  tmx::Reactor& m_reactor;
  FileDescriptor m_inotify;
  std::function<void()> m_written;
  tmx::Reactor::Timer m_soon = 0;
};

}  // namespace mqtt
