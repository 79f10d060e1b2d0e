#pragma once

#include <cstdint>
#include <string>

#include "camera/CCameraApiBase.h"
#include "dsp/DetectionSet.h"

namespace Camera {

/** Motion detection, and with the selector "tampering" tamper detection. Values go through DetectionSet. */
struct CDetection : CCameraApiBase {
  static constexpr Selector selector{.takes = SelectorWord{.words = Words{"motion", "tampering"}}, .without = "motion"};
  static constexpr Hint kSave{.layer = "camera.detection", .command = ".status=save", .brings = Brings::ToFlash};

  [[nodiscard]] static bool isTampering(const Selectors& selectors) { return selectors[1] == "tampering"; }
  // For what the other kind of detection does not have: 0 or -461.
  [[nodiscard]] static int32_t onlyMotion(const Selectors& selectors);
  [[nodiscard]] static int32_t onlyTampering(const Selectors& selectors);

  /** Place::locate of a row that tampering has a row of its own for. */
  template <camera_row::Row OfTampering>
  static Cell locate(const Selectors& selectors, Row row) {
    return {isTampering(selectors) ? Row(OfTampering) : row};
  }

  struct CStatus;
  struct CArea;
  struct CLevel;
  struct CTemporal;
  struct CAreaCount;
};

/**
 * On, off, and what happens to the settings of detection: "save" writes them to flash with those of the camera,
 * "restore" goes back to the stored ones. Motion detection is off while an encoder runs at a high rate.
 */
struct CDetection::CStatus : CCameraApiBase {
  static int32_t refuseHighRate(const Selectors& selectors);
  static int32_t save(Request& request);
  static int32_t restore(Request& request);
  static int32_t act(Request& request);
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{
      .guard = {.write = {{{refuseHighRate, "while no encoder runs at a high rate"}}}},
      .accepts = Words{"off", "on"},
      .commands = {{{"save", save}, {"restore", restore}}},
      .place = {camera_row::DETECT_STATUS, locate<camera_row::TAMP_DETECT_STATUS>},
      .act = act,
      .fetch = fetch,
      .answers = kSave,
  };
};

/** Rule::act that hands a value's number, or its text, to one operation of DetectionSet. */
template <auto Set>
int32_t toDetection(Request& request) {
  if constexpr (requires { (DetectionSet().*Set)(request.value); }) {
    return (DetectionSet().*Set)(request.value);
  } else {
    return (DetectionSet().*Set)(request.number);
  }
}

/** 34 hexadecimal digits, a bit for each field of the picture. */
struct CDetection::CArea : CCameraApiBase {
  static constexpr Rule rule{
      .guard = {.access = {onlyMotion, "for motion"}},
      .accepts =
          Text{.most = 34, .least = 34, .form = {"34 hexadecimal digits", "0123456789abcdef0123456789abcdef01", "x"}},
      .place = camera_row::DETECT_AREA,
      .act = toDetection<&DetectionSet::setArea>,
      .shows = {.image = Image::User},
      .answers = kSave,
      .refusals = {{{-2, status::kNotUnderstood}}},
  };
};

struct CDetection::CLevel : CCameraApiBase {
  static int32_t act(Request& request);
  static constexpr Rule rule{
      .accepts = Number{.low = 0, .high = 100},
      .place = {camera_row::DETECT_LEVEL, locate<camera_row::TAMP_DETECT_LEVEL>},
      .act = act,
      .shows = {.image = Image::User},
      .answers = kSave,
  };
};

/** How many seconds a picture must be tampered with. */
struct CDetection::CTemporal : CCameraApiBase {
  static constexpr Rule rule{
      .guard = {.access = {onlyTampering, "for tampering"}},
      .accepts = Number{.low = 5, .high = 120},
      .place = camera_row::TAMP_DETECT_TEMPO,
      .act = toDetection<&DetectionSet::setTemporalTamp>,
      .shows = {.image = Image::User},
      .answers = kSave,
  };
};

/** How many fields an area has. */
struct CDetection::CAreaCount : CCameraApiBase {
  static constexpr Rule rule{.guard = {.access = {onlyMotion, "for motion"}}, .shows = {.fixed = "80"}};
};

}  // namespace Camera
