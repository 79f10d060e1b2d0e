#include "devices/Serial.h"

#include <fcntl.h>
#include <sys/ioctl.h>

#include "devices/CSerialAccessor.h"
#include "local/FileDescriptor.h"
#include "request/Log.h"
#include "service/Numbers.h"

namespace Peripheral {
namespace {

namespace row = serial_row;

/** The driver's request that takes the offset, as a number of 64 bits. */
constexpr unsigned long kSetRtsOffset = 0x5471;

}  // namespace

/** A number is kept as its plain decimal text. */
int32_t tellSerial(const Peer& peer, Request& request) {
  const Row changed{Family::Serial, static_cast<int32_t>(peer.id)};
  if (changed != Row(row::SERIAL_PARITY)) request.value = std::to_string(request.number);
  const auto text = [&](Row each) { return each == changed ? request.value : Config::getInstance()->get(each); };
  const auto number = [&text](Row each) { return parseNumber(text(each)).value_or(0); };
  return CSerialAccessor(1).changeSettings({.baud = number(row::SERIAL_BAUDRATE),
                                            .dataBits = number(row::SERIAL_DATABIT),
                                            .parity = text(row::SERIAL_PARITY),
                                            .stopBits = number(row::SERIAL_STOPBIT)});
}

int32_t tellDriver(const Peer& peer, Request& request) {
  const FileDescriptor device(open(std::string(peer.path).c_str(), O_RDWR | O_CLOEXEC));
  if (!device.isValid()) {
    TMX_LOG(LOG_ERR, "/dev/ttyS1 open err");
    return -status::kInternalError;
  }
  int64_t offset = request.number;
  if (ioctl(device.get(), kSetRtsOffset, &offset) < 0) {
    TMX_LOG(LOG_ERR, "ioctl err");
    return -status::kInternalError;
  }
  return 0;
}

}  // namespace Peripheral
