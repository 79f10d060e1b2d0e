#include "devices/CardDaemon.h"

#include <array>
#include <utility>

#include "local/CommonInterface.h"
#include "request/Log.h"

namespace {

constexpr size_t kRequestSize = 10;
constexpr size_t kReplySize = 12;
constexpr size_t kValueAt = 8;
constexpr size_t kMessageAt = 10;
/** The message code of a query that cannot be answered. */
constexpr uint16_t kNoAnswer = 16;

}  // namespace

CardDaemon::CardDaemon(std::string path) : m_path(std::move(path)) {}

bool CardDaemon::exchange(uint16_t command, Reply* reply) const {
  const std::array<uint8_t, kRequestSize> request = {static_cast<uint8_t>(command), static_cast<uint8_t>(command >> 8)};
  std::array<uint8_t, kReplySize> answer{};
  CommonInterface connection;
  if (!connection.Open(m_path) || !connection.Write(request.data(), request.size()) ||
      !connection.Read(answer.data(), answer.size())) {
    return false;
  }
  const auto half = [&answer](size_t at) { return static_cast<uint16_t>(answer[at] | answer[at + 1] << 8); };
  *reply = {half(kValueAt), half(kMessageAt)};
  return true;
}

int32_t CardDaemon::m_setSdrecdData(Command command) const {
  Reply reply;
  if (!exchange(static_cast<uint16_t>(command), &reply) || reply.value == 0) return 0;
  TMX_LOG(LOG_ERR, "return message = %d", reply.message);
  return -1;
}

int32_t CardDaemon::m_getSdrecdData(Query query, int32_t* value) const {
  if (value == nullptr) return -1;
  Reply reply;
  if (!exchange(static_cast<uint16_t>(query), &reply)) return 0;
  if (reply.message == kNoAnswer) {
    TMX_LOG(LOG_ERR, "return message = %d", reply.message);
    return -1;
  }
  *value = reply.value;
  return 0;
}
