#include "tree/Peers.h"

#include "service/ParamPitcher.h"
#include "service/ParamPitcherDetection.h"
#include "service/Sequencer.h"

namespace peer {
namespace {

/** 0 for a success; a refusal's word is its status, and one that is none a failure. */
int32_t verdict(int32_t result) {
  if (result == status::kOk) return 0;
  return result < 0 ? result : -status::kInternalError;
}

}  // namespace

int32_t tellRecorderNumber(const Peer& peer, Request& request) {
  return verdict(ParamPitcher().putInt(peer.idFor(request.selectors), request.number));
}

int32_t tellRecorderText(const Peer& peer, Request& request) {
  return verdict(ParamPitcher().putString(peer.idFor(request.selectors), request.value));
}

int32_t askRecorder(const Peer& peer, const Request& request, std::string& text) {
  const int32_t number = ParamPitcher().getInt(peer.idFor(request.selectors));
  text = std::to_string(number);
  return 0;
}

int32_t tellDetection(const Peer& peer, Request& request) {
  return ParamPitcherDetection().putString(peer.idFor(request.selectors), request.value);
}

int32_t askGpio(const Peer& peer, const Request& /*request*/, std::string& text) {
  int32_t value = 0;
  if (gpio::ask(static_cast<GpioCommand>(peer.id), value) < 0) return -status::kInternalError;
  text = std::to_string(value);
  return 0;
}

int32_t tellGpioCounter(const Peer& peer, Request& request) {
  const auto counter = static_cast<gpio::Counter>(peer.id);
  return gpio::setCounter(counter, request.number) < 0 ? -status::kInternalError : 0;
}

int32_t askGpioCounter(const Peer& peer, const Request& /*request*/, std::string& text) {
  int32_t value = 0;
  if (gpio::askCounter(static_cast<gpio::Counter>(peer.id), value) < 0) return -status::kInternalError;
  text = std::to_string(value);
  return 0;
}

int32_t tellSequencer(const Peer& peer, Request& request) {
  return request.value.empty() ? 0 : sequencer::tell(std::string(peer.path) + "=" + request.value);
}

int32_t askSequencer(const Peer& peer, const Request& /*request*/, std::string& text) {
  return sequencer::ask(peer.path, text);
}

}  // namespace peer
