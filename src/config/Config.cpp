#include "config/Config.h"

#include <algorithm>
#include <utility>

#include "request/Log.h"

namespace {

template <typename Tables>
auto* findTable(Tables& tables, int32_t index) {
  return index >= 0 && std::cmp_less(index, tables.size()) ? &tables[static_cast<size_t>(index)] : nullptr;
}

}  // namespace

Config* Config::getInstance() {
  static Config instance;
  return &instance;
}

CUserConfig* CUserConfig::getInstance() {
  static CUserConfig instance;
  return &instance;
}

Config::Config() {
  for (size_t i = 0; i < m_tables.size(); ++i)
    m_tables[i] = makeTables(static_cast<Family>(i));
}

Config::~Config() = default;
CUserConfig::~CUserConfig() = default;

std::string Config::getConfig(const ConfigTable* table, int32_t id) {
  if (table == nullptr) return {};
  const int64_t rows = static_cast<int64_t>(table->size());
  if (id < 0 || id > rows) TMX_LOG(LOG_ERR, "Config: getConfig() invalid id:%ld", static_cast<long>(id));
  // The row behind the last one is no row either, but is not logged.
  if (id < 0 || id >= rows) return {};
  return (*table)[static_cast<size_t>(id)].value;
}

int32_t Config::setConfig(ConfigTable* table, int32_t id, const std::string& value) const {
  if (m_writeInhibit != 0) return kDone;
  if (table == nullptr) return kFailed;
  const int64_t rows = static_cast<int64_t>(table->size());
  if (id < 0 || id > rows) TMX_LOG(LOG_ERR, "Config: setConfig() invalid id:%ld", static_cast<long>(id));
  if (id < 0 || id >= rows) return kFailed;
  (*table)[static_cast<size_t>(id)].value = value;
  return kDone;
}

bool Config::isAllowed(Family family, const AccessRule& rule, int32_t index, int32_t row) const {
  if (index < 0 || index >= rule.indexes) {
    if (rule.badIndex != nullptr) TMX_LOG(LOG_ERR, "%s%ld", rule.badIndex, static_cast<long>(index));
    return false;
  }
  const int64_t rows = static_cast<int64_t>(m_tables[static_cast<size_t>(family)].front().size());
  if (rule.badRow != nullptr && (row < 0 || row >= rows)) {
    TMX_LOG(LOG_ERR, "%s%ld", rule.badRow, static_cast<long>(row));
    return false;
  }
  return true;
}

std::string Config::get(Family family, int32_t index, int32_t row) const {
  if (!isAllowed(family, familyInfo(family).reading, index, row)) return {};
  return getConfig(findTable(m_tables[static_cast<size_t>(family)], index), row);
}

int32_t Config::set(Family family, int32_t index, int32_t row, const std::string& value) {
  if (!isAllowed(family, familyInfo(family).writing, index, row)) return kFailed;
  return setConfig(findTable(m_tables[static_cast<size_t>(family)], index), row, value);
}

std::string Config::getSceneFilename(int32_t scene) {
  if (scene >= 0 && scene < familyInfo(Family::Scene).tables) return familyPath(Family::Scene, scene);
  TMX_LOG(LOG_ERR, "set ch(%ld) error(%m)", static_cast<long>(scene));
  return {};
}

namespace {

/** Most families refuse silently, and so do the audio detection channels up to 2. */
void logBadSave(Family family, int32_t index) {
  const long number = index;
  if (family == Family::Scene && Config::getSceneFilename(index).empty()) {
    TMX_LOG(LOG_ERR, " error getting Scene File name(%ld)", number);
  } else if (family == Family::AudDetect && index >= familyInfo(family).writing.indexes) {
    TMX_LOG(LOG_ERR, " invalid audiodetect select num:%ld", number);
  } else if (family == Family::Application) {
    TMX_LOG(LOG_ERR, "saveApplicationConfig error applicationid = %ld / fname = %s ", number,
            familyPath(family, index).c_str());
  }
}

}  // namespace

int32_t Config::save(Family family, int32_t index) {
  if (family == Family::CamFocus) TMX_LOG(LOG_INFO, " start to write focusdata");
  if (tablesOfFile(family, index).empty()) {
    logBadSave(family, index);
    return kFailed;
  }
  return writeConfig(family, index);
}

std::string Config::getPatrolConfig(int32_t patrol, int32_t step, int32_t row) const {
  return patrol == 0 ? get(Family::Patrol, step, row) : std::string();
}

int32_t Config::setPatrolConfig(int32_t patrol, int32_t step, int32_t row, const std::string& value) {
  return patrol == 0 ? set(Family::Patrol, step, row, value) : kFailed;
}

int32_t Config::savePatrolConfig(int32_t patrol) { return save(Family::Patrol, patrol); }

int32_t Config::isFramesize(std::string_view text) {
  constexpr std::string_view kFramesizes[] = {"1920x1080", "quadvga", "1280x960", "1280x720", "vga",
                                              "640x480",   "qvga",    "320x240",  "640x360"};
  return std::ranges::find(kFramesizes, text) != std::ranges::end(kFramesizes) ? 1 : 0;
}
