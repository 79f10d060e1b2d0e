// The files of the store: reading with repair, and rewriting in place.

#include <fcntl.h>
#include <unistd.h>

#include <utility>

#include "config/Config.h"
#include "config/FlashLock.h"
#include "config/StoreText.h"
#include "local/FileDescriptor.h"
#include "local/Uninterrupted.h"
#include "request/Log.h"

namespace {

bool readAll(int descriptor, std::string& bytes) {
  char buffer[4096];
  for (;;) {
    const ssize_t count = uninterrupted([&] { return ::read(descriptor, buffer, sizeof buffer); });
    if (count <= 0) return count == 0;
    bytes.append(buffer, static_cast<size_t>(count));
  }
}

int openFile(const std::string& path, int flags) {
  return uninterrupted([&] { return ::open(path.c_str(), flags | O_CLOEXEC, 0644); });
}

/** Takes the lines of the file into the tables and closes it; one that cannot be read to its end counts as failed. */
StoreParse takeFile(Family family, int descriptor, std::span<ConfigTable> tables) {
  const FileDescriptor file(descriptor);
  std::string bytes;
  const bool isComplete = readAll(file.get(), bytes);
  StoreParse parse = parseStore(bytes, tables, longestRow(family));
  if (!isComplete && parse.end == StoreEnd::EndOfFile) parse.end = StoreEnd::StreamFailed;
  return parse;
}

bool writeAll(int descriptor, const std::string& text, const std::string& path) {
  // A short count means that the flash is full: the rest is lost.
  const ssize_t count = uninterrupted([&] { return ::write(descriptor, text.data(), text.size()); });
  if (count == static_cast<ssize_t>(text.size())) return true;
  TMX_LOG(LOG_ERR, "Config: Failed to write to file %s.", path.c_str());
  return false;
}

int syncFile(int descriptor) {
  return uninterrupted([descriptor] { return ::fsync(descriptor); });
}

/** The whole file in one call, so that flash sees one short burst. */
int32_t writeWhole(int descriptor, const std::string& path, std::span<const ConfigTable> tables) {
  const bool isWritten = writeAll(descriptor, composeStore(tables), path);
  return syncFile(descriptor) == 0 && isWritten ? Config::kDone : Config::kFailed;
}

/** One call per line, up to the first that fails. */
int32_t writeLineByLine(int descriptor, const std::string& path, std::span<const ConfigTable> tables) {
  bool isWritten = true;
  for (const ConfigTable& table : tables) {
    for (const ConfigItem& item : table) {
      isWritten = isWritten && writeAll(descriptor, composeLine(item), path);
    }
  }
  const int synced = syncFile(descriptor);
  TMX_LOG(LOG_INFO, " fsync ret(%d) ", synced);
  return syncFile(descriptor) == 0 && synced == 0 && isWritten ? Config::kDone : Config::kFailed;
}

/** The factory partition holds the files of the flash, not those of the camera's own data beside it. */
bool hasFactoryCopy(const std::string& path) { return path.starts_with("/mnt/flash/"); }

void logOpenFailure(Family family, const std::string& path, int descriptor) {
  if (family == Family::Patrol) {
    TMX_LOG(LOG_ERR, "Config: Failed to open file %s.", path.c_str());
  } else {
    TMX_LOG(LOG_ERR, "Config: Failed to open file %s.::%ld (%m)", path.c_str(), static_cast<long>(descriptor));
  }
}

/** Rewrites the file in place; it must exist, and a descriptor of the standard streams is not trusted. */
int32_t rewrite(Family family, const std::string& path, std::span<const ConfigTable> tables) {
  const FileDescriptor file(openFile(path, O_WRONLY | O_TRUNC));
  const int descriptor = file.get();
  if (descriptor <= STDERR_FILENO) {
    logOpenFailure(family, path, descriptor);
    return Config::kFailed;
  }
  TMX_LOG(LOG_DEBUG, " write file open(%s:%ld) ", path.c_str(), static_cast<long>(descriptor));
  const int32_t result =
      family == Family::Patrol ? writeLineByLine(descriptor, path, tables) : writeWhole(descriptor, path, tables);
  for (int i = 0; i < 3; ++i)
    ::sync();
  TMX_LOG(LOG_DEBUG, " fsync and close (%ld) ", static_cast<long>(descriptor));
  return result;
}

}  // namespace

std::span<ConfigTable> Config::tablesOfFile(Family family, int32_t index) {
  const std::span<ConfigTable> tables = m_tables[static_cast<size_t>(family)];
  if (family == Family::Patrol) return index == 0 ? tables : std::span<ConfigTable>();
  if (index < 0 || std::cmp_greater_equal(index, tables.size())) return {};
  return tables.subspan(static_cast<size_t>(index), 1);
}

int32_t Config::readConfig(Family family, int32_t index) {
  const std::span<ConfigTable> tables = tablesOfFile(family, index);
  if (tables.empty()) return kFailed;
  const std::string path = familyPath(family, index);
  FlashLock lock;
  if (!lock.isHeld()) {
    TMX_LOG(LOG_ERR, "Config: Failed to lock /mnt/flash.");
    return kLockFailed;
  }
  int descriptor = openFile(path, O_RDONLY);
  if (descriptor < 0) {
    TMX_LOG(LOG_ERR, "Config: Can't open %s.::(%m)", path.c_str());
    if (!hasFactoryCopy(path)) return heal(family, index, lock);
    if (m_copyFactoryConfig(path) != kDone) return endLoadConfig(kFailed, lock, path);
    descriptor = openFile(path, O_RDONLY);
  }
  const StoreParse parse = takeFile(family, descriptor, tables);
  if (parse.end == StoreEnd::StreamFailed) {
    TMX_LOG(LOG_ERR, "failbit cnt=%ld", static_cast<long>(parse.matched));
    if (!hasFactoryCopy(path)) return heal(family, index, lock);
    return endLoadConfig(kFailed, lock, path);
  }
  if (parse.end == StoreEnd::BadFormat) TMX_LOG(LOG_ERR, "Config: File %s: bad format", path.c_str());
  if (lock.release() < 0) {
    TMX_LOG(LOG_ERR, "Config: Failed to unlock /mnt/flash");
    return kLockFailed;
  }
  // File and tables disagree: the file gets the rows that it lacks and loses the lines that no row takes.
  const bool isWhole = parse.end == StoreEnd::EndOfFile && !parse.hasStrayLine;
  const bool isComplete = isWhole && static_cast<size_t>(parse.matched) == countRows(tables);
  if (!isComplete && writeConfig(family, index) < 0) {
    TMX_LOG(LOG_ERR, "Config: file:%s :write error", path.c_str());
    return kFailed;
  }
  return parse.end == StoreEnd::BadFormat ? kFailed : kDone;
}

int32_t Config::heal(Family family, int32_t index, FlashLock& lock) {
  const std::string path = familyPath(family, index);
  TMX_LOG(LOG_WARNING, "Config: File %s: made anew from the built-in rows", path.c_str());
  m_tables[static_cast<size_t>(family)] = makeTables(family);
  const FileDescriptor file(openFile(path, O_WRONLY | O_CREAT));  // where there is none
  const int32_t result = rewrite(family, path, tablesOfFile(family, index));
  return lock.release() < 0 ? kLockFailed : result;
}

int32_t Config::writeConfig(Family family, int32_t index) {
  if (m_writeInhibit != 0) return kDone;
  FlashLock lock;
  if (!lock.isHeld()) {
    TMX_LOG(LOG_ERR, "Config: Failed to lock /mnt/flash.(%m)");
    return kLockFailed;
  }
  const int32_t result = rewrite(family, familyPath(family, index), tablesOfFile(family, index));
  m_unsaved.erase({family, index});
  if (result != kDone) m_unsaved.emplace(family, index);
  if (lock.release() < 0) {
    TMX_LOG(LOG_ERR, "Config: Failed to unlock /mnt/flash");
    return kLockFailed;
  }
  return result;
}
