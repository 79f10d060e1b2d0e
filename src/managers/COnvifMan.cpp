#include "managers/COnvifMan.h"

#include <string_view>

#include "request/InternalRequest.h"
#include "request/Parameter.h"

#include "devices/OnvifNodes.h"

void COnvifMan::build() {
  add<Onvif::CSystem>("system");
  add<Onvif::CSystem::CDaylightsaving>("system.daylightsaving", "------");
  add<Onvif::CAudio>("audio");
  add<Onvif::CAudio::COutput>("audio.output");
  add<Onvif::CAudio::COutput::CVolume>("audio.output.volume", "RW----");
}

int32_t COnvifMan::APIsetup(Parameter& parameter, const std::string& layer) {
  constexpr std::string_view kPrefix = "onvif.";
  if (CManBase::APIsetup(parameter, layer) == 0) return 0;
  if (parameter.getResponse().find("461") == std::string::npos) return -1;

  const std::string& path = parameter.getPath();
  if (path.size() <= kPrefix.size()) return -1;
  const std::string query = path.substr(kPrefix.size()) + "=" + parameter.getValue();
  if (query.starts_with(kPrefix)) return -1;
  std::string response;
  if (execApiCommandInternal(query, &response, static_cast<int8_t>(parameter.getUserType()),
                             static_cast<int8_t>(parameter.getContentType())) < 0) {
    return -1;
  }
  return parameter.setResponse(response);
}
