#pragma once

#include <cstdint>
#include <map>
#include <utility>

#include "Orders.h"
#include "sim/common/DspFrames.h"

namespace sim {

/**
 * The image DSP behind the closed library: keeps the last frame of each address and the registers of its devices, and
 * works at a white balance run for as long as it was told to. Owned by the library, which guards it with its lock.
 */
class Dsp {
 public:
  explicit Dsp(const Orders& orders) : m_orders(orders) {}

  void set(const DspFrame& frame);

  /** The answer to a read of the address: what was set there, unless the DSP has something of its own to tell. */
  [[nodiscard]] DspFrame get(std::uint8_t address);

 private:
  /** A run that answers "running" to some reads and then its outcome. */
  struct Run {
    int readsLeft = 0;
    bool started = false;
  };

  void moveFilter(std::uint8_t mode) const;
  DspFrame registerData() const;
  DspFrame outcome(std::uint8_t address, Run& run, const std::string& order);

  const Orders& m_orders;
  std::map<std::uint8_t, DspFrame> m_frames;
  std::map<std::pair<int, int>, int> m_registers;
  Run m_onePush;
  Run m_subAdjust;
};

}  // namespace sim
