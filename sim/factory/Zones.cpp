#include "sim/factory/Zones.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace sim {

namespace {

struct Zone {
  std::string_view file;
  std::string_view name;  ///< abbreviation of the standard time
  int minutes;            ///< east of Greenwich
};

constexpr std::array<Zone, 18> places{{{"US/Hawaii", "HST", -600},
                                       {"US/Alaska", "AKST", -540},
                                       {"US/Pacific", "PST", -480},
                                       {"US/Arizona", "MST", -420},
                                       {"US/Mountain", "MST", -420},
                                       {"US/Central", "CST", -360},
                                       {"US/East-Indiana", "EST", -300},
                                       {"US/Eastern", "EST", -300},
                                       {"Etc/UTC", "UTC", 0},
                                       {"Europe/London", "GMT", 0},
                                       {"Europe/Berlin", "CET", 60},
                                       {"Europe/Rome", "CET", 60},
                                       {"Europe/Madrid", "CET", 60},
                                       {"Europe/Paris", "CET", 60},
                                       {"CET", "CET", 60},
                                       {"EET", "EET", 120},
                                       {"Asia/Calcutta", "IST", 330},
                                       {"Japan", "JST", 540}}};

/** The zones that are a mere distance from Greenwich; half and quarter hours are among them. */
constexpr std::array<int, 36> distances{-720, -660, -600, -570, -540, -480, -420, -360, -300, -240, -210, -180,
                                        -120, -60,  60,   120,  180,  210,  240,  270,  300,  330,  345,  360,
                                        390,  420,  480,  525,  540,  570,  600,  630,  660,  690,  720,  765};

std::string bigEndian(std::int32_t number) {
  std::string bytes;
  for (int shift = 24; shift >= 0; shift -= 8)
    bytes += static_cast<char>(static_cast<std::uint32_t>(number) >> shift);
  return bytes;
}

/** Hours and minutes behind a sign; the minutes only when there are any. */
std::string distance(int minutes) {
  const int positive = std::abs(minutes);
  std::string text = (minutes < 0 ? "-" : "+") + std::to_string(positive / 60);
  if (positive % 60 != 0) text += ":" + std::to_string(positive % 60);
  return text;
}

/** One block of a zone file: no transitions, one kind of local time. */
std::string block(std::string_view name, int minutes) {
  const auto nameSize = static_cast<std::int32_t>(name.size() + 1);
  std::string data = "TZif2" + std::string(15, '\0');
  for (const std::int32_t count : {0, 0, 0, 0, 1, nameSize})
    data += bigEndian(count);
  data += bigEndian(minutes * 60) + std::string(2, '\0');
  return data.append(name) + '\0';
}

/** The rule at the end counts westwards, and the plain distances have their name in angle brackets. */
void writeZone(const Path& path, std::string_view name, int minutes) {
  const std::string rule = "<" + std::string(name) + ">" + distance(-minutes);
  writeFactoryFile(path, block(name, minutes) + block(name, minutes) + "\n" + rule + "\n");
}

std::string abbreviation(int minutes) {
  const int positive = std::abs(minutes);
  std::string text = minutes < 0 ? "-" : "+";
  for (const int part : {positive / 60, positive % 60})
    text += (part < 10 ? "0" : "") + std::to_string(part);
  return text;
}

}  // namespace

void writeZones(const Path& folder) {
  for (const Zone& place : places)
    writeZone(folder / place.file, place.name, place.minutes);
  // The file's sign is the opposite of the zone's.
  for (const int minutes : distances)
    writeZone(folder / ("Etc/GMT" + distance(-minutes)), abbreviation(minutes), minutes);
}

void writeFactoryZone(const Path& path) { writeZone(path, "JST", 540); }

}  // namespace sim
