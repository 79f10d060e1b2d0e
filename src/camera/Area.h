#pragma once

#include <cstdint>
#include <string>

#include "camera/CCameraApiBase.h"

/** Rectangles of the picture: four numbers joined by "-", written as percentages or as "s" and coordinates. */
namespace Camera {

/** The area of a value, in coordinates; 0 or -451. */
[[nodiscard]] int32_t areaOf(const Request& request, dsp::Area& area);
[[nodiscard]] std::string areaText(const dsp::Area& area);

inline constexpr Form kAreaForm{"X1-Y1-X2-Y2, each in percent of the picture or s and a sensor position", "10-10-50-50",
                                "x 1-2-3"};

/** Rule::act that hands the area to one operation of the DSP. */
template <auto Set>
int32_t areaToDsp(Request& request) {
  dsp::Area area{};
  const int32_t refused = areaOf(request, area);
  return refused < 0 ? refused : (cameraDsp().*Set)(area, true);
}

}  // namespace Camera
