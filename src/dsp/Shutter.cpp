#include <algorithm>
#include <cstdio>

#include "dsp/CameraDSP.h"
#include "dsp/Step.h"
#include "dsp/Words.h"
#include "request/Log.h"

namespace frame = dsp::frame;
namespace shutter = dsp::shutter;

int32_t CameraDSP::setShutterSpeed(int32_t mode, int32_t speed, bool sendflag) {
  TMX_LOG(LOG_DEBUG, "--- focus mode set (%ld):shutter(%ld)----", long{mode}, long{speed});
  if (speed < shutter::kSlowest || speed > shutter::kFastest) {
    std::fprintf(stderr, "setShutterSpeed: out of range=%ld\n", long{speed});
    return dsp::kOutOfRange;
  }
  // A fixed gain stands only beside a manual shutter.
  if (!shutter::isManual(mode) && m_gainCode() >= dsp::gain::kFixed &&
      setAGC(dsp::gain::kAutoMiddle, sendflag) == dsp::kSendFailed) {
    return dsp::kSendFailed;
  }
  const shutter::Bytes bytes = shutter::bytesOf(mode, speed);
  m_frames.set(frame::kShutterMode, bytes.mode);
  m_frames.set(frame::kShutterSpeed, bytes.speed);
  m_frames.set(frame::kShutterFastLimit, bytes.fastLimit);
  TMX_LOG(LOG_DEBUG, "shutter[ mode(%x) speed(%d) fastlimit(%d) ", bytes.mode, bytes.speed, bytes.fastLimit);
  // The senseup limit shares the frame and sends it.
  if (setSenseuplimit(m_number(camera_row::SENSEUP_LIMIT), sendflag) < 0) return dsp::kSendFailed;

  m_shutterMode = mode;
  m_shutterSpeed = speed;
  m_store(camera_row::SHUTTER, getShutterSpeedMode());
  // The compensation of a fixed gain follows the speed, and reaches the DSP even while a load holds frames back.
  const uint32_t gainCode = m_gainCode();
  if (gainCode >= dsp::gain::kFixed && setAGC(gainCode, true) == dsp::kSendFailed) return dsp::kSendFailed;
  return dsp::kDone;
}

int32_t CameraDSP::setShutterSpeedWithAGC(int32_t mode, int32_t speed) {
  if (m_number(camera_row::SENSEUP_LIMIT) != 0 && speed != shutter::kSlowest) {
    TMX_LOG(LOG_ERR, "not support shutter speed(%ld) ", long{speed});
    return dsp::kNotUnderstood;
  }
  return setShutterSpeed(mode, speed, true);
}

int32_t CameraDSP::setShutterByName(std::string_view name) {
  const auto code = shutter::kNames.find(name);
  if (!code) return dsp::kNotUnderstood;
  return setShutterSpeed(*code, shutter::kNamedSpeed, true) < 0 ? dsp::kSendFailed : dsp::kDone;
}

int32_t CameraDSP::stepShutter(std::string_view step) {
  const int32_t direction = dsp::stepDirection(step);
  if (direction == 0) return dsp::kNotUnderstood;
  return setShutterSpeedWithAGC(shutter::kManual, dsp::ladderStep(shutter::kLadder, m_shutterSpeed, direction));
}

std::string CameraDSP::getShutterSpeedMode() const {
  std::string text;
  if (shutter::isManual(m_shutterMode)) {
    text = std::to_string(m_shutterSpeed);
  } else {
    text = shutter::kNames.text(m_shutterMode);
  }
  TMX_LOG(LOG_DEBUG, "get shutterspeed(mode %02lxH)::[ %s ] ", static_cast<unsigned long>(m_shutterMode), text.c_str());
  return text;
}

int32_t CameraDSP::setSenseuplimit(int32_t limit, bool sendflag) {
  const auto* found = std::ranges::find(dsp::kSenseupLimits, limit);
  if (found == dsp::kSenseupLimits.end()) {
    TMX_LOG(LOG_ERR, "senseup limit not understood(%ld)", long{limit});
    return dsp::kNotUnderstood;
  }
  const auto index = static_cast<int32_t>(found - dsp::kSenseupLimits.begin());
  TMX_LOG(LOG_DEBUG, "shutter[ mode(%x) speed(%d) fastlimit(%d) shutterlimit[%d] ", m_frames.get(frame::kShutterMode),
          m_frames.get(frame::kShutterSpeed), m_frames.get(frame::kShutterFastLimit), index);
  return m_apply(frame::kSenseupLimit, index, camera_row::SENSEUP_LIMIT, std::to_string(limit), sendflag);
}

int32_t CameraDSP::stepSenseuplimit(std::string_view step) {
  const int32_t direction = dsp::stepDirection(step);
  if (direction == 0) return dsp::kNotUnderstood;
  const int32_t limit = m_number(camera_row::SENSEUP_LIMIT);
  return setSenseuplimit(dsp::ladderStep(dsp::kSenseupLimits, limit, direction), true);
}
