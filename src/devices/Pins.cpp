#include "devices/Pins.h"

#include "service/Gpio.h"
#include "service/Numbers.h"

namespace Peripheral {
namespace {

constexpr int32_t kShortest = 100;
constexpr int32_t kLongest = 5000;
/** Each pin has two rows, its level and its duration. */
constexpr int32_t kRowsOfPin = 2;

int32_t pinOf(const Selectors& selectors) { return selectorNumber(selectors, COutputPin::CPin::kLayer, 1); }

}  // namespace

uint32_t ofPin(const Selectors& selectors) { return static_cast<uint32_t>(pinOf(selectors)) << 4; }

int32_t COutputPin::CPin::CDuration::check(Request& request) {
  const auto number = parseNumber(request.value);
  if (!number) return -status::kNotUnderstood;
  request.number = *number;
  const bool isInRange = *number == 0 || (*number >= kShortest && *number <= kLongest);
  return isInRange ? 0 : -status::kInvalidRange;
}

Cell COutputPin::CPin::CDuration::locate(const Selectors& selectors, Row row) {
  return {{row.family, row.number + kRowsOfPin * (pinOf(selectors) - 1)}};
}

int32_t CSwitch::CStatus::fetch(const Request& /*request*/, std::string& text) {
  int32_t position = 0;
  if (gpio::ask(GpioCommand::FormatSwitch, position) < 0) return -status::kInternalError;
  text = position != 0 ? "ntsc" : "pal";
  return 0;
}

}  // namespace Peripheral
