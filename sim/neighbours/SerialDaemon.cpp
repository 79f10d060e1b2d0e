#include "SerialDaemon.h"

namespace sim {

namespace {

constexpr std::size_t requestBytes = 112;
constexpr std::size_t baudAt = 8;
constexpr std::size_t dataBitsAt = 12;
constexpr std::size_t parityAt = 16;
constexpr std::size_t paritySize = 8;
constexpr std::size_t stopBitsAt = 24;

constexpr int changeSetting = 1;
constexpr int onlyPort = 1;
constexpr int notAllowed = 405;

std::string reply(int status, int code) {
  std::string bytes(8, '\0');
  putSigned32(bytes, 0, status);
  putSigned32(bytes, 4, code);
  return bytes;
}

std::string parityOf(std::string_view request) { return textAt(request.substr(0, parityAt + paritySize), parityAt); }

}  // namespace

SerialDaemon::SerialDaemon(Loop& loop, const std::string& root) : Neighbour(loop, "serial", root + "/tmp/serial") {}

std::size_t SerialDaemon::requestSize(std::string_view bytes) const {
  return bytes.size() < requestBytes ? 0 : requestBytes;
}

std::string SerialDaemon::messageName(std::string_view request) const {
  return signed32(request, 0) == changeSetting ? "set" : "unknown";
}

void SerialDaemon::describe(std::string_view request, Journal& line) const {
  line.number("command", signed32(request, 0)).number("port", signed32(request, 4));
  line.number("baud", signed32(request, baudAt)).number("data", signed32(request, dataBitsAt));
  line.text("parity", parityOf(request)).number("stop", signed32(request, stopBitsAt));
}

std::string SerialDaemon::answer(std::string_view request) {
  if (signed32(request, 0) != changeSetting || signed32(request, 4) != onlyPort) return reply(1, notAllowed);
  m_baud = signed32(request, baudAt);
  m_dataBits = signed32(request, dataBitsAt);
  m_parity = parityOf(request);
  m_stopBits = signed32(request, stopBitsAt);
  return reply(0, 0);
}

/** The number is the status that the client is to answer with. */
std::string SerialDaemon::refusal(std::string_view /*request*/, std::optional<int> number) const {
  return reply(1, number.value_or(notAllowed));
}

void SerialDaemon::show(JsonObject& state) const {
  state.number("baud", m_baud).number("data", m_dataBits).text("parity", m_parity).number("stop", m_stopBits);
}

}  // namespace sim
