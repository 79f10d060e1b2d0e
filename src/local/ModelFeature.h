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

  // "DAY_NIGHT", "feature DAY_NIGHT", "no feature DAY_NIGHT".
  [[nodiscard]] static constexpr std::string_view name(Feature feature) { return absence(feature).substr(11); }
  [[nodiscard]] static constexpr std::string_view text(Feature feature) { return absence(feature).substr(3); }
  [[nodiscard]] static constexpr std::string_view absence(Feature feature) {
    return kAbsences.at(static_cast<size_t>(feature));
  }

  /**
   * The features in a model file's text, lines of KEY=VALUE. The first line whose key contains the feature's name
   * decides: the feature is on when its value is "TRUE".
   */
  [[nodiscard]] static Flags parse(std::string_view text);

 private:
  ModelFeature();

  /** By number; the first has no name, and nothing turns it on. */
  static constexpr std::array<std::string_view, kCount> kAbsences = {
      "no feature ",
      "no feature ALARM_IO",
      "no feature DAY_NIGHT",
      "no feature AUDIO",
      "no feature FOCUS_CTRL",
      "no feature BACK_FOCUS_MODEL",
      "no feature LENS_MODEL",
      "no feature VP_MODEL",
      "no feature ONVIF",
      "no feature PSIA",
      "no feature SNMP",
      "no feature AMX_PROTOCOL",
      "no feature BRAND",
      "no feature NY_MODEL",
      "no feature SDCARD",
      "no feature MOTION_DETECT",
      "no feature TAMP_DETECT",
      "no feature LOCALIZATION",
      "no feature SERIAL_PASS",
  };

  Flags m_flags{};
};
