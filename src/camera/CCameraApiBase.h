#pragma once

#include <concepts>
#include <cstdint>
#include <string>

#include "dsp/CameraDSP.h"
#include "dsp/CameraDspInstance.h"
#include "tree/Node.h"

/**
 * Base of all nodes of the root `camera`: which scene is which, and the saves of the camera-wide settings. The live
 * picture is the working copy (CUserConfig); a save copies it to the stored tables and their files. Results: 0, or -1
 * after a failure, which is logged.
 */
struct CCameraApiBase : CApiBase {
  static constexpr int32_t kScenes = 8;
  static constexpr int32_t kPatrolSteps = 20;

  /** Makes the stored current scene the one that the working copy holds and that requests without an index mean. */
  static void m_setCurrentSceneid();

  /** Writes the live picture into the scene last selected, and that scene's file, or with `all` those of all scenes. */
  [[nodiscard]] static int32_t m_saveSceneConfig(bool all);
  /** Writes the live camera settings and the patrol; without `all`, the scene last selected becomes the current one. */
  [[nodiscard]] static int32_t m_saveCameraConfig(bool all);

  /** Writes the live patrol to the stored one and its file. */
  [[nodiscard]] static int32_t m_savePatrolConfig();

  /** Whether an encoder runs faster than noise reduction and motion detection can follow. */
  [[nodiscard]] static bool isHighRate();
  /** Guard: 412 at such a rate. */
  [[nodiscard]] static int32_t notAtHighRate(const Selectors& selectors);
  static constexpr Condition kNotAtHighRate{notAtHighRate, "while no encoder runs at a high rate"};
  /** The stored current scene, as its text. */
  [[nodiscard]] static std::string currentScene();

  /** Day/night switching with a cut filter, or a model that shows its easy day/night setting in that place. */
  [[nodiscard]] static bool hasTrueDaynight();

  // One camera, one picture: the scene ids are those of all nodes.
  static int32_t m_currentSceneId;   ///< the scene that the working copy holds
  static int32_t m_selectedSceneId;  ///< the index of the last request for a scene
  static bool m_sceneLocked;         ///< a save of a scene is refused
};

/** What follows a change of the settings of the camera as a whole: it is in force, and waits to be written. */
inline constexpr Hint kSaveCamera{.layer = "camera", .command = ".status=save", .brings = Brings::ToFlash};

/** Number::snap of a number that is kept in its decimal form: "7" for "007". */
constexpr int32_t inDecimals(int32_t number) { return number; }

/**
 * Rule::act that hands the number of a value, or its text, to one operation of the DSP, and a step to another. The DSP
 * puts an accepted value in force and into the working copy.
 */
template <auto Set, auto Step = nullptr>
int32_t toDsp(Request& request) {
  if constexpr (Step != nullptr) {
    if (request.step != 0) return (cameraDsp().*Step)(request.value);
  }
  if constexpr (requires { (cameraDsp().*Set)(request.value, true); }) {
    return (cameraDsp().*Set)(request.value, true);
  } else if constexpr (requires { (cameraDsp().*Set)(request.number, true); }) {
    return (cameraDsp().*Set)(request.number, true);
  } else if constexpr (requires { (cameraDsp().*Set)(request.value); }) {
    return (cameraDsp().*Set)(request.value);
  } else {
    return (cameraDsp().*Set)(request.number);
  }
}

/** Rule::fetch of what the channel to the DSP tells: a text, or a number, which refuses below 0. */
template <auto Get>
int32_t fromDsp(const Request& /*request*/, std::string& text) {
  if constexpr (requires { (cameraDsp().*Get)(text); }) {
    return (cameraDsp().*Get)(text);
  } else if constexpr (std::integral<decltype((cameraDsp().*Get)())>) {
    const auto number = static_cast<int32_t>((cameraDsp().*Get)());
    text = std::to_string(number);
    return number < 0 ? number : 0;
  } else {
    text = (cameraDsp().*Get)();
    return 0;
  }
}
