#include "application/AudioClip.h"

#include <unistd.h>

#include <array>
#include <fstream>
#include <span>

#include "application/ParamChecker.h"
#include "config/Config.h"
#include "config/FlashLock.h"
#include "platform/zr_com.h"
#include "request/Log.h"

namespace {

constexpr size_t kLongestName = 256;
constexpr size_t kHeadSize = 512;
constexpr int32_t kTables = 10;
/** A sample has two bytes and lasts 125 microseconds. */
constexpr int64_t kSampleSize = 2;
constexpr int64_t kSamplePeriod = 125;
constexpr int64_t kMicroseconds = 1'000'000;

int64_t playTimeOf(std::ifstream& file) {
  std::array<char, kHeadSize> head{};
  file.read(head.data(), head.size());
  const std::span<const uint8_t> bytes(reinterpret_cast<const uint8_t*>(head.data()),
                                       static_cast<size_t>(file.gcount()));
  uint32_t dataSize = 0;
  if (ParamChecker::checkFileHeader(bytes, &dataSize) < 0) {
    TMX_LOG(LOG_ERR, "cannot get audio wav size");
    return 0;
  }
  return dataSize / kSampleSize * kSamplePeriod;
}

}  // namespace

AudioClip::AudioClip(int32_t number)
    : m_number(number), m_file("/mnt/flash/usr/audio/alarm_" + std::to_string(number) + ".wav") {}

Row AudioClip::row() const {
  return {Family::Application, application_row::APPLICATION_AUDIO_FILENAME_1 + m_number - 1};
}

bool AudioClip::canBeOpened() const { return std::ifstream(m_file).is_open(); }

bool AudioClip::isRegistered() const {
  const FlashLock lock;
  return lock.isHeld() && canBeOpened();
}

int32_t AudioClip::remove() const {
  const FlashLock lock;
  if (!lock.isHeld()) return -1;
  if (unlink(m_file.c_str()) == 0) return 0;
  TMX_LOG(LOG_ERR, "can not remove audio file [%s]", m_file.c_str());
  return -1;
}

int64_t AudioClip::playTime() const {
  FlashLock lock;
  if (!lock.isHeld()) return 0;
  int64_t time = 0;
  {
    std::ifstream file(m_file, std::ios::binary);
    if (!file) return 0;
    time = playTimeOf(file);
  }
  return lock.release() < 0 ? 0 : time;
}

std::string AudioClip::name() const {
  CUserConfig* staging = CUserConfig::getInstance();
  if (!canBeOpened()) {
    for (int32_t table = 0; table < kTables; ++table)
      staging->set(row(), "", table);
  }
  return staging->get(row());
}

int32_t AudioClip::setName(const std::string& name) const {
  if (name.size() > kLongestName) return -1;
  CUserConfig* staging = CUserConfig::getInstance();
  Config* committed = Config::getInstance();
  for (int32_t table = 0; table < kTables; ++table) {
    staging->set(row(), name, table);
    committed->set(row(), staging->get(row(), table), table);
    if (committed->save(Family::Application, table) == Config::kDone) continue;
    TMX_LOG(LOG_DEBUG, " app audPlay save error: num:%ld", static_cast<long>(m_number));
    return -1;
  }
  return 0;
}

int32_t AudioClip::play() const {
  const auto number = static_cast<long>(m_number);
  if (zr_set_audio_play(m_number) < 0) {
    TMX_LOG(LOG_ERR, " audioplay error( /mnt/flash/usr/audio/alarm_%ld.wav)", number);
    return -1;
  }
  TMX_LOG(LOG_DEBUG, " appaudio play start(%ld) ", number);
  return 0;
}

int32_t AudioClip::stop() {
  if (zr_set_audio_play(0) < 0) {
    TMX_LOG(LOG_ERR, " audioplay stop error ");
    return -1;
  }
  TMX_LOG(LOG_DEBUG, " appaudio play stop");
  return 0;
}

std::string playTimeText(int64_t microseconds) {
  return std::to_string(microseconds / kMicroseconds) + "." + std::to_string(microseconds % kMicroseconds);
}
