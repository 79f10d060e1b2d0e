#include "devices/OnvifNodes.h"

#include <string>

#include "request/InternalRequest.h"

namespace Onvif {

/** What comes of the time zone does not change the answer. */
int32_t CSystem::CDaylightsaving::setZone(Request& /*request*/) {
  std::string response;
  static_cast<void>(execApiCommandInternal("system.timezone=" + Config::getInstance()->get(system_row::TIMEZONE),
                                           &response, user_class::kAdministrator, content_type::kPlain));
  return 0;
}

}  // namespace Onvif
