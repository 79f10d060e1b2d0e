#include "bench/Statistics.h"

#include <algorithm>
#include <cstdio>

namespace bench {

Spread spreadOf(std::vector<double> samples) {
  std::sort(samples.begin(), samples.end());
  const std::size_t last = samples.size() - 1;
  return {samples[last / 4], samples[samples.size() / 2], samples[last - last / 4]};
}

Comparison compare(const Work& subject, const Work& floor, int turns, int repetitions) {
  std::vector<double> walls;
  std::vector<double> floorWalls;
  std::vector<double> ratios;
  std::vector<double> processorRatios;
  // The first turn fills the caches and does not count.
  for (int turn = -1; turn < turns; ++turn) {
    Cost own;
    Cost bare;
    if (turn % 2 == 0) own = subject(repetitions);
    bare = floor(repetitions);
    if (turn % 2 != 0) own = subject(repetitions);
    if (own.wall < 0 || bare.wall < 0) return {};
    if (turn < 0) continue;
    walls.push_back(own.wall);
    floorWalls.push_back(bare.wall);
    ratios.push_back(own.wall / bare.wall);
    if (own.processor > 0 && bare.processor > 0) processorRatios.push_back(own.processor / bare.processor);
  }
  Comparison result;
  result.isDone = true;
  result.wall = spreadOf(std::move(walls));
  result.floorWall = spreadOf(std::move(floorWalls));
  result.ratio = spreadOf(std::move(ratios));
  result.hasProcessor = !processorRatios.empty();
  if (result.hasProcessor) result.processorRatio = spreadOf(std::move(processorRatios));
  return result;
}

std::string timeText(double seconds) {
  const char* unit = seconds < 1e-3 ? "us" : seconds < 1 ? "ms" : "s";
  const double scaled = seconds < 1e-3 ? seconds * 1e6 : seconds < 1 ? seconds * 1e3 : seconds;
  char text[32];
  std::snprintf(text, sizeof text, "%.1f %s", scaled, unit);
  return text;
}

}  // namespace bench
