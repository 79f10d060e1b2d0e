#include "service/Gpio.h"

#include "service/CTmxdUtility.h"

namespace gpio {
namespace {

GpioMessage message(GpioCommand command, int32_t first, int32_t second) {
  return {.words = {static_cast<uint32_t>(command), static_cast<uint32_t>(first), static_cast<uint32_t>(second)}};
}

}  // namespace

int32_t ask(GpioCommand command, int32_t& value, int32_t argument) {
  GpioMessage reply;
  if (CTmxdUtility::sendGPIO(message(command, argument, 0), &reply) < 0) return -1;
  value = static_cast<int32_t>(reply.words[2]);
  return 0;
}

int32_t tell(GpioCommand command, int32_t first, int32_t second) {
  return CTmxdUtility::sendGPIO(message(command, first, second));
}

int32_t askCounter(Counter counter, int32_t& value) {
  return ask(GpioCommand::Counter, value, static_cast<int32_t>(counter));
}

int32_t setCounter(Counter counter, int32_t value) {
  return tell(GpioCommand::SetCounter, static_cast<int32_t>(counter), value);
}

}  // namespace gpio
