#include "devices/AudioInput.h"

#include "platform/zr_com.h"
#include "request/Log.h"
#include "service/Gpio.h"
#include "service/Numbers.h"

namespace Audio {
namespace {

/** By how much the kinds of the second channel are higher. */
constexpr uint32_t kSecondChannel = 9;
/** What the driver hears of half duplex, on or off. */
constexpr int32_t kDuplexChanged = 5;

void logFailure(GpioCommand kind) {
  constexpr long kResult = -1;
  switch (kind) {
    case GpioCommand::MicGain:
      TMX_LOG(LOG_ERR, " mic gain set error(%ld)", kResult);
      TMX_LOG(LOG_ERR, "set agc or gain error (%ld)", kResult);
      return;
    case GpioCommand::PowerSupply:
      TMX_LOG(LOG_ERR, " power supply set failed(%ld)", kResult);
      return;
    case GpioCommand::Halfduplex:
      TMX_LOG(LOG_ERR, " failed : duplex set(%ld) ", kResult);
      return;
    case GpioCommand::Loopback:
      TMX_LOG(LOG_ERR, "failed : loopback set(%ld)", kResult);
      return;
    default:
      return;
  }
}

}  // namespace

int32_t m_writeDriver(const Peer& peer, Request& request) {
  const auto command = static_cast<GpioCommand>(peer.id);
  const long kind = peer.id;
  const long value = request.number;
  TMX_LOG(LOG_DEBUG, "write :val(%ld) ", value);
  if (gpio::tell(command, request.number) == 0) return 0;
  TMX_LOG(LOG_ERR, " Data Send failed (gpio:ak4631:[%ld:%ld] : failed(%m))", kind, value);
  logFailure(command);
  return -status::kInternalError;
}

int32_t m_sendDetectdata(const Peer& peer, Request& request) {
  TMX_LOG(LOG_DEBUG, " audio detect send[ id:%ld,data:%s ] ", static_cast<long>(peer.idFor(request.selectors)),
          request.value.c_str());
  if (peer::tellDetection(peer, request) >= 0) return 0;
  TMX_LOG(LOG_ERR, " putstring error(%m)");
  return -status::kInternalError;
}

uint32_t ofChannel(const Selectors& selectors) {
  return selectorNumber(selectors, CInput::CDetection::kLayer, 1) == 2 ? kSecondChannel : 0;
}

int32_t CInput::CHalfduplex::act(Request& request) {
  if (zr_set_audio_duplex(request.number) < 0) return -status::kInternalError;
  request.number = kDuplexChanged;
  return m_writeDriver(driver(GpioCommand::Halfduplex), request);
}

int32_t CInput::CGain::check(Request& request) {
  int32_t step = kAutomaticGain;
  if (request.value != "auto") {
    const auto number = parseNumber(request.value);
    if (!number) return -status::kNotUnderstood;
    step = gainStep(*number);
    request.value = std::to_string(step);
  }
  request.number = gainRegister(step);
  return 0;
}

}  // namespace Audio
