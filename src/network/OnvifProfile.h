#pragma once

#include <cstdint>
#include <string>

#include "service/OnvifSettings.h"

/** The ONVIF service's profile of a channel: a text of lines "KEY= value", each value filled up to its field. */
namespace onvif_profile {

/** The text with the values of the channel; lines of other keys stay as they are, and every line keeps its length. */
[[nodiscard]] std::string refreshed(const std::string& text, const OnvifChannel& channel);

/** The service's quality, about 10 to 100, of a picture of so many kilobytes. */
[[nodiscard]] int32_t qualityValue(const std::string& width, const std::string& height, int32_t kilobytes);

}  // namespace onvif_profile
