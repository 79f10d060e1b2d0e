#pragma once

#include <array>
#include <cstddef>
#include <string_view>

/** The features that a camera model may have, under the names that the model file gives them. Number 0 has no name. */
enum class Feature : size_t {
  ALARM_IO = 1,
  DAY_NIGHT,
  AUDIO,
  FOCUS_CTRL,
  BACK_FOCUS_MODEL,
  LENS_MODEL,
  VP_MODEL,
  ONVIF,
  PSIA,
  SNMP,
  AMX_PROTOCOL,
  BRAND,
  NY_MODEL,
  SDCARD,
  MOTION_DETECT,
  TAMP_DETECT,
  LOCALIZATION,
  SERIAL_PASS,
};

/**
 * What this camera's model can do. The model file is read once, at the first question, and holds for the life of the
 * process; without the file every feature is off.
 */
class ModelFeature {
 public:
  static constexpr size_t kCount = 19;
  using Flags = std::array<bool, kCount>;

  [[nodiscard]] static bool has(Feature feature);

  /**
   * The features in a model file's text, lines of KEY=VALUE. The first line whose key contains the feature's name
   * decides: the feature is on when its value is "TRUE".
   */
  [[nodiscard]] static Flags parse(std::string_view text);

 private:
  ModelFeature();

  Flags m_flags{};
};
