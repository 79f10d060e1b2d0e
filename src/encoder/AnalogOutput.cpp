#include "encoder/AnalogOutput.h"

#include "config/Config.h"

bool isAnalogOutputPossible() {
  const auto status = [](int32_t channel) {
    return Config::getInstance()->getEncodeConfig(channel, encode_row::ENC_STATUS);
  };
  return status(0) == "on" && status(1) == "off" && status(2) == "off";
}
