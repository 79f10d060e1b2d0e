#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "config/Families.h"
#include "config/Rows.h"

class FlashLock;

/**
 * The committed image of all settings: tables of key and value text, one file per table.
 *
 * One object lives for the whole process (getInstance); CUserConfig is a second one with the same tables, which holds
 * values that are staged. Getters return a copy of the text, empty on a rejected index; setters return 0, or -1 on a
 * rejected index, and change memory only. A save writes one table to its file under the flash lock. Results of file
 * operations: 0 done, -1 the file failed, -2 the flash lock could not be taken or released.
 */
class Config {
 public:
  static constexpr int32_t kDone = 0;
  static constexpr int32_t kFailed = -1;
  static constexpr int32_t kLockFailed = -2;

  static Config* getInstance();
  virtual ~Config();
  Config(const Config&) = delete;
  Config& operator=(const Config&) = delete;

  /** Reads the model name and every file, heals what it can, then runs the version step. */
  [[nodiscard]] int32_t loadConfig();

  /** While set, setConfig and the write functions succeed without doing anything. */
  void setWriteInhibit(int32_t inhibit) { m_writeInhibit = inhibit; }

  // Any row of any family; `table` is the number of the family's table, 0 for a family of one. Of the patrol, get and
  // set take the step, and save takes 0: its steps share one file. The named operations below are these.
  [[nodiscard]] std::string get(Row row, int32_t table = 0) const;
  int32_t set(Row row, const std::string& value, int32_t table = 0);
  int32_t save(Family family, int32_t table = 0);
  /** False behind a save that failed, until one of the same file succeeds: memory is ahead of the file. */
  [[nodiscard]] bool isSaved(Row row, int32_t table = 0) const;

  /** Whether the text can stand in its line of the file: 0, -451 with a line end or a NUL in it, -457 for a longer one.
   */
  [[nodiscard]] static int32_t checkValue(Row row, std::string_view value, int32_t table = 0);

  /** Copies those of the rows that differ in the other image; whether any did. */
  bool adopt(const Config& other, std::span<const Row> rows, int32_t table = 0);

  [[nodiscard]] std::string getEncodeConfig(int32_t channel, int32_t row) const {
    return get({Family::Encode, row}, channel);
  }
  int32_t setEncodeConfig(int32_t channel, int32_t row, const std::string& value) {
    return set({Family::Encode, row}, value, channel);
  }
  int32_t saveEncodeConfig(int32_t channel) { return save(Family::Encode, channel); }

  [[nodiscard]] std::string getSceneConfig(int32_t scene, int32_t row) const {
    return get({Family::Scene, row}, scene);
  }
  int32_t setSceneConfig(int32_t scene, int32_t row, const std::string& value) {
    return set({Family::Scene, row}, value, scene);
  }
  int32_t saveSceneConfig(int32_t scene) { return save(Family::Scene, scene); }

  [[nodiscard]] std::string getCameraConfig(int32_t row) const { return get({Family::Camera, row}); }
  int32_t setCameraConfig(int32_t row, const std::string& value) { return set({Family::Camera, row}, value); }
  int32_t saveCameraConfig() { return save(Family::Camera); }

  [[nodiscard]] std::string getCamdspConfig(int32_t row) const { return get({Family::Camdsp, row}); }
  int32_t setCamdspConfig(int32_t row, const std::string& value) { return set({Family::Camdsp, row}, value); }

  [[nodiscard]] std::string getScpServiceConfig(int32_t row) const { return get({Family::ScpService, row}); }
  int32_t setScpServiceConfig(int32_t row, const std::string& value) { return set({Family::ScpService, row}, value); }

  // Re-reading files into the tables.
  [[nodiscard]] int32_t reloadSceneConfig(int32_t scene);
  [[nodiscard]] int32_t readSceneConfig(int32_t scene);
  [[nodiscard]] int32_t reloadEncodeConfig();
  [[nodiscard]] int32_t reloadEachChannelEncodeConfig(int32_t channel);  ///< channel 1 to 4

  /** The file of a scene; empty, and logged, where there is no such scene. */
  [[nodiscard]] static std::string getSceneFilename(int32_t scene);

  /** 1 when the text is one of the encoder's frame sizes, else 0. */
  [[nodiscard]] static int32_t isFramesize(std::string_view text);

  /** The model name read by the last loadConfig, "KT-A10" before. */
  [[nodiscard]] static std::string getModelName();

  // The flash lock, advisory between the daemons of the camera; one per process, whichever object it is asked of. The
  // lock functions return a descriptor, or -1, which goes back to unlockFlash. It does not nest.
  [[nodiscard]] static int32_t lockFlash();
  [[nodiscard]] static int32_t lockFlashOne();
  static int32_t unlockFlash(int32_t descriptor);

  // Factory data. The commands run through the shell, and only one that could not be run counts as failed.
  /** The factory image over the working partition, without the lock; what a power cut ends the next start repeats. */
  [[nodiscard]] static int32_t copyFactoryValueToConfig();
  /** The same under the lock; the restart is the caller's. */
  [[nodiscard]] static int32_t copyFactoryValueAndReboot();
  [[nodiscard]] static int32_t initilizeSceneFileFactory(int32_t scene);
  [[nodiscard]] static int32_t makeDevice(const std::string& path, const std::string& arguments);

 protected:
  Config();

  /** Reads one file into its tables as a start does; the rewrite that heals it is part of that. */
  [[nodiscard]] int32_t readConfig(Family family, int32_t index);

 private:
  // One row of a table; null stands for a table that does not exist.
  [[nodiscard]] static std::string getConfig(const ConfigTable* table, int32_t id);
  int32_t setConfig(ConfigTable* table, int32_t id, const std::string& value) const;
  [[nodiscard]] bool isAllowed(Row row, const AccessRule& rule, int32_t table) const;

  [[nodiscard]] static bool isRestoreCutShort();

  // One file and the tables that stand in it: one, or all the patrol's; none for an index without a file.
  [[nodiscard]] std::span<ConfigTable> tablesOfFile(Family family, int32_t index);
  [[nodiscard]] int32_t writeConfig(Family family, int32_t index);
  /** Makes a file that has no factory copy anew from the built-in rows, under the lock; 0, -1 or -2. */
  [[nodiscard]] int32_t heal(Family family, int32_t index, FlashLock& lock);
  [[nodiscard]] int32_t loadFile(Family family, int32_t index, const char* failure);

  /** Brings a missing file back from the factory partition, under the lock that the caller holds; 0 or -1. */
  [[nodiscard]] static int32_t m_copyFactoryConfig(const std::string& path);

  void stepVersion();

  std::array<std::vector<ConfigTable>, static_cast<size_t>(Family::kCount)> m_tables;
  std::set<std::pair<Family, int32_t>> m_unsaved;  ///< files
  int32_t m_writeInhibit = 0;
};

/** The staging image: the same tables, for values that take effect at a later restart or save of their family. */
class CUserConfig : public Config {
 public:
  static CUserConfig* getInstance();
  ~CUserConfig() override;
};
