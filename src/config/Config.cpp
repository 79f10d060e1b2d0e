#include "config/Config.h"

#include <algorithm>
#include <utility>

#include "config/Framesizes.h"
#include "config/StoreText.h"
#include "request/Log.h"
#include "request/StatusCode.h"

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

bool Config::isAllowed(Row row, const AccessRule& rule, int32_t table) const {
  if (table < 0 || table >= rule.indexes) {
    if (rule.badIndex != nullptr) TMX_LOG(LOG_ERR, "%s%ld", rule.badIndex, static_cast<long>(table));
    return false;
  }
  if (rule.badRow != nullptr && (row.number < 0 || row.number >= countRows(row.family))) {
    TMX_LOG(LOG_ERR, "%s%ld", rule.badRow, static_cast<long>(row.number));
    return false;
  }
  return true;
}

std::string Config::get(Row row, int32_t table) const {
  if (!isAllowed(row, familyInfo(row.family).reading, table)) return {};
  return getConfig(findTable(m_tables[static_cast<size_t>(row.family)], table), row.number);
}

int32_t Config::set(Row row, const std::string& value, int32_t table) {
  if (!isAllowed(row, familyInfo(row.family).writing, table)) return kFailed;
  if (checkValue(row, value, table) < 0) {
    TMX_LOG(LOG_ERR, "Config: %s: a value that no file can hold", std::string(rowKey(row, table)).c_str());
    return kFailed;
  }
  return setConfig(findTable(m_tables[static_cast<size_t>(row.family)], table), row.number, value);
}

int32_t Config::checkValue(Row row, std::string_view value, int32_t table) {
  constexpr std::string_view kEndsLine("\r\n\0", 3);
  if (value.find_first_of(kEndsLine) != std::string_view::npos) return -status::kNotUnderstood;
  const size_t line = rowKey(row, table).size() + std::string_view("=\n").size() + value.size();
  return line > longestRow(row.family) ? -status::kInvalidRange : 0;
}

bool Config::adopt(const Config& other, std::span<const Row> rows, int32_t table) {
  bool isChanged = false;
  for (const Row row : rows) {
    const std::string value = other.get(row, table);
    if (value == get(row, table)) continue;
    set(row, value, table);
    isChanged = true;
  }
  return isChanged;
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

bool Config::isSaved(Row row, int32_t table) const {
  return !m_unsaved.contains({row.family, row.family == Family::Patrol ? 0 : table});
}

int32_t Config::isFramesize(std::string_view text) {
  constexpr int32_t kSmallest = 240;  // lines; what is smaller is the encoders' own
  const Framesize* size = findFramesize(text);
  return size != nullptr && size->height >= kSmallest ? 1 : 0;
}
