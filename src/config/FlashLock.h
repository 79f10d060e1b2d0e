#pragma once

#include <cstdint>
#include <string>

/**
 * The flash lock for as long as the object lives; made and released through Config::lockFlash and unlockFlash. An
 * object that could not take the lock (isHeld) releases nothing.
 */
class FlashLock {
 public:
  /** How long the lock is waited for: some attempts, or until it is had, asking every 100 ms. */
  enum class Patience { Attempts, Endless };

  explicit FlashLock(Patience patience = Patience::Attempts);
  ~FlashLock();
  FlashLock(const FlashLock&) = delete;
  FlashLock& operator=(const FlashLock&) = delete;

  [[nodiscard]] bool isHeld() const { return m_descriptor >= 0; }

  /** Releases now instead of at the end; 0 or -1. */
  [[nodiscard]] int32_t release();

 private:
  int32_t m_descriptor;
};

/** Releases the lock, if it is held; 0, or -2 on a failed release. */
[[nodiscard]] int32_t endResetCamera(FlashLock& lock);

/** The end of a failed load of a file: passes a result other than -1 on; else releases the lock, -1 or -2. */
[[nodiscard]] int32_t endLoadConfig(int32_t result, FlashLock& lock, const std::string& path);
