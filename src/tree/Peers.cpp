#include "tree/Peers.h"

#include "service/ParamPitcher.h"
#include "service/ParamPitcherDetection.h"
#include "service/Sequencer.h"

namespace peer {

int32_t tellRecorderNumber(const Peer& peer, Request& request) {
  return ParamPitcher().putInt(peer.idFor(request.selectors), request.number);
}

int32_t tellRecorderText(const Peer& peer, Request& request) {
  return ParamPitcher().putString(peer.idFor(request.selectors), request.value);
}

int32_t askRecorder(const Peer& peer, const Request& request, std::string& text) {
  const int32_t number = ParamPitcher().getInt(peer.idFor(request.selectors));
  text = std::to_string(number);
  return number < 0 ? number : 0;
}

int32_t tellDetection(const Peer& peer, Request& request) {
  return ParamPitcherDetection().putString(peer.idFor(request.selectors), request.value);
}

int32_t tellSequencer(const Peer& peer, Request& request) {
  return request.value.empty() ? 0 : sequencer::tell(std::string(peer.path) + "=" + request.value);
}

int32_t askSequencer(const Peer& peer, const Request& /*request*/, std::string& text) {
  return sequencer::ask(peer.path, text);
}

}  // namespace peer
