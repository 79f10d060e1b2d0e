#include "Dsp.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <string>

namespace sim {

namespace {

constexpr std::uint8_t deviceAddress = 0x18;
constexpr std::uint8_t registerAddress = 0x19;
constexpr std::uint8_t registerDataAddress = 0x1A;
constexpr std::uint8_t exposureAddress = 0x20;
constexpr std::size_t dayNightByte = 5;
constexpr std::uint8_t lastFixedMode = 1;  // 0 black-and-white, 1 colour; above, the light decides
constexpr std::uint8_t onePushAddress = 0x41;
constexpr std::uint8_t subAdjustAddress = 0x50;

/** The register of the sensor board that tells its generation. */
constexpr std::pair<int, int> probeRegister{1, 0x20};
constexpr int presetProbe = 20;

constexpr int presetRunReads = 3;
constexpr std::uint8_t runFinished = 1;
constexpr std::uint8_t runFailed = 2;

constexpr std::array<DspFrame, 4> identification{{
    {0xE0, 0x53, 0x43, 0x50, 0x01, 0x00, 0x02, 0x07, 0x00, 0x00, 0x00, 0x00},
    {0xE1, 0x20, 0x12, 0x03, 0x15, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00},
    {0xE2, 0x01, 0x08, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00},
    {0xFF, 0xA5, 0x00, 0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07, 0x08, 0x09},
}};

/** Gains that a sub-adjust step finds, by step: low, normal and high point. */
std::string presetSubAdjust(int step) {
  if (step == 1) return "ok:715:933";
  return step == 3 ? "ok:1390:500" : "ok:1000:710";
}

}  // namespace

void Dsp::set(const DspFrame& frame) {
  if (frame[0] == exposureAddress) moveFilter(frame[dayNightByte]);
  m_frames[frame[0]] = frame;
  if (frame[0] == registerDataAddress) {
    m_registers[{m_frames[deviceAddress][1], dspWord(m_frames[registerAddress], 1)}] = dspWord(frame, 1);
  }
  if (frame[0] == onePushAddress && frame[1] == 1) {
    m_onePush = {m_orders.number("run_reads", presetRunReads), true};
  }
  if (frame[0] == subAdjustAddress && frame[1] != 0) {
    m_subAdjust = {m_orders.number("run_reads", presetRunReads), true};
  }
}

/** The picture's mode goes out on the line to the cut filter; nobody listens there unless told to. */
void Dsp::moveFilter(std::uint8_t mode) const {
  const auto before = m_frames.find(exposureAddress);
  const bool isNew = before == m_frames.end() || before->second[dayNightByte] != mode;
  if (isNew && mode <= lastFixedMode) std::ofstream("/run/camera/picture", std::ios::trunc) << int{mode};
}

DspFrame Dsp::get(std::uint8_t address) {
  if (address == registerDataAddress) return registerData();
  if (address == onePushAddress) return outcome(address, m_onePush, m_orders.text("opwb", "ok:75:75"));
  if (address == subAdjustAddress) {
    const std::string preset = presetSubAdjust(m_frames[subAdjustAddress][1]);
    return outcome(address, m_subAdjust, m_orders.text("subadjust", preset));
  }
  const auto* known = std::ranges::find(identification, address, [](const DspFrame& frame) { return frame[0]; });
  if (known != identification.end()) return *known;
  const auto kept = m_frames.find(address);
  return kept != m_frames.end() ? kept->second : DspFrame{address};
}

DspFrame Dsp::registerData() const {
  const auto lookUp = [this](std::uint8_t address) {
    const auto found = m_frames.find(address);
    return found != m_frames.end() ? found->second : DspFrame{};
  };
  const std::pair<int, int> place{lookUp(deviceAddress)[1], dspWord(lookUp(registerAddress), 1)};
  DspFrame frame{registerDataAddress};
  const auto found = m_registers.find(place);
  if (found != m_registers.end()) setDspWord(frame, 1, found->second);
  if (place == probeRegister) frame[3] = static_cast<std::uint8_t>(m_orders.number("probe", presetProbe));
  return frame;
}

/** An order is "ok:R:B", "error" or "never". */
DspFrame Dsp::outcome(std::uint8_t address, Run& run, const std::string& order) {
  DspFrame frame{address};
  if (!run.started || order == "never") return frame;
  if (run.readsLeft > 0) {
    --run.readsLeft;
    return frame;
  }
  int red = 0;
  int blue = 0;
  if (std::sscanf(order.c_str(), "ok:%d:%d", &red, &blue) == 2) {
    frame[1] = runFinished;
    setDspWord(frame, 2, red);
    setDspWord(frame, 4, blue);
  } else {
    frame[1] = runFailed;
  }
  return frame;
}

}  // namespace sim
