#include "devices/Disk.h"

#include <optional>

#include "config/Config.h"
#include "devices/Card.h"
#include "local/CommonInterface.h"

namespace Storage {
namespace {

constexpr Words kCardStates{"empty", "read_only", "on"};
constexpr Words kUnusedStates{"off_empty", "off_read_only", "off"};

constexpr const char* kWriteError = "/tmp/sd_err_mem_write";
constexpr const char* kSpaceError = "/tmp/sd_err_mem_space";

}  // namespace

int32_t tellCard(const Peer& /*peer*/, Request& request) {
  const auto command = static_cast<CardDaemon::Command>(request.number);
  return CardDaemon().m_setSdrecdData(command) < 0 ? -status::kInternalError : 0;
}

int32_t askCard(const Peer& peer, const Request& /*request*/, std::string& text) {
  int32_t state = 0;
  if (CardDaemon().m_getSdrecdData(static_cast<CardDaemon::Query>(peer.id), &state) < 0) {
    return -status::kInternalError;
  }
  text = std::to_string(state);
  return 0;
}

int32_t CDisk::CStatus::fetch(const Request& /*request*/, std::string& text) {
  int32_t state = 0;
  if (CardDaemon().m_getSdrecdData(CardDaemon::kCardState, &state) < 0) return -status::kInternalError;
  const bool isUnused = Config::getInstance()->get(sd_card_row::SDCARD_STATUS) == "off";
  text = (isUnused ? kUnusedStates : kCardStates).text(state);
  return text.empty() ? -status::kInternalError : 0;
}

int32_t CDisk::CSize::fetch(const Request& /*request*/, std::string& text) {
  text = cardSize();
  return 0;
}

int32_t CDisk::CCheck::fetch(const Request& /*request*/, std::string& text) {
  const std::string size = cardSize();
  const std::optional<std::string> verdict = testCard();
  if (!verdict) return -status::kInternalError;
  text = size + "," + *verdict;
  return 0;
}

int32_t askMarker(const Peer& peer, const Request& /*request*/, std::string& text) {
  text = std::to_string(CommonInterface::isFileExist(std::string(peer.path)) ? 1 : 0);
  return 0;
}

int32_t CDisk::CErrcode::fetch(const Request& /*request*/, std::string& text) {
  if (CommonInterface::isFileExist(kWriteError)) text += "1|";
  if (CommonInterface::isFileExist(kSpaceError)) text += "2|";
  if (text.empty()) {
    text = "0";
  } else {
    text.pop_back();
  }
  return 0;
}

}  // namespace Storage
