#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "local/FileDescriptor.h"

/**
 * A client connection to a neighbouring daemon, together with the services around files that the flash lock guards.
 *
 * An object is one connection, closed at the end of its life. The static operations are stateless but for the flash
 * lock, of which the process has one handle here; Config has another. The lock does not nest: with the lock held,
 * lockFlash answers 0, and the file services, which take it themselves, fail.
 */
class CommonInterface {
 public:
  /** Child processes and their pid files (Process.h). */
  class Process;

  /** Connects to a daemon's socket; true when connected. */
  [[nodiscard]] bool Open(const std::string& path);
  void Close();
  /** One read; true only when it brought exactly `count` bytes. */
  [[nodiscard]] bool Read(void* buffer, size_t count);
  /** One write; true only when it took exactly `count` bytes. */
  [[nodiscard]] bool Write(const void* buffer, size_t count);

  /** 1 when this call took the lock; 0 when it is held already or could not be had in five attempts. */
  [[nodiscard]] static int32_t lockFlash();
  /** 1 when the lock was given back, else 0; after a failed release lockFlash stays refused. */
  static int32_t unlockFlash();
  /** Locks (1) or unlocks (0) the open lock file; 1 done, 0 failed and the file closed. */
  [[nodiscard]] static int32_t flashStatusChange(int32_t lock);

  // File services, each under the flash lock; without the lock they fail.
  [[nodiscard]] static bool isFileExist(const std::string& path);
  static bool removeFile(const std::string& path);
  /** The lines without their ends; none when the file cannot be read. */
  [[nodiscard]] static std::vector<std::string> readLines(const std::string& path);
  /** Replaces the file as a whole; without lines it does nothing, and is true. */
  static bool writeLines(const std::string& path, const std::vector<std::string>& lines);
  /** The first line as a number. */
  [[nodiscard]] static pid_t readPid(const std::string& pidFile, pid_t whenEmpty = 0);
  static void stopAndRemovePid(const std::string& pidFile, pid_t pid);

  /** Sleeps to the end whatever signals arrive; more than 999999 microseconds do not sleep at all. */
  static void usleepRetry(int32_t microseconds);

 private:
  static inline bool m_isLocked = false;
  static inline FileDescriptor m_lockFd;

  bool m_isConnected = false;
  FileDescriptor m_fd;
};
