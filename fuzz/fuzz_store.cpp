// Any bytes as any one file of the store: a start comes up with all rows in their tables, at the latest behind one
// restore of the partition, and what is saved then is read back.

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "config/Config.h"
#include "config/StoreText.h"
#include "tests/engine/PrivateFolders.h"

namespace {

struct File {
  Family family;
  int32_t index;
  std::string path;
  std::string factory;
};

class Store : public Config {
 public:
  using Config::readConfig;
};

void write(const std::string& path, std::string_view bytes) { std::ofstream(path, std::ios::binary) << bytes; }

std::vector<File> everyFile() {
  std::vector<File> files;
  for (int number = 0; number < static_cast<int>(Family::kCount); ++number) {
    const auto family = static_cast<Family>(number);
    const std::vector<ConfigTable> tables = makeTables(family);
    if (family == Family::Patrol) {
      files.push_back({family, 0, familyPath(family, 0), composeStore(tables)});
      continue;
    }
    for (size_t index = 0; index < tables.size(); ++index) {
      const auto table = static_cast<int32_t>(index);
      files.push_back({family, table, familyPath(family, table), composeStore(std::span(tables).subspan(index, 1))});
    }
  }
  return files;
}

const std::vector<File>& files() {
  static const std::vector<File> all = everyFile();
  return all;
}

/** A start; where it fails, the factory's file is what the restore puts on the partition. */
std::unique_ptr<Store> start(const File& file) {
  auto store = std::make_unique<Store>();
  if (store->readConfig(file.family, file.index) == Config::kDone) return store;
  if (file.path.starts_with("/mnt/flash/")) write(file.path, file.factory);
  store = std::make_unique<Store>();
  const int32_t secondBoot = store->readConfig(file.family, file.index);
  assert(secondBoot == Config::kDone);
  return store;
}

void expectSavedAndReadBack(const File& file, Store& store, std::string_view bytes) {
  const Row row{file.family, static_cast<int32_t>(bytes.size() % static_cast<size_t>(countRows(file.family)))};
  const std::string value(bytes.substr(0, bytes.size() % kLongestLine));
  const bool fits = Config::checkValue(row, value, file.index) == 0;
  const bool isTaken = store.set(row, value, file.index) == Config::kDone;
  assert(isTaken == fits);
  const int32_t saved = store.save(file.family, file.index);
  assert(saved == Config::kDone);
  const std::unique_ptr<Store> again = start(file);
  const int32_t tables = file.family == Family::Patrol ? familyInfo(file.family).tables : 1;
  for (int32_t table = file.index; table < file.index + tables; ++table) {
    for (int32_t number = 0; number < countRows(file.family); ++number)
      assert(again->get({file.family, number}, table) == store.get({file.family, number}, table));
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  const bool isHidden = hideFileSystem();
  assert(isHidden);
  for (const File& file : files()) {
    std::filesystem::create_directories(std::filesystem::path(file.path).parent_path());
    write(file.path, file.factory);
  }
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const File& file = files()[data[0] % files().size()];
  const std::string_view bytes(reinterpret_cast<const char*>(data + 1), size - 1);
  write(file.path, bytes);
  const std::unique_ptr<Store> store = start(file);
  expectSavedAndReadBack(file, *store, bytes);
  write(file.path, file.factory);
  return 0;
}
