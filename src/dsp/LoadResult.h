#pragma once

#include <cstdint>

#include "dsp/Results.h"

namespace dsp {

/**
 * Collects what the steps of a load returned. A setting that is refused beside the others (a fixed gain under an
 * automatic shutter, a priority while flickerless) is no failure of the load; a frame that did not go out is.
 */
class LoadResult {
 public:
  void operator+=(int32_t result) {
    if (result == kSendFailed) m_result = result;
  }
  [[nodiscard]] int32_t get() const { return m_result; }

 private:
  int32_t m_result = kDone;
};

}  // namespace dsp
