#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "config/Config.h"
#include "config/Initialising.h"

namespace {

class Store : public Config {};

constexpr auto kFamilies = static_cast<int>(Family::kCount);

TEST(ConfigTables, AKeyNamesOneRowOfAFile) {
  for (int number = 0; number < kFamilies; ++number) {
    std::map<std::string, std::set<std::string_view>> keysOfFiles;
    const auto family = static_cast<Family>(number);
    const std::vector<ConfigTable> tables = makeTables(family);
    for (size_t index = 0; index < tables.size(); ++index) {
      for (const ConfigItem& row : tables[index]) {
        EXPECT_TRUE(keysOfFiles[familyPath(family, static_cast<int32_t>(index))].insert(row.key).second) << row.key;
        EXPECT_EQ(rowKey({family, row.id}, static_cast<int32_t>(index)), row.key);
      }
    }
  }
}

/** Keys and defaults are what cameras in the field have on flash: every row of a first table, and what differs behind.
 */
TEST(ConfigTables, KeysAndDefaultsAreThoseOfTheFiles) {
  std::ifstream file(TMX_TEST_DATA "/settings.txt");
  const auto expectLine = [&file](const std::string& line) {
    std::string known;
    std::getline(file, known);
    EXPECT_EQ(line, known);
  };
  for (int number = 0; number < kFamilies; ++number) {
    const auto family = static_cast<Family>(number);
    const std::vector<ConfigTable> tables = makeTables(family);
    for (size_t index = 0; index < tables.size(); ++index) {
      for (const auto& [id, key, value] : tables[index]) {
        const ConfigItem& first = tables[0][static_cast<size_t>(id)];
        if (index > 0 && key == first.key && value == first.value) continue;
        expectLine(familyPath(family, static_cast<int32_t>(index)) + " " + std::string(key) + "=" + value);
      }
    }
  }
  EXPECT_EQ(file.peek(), EOF);
}

// Row and index at the edges: whether a read and a write go through.
struct AccessCase {
  Family family;
  int32_t index;
  int32_t row;
  bool isRow;
};

constexpr AccessCase kAccessCases[] = {
    {Family::Network, 0, 0, true},        {Family::Network, 0, 81, true},
    {Family::Network, 0, 82, false},      {Family::Network, 0, 83, false},
    {Family::Network, 0, -1, false},      {Family::Network, 1, 0, false},
    {Family::Video, 0, 1, false},         {Family::Event, 9, 23, true},
    {Family::Event, 10, 0, false},        {Family::Event, -1, 0, false},
    {Family::Application, 9, 25, true},   {Family::Application, 10, 0, false},
    {Family::Application, -1, 0, false},  {Family::Encode, 2, 9, true},
    {Family::Encode, 3, 0, false},        {Family::Encode, 4, 0, false},
    {Family::AudDetect, 1, 2, true},      {Family::AudDetect, 2, 0, false},
    {Family::AudDetect, 3, 0, false},     {Family::Patrol, 19, 2, true},
    {Family::Patrol, 19, 3, false},       {Family::Patrol, 20, 0, false},
    {Family::Position, 20, 0, false},     {Family::Scene, 8, 0, false},
    {Family::Scene, 7, INT32_MAX, false}, {Family::Scene, INT32_MIN, INT32_MIN, false},
};

TEST(ConfigAccess, OnlyExistingRowsAreReadAndWritten) {
  for (const AccessCase& item : kAccessCases) {
    Store store;
    EXPECT_EQ(store.set({item.family, item.row}, "new text", item.index), item.isRow ? 0 : -1)
        << static_cast<int>(item.family) << " " << item.index << " " << item.row;
    EXPECT_EQ(store.get({item.family, item.row}, item.index), item.isRow ? "new text" : "")
        << static_cast<int>(item.family) << " " << item.index << " " << item.row;
  }
}

TEST(ConfigAccess, NamedOperationsReachTheirOwnTable) {
  Store store;
  EXPECT_EQ(store.set(cam_focus_row::FOCUS_DIR, "far"), 0);
  EXPECT_EQ(store.get({Family::CamFocus, 2}), "far");
  EXPECT_EQ(store.set(patrol_row::PATROL_SPEED, "1.5", 19), 0);
  EXPECT_EQ(store.get({Family::Patrol, 2}, 19), "1.5");
  EXPECT_EQ(store.get({Family::Patrol, 2}, 18), "100.0");
  EXPECT_EQ(store.setSceneConfig(7, scene_row::COLOR, "5"), 0);
  EXPECT_EQ(store.getSceneConfig(7, 1), "5");
  EXPECT_EQ(store.getSceneConfig(6, 1), "0");
}

TEST(ConfigAccess, ASaveOrReloadOfNoFileIsRefused) {
  Store store;
  EXPECT_EQ(store.saveSceneConfig(8), -1);
  EXPECT_EQ(store.saveSceneConfig(-1), -1);
  EXPECT_EQ(store.save(Family::Application, 10), -1);
  EXPECT_EQ(store.save(Family::AudDetect, 2), -1);
  EXPECT_EQ(store.saveEncodeConfig(3), -1);
  EXPECT_EQ(store.save(Family::Position, 20), -1);
  EXPECT_EQ(store.save(Family::Patrol, 1), -1);
  EXPECT_EQ(store.save(Family::Event, 10), -1);
  EXPECT_EQ(store.reloadSceneConfig(8), -1);
  EXPECT_EQ(store.readSceneConfig(-1), -1);
  for (const int32_t channel : {-1, 0, 4, 5})
    EXPECT_EQ(store.reloadEachChannelEncodeConfig(channel), -1) << channel;
}

TEST(ConfigAccess, AnInhibitedStoreAcceptsAndKeepsNothing) {
  Store store;
  store.setWriteInhibit(1);
  EXPECT_EQ(store.set(system_row::TIMEZONE, "UTC"), 0);
  EXPECT_EQ(store.save(Family::System), 0);
  EXPECT_EQ(store.set({Family::Video, 1}, "on"), -1);  // the family refuses before the store is asked
  store.setWriteInhibit(0);
  EXPECT_EQ(store.get(system_row::TIMEZONE), "Japan");
  EXPECT_EQ(store.set(system_row::TIMEZONE, "UTC"), 0);
  EXPECT_EQ(store.get(system_row::TIMEZONE), "UTC");
}

TEST(Initialising, GuardsNestAndInhibitBothStores) {
  const auto keepsWrites = [](Config* store) {
    const std::string before = store->get(ui_row::UI_ENC1_CBRMODE_JPEG);
    const std::string after = before == "vbr" ? "cbr" : "vbr";
    EXPECT_EQ(store->set(ui_row::UI_ENC1_CBRMODE_JPEG, after), 0);
    return store->get(ui_row::UI_ENC1_CBRMODE_JPEG) == after;
  };
  const auto expectState = [&](bool isRaised) {
    EXPECT_EQ(isInitialising(), isRaised);
    EXPECT_EQ(keepsWrites(Config::getInstance()), !isRaised);
    EXPECT_EQ(keepsWrites(CUserConfig::getInstance()), !isRaised);
  };
  expectState(false);
  {
    InitialisingGuard outer;
    expectState(true);
    {
      InitialisingGuard inner;
      expectState(true);
    }
    expectState(true);
  }
  expectState(false);
}

TEST(FrameSize, OnlyTheListedWordsPass) {
  for (const char* text :
       {"1920x1080", "quadvga", "1280x960", "1280x720", "vga", "640x480", "qvga", "320x240", "640x360"}) {
    EXPECT_EQ(Config::isFramesize(text), 1) << text;
  }
  for (const char* text : {"", "VGA", "vga ", "640x36", "640x3600", "1920X1080", "sxvga"}) {
    EXPECT_EQ(Config::isFramesize(text), 0) << text;
  }
}

}  // namespace
