#pragma once

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "config/Config.h"
#include "dsp/CameraDSP.h"
#include "tests/unit/fake_camera_library.h"

/** The DSP's side of a read: fills the eleven bytes behind the address, or returns a negative number. */
extern std::function<int(unsigned char* frame)> fakeDspRead;

using Frames = std::vector<std::string>;

inline constexpr dsp::Model kPlain{.dayNight = false, .backFocus = false, .lens = false};
inline constexpr dsp::Model kDayNight{.dayNight = true, .backFocus = false, .lens = false};

/** A CameraDSP over a working copy with an ordinary scene; the board is of the first generation. */
class DspTest : public testing::Test {
 protected:
  DspTest();
  ~DspTest() override;

  static std::string text(int32_t row) { return CUserConfig::getInstance()->getCameraConfig(row); }
  static void setText(int32_t row, const std::string& value) {
    CUserConfig::getInstance()->setCameraConfig(row, value);
  }
  static std::vector<std::string> allTexts();
  static void useBoard(uint8_t id);

  /** The calls since the last look, frames in hexadecimal up to their last byte that is not 0; probes left out. */
  static Frames sent();
  /** The same with the probes of the sensor board. */
  static Frames sentWithProbes();
};
