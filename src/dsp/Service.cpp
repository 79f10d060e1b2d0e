#include <algorithm>

#include "config/Config.h"
#include "dsp/CameraDSP.h"
#include "request/Log.h"
#include "service/Numbers.h"

namespace {

int32_t storedValue(int32_t row) {
  return parseNumber(CUserConfig::getInstance()->getScpServiceConfig(row)).value_or(0);
}

void storeValue(int32_t row, int32_t value) {
  CUserConfig::getInstance()->setScpServiceConfig(row, std::to_string(value));
}

int32_t checkValue(const dsp::ServiceItem& item, int32_t value) {
  if (value < item.minimum || value > item.maximum) {
    TMX_LOG(LOG_ERR, "%s out of range", item.name);
    return dsp::kOutOfRange;
  }
  const bool isAbove = item.order == dsp::Order::Above && value <= storedValue(item.partnerRow);
  const bool isBelow = item.order == dsp::Order::Below && value >= storedValue(item.partnerRow);
  if (isAbove || isBelow) {
    TMX_LOG(LOG_ERR, "%s", item.orderText);
    return dsp::kRefused;
  }
  return dsp::kDone;
}

/** A range of gains goes from -15 to 16: in its byte, 241 to 255 are the negative ones. */
int32_t readValue(const dsp::Frame& frame, const dsp::ServiceItem& item) {
  const auto value = static_cast<int32_t>(dsp::take(frame, item.field));
  return item.minimum < 0 && value >= 256 + item.minimum ? value - 256 : value;
}

}  // namespace

const dsp::ServiceItem* CameraDSP::m_serviceItem(const dsp::ServiceGroup& group, int32_t id) const {
  const auto item = std::ranges::find(group.items, id, &dsp::ServiceItem::row);
  return item == group.items.end() ? nullptr : &*item;
}

/** Of two rows for the same place in a frame, the one that this model and its present lens use. */
bool CameraDSP::m_isInUse(const dsp::ServiceItem& item) const {
  if (item.row == scp_service_row::DN_HYSTERESIS_TRUEDN) return m_model.dayNight;
  if (item.row == scp_service_row::DN_HYSTERESIS_EASYDN) return !m_model.dayNight;
  const bool isSecondLens = m_text(camera_row::IRIS_LENSTYPE) == "lens2";
  if (item.row >= scp_service_row::IRIS_START && item.row <= scp_service_row::IRIS_LIMIT_L) return !isSecondLens;
  if (item.row >= scp_service_row::SUB_IRIS_START && item.row <= scp_service_row::SUB_IRIS_LIMIT_L) return isSecondLens;
  return true;
}

int32_t CameraDSP::m_setService(const dsp::ServiceGroup& group, int32_t id, int32_t value) {
  const dsp::ServiceItem* item = m_serviceItem(group, id);
  if (item != nullptr) {
    if (const int32_t refused = checkValue(*item, value); refused < 0) return refused;
    m_frames.set(item->field, value);
  }
  if (m_send(group.address, true) < 0) {
    TMX_LOG(LOG_ERR, "%s(%m)", group.sendFailed);
    return dsp::kSendFailed;
  }
  if (item != nullptr) storeValue(id, value);
  return dsp::kDone;
}

/** The stored values go out as they are: they were checked when they were set. */
int32_t CameraDSP::m_loadService(const dsp::ServiceGroup& group) {
  for (const dsp::ServiceItem& item : group.items) {
    if (m_isInUse(item)) m_frames.set(item.field, storedValue(item.row));
  }
  constexpr int32_t kAsItStands = -1;
  return m_setService(group, kAsItStands, 0);
}

int32_t CameraDSP::m_readService(const dsp::ServiceGroup& group) {
  dsp::Frame frame = dsp::blankFrame(group.address);
  if (const int32_t result = recvFromCameradsp(frame); result < 0) {
    TMX_LOG(LOG_ERR, "%s", group.readFailed);
    return result;
  }
  for (const dsp::ServiceItem& item : group.items) {
    if (m_isInUse(item)) storeValue(item.row, readValue(frame, item));
  }
  return dsp::kDone;
}

int32_t CameraDSP::setLensType(const std::string& lens) {
  if (lens != "lens1" && lens != "lens2") {
    TMX_LOG(LOG_ERR, "lens type out of range(%s)", lens.c_str());
    return dsp::kOutOfRange;
  }
  if (lens == "lens2" && m_model.lens) {
    TMX_LOG(LOG_ERR, "lens type(%s) is fixed on this model", lens.c_str());
    return dsp::kNotUnderstood;
  }
  const std::string before = m_text(camera_row::IRIS_LENSTYPE);
  m_store(camera_row::IRIS_LENSTYPE, lens);
  if (loadScpServiceData({.iris = true}) < 0) {
    m_store(camera_row::IRIS_LENSTYPE, before);
    return dsp::kSendFailed;
  }
  return dsp::kDone;
}
