#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "dsp/CameraDSP.h"
#include "dsp/Step.h"
#include "dsp/Words.h"
#include "request/Log.h"
#include "service/CTmxdUtility.h"

namespace frame = dsp::frame;

namespace {

constexpr int32_t kGainTop = 255;
constexpr int32_t kGainStep = 2;
constexpr uint32_t kOnePushMode = 3;

/** Reads of a one-push run before it counts as hung; and the pause before each, in microseconds. */
constexpr int32_t kOnePushReads = 200;
constexpr useconds_t kOnePushPause = 10;
constexpr uint32_t kOnePushFinished = 1;
constexpr int32_t kOnePushTimeout = 5;

int32_t steppedGain(int32_t gain, int32_t direction) {
  return static_cast<int32_t>(std::clamp<int64_t>(int64_t{gain} + direction * kGainStep, 0, kGainTop));
}

}  // namespace

int32_t CameraDSP::setAWB(uint32_t mode, uint32_t r, uint32_t b, bool sendflag) {
  if (r > kGainTop) {
    std::fprintf(stderr, "setAWB: wyGain out of range\n");
    return dsp::kOutOfRange;
  }
  if (b > kGainTop) {
    std::fprintf(stderr, "setAWB: wbGain out of range\n");
    return dsp::kOutOfRange;
  }
  if (mode == kOnePushMode) return setOpWBaction(r, b);
  if (mode > kOnePushMode) return dsp::kDone;

  const auto red = static_cast<int32_t>(r);
  const auto blue = static_cast<int32_t>(b);
  m_frames.set(frame::kWbRed, red);
  m_frames.set(frame::kWbBlue, blue);
  TMX_LOG(LOG_DEBUG, "SetAWB[ adr(%x):mode(%d):wrgain(%x,%x):wbgain(%x,%x)", frame::kWbMode.address, mode, red, 0, blue,
          0);
  const dsp::WordRow& rule = dsp::wordRow(camera_row::WHITE_BALANCE);
  const auto value = static_cast<int32_t>(mode);
  const int32_t result = m_apply(frame::kWbMode, value, rule.row, dsp::wordOf(rule, value), sendflag);
  if (result < 0) return result;
  m_store(camera_row::WB_R_GAIN, red);
  m_store(camera_row::WB_B_GAIN, blue);
  return dsp::kDone;
}

/** One-push white balance: the DSP measures the gains, which then stand as manual ones. */
int32_t CameraDSP::setOpWBaction(uint32_t r, uint32_t b) {
  auto red = static_cast<int32_t>(r);
  auto blue = static_cast<int32_t>(b);
  const auto cacheManual = [&] {
    m_frames.set(frame::kWbMode, 0);
    m_frames.set(frame::kWbRed, red);
    m_frames.set(frame::kWbBlue, blue);
  };
  if (getCurrentInt(camera_row::WHITE_BALANCE) != 0) {
    cacheManual();
    if (m_send(frame::kWbMode.address, true) < 0) return dsp::kSendFailed;
  }
  m_frames.set(frame::kOnePush, 1);
  if (m_send(frame::kOnePush.address, true) < 0) return dsp::kSendFailed;

  dsp::Frame answer;
  if (const int32_t result = m_pollOnePush(answer); result < 0) return result;
  if (dsp::take(answer, frame::kOnePush) == kOnePushFinished) {
    red = static_cast<int32_t>(dsp::take(answer, frame::kOnePushRed));
    blue = static_cast<int32_t>(dsp::take(answer, frame::kOnePushBlue));
  } else {
    // The old gains wait in the cache: what goes out is the run's own frame, they follow with the next white balance.
    cacheManual();
    if (m_send(frame::kOnePush.address, true) < 0) return dsp::kSendFailed;
  }
  TMX_LOG(LOG_DEBUG, "opauto action[ new[ awd(0),WBR(%ld),WBB(%ld)]", long{red}, long{blue});
  m_store(camera_row::WHITE_BALANCE, "manual");
  m_store(camera_row::WB_R_GAIN, red);
  m_store(camera_row::WB_B_GAIN, blue);
  return dsp::kDone;
}

int32_t CameraDSP::m_pollOnePush(dsp::Frame& answer) {
  for (int32_t read = 0; read < kOnePushReads; ++read) {
    answer = dsp::blankFrame(frame::kOnePush.address);
    usleep(kOnePushPause);
    if (const int32_t result = recvFromCameradsp(answer); result < 0) return result;
    if (dsp::take(answer, frame::kOnePush) != 0) return dsp::kDone;
  }
  TMX_LOG(LOG_WARNING, "[ opauto timeout(as fail safe break ] ");
  dsp::put(answer, frame::kOnePush, kOnePushTimeout);
  return dsp::kDone;
}

int32_t CameraDSP::setWhiteBalanceMode(uint32_t mode) {
  return setAWB(mode, static_cast<uint32_t>(m_number(camera_row::WB_R_GAIN)),
                static_cast<uint32_t>(m_number(camera_row::WB_B_GAIN)), true);
}

int32_t CameraDSP::setWhiteBalanceR(int32_t gain) {
  return setAWB(static_cast<uint32_t>(getCurrentInt(camera_row::WHITE_BALANCE)), static_cast<uint32_t>(gain),
                static_cast<uint32_t>(m_number(camera_row::WB_B_GAIN)), true);
}

int32_t CameraDSP::setWhiteBalanceB(int32_t gain) {
  return setAWB(static_cast<uint32_t>(getCurrentInt(camera_row::WHITE_BALANCE)),
                static_cast<uint32_t>(m_number(camera_row::WB_R_GAIN)), static_cast<uint32_t>(gain), true);
}

int32_t CameraDSP::stepWhiteBalanceR(std::string_view step) {
  const int32_t direction = dsp::stepDirection(step);
  if (direction == 0) return dsp::kNotUnderstood;
  return setWhiteBalanceR(steppedGain(m_number(camera_row::WB_R_GAIN), direction));
}

int32_t CameraDSP::stepWhiteBalanceB(std::string_view step) {
  const int32_t direction = dsp::stepDirection(step);
  if (direction == 0) return dsp::kNotUnderstood;
  return setWhiteBalanceB(steppedGain(m_number(camera_row::WB_B_GAIN), direction));
}

int32_t CameraDSP::setWBArea(const dsp::Area& area, bool sendflag) {
  dsp::Frame& f = m_frames.at(frame::kWbArea);
  dsp::putArea(f, area);
  TMX_LOG(LOG_DEBUG, "Set42[ 0:%x 1:%x 2:%x   3:%x 4:%x  5:%x 6:%x  7:%x 8:%x", f[0], f[1], f[2], f[3], f[4], f[5],
          f[6], f[7], f[8]);
  if (sendToCameradsp(f, sendflag) < 0) return dsp::kSendFailed;
  m_store(camera_row::WBAREAH1, area.x1);
  m_store(camera_row::WBAREAV1, area.y1);
  m_store(camera_row::WBAREAH2, area.x2);
  m_store(camera_row::WBAREAV2, area.y2);
  return dsp::kDone;
}
