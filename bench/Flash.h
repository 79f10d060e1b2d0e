#pragma once

#include <chrono>
#include <string>

#include "bench/Statistics.h"

namespace bench {

/** The file operations of one save and the deliberate wait behind it, without a daemon. */
class Flash {
 public:
  /** The daemon gives the flash back and waits, so that another writer gets its turn. */
  static constexpr std::chrono::milliseconds kWaitAfterUnlock{10};

  /** @param file a file of its own on the file system of the flash; made here, removed in the end. */
  Flash(std::string file, std::size_t bytes);
  Flash(const Flash&) = delete;
  Flash& operator=(const Flash&) = delete;
  ~Flash();

  /** The cost of so many saves; fails when one does. */
  [[nodiscard]] Cost save(int times) const;

 private:
  [[nodiscard]] bool saveOnce() const;

  std::string m_file;
  std::string m_content;
};

}  // namespace bench
