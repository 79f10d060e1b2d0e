#include "network/Interface.h"

namespace Network {

int32_t CInterface::CStatus::saveByOnvif(Request& request) {
  const bool isOnvif = request.parameter.getUserType() == user_class::kOnvif;
  return isOnvif ? interface_commit::saveInterface(request) : -status::kNotUnderstood;
}

std::vector<Cell> CInterface::CDscp::streams(const Selectors& /*selectors*/) {
  return {{network_row::IF1_DSCP_VIDEO},
          {network_row::IF1_DSCP_VIDEOMPEG},
          {network_row::IF1_DSCP_VIDEOH264},
          {network_row::IF1_DSCP_AUDIO}};
}

}  // namespace Network
