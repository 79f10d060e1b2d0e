#include "camera/OutBlackWorker.h"

#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>
#include <utility>

#include "local/CommonInterface.h"
#include "request/Log.h"

namespace {

struct PipeCloser {
  void operator()(FILE* pipe) const { pclose(pipe); }
};

/** The first line that a command prints, empty when it prints none; nothing when it cannot be run. */
std::optional<std::string> firstLineOf(const char* command) {
  const std::unique_ptr<FILE, PipeCloser> pipe(popen(command, "re"));
  if (pipe == nullptr) return std::nullopt;
  std::array<char, 64> line{};
  if (fgets(line.data(), line.size(), pipe.get()) == nullptr) return "";
  return std::string(line.data(), strcspn(line.data(), "\n"));
}

}  // namespace

OutBlackWorker::OutBlackWorker(std::string tmpFile, std::string savedFile)
    : m_tmpFile(std::move(tmpFile)), m_savedFile(std::move(savedFile)) {}

int32_t OutBlackWorker::SaveDateTmpFile() const {
  TMX_LOG(LOG_DEBUG, " TmpFile Save ");
  const std::vector<std::string> lines = getDateData();
  const bool isWritten = !lines.empty() && CommonInterface::writeLines(m_tmpFile, lines);
  sync();
  return isWritten ? 1 : 0;
}

int32_t OutBlackWorker::DeleteTmpFile() const {
  const bool isGone = CommonInterface::removeFile(m_tmpFile);
  sync();
  return isGone ? 1 : 0;
}

int32_t OutBlackWorker::KeepTmpFile() const {
  if (!CommonInterface::isFileExist(m_tmpFile)) {
    TMX_LOG(LOG_WARNING, " not exist tmpfile");
    return 0;
  }
  return CommonInterface::writeLines(m_savedFile, CommonInterface::readLines(m_tmpFile)) ? 1 : 0;
}

std::string OutBlackWorker::GetObSaveDateData() const {
  std::string date;
  for (const std::string& line : CommonInterface::readLines(m_savedFile))
    date += line;
  if (date.empty()) TMX_LOG(LOG_ERR, "date(%s)", date.c_str());
  return date;
}

std::vector<std::string> OutBlackWorker::getDateData() {
  const auto date = firstLineOf("date +%Y.%m.%d");
  if (!date) {
    TMX_LOG(LOG_ERR, "get date error[fp is NULL]");
    return {};
  }
  const auto time = firstLineOf("date +%H:%M:%S");
  if (!time) {
    TMX_LOG(LOG_ERR, "get time error[fp is NULL]");
    return {};
  }
  TMX_LOG(LOG_DEBUG, "str[%s] date[%s]", time->c_str(), date->c_str());
  return {*date + " " + *time};
}
