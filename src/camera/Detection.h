#pragma once

#include <cstdint>
#include <string>

#include "camera/CCameraApiBase.h"
#include "tree/Leaf.h"

namespace Camera {

/** Motion detection, and with the selector "tampering" tamper detection. Values go through DetectionSet. */
class CDetection : public Leaf<CDetection, CCameraApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorWord{.words = Words{"motion", "tampering"}}};
  static constexpr Hint kSave{.layer = "camera.detection", .command = ".status=save"};

  [[nodiscard]] static bool isTampering(const Selectors& selectors) { return selectors[1] == "tampering"; }
  // For what the other kind of detection does not have: 0 or -461.
  [[nodiscard]] static int32_t onlyMotion(const Selectors& selectors);
  [[nodiscard]] static int32_t onlyTampering(const Selectors& selectors);

  class CStatus;
  class CArea;
  class CLevel;
  class CTemporal;
  class CAreaCount;
};

/**
 * On, off, and what happens to the settings of detection: "save" writes them to flash with those of the camera,
 * "restore" goes back to the stored ones. Motion detection is off while an encoder runs at a high rate.
 */
class CDetection::CStatus : public Leaf<CStatus, CCameraApiBase> {
 public:
  using Leaf::Leaf;
  static int32_t refuseHighRate(const Selectors& selectors);
  static constexpr int32_t kOff = 0;
  static constexpr int32_t kOn = 1;
  static constexpr int32_t kSaved = 2;
  static constexpr int32_t kRestored = 3;
  static constexpr Rule rule{
      .guard = {.write = refuseHighRate},
      .accepts = Words{Word{"on", kOn}, Word{"off", kOff}, Word{"save", kSaved}, Word{"restore", kRestored}},
      .answers = kSave,
  };
  int32_t fetch(const Request& request, std::string& text);
  int32_t act(Request& request);

 private:
  [[nodiscard]] static int32_t restore(bool isTampering);
};

/** 34 hexadecimal digits, a bit for each field of the picture. */
class CDetection::CArea : public Leaf<CArea, CCameraApiBase> {
 public:
  using Leaf::Leaf;
  static int32_t checkLength(Request& request);
  static constexpr Rule rule{
      .guard = {.access = onlyMotion},
      .accepts = Test{checkLength},
      .answers = kSave,
      .refusals = {{{-2, status::kNotUnderstood}}},
  };
  int32_t fetch(const Request& request, std::string& text);
  int32_t act(Request& request);
};

class CDetection::CLevel : public Leaf<CLevel, CCameraApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Rule rule{.accepts = Number{.low = 0, .high = 100}, .answers = kSave};
  int32_t fetch(const Request& request, std::string& text);
  int32_t act(Request& request);
};

/** How many seconds a picture must be tampered with. */
class CDetection::CTemporal : public Leaf<CTemporal, CCameraApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Rule rule{
      .guard = {.access = onlyTampering},
      .accepts = Number{.low = 5, .high = 120},
      .answers = kSave,
  };
  int32_t fetch(const Request& request, std::string& text);
  int32_t act(Request& request);
};

/** How many fields an area has. */
class CDetection::CAreaCount : public Leaf<CAreaCount, CCameraApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Rule rule{.guard = {.access = onlyMotion}, .shows = {.fixed = "80"}};
};

}  // namespace Camera
