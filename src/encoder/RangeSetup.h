#pragma once

#include <cstdint>
#include <string>

#include "config/Config.h"
#include "encoder/EncodeRangeData.h"

/**
 * Fills range for a question about channel attr (1 to 3): the settings of the two other channels and of the analog
 * output from the store, and the encoder and frame size in question. 0, or -1 when a text of them is not known.
 */
[[nodiscard]] int32_t encoderRangeInfoSetup(EncodeRangeData& range, const Config& config, const std::string& encoder,
                                            const std::string& resolution, int32_t attr);
