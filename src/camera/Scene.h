#pragma once

#include <cstdint>
#include <string>

#include "camera/CCameraApiBase.h"
#include "config/Rows.h"
#include "dsp/CameraDSP.h"
#include "tree/Leaf.h"

namespace Camera {

/**
 * A named set of picture settings, number 0 to 7. One scene is current: its settings are in force, in the working copy,
 * and only they can be changed. The others stand in the scene table until a goto.
 */
class CScene : public Leaf<CScene, CCameraApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 0, .high = kScenes - 1, .digitsOnly = true}};
  static constexpr size_t kLayer = 1;  ///< where the scene stands among the selectors of a path
  /** Remembers the scene that the request speaks of. */
  int32_t checkAttribute(const std::string& scene, int32_t depth) override;
  class CSceneBase;
  class CImage;
  class CAutoExposure;
  class CStatus;
  class CShutter;
  class CName;
};

/** What follows every change of a scene: it is in force, and waits to be written. */
inline constexpr Hint kSaveScene{.layer = "camera.scene", .command = ".status=save", .selector = CScene::kLayer};

/** Base of the settings of a scene: finds out which scene a request speaks of. */
class CScene::CSceneBase : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  int32_t execRead(ExecArgs* args) override;
  int32_t execWrite(ExecArgs* args) override;

 protected:
  /** Read and write for one scene; results as those of execRead and execWrite, 501 by default. */
  virtual int32_t m_execSceneRead(ExecArgs& args, int32_t scene);
  virtual int32_t m_execSceneWrite(ExecArgs& args, int32_t scene);

  [[nodiscard]] static bool isCurrent(int32_t scene);
  /** A row of the camera table: of the current scene the live text, of another one the stored. */
  [[nodiscard]] static std::string sceneText(int32_t scene, int32_t row);
  /** What the detection daemon made of a value that the DSP has taken on: 0, or a negated status, which is logged. */
  [[nodiscard]] static int32_t told(int32_t result, const std::string& value);
  /** Tells the detection daemon the live exposure reference. */
  [[nodiscard]] static int32_t tellExposureReference();
};

/** The rule of a setting: what it takes, and the statuses for what the DSP refuses. */
constexpr Rule sceneRule(const Accepts& accepts, const Refusals& refusals = {}) {
  return {.accepts = accepts, .answers = kSaveScene, .refusals = refusals};
}

/**
 * One setting of a scene, kept in `Row` of the camera table. `Derived` states its rule (sceneRule) and int32_t
 * act(Request&), which hands the value to the DSP: that puts it in force and into the working copy.
 */
template <class Derived, int Row>
class SceneItem : public CScene::CSceneBase {
 public:
  using CScene::CSceneBase::CSceneBase;

 protected:
  int32_t m_execSceneRead(ExecArgs& args, int32_t scene) override {
    return RuleEngine::answerValue(*args.m_parameter, sceneText(scene, Row));
  }

  int32_t m_execSceneWrite(ExecArgs& args, int32_t scene) override {
    if (isCurrent(scene)) return m_write(args);
    return RuleEngine::answerStatus(*args.m_parameter, status::kPreconditionFailed);
  }

  int32_t m_write(ExecArgs& args) {
    static_assert(isSound(Derived::rule));
    return RuleEngine::write(Derived::rule, args, this, [](void* self, Request& request) {
      return static_cast<Derived*>(static_cast<SceneItem*>(self))->act(request);
    });
  }
};

/** A setting whose number, or the number of its word, one operation of the DSP takes, and another one its steps. */
template <class Derived, int Row, auto Set, auto Step = nullptr>
class NumberItem : public SceneItem<Derived, Row> {
 public:
  using SceneItem<Derived, Row>::SceneItem;

  int32_t act(Request& request) {
    if constexpr (Step != nullptr) {
      if (request.step != 0) return (this->m_dsp.*Step)(request.value);
    }
    return (this->m_dsp.*Set)(request.number, true);
  }
};

/** Shows a whole scene, and changes, saves or restores it. */
class CScene::CStatus : public Leaf<CScene::CStatus, CCameraApiBase> {
 public:
  using Leaf::Leaf;
  enum Command { kInitialize, kSave, kGoto };
  static constexpr Rule rule{
      .accepts = Words{Word{"initialize", kInitialize}, Word{"save", kSave}, Word{"goto", kGoto}},
      .answers = kSaveScene,
  };
  int32_t fetch(const Request& request, std::string& text);
  int32_t act(Request& request);

 private:
  [[nodiscard]] int32_t m_cameraSceneDataChange();
  [[nodiscard]] int32_t m_loadSelectedScene();
  [[nodiscard]] static int32_t m_save();
  [[nodiscard]] int32_t m_initialize();
  [[nodiscard]] int32_t m_reloadScenedata();
};

/** A mode by its name, a speed (the reciprocal of seconds), or a step to the next speed. */
class CScene::CShutter : public SceneItem<CScene::CShutter, camera_row::SHUTTER> {
 public:
  using SceneItem::SceneItem;
  static int32_t check(Request& request);
  static constexpr Rule rule = sceneRule(Test{check}, {{{dsp::kNotUnderstood, status::kInvalidRange}}});
  int32_t act(Request& request);

 protected:
  int32_t m_execSceneRead(ExecArgs& args, int32_t scene) override;
};

class CScene::CName : public CSceneBase {
 public:
  using CSceneBase::CSceneBase;

 protected:
  int32_t m_execSceneRead(ExecArgs& args, int32_t scene) override;
};

}  // namespace Camera
