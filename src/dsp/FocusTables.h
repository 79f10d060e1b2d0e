#pragma once

#include <cstdint>

#include "config/Rows.h"
#include "service/Words.h"

/** The focus drive as the camera sees it; its motor, the cut filter and their moves belong to the GPIO daemon. */
namespace dsp::focus {

enum State : int32_t {
  kAdjusting = 0,  ///< the daemon moves the lens
  kStop = 1,
  kTimeoutError = 5,  ///< the last of the errors with which a run can end
  kReady = 98,
  kInitialize = 99,  ///< waiting for the daemon
};
inline constexpr Words kStates{Word{"adjusting", kAdjusting}, Word{"stop", kStop},
                               Word{"HIGH_LIGHT_ERROR", 2},   Word{"LOW_LIGHT_ERROR", 3},
                               Word{"OBJECT_ERROR", 4},       Word{"TIMEOUT_ERROR", kTimeoutError},
                               Word{"ready", kReady},         Word{"initialize", kInitialize}};
/** The daemon also reports a state by its number. */
inline constexpr Words kReportedNumbers{"0", "1", "2", "3", "4", "5"};

/** How the focus is adjusted: by the day/night logic, or with the filter and the picture held in one mode. */
enum Mode : int32_t { kSelect, kDay, kNight, kInitPos };
inline constexpr Words kModes{"select", "day", "night", "init_pos"};

/** Places of the cut filter. */
enum Filter : int32_t { kBlackWhite = 0, kColor = 1 };
inline constexpr Words kFilters{"night", "day"};
inline constexpr Words kStoredFilters{Word{"night", kBlackWhite}, Word{"NIGHT", kBlackWhite}, Word{"day", kColor},
                                      Word{"DAY", kColor}};

enum Direction : int32_t { kNear = 0, kFar = 1 };
inline constexpr Words kStoredDirections{Word{"Near", kNear}, Word{"near", kNear}, Word{"NEAR", kNear}};

inline constexpr int32_t kLargestStep = 1000;
inline constexpr int32_t kLargestNightOffset = 20;

/** The rows that say that the focus has not been checked since something moved. */
inline constexpr int32_t kFirstFlag = cam_focus_row::AF_ICR_FLG;
inline constexpr int32_t kLastFlag = cam_focus_row::BAF_POS_INIT_FLG;

}  // namespace dsp::focus
