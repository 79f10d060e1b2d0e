#pragma once

#include <cstdint>
#include <string>

/** The exposure reference of a stored text (-5 to 5, one unit per step) on the scale of -125 to 80. */
[[nodiscard]] int32_t convertExposureReference(const std::string& text);

/** Whether the text is what a conversion gives; the zero is the same on both scales. */
[[nodiscard]] bool isOnNewScale(const std::string& text);
