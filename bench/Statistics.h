#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

/** The middle of a set of samples, and the quarter of them on each side of it. */
struct Spread {
  double low = 0;
  double median = 0;
  double high = 0;
};

/** @param samples at least one. */
[[nodiscard]] Spread spreadOf(std::vector<double> samples);

/** What one block of work took. */
struct Cost {
  double wall = 0;       ///< seconds for one repetition
  double processor = 0;  ///< seconds of the server's processor time for one repetition; 0 where nobody counts it
};

/** Does its work the given number of times. A negative wall time says that it could not. */
using Work = std::function<Cost(int repetitions)>;

/** Two works done in turns: their costs, and how often the subject's is the floor's. */
struct Comparison {
  bool isDone = false;
  Spread wall;       ///< of the subject, seconds
  Spread floorWall;  ///< of the floor, seconds
  Spread ratio;
  Spread processorRatio;
  bool hasProcessor = false;
};

/**
 * Runs the two works in turns, so that what else the machine does meets both, and takes the ratio of each turn. The
 * one that begins alternates too.
 */
[[nodiscard]] Comparison compare(const Work& subject, const Work& floor, int turns, int repetitions);

/** A time in the unit that suits it. */
[[nodiscard]] std::string timeText(double seconds);

}  // namespace bench
