#include <algorithm>

#include "config/Config.h"
#include "dsp/CameraDSP.h"
#include "dsp/ServiceTables.h"
#include "request/Log.h"

namespace frame = dsp::frame;

int32_t CameraDSP::setAdjust(int32_t id, int32_t value, bool sendflag) {
  const auto* item = std::ranges::find(dsp::kAdjustItems, id, &dsp::AdjustItem::row);
  if (item == std::end(dsp::kAdjustItems)) {
    TMX_LOG(LOG_ERR, "adjust value unknown(%ld)", long{id});
    return dsp::kBadArgument;
  }
  m_frames.set(item->field, value);
  const int32_t result = m_send(item->field.address, sendflag);
  if (result == dsp::kDone) CUserConfig::getInstance()->setCamdspConfig(id, std::to_string(value));
  return result;
}

int32_t CameraDSP::setEvref(int32_t value, bool sendflag) {
  constexpr int32_t kFarthest = 32;
  const int32_t offset = std::clamp(value, -kFarthest, kFarthest);
  m_frames.set(frame::kIrisOffset, offset);
  const int32_t result = m_send(frame::kIrisOffset.address, sendflag);
  if (result == dsp::kDone) {
    CUserConfig::getInstance()->setCamdspConfig(camdsp_row::EVREF, std::to_string(offset));
  }
  return result;
}

int32_t CameraDSP::setSensor(int32_t sensor) {
  if (sensor != 1 && sensor != 2) {
    TMX_LOG(LOG_ERR, "sensor out of range(%ld)", long{sensor});
    return dsp::kOutOfRange;
  }
  m_frames.set(frame::kSensor, sensor);
  return m_send(frame::kSensor.address, true);
}
