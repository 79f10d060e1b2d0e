// Loading at the start, in its fixed order, and the re-reading of single files.

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <string>

#include "config/Config.h"
#include "config/FlashLock.h"
#include "config/VersionStep.h"
#include "local/FileDescriptor.h"
#include "request/Log.h"

namespace {

constexpr const char* kModelFile = "/mnt/flash/model";
constexpr const char* kVersionFile = "/mnt/flash/sysconfig/config_version";
constexpr const char* kStepBegun = "/mnt/flash/sysconfig/config_version.new";  ///< its name until the step is done
constexpr std::string_view kVersionLine = "1.00.003\n";

std::string& modelName() {
  static std::string name = "KT-A10";
  return name;
}

void readModelName() {
  const FileDescriptor file(::open(kModelFile, O_RDONLY | O_CLOEXEC));
  if (!file.isValid()) {
    std::puts("open ModelNameFile: error");
    return;
  }
  std::array<char, 128> buffer;
  const ssize_t count = ::read(file.get(), buffer.data(), buffer.size());
  if (count < 0) {
    std::puts("read ModelNameFile: error");
    return;
  }
  const std::string_view text(buffer.data(), static_cast<size_t>(count));
  modelName() = text.substr(0, text.find('\n'));
}

/** What is loaded, in this order; `failure` is the log text in front of "(path) error(reason)", null: no log. */
struct LoadStep {
  Family family;
  const char* failure;
};

constexpr LoadStep kLoadSteps[] = {
    {Family::Camdsp, nullptr},          {Family::Patrol, "read"},        {Family::Position, nullptr},
    {Family::Encode, " readConfig"},    {Family::Camera, " readConfig"}, {Family::Scene, nullptr},
    {Family::Application, " read"},     {Family::System, " read"},       {Family::Network, " read"},
    {Family::InputPin, " read"},        {Family::OutputPin, " read"},    {Family::Audio, " read"},
    {Family::Video, " read"},           {Family::Event, " read"},        {Family::ScpService, " read"},
    {Family::AudDetect, " readConfig"}, {Family::CamFocus, " read"},     {Family::SdCard, " : read"},
    {Family::Serial, " : read"},        {Family::Ui, " : read"},
};
static_assert(std::size(kLoadSteps) == static_cast<size_t>(Family::kCount));

int32_t countFiles(Family family) { return family == Family::Patrol ? 1 : familyInfo(family).tables; }

bool beginStep() {
  const FlashLock lock;
  const FileDescriptor file(lock.isHeld() ? ::open(kStepBegun, O_WRONLY | O_CREAT | O_CLOEXEC, 0644) : -1);
  const ssize_t written = ::write(file.get(), kVersionLine.data(), kVersionLine.size());
  if (written == static_cast<ssize_t>(kVersionLine.size())) {
    ::fsync(file.get());
    return true;
  }
  TMX_LOG(LOG_ERR, "Config: Failed to write to file %s.", kVersionFile);
  ::unlink(kStepBegun);  // the next start tries again
  return false;
}

void endStep() {
  const FlashLock lock;
  if (std::rename(kStepBegun, kVersionFile) < 0) TMX_LOG(LOG_ERR, "Config: rename %s error(%m)", kVersionFile);
  ::sync();
}

}  // namespace

std::string Config::getModelName() { return modelName(); }

int32_t Config::loadConfig() {
  if (isRestoreCutShort()) return kFailed;
  readModelName();
  for (const LoadStep& step : kLoadSteps) {
    for (int32_t index = 0; index < countFiles(step.family); ++index) {
      const int32_t result = loadFile(step.family, index, step.failure);
      if (result < 0) return step.family == Family::Patrol ? kFailed : result;
    }
  }
  stepVersion();
  return kDone;
}

int32_t Config::loadFile(Family family, int32_t index, const char* failure) {
  const std::string path = familyPath(family, index);
  if (family == Family::AudDetect) TMX_LOG(LOG_DEBUG, " fname :%s ", path.c_str());
  const int32_t result = readConfig(family, index);
  if (result < 0 && failure != nullptr) TMX_LOG(LOG_ERR, "%s(%s) error(%m)", failure, path.c_str());
  if (result == kDone && family == Family::CamFocus) TMX_LOG(LOG_DEBUG, " successed read(%s)", path.c_str());
  return result;
}

void Config::stepVersion() {
  if (::access(kVersionFile, F_OK) == 0) return;
  const bool isResumed = ::access(kStepBegun, F_OK) == 0;
  if (!beginStep()) return;
  const auto convert = [this, isResumed](Row row, int32_t table) {
    const std::string text = get(row, table);
    if (isResumed && isOnNewScale(text)) return;
    set(row, std::to_string(convertExposureReference(text)), table);
    save(row.family, table);
  };
  const int32_t scenes = familyInfo(Family::Scene).tables;
  for (int32_t scene = 0; scene < scenes; ++scene)
    convert(scene_row::AUTO_EXPOSURE_REFERENCE, scene);
  convert(camera_row::AUTO_EXPOSURE_REFERENCE, 0);
  endStep();
}

int32_t Config::reloadSceneConfig(int32_t scene) {
  const std::string path = getSceneFilename(scene);
  if (path.empty()) {
    TMX_LOG(LOG_ERR, "unknown scene number error(%m)");
    return kFailed;
  }
  const int32_t result = readConfig(Family::Scene, scene);
  if (result < 0) TMX_LOG(LOG_ERR, "read scene(%s), error(%m)", path.c_str());
  return result;
}

int32_t Config::readSceneConfig(int32_t scene) {
  const std::string path = getSceneFilename(scene);
  if (path.empty()) {
    TMX_LOG(LOG_ERR, "file serch failed: unknown scene number file ");
    return kFailed;
  }
  TMX_LOG(LOG_DEBUG, " read streamfile at type istream  (%s)", path.c_str());
  const int32_t result = readConfig(Family::Scene, scene);
  if (result < 0) TMX_LOG(LOG_ERR, " read error: failed file(%ld) read ", static_cast<long>(scene));
  return result;
}

int32_t Config::reloadEncodeConfig() {
  for (int32_t index = 0; index < countFiles(Family::Encode); ++index) {
    const int32_t result = loadFile(Family::Encode, index, "read");
    if (result < 0) return result;
  }
  return kDone;
}

int32_t Config::reloadEachChannelEncodeConfig(int32_t channel) {
  if (channel < 1 || channel > 4) return kFailed;
  return loadFile(Family::Encode, channel - 1, "read");
}
