#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "dsp/Words.h"

namespace dsp {

/** What the shutter does; the numbers are those of the DSP's firmware interface. */
namespace shutter {
inline constexpr int32_t kManual = 0;
inline constexpr int32_t kFlickerless = 2;
inline constexpr int32_t kManual30 = 16;
inline constexpr int32_t kAuto = 17;
inline constexpr int32_t kAuto100 = 18;
inline constexpr int32_t kAuto250 = 19;
inline constexpr int32_t kAuto1000 = 20;
inline constexpr int32_t kFocusAssist = 48;  // never stored: it has no name

/** Speeds are the reciprocal of the exposure time in seconds. */
inline constexpr int32_t kSlowest = 30;
inline constexpr int32_t kFastest = 10000;
inline constexpr int32_t kNamedSpeed = 60;  // kept beside a mode that was set by name

/** Bytes 2 to 4 of frame 0x21. */
struct Bytes {
  int32_t code;
  uint8_t mode;
  uint8_t speed;
  uint8_t fastLimit;
};
inline constexpr Bytes kBytes[] = {
    {kAuto, 1, 2, 10},  // of every code that is not listed, too
    {kFlickerless, 2, 2, 10}, {kManual30, 1, 0, 0}, {kAuto100, 1, 2, 3},
    {kAuto250, 1, 2, 5},      {kAuto1000, 1, 2, 7}, {kFocusAssist, 1, 2, 13},
};
inline constexpr uint8_t kManualFastLimit = 10;

/** Names of the modes; of two names the first is the one that is stored. */
inline constexpr Words kNames{
    Word{"flickerless", kFlickerless}, Word{"auto", kAuto},         Word{"auto100", kAuto100},
    Word{"auto250", kAuto250},         Word{"semi_auto", kAuto250}, Word{"auto1000", kAuto1000},
};

/** The speeds in the order of their index in frame 0x21; the compensations stand in the same order. */
inline constexpr std::array<int32_t, 11> kSpeeds{30, 50, 60, 100, 120, 250, 500, 1000, 2000, 4000, 10000};
inline constexpr size_t kIndexOf60 = 2;  // stands for speeds that are not in the list

/** The rungs of a step up or down. */
inline constexpr std::array<int32_t, 10> kLadder{30, 50, 60, 100, 250, 500, 1000, 2000, 4000, 10000};

[[nodiscard]] constexpr bool isManual(int32_t code) { return code == kManual || code == kManual30; }

[[nodiscard]] constexpr size_t speedIndex(int32_t speed) {
  for (size_t i = 0; i < kSpeeds.size(); ++i) {
    if (kSpeeds[i] == speed) return i;
  }
  return kIndexOf60;
}

[[nodiscard]] constexpr Bytes bytesOf(int32_t code, int32_t speed) {
  if (code == kManual) return {code, 0, static_cast<uint8_t>(speedIndex(speed)), kManualFastLimit};
  for (const Bytes& bytes : kBytes) {
    if (bytes.code == code) return bytes;
  }
  return kBytes[0];
}
}  // namespace shutter

/** Senseup limits in the order of their index in frame 0x21. */
inline constexpr std::array<int32_t, 7> kSenseupLimits{0, 2, 4, 8, 16, 32, 60};

/** Gain codes: 0 manual, 1 and 2 automatic, from 3 the fixed gain n as n + 3. */
namespace gain {
inline constexpr uint32_t kManual = 0;
inline constexpr uint32_t kAutoMiddle = 1;
inline constexpr uint32_t kAutoHigh = 2;
inline constexpr uint32_t kFixed = 3;
[[nodiscard]] constexpr bool isAutomatic(uint32_t code) { return code == kAutoMiddle || code == kAutoHigh; }
}  // namespace gain

/** The two generations of sensor boards; an id of 30 and above is the second. A failed probe counts as the first. */
inline constexpr int32_t kSecondBoardId = 30;

/** The last gain code that a board of the first generation tells apart. */
inline constexpr uint32_t kFirstBoardLastGain = 51;

struct ExposureTables {
  std::array<int16_t, 61> gain;          ///< by fixed gain
  std::array<int16_t, 11> compensation;  ///< by the index of the shutter speed
};

inline constexpr ExposureTables kFirstBoard = {
    .gain = {0,   11,  21,  32,  42,  53,  64,  74,  85,  96,  106, 117, 128, 138, 149, 160, 170, 181, 192, 202, 213,
             223, 234, 245, 255, 265, 276, 286, 297, 308, 319, 323, 327, 332, 337, 344, 350, 358, 364, 369, 375, 381,
             388, 393, 398, 405, 410, 416, 423, 423, 423, 423, 423, 423, 423, 423, 423, 423, 423, 423, 423},
    .compensation = {0, -25, -34, -58, -67, -101, -134, -170, -204, -235, -276},
};
inline constexpr ExposureTables kSecondBoard = {
    .gain = {0,   11,  21,  32,  43,  53,  64,  75,  85,  96,  107, 117, 128, 139, 149, 160, 171, 181, 192, 203, 213,
             224, 235, 245, 256, 267, 277, 288, 299, 309, 320, 331, 341, 352, 363, 373, 384, 395, 405, 416, 427, 437,
             448, 459, 469, 480, 491, 501, 512, 523, 533, 544, 555, 565, 576, 587, 597, 608, 619, 629, 640},
    .compensation = {0, -26, -35, -61, -71, -108, -143, -180, -214, -249, -295},
};

/** Auto-exposure reference: the index that users see, the byte of the DSP, and the bytes that read as that index. */
struct AeReference {
  int32_t index;
  int32_t raw;
  int32_t lastRaw;
};
inline constexpr AeReference kAeReferences[] = {
    {-5, -125, -113}, {-4, -100, -88}, {-3, -75, -63}, {-2, -50, -38}, {-1, -25, -13}, {0, 0, 8},
    {1, 16, 24},      {2, 32, 40},     {3, 48, 56},    {4, 64, 72},    {5, 80, 127},
};
inline constexpr int32_t kAeReferenceLimit = 5;

/** An index outside -5 to 5 counts as the nearer end. */
[[nodiscard]] constexpr int32_t aeReferenceRaw(int32_t index) {
  for (const AeReference& entry : kAeReferences) {
    if (index <= entry.index) return entry.raw;
  }
  return std::end(kAeReferences)[-1].raw;
}

[[nodiscard]] constexpr int32_t aeReferenceIndex(int32_t raw) {
  for (const AeReference& entry : kAeReferences) {
    if (raw <= entry.lastRaw) return entry.index;
  }
  return std::end(kAeReferences)[-1].index;
}

}  // namespace dsp
