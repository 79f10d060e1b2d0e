#pragma once

#include <array>
#include <cstdint>

namespace dsp {

/** One message to or from the image DSP: the address (the command) and eleven bytes of payload. */
using Frame = std::array<uint8_t, 12>;

/** A place in a frame: a number of `width` bytes, low byte first; negative numbers are two's complement. */
struct Field {
  uint8_t address;
  uint8_t position;
  uint8_t width;
};

namespace frame {
inline constexpr Field kClockSecond{0x10, 1, 1};  // the clock runs in UTC
inline constexpr Field kClockMinute{0x10, 2, 1};
inline constexpr Field kClockHour{0x10, 3, 1};
inline constexpr Field kClockDay{0x10, 5, 1};
inline constexpr Field kClockMonth{0x10, 6, 1};  // 1 to 12
inline constexpr Field kClockYear{0x10, 7, 1};   // counted from 2000

inline constexpr Field kDeviceId{0x18, 1, 1};
inline constexpr Field kRegisterAddress{0x19, 1, 2};
inline constexpr Field kRegisterData{0x1A, 1, 2};

inline constexpr Field kAeReference{0x20, 1, 1};
inline constexpr Field kBlcMode{0x20, 2, 1};
inline constexpr Field kAvPkColor{0x20, 3, 1};
inline constexpr Field kAvPkBlackWhite{0x20, 4, 1};
inline constexpr Field kDayNightMode{0x20, 5, 1};

inline constexpr Field kAePriority{0x21, 1, 1};
inline constexpr Field kShutterMode{0x21, 2, 1};
inline constexpr Field kShutterSpeed{0x21, 3, 1};
inline constexpr Field kShutterFastLimit{0x21, 4, 1};
inline constexpr Field kSenseupLimit{0x21, 5, 1};
inline constexpr Field kAgcMode{0x21, 6, 1};

inline constexpr Field kBlcAreaPage{0x22, 1, 1};
inline constexpr Field kBlcAreaData{0x22, 2, 10};  // ten bytes of the picture grid, no number

inline constexpr Field kIrisMode{0x30, 1, 1};
inline constexpr Field kIrisOffset{0x30, 2, 1};

inline constexpr Field kAlcSpeed{0x38, 1, 1};
inline constexpr Field kAlcErrEn{0x38, 2, 2};
inline constexpr Field kAlcErrHigh{0x38, 4, 2};
inline constexpr Field kAlcErrLow{0x38, 6, 2};
inline constexpr Field kAlcRestart{0x38, 8, 1};
inline constexpr Field kAlcDayNightHysteresis{0x38, 9, 1};

inline constexpr Field kIrisStart{0x39, 1, 2};
inline constexpr Field kIrisIntGain{0x39, 3, 2};
inline constexpr Field kIrisProGain{0x39, 5, 2};
inline constexpr Field kIrisLimitHigh{0x39, 7, 2};
inline constexpr Field kIrisLimitLow{0x39, 9, 2};

inline constexpr Field kWbMode{0x40, 1, 1};
inline constexpr Field kWbRed{0x40, 2, 2};
inline constexpr Field kWbBlue{0x40, 4, 2};

inline constexpr Field kOnePush{0x41, 1, 1};  // written: 1 starts a run; read: 0 running, 1 finished, else failed
inline constexpr Field kOnePushRed{0x41, 2, 2};
inline constexpr Field kOnePushBlue{0x41, 4, 2};

inline constexpr Field kSubadjust{0x50, 1, 1};  // written: the point; read: 0 running, 1 finished, above failed
inline constexpr Field kSubadjustRed{0x50, 2, 2};
inline constexpr Field kSubadjustBlue{0x50, 4, 2};

inline constexpr Field kPreWbLowRed{0x51, 1, 2};
inline constexpr Field kPreWbNormalRed{0x51, 3, 2};
inline constexpr Field kPreWbHighRed{0x51, 5, 2};
inline constexpr Field kPreWbLowBlue{0x52, 1, 2};
inline constexpr Field kPreWbNormalBlue{0x52, 3, 2};
inline constexpr Field kPreWbHighBlue{0x52, 5, 2};

inline constexpr Field kAtwSpeed{0x58, 1, 1};
inline constexpr Field kAtwErrEn{0x58, 2, 2};
inline constexpr Field kAtwErrHigh{0x58, 4, 2};
inline constexpr Field kAtwErrLow{0x58, 6, 2};
inline constexpr Field kAtwRestart{0x58, 8, 1};

inline constexpr Field kColor{0x60, 1, 1};
inline constexpr Field kEnhance{0x60, 2, 1};
inline constexpr Field kPedestal{0x60, 3, 1};
inline constexpr Field kGamma{0x60, 4, 1};
inline constexpr Field kLumx{0x60, 5, 1};
inline constexpr Field kNoiseReduction{0x60, 6, 1};

inline constexpr Field kIrYGain{0x70, 1, 1};
inline constexpr Field kIrYHue{0x70, 2, 1};
inline constexpr Field kIbYGain{0x70, 3, 1};
inline constexpr Field kIbYHue{0x70, 4, 1};

inline constexpr Field kLumxSpeed{0x78, 1, 1};
inline constexpr Field kLumxGain{0x78, 2, 1};

inline constexpr Field kAfForIr{0x82, 1, 1};   // One byte with several meanings:
inline constexpr Field kAfSwitch{0x82, 1, 1};  // each of its writers overwrites the others' value
inline constexpr Field kNightFocusOffset{0x82, 1, 1};

inline constexpr Field kFocusDirection{0x84, 1, 1};
inline constexpr Field kFocusFilter{0x84, 2, 1};
inline constexpr Field kFocusPosition{0x84, 3, 2};
inline constexpr Field kFocusFactoryPosition{0x84, 5, 2};
inline constexpr Field kFocusBlackout{0x84, 7, 1};

inline constexpr Field kMaskPage{0xD0, 1, 1};
inline constexpr Field kMaskData{0xD0, 2, 8};  // eight bytes of the mask bitmap, no number
inline constexpr Field kMaskRed{0xD1, 1, 1};
inline constexpr Field kMaskGreen{0xD1, 2, 1};
inline constexpr Field kMaskBlue{0xD1, 3, 1};
inline constexpr Field kMaskStatus{0xD2, 1, 1};

inline constexpr Field kLoadComplete{0xF0, 1, 1};
inline constexpr Field kDayNightModel{0xF3, 1, 1};
inline constexpr Field kNoBackFocus{0xF3, 2, 1};
inline constexpr Field kAutoGain{0xF8, 1, 1};
inline constexpr Field kGainCompensation{0xF8, 2, 2};
inline constexpr Field kGainValue{0xF8, 4, 2};
inline constexpr Field kSensor{0xFE, 1, 1};

// Frames that hold a rectangle or the same fields twice are named by their address.
inline constexpr uint8_t kAeArea = 0x31;
inline constexpr uint8_t kWbArea = 0x42;
inline constexpr uint8_t kAtwWide = 0x59;
inline constexpr uint8_t kAtwNarrow = 0x5A;

/** The frames read as text: identity and versions of the DSP. */
inline constexpr std::array<uint8_t, 4> kInformation{0xE0, 0xE1, 0xE2, 0xFF};
}  // namespace frame

/** A rectangle of the picture; frames 0x31 and 0x42 hold the four numbers in this order, 16 bits each. */
struct Area {
  int32_t x1;
  int32_t y1;
  int32_t x2;
  int32_t y2;
};

void put(Frame& frame, Field field, int32_t value);
[[nodiscard]] uint32_t take(const Frame& frame, Field field);
void putArea(Frame& frame, const Area& area);

/** A zeroed frame with its address. */
[[nodiscard]] Frame blankFrame(uint8_t address);

/**
 * The last frame of every address, owned by CameraDSP: a setter changes its own bytes and the whole frame goes out.
 * It starts with the state that the DSP has after power-on.
 */
class FrameCache {
 public:
  FrameCache();

  void set(Field field, int32_t value) { put(at(field.address), field, value); }
  [[nodiscard]] uint32_t get(Field field) const { return take(m_frames[field.address], field); }
  [[nodiscard]] Frame& at(uint8_t address) { return m_frames[address]; }

 private:
  std::array<Frame, 256> m_frames;
};

}  // namespace dsp
