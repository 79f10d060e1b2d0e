#pragma once

#include <cstdint>
#include <string>

#include "camera/CCameraApiBase.h"
#include "config/Rows.h"
#include "dsp/DetectionSet.h"

namespace Camera {

/**
 * A named set of picture settings, number 0 to 7. One scene is current: its settings are in force, in the working copy,
 * and only they can be changed. The others stand in the scene table until a goto.
 */
struct CScene : CCameraApiBase {
  static void remember(const std::string& scene);
  static constexpr size_t kLayer = 1;  ///< where the scene stands among the selectors of a path
  static constexpr Selector selector{
      .takes = SelectorNumber{.low = 0, .high = kScenes - 1, .digitsOnly = true},
      .selects = remember,  // what follows without an index means this scene, whoever asks
      .without = "the scene that was named last"};
  struct CImage;
  struct CAutoExposure;
  struct CStatus;
  struct CShutter;
  struct CName;
};

/** What follows every change of a scene: it is in force, and waits to be written. */
inline constexpr Hint kSaveScene{
    .layer = "camera.scene", .command = ".status=save", .selector = CScene::kLayer, .brings = Brings::ToFlash};

// The settings of a scene. Guards: 0, or the status for a stored current scene that is none; 412 for a scene that is
// not current. The place: a row of the camera table is of the current scene's working copy, or another one's table.
[[nodiscard]] int32_t isScene(const Selectors& selectors);
[[nodiscard]] int32_t isCurrentScene(const Selectors& selectors);
[[nodiscard]] Cell inScene(const Selectors& selectors, Row row);
inline constexpr Condition kScene{isScene, "while a scene is in force"};
inline constexpr Condition kCurrentScene{isCurrentScene, "for the scene in force"};
inline constexpr Guard kOfCurrentScene{.access = kScene, .write = {{kCurrentScene}}};

/** The rule of a setting: what it takes, what brings it into force, and the statuses for what the DSP refuses. */
constexpr Rule sceneItem(camera_row::Row row, const Accepts& accepts, Act act, const Refusals& refusals = {}) {
  return {
      .guard = kOfCurrentScene,
      .accepts = accepts,
      .place = {row, inScene},
      .act = act,
      .answers = kSaveScene,
      .refusals = refusals,
  };
}

/** Writes its result to the log where the detection daemon did not take a value that the DSP has taken on. */
[[nodiscard]] int32_t told(int32_t result, const std::string& value);

/**
 * Rule::act that hands a value to the DSP, and then, unless it was a step, to tamper detection. dsp::kUnchanged is a
 * value that was in force already.
 */
static_assert(dsp::kUnchanged == kNothingWaits);
template <auto Set, auto Tell, auto Step = nullptr>
int32_t toDspAndDetection(Request& request) {
  const int32_t result = toDsp<Set, Step>(request);
  if (result < 0 || request.step != 0) return result;
  const int32_t refused = told((DetectionSet().*Tell)(request.value, true), request.value);
  return refused < 0 ? refused : result;
}

/** Shows a whole scene, and changes, saves or restores it. */
struct CScene::CStatus : CCameraApiBase {
  static int32_t fetch(const Request& request, std::string& text);
  static int32_t goTo(Request& request);
  static int32_t save(Request& request);
  static int32_t initialize(Request& request);
  static constexpr Rule rule{
      .commands = {{{"goto", goTo}, {"save", save}, {"initialize", initialize}}},
      .fetch = fetch,
      .answers = kSaveScene,
  };
};

/** A mode by its name, a speed (the reciprocal of seconds), or a step to the next speed. */
struct CScene::CShutter : CCameraApiBase {
  static int32_t check(Request& request);
  static int32_t act(Request& request);
  static int32_t fetch(const Request& request, std::string& text);
  /** A shutter without a name or a speed is answered with a "=" in front of the 500. */
  int32_t execRead(ExecArgs* args) override;
  static constexpr Rule rule{
      .guard = kOfCurrentScene,
      .accepts = Test{check,
                      {"auto, a text with auto in it, flickerless, a speed of the ladder in 1/s, + or -",
                       "flickerless auto", "x"}},
      .place = {camera_row::SHUTTER, inScene},
      .act = act,
      .fetch = fetch,
      .answers = kSaveScene,
      .refusals = {{{dsp::kNotUnderstood, status::kInvalidRange}}},
  };
};

struct CScene::CName : CCameraApiBase {
  static constexpr Rule rule{.guard = {.access = kScene}, .place = {scene_row::COMMENT2, inScene}};
};

}  // namespace Camera
