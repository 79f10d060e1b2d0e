#include "config/FlashHold.h"

#include <unistd.h>

#include "config/Config.h"

namespace {
constexpr useconds_t kRetryMicroseconds = 100'000;
}

FlashHold::FlashHold() {
  while ((m_descriptor = Config::lockFlash()) < 0) {
    usleep(kRetryMicroseconds);
  }
}

FlashHold::~FlashHold() {
  if (m_descriptor >= 0) release();
}

int32_t FlashHold::release() {
  const int32_t result = Config::unlockFlash(m_descriptor);
  m_descriptor = -1;
  return result;
}
