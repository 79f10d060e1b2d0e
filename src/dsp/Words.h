#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "config/Rows.h"

namespace dsp {

/** One word of a setting and its number for the DSP. */
struct Word {
  std::string_view text;
  int32_t number;
};

/** The words of one row of the camera table. Where two words share a number, the first is the one that is stored. */
struct WordRow {
  int32_t row;
  const char* logName;
  std::span<const Word> words;
  int32_t fallback;                           ///< the number of any other text
  std::optional<int32_t> decimalOffset = {};  ///< a decimal n stands for n + offset
};

namespace words {
inline constexpr Word kOffOn[] = {{"off", 0}, {"on", 1}};
inline constexpr Word kWhiteBalance[] = {{"manual", 0}, {"autoW", 1}, {"auto", 1}, {"autoN", 2}};
inline constexpr Word kBrightness[] = {{"manual", 0}, {"autoM", 1}, {"auto", 1}, {"autoH", 2}};
inline constexpr Word kEnhanceBand[] = {{"low", 0}, {"high", 1}};
inline constexpr Word kTrueDayNight[] = {{"bw", 0}, {"color", 1}, {"autoL", 2}, {"autoM", 3}, {"autoH", 4}};
inline constexpr Word kPriority[] = {{"motion", 0}, {"combo", 1}, {"quality", 2}};
inline constexpr Word kEasyDayNight[] = {{"bw", 0}, {"color", 1}, {"auto", 2}};
inline constexpr Word kConvergence[] = {{"normal", 0}, {"strong", 1}};
inline constexpr Word kNoiseReduction[] = {{"off", 0}, {"low", 1}, {"mid", 2}, {"high", 3}};
inline constexpr Word kBlc[] = {{"off", 0}, {"a", 1}, {"b", 2}, {"c", 3}, {"d", 4}, {"manual", 5}};
inline constexpr Word kIris[] = {{"0", 0}, {"auto", 1}, {"100", 2}};
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

[[nodiscard]] constexpr std::optional<int32_t> numberOf(std::span<const Word> words, std::string_view text) {
  for (const Word& word : words) {
    if (word.text == text) return word.number;
  }
  return std::nullopt;
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
