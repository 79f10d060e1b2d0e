#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "config/Rows.h"
#include "service/Words.h"

namespace dsp {

/** The words of one row of the camera table. Where two words share a number, the first is the one that is stored. */
struct WordRow {
  int32_t row;
  const char* logName;
  const Words& words;
  int32_t fallback;                           ///< the number of any other text
  std::optional<int32_t> decimalOffset = {};  ///< a decimal n stands for n + offset
};

namespace words {
inline constexpr Words kOffOn{Word{"off", 0}, Word{"on", 1}};
inline constexpr Words kWhiteBalance{Word{"manual", 0}, Word{"autoW", 1}, Word{"auto", 1}, Word{"autoN", 2}};
inline constexpr Words kBrightness{Word{"manual", 0}, Word{"autoM", 1}, Word{"auto", 1}, Word{"autoH", 2}};
inline constexpr Words kEnhanceBand{Word{"low", 0}, Word{"high", 1}};
inline constexpr Words kTrueDayNight{Word{"bw", 0}, Word{"color", 1}, Word{"autoL", 2}, Word{"autoM", 3},
                                     Word{"autoH", 4}};
inline constexpr Words kPriority{Word{"motion", 0}, Word{"combo", 1}, Word{"quality", 2}};
inline constexpr Words kEasyDayNight{Word{"bw", 0}, Word{"color", 1}, Word{"auto", 2}};
inline constexpr Words kConvergence{Word{"normal", 0}, Word{"strong", 1}};
inline constexpr Words kNoiseReduction{Word{"off", 0}, Word{"low", 1}, Word{"mid", 2}, Word{"high", 3}};
inline constexpr Words kBlc{Word{"off", 0}, Word{"a", 1}, Word{"b", 2}, Word{"c", 3}, Word{"d", 4}, Word{"manual", 5}};
inline constexpr Words kIris{Word{"0", 0}, Word{"auto", 1}, Word{"100", 2}};
}  // namespace words

inline constexpr WordRow kWordRows[] = {
    {camera_row::WHITE_BALANCE, "WHITE_BALANCE", words::kWhiteBalance, 0},
    {camera_row::BRIGHTNESS, "BRIGHTNESS", words::kBrightness, 0, 3},
    {camera_row::ENHANCE_BAND, "ENHANCE_BAND", words::kEnhanceBand, 0},
    {camera_row::TRUE_DAY_NIGHT, "TRUE_DAY_NIGHT", words::kTrueDayNight, 1},
    {camera_row::AUTO_EXPOSURE_PRIORITY, "AUTO_EXPOSURE_PRIORITY", words::kPriority, 0},
    {camera_row::PRIVACY_MASK_STATUS, "PRIVACY_MASK_STATUS", words::kOffOn, 0},
    {camera_row::EASY_DAY_NIGHT, "EASY_DAY_NIGHT", words::kEasyDayNight, 2},
    {camera_row::ATW_CONVERGENCE, "ATW_CONVERGENCE", words::kConvergence, 0},
    {camera_row::STEALTH, "STEALTH", words::kOffOn, 0},
    {camera_row::IDENTIFY, "STEALTH", words::kOffOn, 0},  // known under this name in the logs
    {camera_row::DNR_3D, "DNR_3D", words::kNoiseReduction, 0},
    {camera_row::LUMX, "LUMX", words::kOffOn, 0},
};

/** The rules of a row; the row must be one of kWordRows. */
[[nodiscard]] constexpr const WordRow& wordRow(int32_t row) {
  const WordRow* found = kWordRows;
  while (found->row != row)
    ++found;
  return *found;
}

/** The stored word of a number; a number without a word has that of the row's fallback. */
[[nodiscard]] constexpr std::string_view wordOf(const WordRow& row, int32_t number) {
  std::string_view fallback;
  for (const Word& word : row.words) {
    if (word.number == number) return word.text;
    if (word.number == row.fallback && fallback.empty()) fallback = word.text;
  }
  return fallback;
}

}  // namespace dsp
