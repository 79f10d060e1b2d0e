#pragma once

#include <cstdint>
#include <string>

#include "config/Rows.h"
#include "devices/CPeripheralApiBase.h"

namespace Peripheral {

struct CInputPinCount : CPeripheralApiBase {
  static constexpr Rule rule{.shows = {.fixed = "1"}};
};

struct COutputPinCount : CPeripheralApiBase {
  static constexpr Rule rule{.shows = {.fixed = "1"}};
};

inline constexpr Selector kOnlyOne{.takes = SelectorNumber{.low = 1, .high = 1}, .without = "1"};
inline constexpr Selector kTwoPins{.takes = SelectorNumber{.low = 1, .high = 2}, .without = "1"};

/** Whether a group of pins is in use. */
constexpr Rule groupStatus(const Place& place, uint32_t id) {
  return {
      .accepts = Words{"off", "on"},
      .place = place,
      .peer = peer::recorderNumber(id),
      .keeps = Keeps::WriteThrough,
  };
}

/** What the recorder adds to an id for the pin of a path. */
[[nodiscard]] uint32_t ofPin(const Selectors& selectors);

/** The words for a pin's level. */
inline constexpr Words kLevels{"break", "make"};

// ---- Inputs --------------------------------------------------------------------------------------------------------

struct CInputPin : CPeripheralApiBase {
  static constexpr Selector selector = kOnlyOne;
  struct CPin;
  struct CType;
  struct CStatus;
  struct CPinCount;
};

/** By its rights it is read only; requests from inside write it. */
struct CInputPin::CStatus : CPeripheralApiBase {
  static constexpr Rule rule = groupStatus(input_pin_row::INPUTPIN_STATUS, 0x131200);
};

struct CInputPin::CType : CPeripheralApiBase {
  static constexpr Rule rule{.shows = {.fixed = "make"}};
};

struct CInputPin::CPinCount : CPeripheralApiBase {
  static constexpr Rule rule{.shows = {.fixed = "2"}};
};

struct CInputPin::CPin : CPeripheralApiBase {
  static constexpr Selector selector = kTwoPins;
  struct CChatter;
  struct CStatus;
};

struct CInputPin::CPin::CStatus : CPeripheralApiBase {
  static constexpr Rule rule{.peer = {.ask = peer::askRecorder, .id = 0x131401, .ofPath = ofPin},
                             .shows = {.words = &kLevels}};
};

/** Milliseconds; there is no other. */
struct CInputPin::CPin::CChatter : CPeripheralApiBase {
  static constexpr Rule rule{.accepts = oneOf(200), .shows = {.fixed = "200"}};
};

// ---- Outputs -------------------------------------------------------------------------------------------------------

struct COutputPin : CPeripheralApiBase {
  static constexpr Selector selector = kOnlyOne;
  struct CPin;
  struct CStatus;
  struct CType;
  struct CPinCount;
};

struct COutputPin::CStatus : CPeripheralApiBase {
  static constexpr Rule rule = groupStatus(output_pin_row::OUTPUTPIN_STATUS, 0x151200);
};

struct COutputPin::CType : CPeripheralApiBase {
  static constexpr Rule rule{.shows = {.fixed = "make"}};
};

struct COutputPin::CPinCount : CPeripheralApiBase {
  static constexpr Rule rule{.shows = {.fixed = "2"}};
};

struct COutputPin::CPin : CPeripheralApiBase {
  static constexpr size_t kLayer = 2;
  static constexpr Selector selector = kTwoPins;
  struct CDuration;
  struct CStatus;
};

/** Drives the pin, and keeps nothing. */
struct COutputPin::CPin::CStatus : CPeripheralApiBase {
  static constexpr Rule rule{
      .accepts = kLevels, .peer = peer::recorderLevel(0x151401, ofPin), .shows = {.words = &kLevels}};
};

/** How long a pin stays driven, in milliseconds; 0 is without an end. */
struct COutputPin::CPin::CDuration : CPeripheralApiBase {
  static int32_t check(Request& request);
  static Cell locate(const Selectors& selectors, Row row);
  static constexpr Rule rule{
      .accepts = Test{check, {"0 for no end, or 100 to 5000", "0 100 5000", "x"}},
      .place = {output_pin_row::OUTPUTPIN_PIN1_DURATION, locate},
      .peer = peer::recorderNumber(0x151402, ofPin),
      .keeps = Keeps::WriteThrough,
  };
};

// ---- The switch of the video format --------------------------------------------------------------------------------

struct CSwitch : CPeripheralApiBase {
  static constexpr Selector selector = kOnlyOne;
  struct CStatus;
};

struct CSwitch::CStatus : CPeripheralApiBase {
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{.fetch = fetch};
};

}  // namespace Peripheral
