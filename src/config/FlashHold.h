#pragma once

#include <cstdint>

/** Holds the flash lock for as long as it lives; waits without limit until it has it, asking every 100 ms. */
class FlashHold {
 public:
  FlashHold();
  ~FlashHold();
  FlashHold(const FlashHold&) = delete;
  FlashHold& operator=(const FlashHold&) = delete;

  /** Gives the lock back early; 0 or -1. */
  int32_t release();

 private:
  int32_t m_descriptor;
};
