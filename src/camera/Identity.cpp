#include "camera/Identity.h"

#include "service/ParamPitcher.h"

namespace Camera {

int32_t tellLamp(const Peer& peer, Request& request) {
  return ParamPitcher().putLedCommand(std::string(peer.path), request.value);
}

}  // namespace Camera
