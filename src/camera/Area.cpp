#include "camera/Area.h"

#include "encoder/Encoder.h"

namespace Camera {

int32_t areaOf(const Request& request, dsp::Area& area) {
  const int32_t aspect = Encoder::getAspectRatioStatus();
  return cameraDsp().cameraWBPointconvert(request.value, area, aspect) < 0 ? -status::kNotUnderstood : 0;
}

std::string areaText(const dsp::Area& area) {
  std::string text = std::to_string(area.x1);
  for (const int32_t number : {area.y1, area.x2, area.y2})
    text += "-" + std::to_string(number);
  return text;
}

}  // namespace Camera
