#include "devices/Disk.h"

#include <array>
#include <optional>
#include <string_view>

#include "config/Config.h"
#include "devices/Card.h"
#include "devices/CardDaemon.h"
#include "local/CommonInterface.h"

namespace Storage {
namespace {

constexpr std::array<std::string_view, 3> kCardStates = {"empty", "read_only", "on"};
constexpr std::array<std::string_view, 3> kUnusedStates = {"off_empty", "off_read_only", "off"};
constexpr std::array<std::string_view, 3> kInitializeStates = {"off", "not_initialized", "on"};

constexpr const char* kRecording = "/tmp/sdrec_recording";
constexpr const char* kWriteError = "/tmp/sd_err_mem_write";
constexpr const char* kSpaceError = "/tmp/sd_err_mem_space";

/** The word for what the daemon answers; -500 when it has no answer or another one. */
int32_t ask(CardDaemon::Query query, const std::array<std::string_view, 3>& words, std::string& text) {
  int32_t state = 0;
  if (CardDaemon().m_getSdrecdData(query, &state) < 0) return -status::kInternalError;
  if (state < 0 || state >= static_cast<int32_t>(words.size())) return -status::kInternalError;
  text = words[static_cast<size_t>(state)];
  return 0;
}

int32_t tell(CardDaemon::Command command) {
  return CardDaemon().m_setSdrecdData(command) < 0 ? -status::kInternalError : 0;
}

}  // namespace

int32_t CDisk::CStatus::fetch(const Request& /*request*/, std::string& text) {
  const bool isUnused = Config::getInstance()->get(sd_card_row::SDCARD_STATUS) == "off";
  return ask(CardDaemon::Query::CardState, isUnused ? kUnusedStates : kCardStates, text);
}

int32_t CDisk::CInitialize::start(Request& /*request*/) { return tell(CardDaemon::Command::Initialize); }

int32_t CDisk::CInitialize::fetch(const Request& /*request*/, std::string& text) {
  return ask(CardDaemon::Query::InitializeState, kInitializeStates, text);
}

int32_t CDisk::CMount::mount(Request& /*request*/) { return tell(CardDaemon::Command::Mount); }

int32_t CDisk::CMount::unmount(Request& /*request*/) { return tell(CardDaemon::Command::Unmount); }

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

int32_t CDisk::CRec::fetch(const Request& /*request*/, std::string& text) {
  text = CommonInterface::isFileExist(kRecording) ? "on" : "off";
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
