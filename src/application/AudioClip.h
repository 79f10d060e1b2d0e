#pragma once

#include <cstdint>
#include <string>

#include "config/Rows.h"

/**
 * One of the alarm clips that the camera plays: a WAV file on flash, which comes there by another way, and a name,
 * which stands in all ten application tables. Stateless apart from its number. Results are 0 or -1, and every failure
 * is logged.
 */
class AudioClip {
 public:
  /** @param number 1 to 5. */
  explicit AudioClip(int32_t number);

  /** Whether the file can be opened, under the flash lock; not without the lock. */
  [[nodiscard]] bool isRegistered() const;
  [[nodiscard]] int32_t remove() const;

  /** The time to play it in microseconds; 0 when the file is missing or of another form. */
  [[nodiscard]] int64_t playTime() const;

  /** The name; a clip without a file has none, which the staging image notes. */
  [[nodiscard]] std::string name() const;
  /** Names it in both images and all ten files; the first that cannot be saved ends it. */
  [[nodiscard]] int32_t setName(const std::string& name) const;

  [[nodiscard]] int32_t play() const;
  /** Stops whichever clip is playing. */
  [[nodiscard]] static int32_t stop();

 private:
  [[nodiscard]] Row row() const;
  [[nodiscard]] bool canBeOpened() const;

  int32_t m_number;
  std::string m_file;
};

/** Seconds, ".", and the microseconds that are left as a plain number: 1050000 is "1.50000". */
[[nodiscard]] std::string playTimeText(int64_t microseconds);
