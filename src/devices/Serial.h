#pragma once

#include <cstdint>
#include <string>

#include "config/Rows.h"
#include "devices/CPeripheralApiBase.h"

namespace Peripheral {

/** "1" on a model with the feature, else "0". */
template <Feature feature>
int32_t countWith(const Request& /*request*/, std::string& text) {
  text = std::to_string(ModelFeature::has(feature) ? 1 : 0);
  return 0;
}

struct CSerialCount : CPeripheralApiBase {
  static constexpr Rule rule{.fetch = countWith<Feature::SERIAL_PASS>};
};

struct CSerial : CPeripheralApiBase {
  static constexpr Selector selector{
      .available = has<Feature::SERIAL_PASS>, .takes = SelectorNumber{.low = 1, .high = 1}, .without = "1"};
  struct CBaud;
  struct CBit;
  struct CParity;
  struct CStopbit;
  struct CComment;
  struct CRtsOffset;
};

/** Tells the serial daemon all its settings; the peer's id is the row of the one that changes. */
[[nodiscard]] int32_t tellSerial(const Peer& peer, Request& request);

constexpr Rule serialItem(const Accepts& accepts, serial_row::Row row) {
  return {.accepts = accepts,
          .place = row,
          .peer = {.tell = tellSerial, .id = static_cast<uint32_t>(row)},
          .keeps = Keeps::WriteThrough};
}

struct CSerial::CBaud : CPeripheralApiBase {
  static constexpr Rule rule =
      serialItem(oneOf(1200, 1800, 2400, 4800, 9600, 19200, 38400), serial_row::SERIAL_BAUDRATE);
};

struct CSerial::CBit : CPeripheralApiBase {
  static constexpr Rule rule = serialItem(oneOf(7, 8), serial_row::SERIAL_DATABIT);
};

struct CSerial::CParity : CPeripheralApiBase {
  static constexpr Rule rule = serialItem(Words{"none", "odd", "even"}, serial_row::SERIAL_PARITY);
};

struct CSerial::CStopbit : CPeripheralApiBase {
  static constexpr Rule rule = serialItem(oneOf(1, 2), serial_row::SERIAL_STOPBIT);
};

struct CSerial::CComment : CPeripheralApiBase {
  static constexpr Rule rule{
      .accepts = Text{.most = 40, .escapes = Escapes::DecodedPlus},
      .place = serial_row::SERIAL_COMMENT,
      .keeps = Keeps::WriteThrough,
      .shows = {.escaped = true},
  };
};

/** Tells the driver of the port itself. */
[[nodiscard]] int32_t tellDriver(const Peer& peer, Request& request);

struct CSerial::CRtsOffset : CPeripheralApiBase {
  static constexpr Rule rule{
      .accepts = Number{.low = 0, .high = 32767},
      .place = serial_row::SERIAL_RTS_OFFSET,
      .peer = {.tell = tellDriver, .path = "/dev/ttyS1"},
      .keeps = Keeps::WriteThrough,
  };
};

}  // namespace Peripheral
