#include "service/DefectDaemon.h"

#include <unistd.h>

#include <utility>

#include "local/FileDescriptor.h"
#include "request/Log.h"
#include "service/CTmxdUtility.h"
#include "service/Exchange.h"

namespace {

/** The commands for static defects; that for the fixed pattern is so much higher. */
constexpr uint8_t kStop = 0x10;
constexpr uint8_t kStart = 0x11;
constexpr uint8_t kPatternOrder = 2;
constexpr uint8_t kStatus = 0x20;
constexpr uint8_t kCount = 0x30;
constexpr uint8_t kPatternQuestion = 1;

constexpr uint8_t kTaken = 1;
constexpr uint8_t kCompleted = 0x20;
constexpr uint8_t kAdjusting = 0x21;
constexpr uint8_t kError = 0x22;

const char* wordOf(uint8_t code) {
  if (code == kCompleted) return "completed";
  return code == kAdjusting ? "adjusting" : "error";
}

}  // namespace

DefectDaemon::DefectDaemon(Search search, std::string path) : m_search(search), m_path(std::move(path)) {}

std::optional<DefectDaemon::Reply> DefectDaemon::exchange(uint8_t command) const {
  FileDescriptor socket;
  Reply reply{};
  if (sendMessage(&socket, m_path, std::array{command}) != Sending::Done ||
      CTmxdUtility::readData(socket.get(), reply.data(), reply.size()) != static_cast<ssize_t>(reply.size())) {
    TMX_LOG(LOG_ERR, "defect daemon exchange(%x) error(%m)", command);
    return std::nullopt;
  }
  return reply;
}

std::optional<DefectDaemon::Reply> DefectDaemon::question(uint8_t command) const {
  return exchange(static_cast<uint8_t>(command + (m_search == Search::FixedPattern ? kPatternQuestion : 0)));
}

int32_t DefectDaemon::order(uint8_t command) const {
  const auto reply = exchange(static_cast<uint8_t>(command + (m_search == Search::FixedPattern ? kPatternOrder : 0)));
  return reply && reply->front() == kTaken ? 0 : -1;
}

int32_t DefectDaemon::start() const { return order(kStart); }

int32_t DefectDaemon::stop() const { return order(kStop); }

int32_t DefectDaemon::stopIfAdjusting() const {
  const std::string now = status();
  if (now == "adjusting") return stop();
  return now.empty() ? -1 : 0;
}

int32_t DefectDaemon::startUnlessAdjusting() const {
  const std::string now = status();
  if (now.empty()) return -1;
  return now == "adjusting" ? 0 : start();
}

std::string DefectDaemon::status() const {
  const auto reply = question(kStatus);
  return reply ? wordOf(reply->front()) : "";
}

std::string DefectDaemon::statusDetail() const {
  const auto reply = question(kStatus);
  if (!reply) return "error";
  const auto [code, number] = *reply;
  const bool hasNumber = code == kCompleted || code == kError;
  return hasNumber ? wordOf(code) + ("(" + std::to_string(number) + ")") : wordOf(code);
}

std::optional<int32_t> DefectDaemon::count() const {
  const auto reply = question(kCount);
  if (!reply) return std::nullopt;
  return reply->front() | reply->back() << 8;
}
