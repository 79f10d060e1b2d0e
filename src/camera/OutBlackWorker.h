#pragma once

#include <cstdint>
#include <string>
#include <vector>

/**
 * The date on which the cut filter moved and left the focus unchecked. It waits in a file beside the flag that says so;
 * where a start finds the flag still up, the power went in between, and the date is kept for the service. The files are
 * read and written under the flash lock.
 */
class OutBlackWorker {
 public:
  explicit OutBlackWorker(std::string tmpFile = "/mnt/flash/usr/obtmp.dat",
                          std::string savedFile = "/mnt/sysinfo/obsave.dat");

  /** Writes the present date into the waiting file; 1 done, 0 failed. */
  int32_t SaveDateTmpFile() const;
  /** Removes the waiting file; 1 done, 0 failed or none there. */
  int32_t DeleteTmpFile() const;
  /** Keeps the waiting date as the one to be shown; 1 done, 0 failed or none waiting. */
  int32_t KeepTmpFile() const;
  /** The kept date, empty without one. */
  [[nodiscard]] std::string GetObSaveDateData() const;

 private:
  /** One line, "2026.01.31 12:59:59"; none when the date cannot be had. */
  [[nodiscard]] static std::vector<std::string> getDateData();

  std::string m_tmpFile;
  std::string m_savedFile;
};
