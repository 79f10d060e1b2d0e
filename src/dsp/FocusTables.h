#pragma once

#include <cstdint>

#include "config/Rows.h"
#include "dsp/Words.h"

/** The focus drive as the camera sees it; its motor, the cut filter and their moves belong to the GPIO daemon. */
namespace dsp::focus {

enum State : int32_t {
  kAdjusting = 0,  ///< the daemon moves the lens
  kStop = 1,
  kTimeoutError = 5,  ///< the last of the errors with which a run can end
  kReady = 98,
  kInitialize = 99,  ///< waiting for the daemon
};
inline constexpr Word kStates[] = {
    {"adjusting", kAdjusting}, {"stop", kStop},
    {"HIGH_LIGHT_ERROR", 2},   {"LOW_LIGHT_ERROR", 3},
    {"OBJECT_ERROR", 4},       {"TIMEOUT_ERROR", kTimeoutError},
    {"ready", kReady},         {"initialize", kInitialize},
};
/** The daemon also reports a state by its number. */
inline constexpr Word kReportedNumbers[] = {{"0", kAdjusting}, {"1", kStop}, {"2", 2},
                                            {"3", 3},          {"4", 4},     {"5", kTimeoutError}};

/** How the focus is adjusted: by the day/night logic, or with the filter and the picture held in one mode. */
enum Mode : int32_t { kSelect, kDay, kNight, kInitPos };
inline constexpr Word kModes[] = {{"select", kSelect}, {"day", kDay}, {"night", kNight}, {"init_pos", kInitPos}};

/** Places of the cut filter. */
enum Filter : int32_t { kBlackWhite = 0, kColor = 1 };
inline constexpr Word kFilters[] = {{"night", kBlackWhite}, {"day", kColor}};
inline constexpr Word kStoredFilters[] = {
    {"night", kBlackWhite}, {"NIGHT", kBlackWhite}, {"day", kColor}, {"DAY", kColor}};

enum Direction : int32_t { kNear = 0, kFar = 1 };
inline constexpr Word kStoredDirections[] = {{"Near", kNear}, {"near", kNear}, {"NEAR", kNear}};

inline constexpr int32_t kLargestStep = 1000;
inline constexpr int32_t kLargestNightOffset = 20;

/** The rows that say that the focus has not been checked since something moved. */
inline constexpr int32_t kFirstFlag = cam_focus_row::AF_ICR_FLG;
inline constexpr int32_t kLastFlag = cam_focus_row::BAF_POS_INIT_FLG;

/** The word of a number, empty for a number without one. */
[[nodiscard]] constexpr std::string_view textOf(std::span<const Word> words, int32_t number) {
  for (const Word& word : words) {
    if (word.number == number) return word.text;
  }
  return {};
}

}  // namespace dsp::focus
