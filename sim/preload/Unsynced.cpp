#include "sim/preload/Unsynced.h"

#include <algorithm>
#include <filesystem>

namespace sim::unsynced {

namespace fs = std::filesystem;

namespace {

constexpr const char* folder = "/run/camera/unsynced";

fs::path entryOf(std::string path) {
  std::replace(path.begin(), path.end(), '/', '%');
  return fs::path(folder) / path;
}

}  // namespace

void remember(const std::string& path) {
  const fs::path entry = entryOf(path);
  std::error_code error;
  if (fs::exists(entry, error)) return;
  fs::create_directories(folder, error);
  if (!fs::copy_file(path, entry, error)) fs::create_directory(entry, error);
}

void forget(const std::string& path) {
  std::error_code error;
  fs::remove(entryOf(path), error);
}

void forget() {
  std::error_code error;
  fs::remove_all(folder, error);
}

}  // namespace sim::unsynced
