#include "managers/CPeripheralMan.h"

#include "devices/Pins.h"
#include "devices/Serial.h"

void CPeripheralMan::build() {
  add<Peripheral::COutputPin>("output_pin");
  add<Peripheral::COutputPin::CStatus>("output_pin.status", "RWRWR-");
  add<Peripheral::COutputPin::CPin>("output_pin.pin");
  add<Peripheral::COutputPin::CPin::CDuration>("output_pin.pin.duration", "RWRWR-");
  add<Peripheral::COutputPin::CPin::CStatus>("output_pin.pin.status", "RWRWR-");
  add<Peripheral::COutputPin::CType>("output_pin.type", "R-R-R-");
  add<Peripheral::COutputPin::CPinCount>("output_pin.pin_count", "R-R-R-");

  add<Peripheral::CInputPinCount>("input_pin_count", "R-R-R-");
  add<Peripheral::COutputPinCount>("output_pin_count", "R-R-R-");
  add<Peripheral::CSerialCount>("serial_count", "R-R-R-");

  add<Peripheral::CSwitch>("switch");
  add<Peripheral::CSwitch::CStatus>("switch.status", "R-R-R-");

  add<Peripheral::CSerial>("serial");
  add<Peripheral::CSerial::CBaud>("serial.baud", "RWRWR-");
  add<Peripheral::CSerial::CBit>("serial.bit", "RWRWR-");
  add<Peripheral::CSerial::CParity>("serial.parity", "RWRWR-");
  add<Peripheral::CSerial::CStopbit>("serial.stopbit", "RWRWR-");
  add<Peripheral::CSerial::CComment>("serial.comment", "RWRWR-");
  add<Peripheral::CSerial::CRtsOffset>("serial.rts_offset", "RWRWR-");

  add<Peripheral::CInputPin>("input_pin");
  add<Peripheral::CInputPin::CType>("input_pin.type", "R-R-R-");
  add<Peripheral::CInputPin::CStatus>("input_pin.status", "R-R-R-");
  add<Peripheral::CInputPin::CPinCount>("input_pin.pin_count", "R-R-R-");
  add<Peripheral::CInputPin::CPin>("input_pin.pin");
  add<Peripheral::CInputPin::CPin::CChatter>("input_pin.pin.chatter", "RWRWR-");
  add<Peripheral::CInputPin::CPin::CStatus>("input_pin.pin.status", "R-R-R-");
}

void CPeripheralMan::replay() {
  for (const char* path :
       {"peripheral.output_pin(1).status", "peripheral.output_pin(1).pin(1).duration",
        "peripheral.output_pin(1).pin(2).duration", "peripheral.serial(1).baud", "peripheral.serial(1).bit",
        "peripheral.serial(1).parity", "peripheral.serial(1).stopbit", "peripheral.serial(1).rts_offset"})
    m_replayStored(path);
}
