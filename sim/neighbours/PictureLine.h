#pragma once

#include <functional>
#include <string>

#include "Loop.h"
#include "sim/common/UnixSocket.h"

namespace sim {

/**
 * The line by which the DSP tells the GPIO daemon that its picture wants the cut filter in another place: a file that
 * the closed library writes, "0" for a black-and-white picture and "1" for a colour one. Owned by the GPIO daemon.
 */
class PictureLine {
 public:
  using Callback = std::function<void(int filter)>;

  PictureLine(Loop& loop, std::string path, Callback callback);
  ~PictureLine() { m_loop.unwatch(m_watch.number()); }
  PictureLine(const PictureLine&) = delete;
  PictureLine& operator=(const PictureLine&) = delete;

 private:
  void receive();

  Loop& m_loop;
  std::string m_path;
  Callback m_callback;
  Descriptor m_watch;
};

}  // namespace sim
