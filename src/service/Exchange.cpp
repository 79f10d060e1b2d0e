#include "service/Exchange.h"

#include <unistd.h>

#include "local/UnixDomain.h"

Sending sendMessage(FileDescriptor* socket, const std::string& path, std::span<const uint8_t> message) {
  socket->reset(UnixDomain::createClientSocket());
  if (!socket->isValid()) return Sending::NoSocket;
  if (UnixDomain::connectServ(socket->get(), path) < 0) return Sending::NotConnected;
  const ssize_t count = write(socket->get(), message.data(), message.size());
  return count == static_cast<ssize_t>(message.size()) ? Sending::Done : Sending::NotWritten;
}
