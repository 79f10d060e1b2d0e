#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "service/Gpio.h"
#include "tree/Rule.h"

/** The neighbours that a rule tells and asks (Rule::peer). Results are 0, or the negated status of the refusal. */
namespace peer {

/** What the path adds to the number of what is spoken of: an event, a day, a pin. */
using OfPath = uint32_t (*)(const Selectors& selectors);

// What tells and asks, see below.
int32_t tellRecorderNumber(const Peer& peer, Request& request);
int32_t tellRecorderText(const Peer& peer, Request& request);
int32_t askRecorder(const Peer& peer, const Request& request, std::string& text);
int32_t tellDetection(const Peer& peer, Request& request);
int32_t askGpio(const Peer& peer, const Request& request, std::string& text);
int32_t tellGpioCounter(const Peer& peer, Request& request);
int32_t askGpioCounter(const Peer& peer, const Request& request, std::string& text);
int32_t tellSequencer(const Peer& peer, Request& request);
int32_t askSequencer(const Peer& peer, const Request& request, std::string& text);

/** The recorder and event daemon, which hears the number of the value. */
constexpr Peer recorderNumber(uint32_t id, OfPath ofPath = nullptr) {
  return {.tell = tellRecorderNumber, .id = id, .ofPath = ofPath};
}
/** The same, whose number a read shows by its word (Shows::words); a refusal is a number without one. */
constexpr Peer recorderLevel(uint32_t id, OfPath ofPath = nullptr) {
  return {.tell = tellRecorderNumber, .ask = askRecorder, .id = id, .ofPath = ofPath};
}
/** The same daemon, which hears the text. */
constexpr Peer recorderText(uint32_t id, OfPath ofPath = nullptr) {
  return {.tell = tellRecorderText, .id = id, .ofPath = ofPath};
}

/** The detection daemon, which hears a text of some kind. */
constexpr Peer detection(uint32_t kind, OfPath ofPath = nullptr) {
  return {.tell = tellDetection, .id = kind, .ofPath = ofPath};
}

/** The GPIO daemon, which is asked for a value. */
constexpr Peer gpioValue(GpioCommand query) { return {.ask = askGpio, .id = static_cast<uint32_t>(query)}; }
/** One of the GPIO daemon's counters, which hears its new number. */
constexpr Peer gpioCounter(gpio::Counter counter) {
  return {.tell = tellGpioCounter, .ask = askGpioCounter, .id = static_cast<uint32_t>(counter)};
}

/** The PTZ sequencer, whose language are the paths: "path=value", of which an emptied value is not told. */
constexpr Peer toSequencer(std::string_view path) { return {.tell = tellSequencer, .path = path}; }
/** The same, whose value a read shows. */
constexpr Peer sequencer(std::string_view path) { return {.tell = tellSequencer, .ask = askSequencer, .path = path}; }

}  // namespace peer
