#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "camera/CCameraApiBase.h"
#include "camera/MotionSequencer.h"
#include "config/Rows.h"
#include "tree/Leaf.h"

/**
 * Pan, tilt and zoom, the patrol and the preset positions. The sequencer moves the camera; here are the checks of the
 * values and what is kept of them. Pan and tilt are sensor positions ("s"), zoom is a factor ("x").
 */
namespace Camera {

class CMotion : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  static constexpr Words kMoves{"start", "stop"};
  static constexpr Number kSpeeds{.low = 0, .high = 100};
  class CPosition;
  class CAutoPatrol;
  class CAutoReturn;
  class CClickoncenter;
  class CPan;
  class CTilt;
  class CZoom;
  class CAbszoom;

 private:
  /** The rule of a setting that waits in the camera table for the save of the camera's settings. */
  static constexpr Rule setting(Accepts accepts, int32_t row) {
    return {
        .accepts = accepts,
        .place = {.family = Family::Camera, .row = row},
        .keeps = Keeps::Staged,
        .unchanged = Unchanged::AfterKeeping,
        .shows = {.image = Image::User},
        .answers = {.layer = "camera", .command = ".status=save"},
    };
  }
};

class CMotion::CPosition : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CSpeed;
};

class CMotion::CPosition::CSpeed : public Tells<CSpeed> {
 public:
  using Tells::Tells;
  static constexpr std::string_view path = "camera.motion.position.speed";
  static constexpr Rule rule = setting(kSpeeds, camera_row::POSITION_SPEED);
};

// ---- The patrol ----------------------------------------------------------------------------------------------------

class CMotion::CAutoPatrol : public Leaf<CMotion::CAutoPatrol, CCameraApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 0, .high = 0, .digitsOnly = true}};
  class CStatus;
  class CPosition;

 private:
  template <class Derived>
  class StepValue;
  static constexpr size_t kStepLayer = 3;
  static Cell locate(const Selectors& selectors, int32_t row);
  /** The rule of a value of a step, which waits for the save of the patrol. */
  static constexpr Rule step(Accepts accepts, int32_t row) {
    return {
        .accepts = accepts,
        .place = {.family = Family::Patrol, .row = row, .locate = locate},
        .keeps = Keeps::Staged,
        .unchanged = Unchanged::AfterKeeping,
        .shows = {.image = Image::User},
        .answers = {.layer = "camera.motion.auto_patrol(0)", .command = ".status=save"},
    };
  }
  [[nodiscard]] static int32_t tellStep(const Request& request, std::string_view item);
};

/** Starts and stops the patrol; "save" writes its steps to flash. */
class CMotion::CAutoPatrol::CStatus : public Relays<CStatus> {
 public:
  using Relays::Relays;
  static constexpr std::string_view path = "camera.motion.auto_patrol(0).status";
  static constexpr int32_t kSaved = 2;
  static constexpr Rule rule{.accepts = Words{Word{"start", 0}, Word{"stop", 1}, Word{"save", kSaved}}};
  int32_t act(Request& request);
};

/** One value of a step, told to the sequencer under the step's path with what `Derived` puts behind it. */
template <class Derived>
class CMotion::CAutoPatrol::StepValue : public Leaf<Derived, CCameraApiBase> {
 public:
  using Leaf<Derived, CCameraApiBase>::Leaf;
  int32_t act(Request& request) { return tellStep(request, Derived::item); }
};

/** The preset position that a step goes to. */
class CMotion::CAutoPatrol::CPosition : public CMotion::CAutoPatrol::StepValue<CMotion::CAutoPatrol::CPosition> {
 public:
  using StepValue::StepValue;
  static constexpr std::string_view item{};
  static constexpr Selector selector{.takes = SelectorNumber{.low = 0, .high = 19, .digitsOnly = true}};
  static constexpr Rule rule = step(Number{.low = 0, .high = 19}, patrol_row::PATROL_POSITION);
  class CDuration;
  class CSpeed;
};

/** Seconds. */
class CMotion::CAutoPatrol::CPosition::CDuration : public CMotion::CAutoPatrol::StepValue<CDuration> {
 public:
  using StepValue::StepValue;
  static constexpr std::string_view item = ".duration";
  static constexpr Rule rule = step(oneOf(0, 10, 20, 30, 45, 60, 120), patrol_row::PATROL_DURATION);
};

class CMotion::CAutoPatrol::CPosition::CSpeed : public CMotion::CAutoPatrol::StepValue<CSpeed> {
 public:
  using StepValue::StepValue;
  static int32_t checkSpeed(Request& request);
  static constexpr std::string_view item = ".speed";
  static constexpr Rule rule = step(Test{checkSpeed}, patrol_row::PATROL_SPEED);
};

// ---- The return after a time without moves -------------------------------------------------------------------------

class CMotion::CAutoReturn : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CStatus;
  class CMode;
  class CTimeout;
};

class CMotion::CAutoReturn::CStatus : public Tells<CStatus> {
 public:
  using Tells::Tells;
  static constexpr std::string_view path = "camera.motion.auto_return.status";
  static constexpr int32_t kSetting = 0;  ///< on or off
  static constexpr int32_t kMove = 1;     ///< starts or stops, and stays as it is set
  static constexpr Words words{Word{"on", kSetting}, Word{"off", kSetting}, Word{"start", kMove}, Word{"stop", kMove}};
  static constexpr Rule rule = setting(words, camera_row::RETURN_STATUS);
  int32_t act(Request& request);
};

class CMotion::CAutoReturn::CMode : public Tells<CMode> {
 public:
  using Tells::Tells;
  static constexpr std::string_view path = "camera.motion.auto_return.mode";
  static constexpr Rule rule = setting(Words{"home", "auto_patrol(0)"}, camera_row::RETURN_MODE);
};

/** Seconds. */
class CMotion::CAutoReturn::CTimeout : public Tells<CTimeout> {
 public:
  using Tells::Tells;
  static constexpr std::string_view path = "camera.motion.auto_return.timeout";
  static constexpr Rule rule = setting(oneOf(60, 120, 180, 300, 600, 1200, 1800, 3600), camera_row::RETURN_TIMEOUT);
};

// ---- Moves ---------------------------------------------------------------------------------------------------------

/** The point that becomes the middle of the picture: "s" and "s" in sensor positions, or two percentages. */
class CMotion::CClickoncenter : public Tells<CMotion::CClickoncenter> {
 public:
  using Tells::Tells;
  static int32_t checkPoint(Request& request);
  static constexpr std::string_view path = "camera.motion.clickoncenter";
  static constexpr Rule rule{.accepts = Test{checkPoint}};
};

/** "s" with a number; with "+" or "-" in front, from the present place. */
class CMotion::CPan : public Relays<CMotion::CPan> {
 public:
  using Relays::Relays;
  static int32_t checkPlace(Request& request);
  static constexpr std::string_view path = "camera.motion.pan";
  static constexpr int32_t kMost = 1918;
  static constexpr Rule rule{.accepts = Test{checkPlace}, .shows = {.prefix = "s"}};
  class CStatus;
  class CMode;
  class CSpeed;
};

class CMotion::CPan::CStatus : public Relays<CStatus> {
 public:
  using Relays::Relays;
  static constexpr std::string_view path = "camera.motion.pan.status";
  static constexpr Rule rule{.accepts = kMoves};
};

class CMotion::CPan::CMode : public Relays<CMode> {
 public:
  using Relays::Relays;
  static constexpr std::string_view path = "camera.motion.pan.mode";
  static constexpr Rule rule{.accepts = Words{"right", "left"}};
};

class CMotion::CPan::CSpeed : public Relays<CSpeed> {
 public:
  using Relays::Relays;
  static constexpr std::string_view path = "camera.motion.pan.speed";
  static constexpr Rule rule{.accepts = kSpeeds};
};

/** As pan. */
class CMotion::CTilt : public Relays<CMotion::CTilt> {
 public:
  using Relays::Relays;
  static int32_t checkPlace(Request& request);
  static constexpr std::string_view path = "camera.motion.tilt";
  static constexpr int32_t kMost = 1078;
  static constexpr Rule rule{.accepts = Test{checkPlace}, .shows = {.prefix = "s"}};
  class CStatus;
  class CMode;
  class CSpeed;
};

class CMotion::CTilt::CStatus : public Relays<CStatus> {
 public:
  using Relays::Relays;
  static constexpr std::string_view path = "camera.motion.tilt.status";
  static constexpr Rule rule{.accepts = kMoves};
};

class CMotion::CTilt::CMode : public Relays<CMode> {
 public:
  using Relays::Relays;
  static constexpr std::string_view path = "camera.motion.tilt.mode";
  static constexpr Rule rule{.accepts = Words{"down", "up"}};
};

/** A text that is no number is out of range here, unlike with its siblings. */
class CMotion::CTilt::CSpeed : public Relays<CSpeed> {
 public:
  using Relays::Relays;
  static int32_t checkSpeed(Request& request);
  static constexpr std::string_view path = "camera.motion.tilt.speed";
  static constexpr Rule rule{.accepts = Test{checkSpeed}};
};

/**
 * "x" with a factor or a percentage of the range; with "+" or "-" in front, from the present factor. The picture can be
 * enlarged only while a channel sends a small one.
 */
class CMotion::CZoom : public Relays<CMotion::CZoom> {
 public:
  using Relays::Relays;
  static int32_t needsSmallPicture(const Selectors& selectors);
  static int32_t checkFactor(Request& request);
  static constexpr std::string_view path = "camera.motion.zoom";
  static constexpr Rule rule{
      .guard = {.write = needsSmallPicture},
      .accepts = Test{checkFactor},
      .shows = {.prefix = "x"},
  };
  int32_t fetch(const Request& request, std::string& text);
  class CStatus;
  class CMode;
  class CSpeed;
};

class CMotion::CZoom::CStatus : public Relays<CStatus> {
 public:
  using Relays::Relays;
  static constexpr std::string_view path = "camera.motion.zoom.status";
  static constexpr Rule rule{.accepts = kMoves};
};

class CMotion::CZoom::CMode : public Relays<CMode> {
 public:
  using Relays::Relays;
  static constexpr std::string_view path = "camera.motion.zoom.mode";
  static constexpr Rule rule{.accepts = Words{"in", "out"}};
};

class CMotion::CZoom::CSpeed : public Relays<CSpeed> {
 public:
  using Relays::Relays;
  static constexpr std::string_view path = "camera.motion.zoom.speed";
  static constexpr Rule rule{.accepts = kSpeeds};
};

/** The zoom as a percentage of its range. */
class CMotion::CAbszoom : public Tells<CMotion::CAbszoom> {
 public:
  using Tells::Tells;
  static int32_t checkPercentage(Request& request);
  static constexpr std::string_view path = CZoom::path;
  static constexpr Rule rule{.guard = {.write = CZoom::needsSmallPicture}, .accepts = Test{checkPercentage}};
  int32_t fetch(const Request& request, std::string& text);
};

// ---- Preset positions ----------------------------------------------------------------------------------------------

/** Twenty places to go to, each with a file of its own; number 0 is the home position. */
class CPosition : public Leaf<CPosition, CCameraApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 0, .high = 19, .digitsOnly = true}};
  class CStatus;
  class CPan;
  class CTilt;
  class CZoom;
  class CComment;

 private:
  /** One position as it is stored, by row. */
  using Fields = std::array<std::string, position_row::kCount>;

  [[nodiscard]] static int32_t number(const Selectors& selectors) { return selectorNumber(selectors, 1, 0); }
  static Cell locate(const Selectors& selectors, int32_t row) { return {number(selectors), row}; }
  static constexpr Place at(int32_t row) { return {.family = Family::Position, .row = row, .locate = locate}; }

  [[nodiscard]] static Fields fields(int32_t position);
  static void setFields(Config& image, int32_t position, const Fields& fields);
  /** Makes these the position's fields and saves them; the old ones stay after a failure. 0 or -500. */
  [[nodiscard]] static int32_t change(int32_t position, const Fields& fields);
  /** Writes the live position to the stored one and its file; 0, or -1, which is logged. */
  [[nodiscard]] static int32_t m_savePositionConfig(int32_t position);
};

/** Saves the present view as the position, forgets the position, or goes to it. */
class CPosition::CStatus : public Leaf<CStatus, CCameraApiBase> {
 public:
  using Leaf::Leaf;
  static int32_t checkWord(Request& request);
  static constexpr Rule rule{
      .accepts = Test{checkWord},
      .place = at(position_row::POSITION_STATUS),
      .shows = {.image = Image::User},
  };
  int32_t act(Request& request);

 private:
  [[nodiscard]] static int32_t save(int32_t position);
  [[nodiscard]] static int32_t initialize(int32_t position);
  [[nodiscard]] static int32_t goTo(int32_t position);
};

class CPosition::CPan : public Leaf<CPan, CCameraApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Rule rule{.place = at(position_row::POSITION_PAN), .shows = {.image = Image::User, .prefix = "s"}};
};

class CPosition::CTilt : public Leaf<CTilt, CCameraApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Rule rule{.place = at(position_row::POSITION_TILT), .shows = {.image = Image::User, .prefix = "s"}};
};

class CPosition::CZoom : public Leaf<CZoom, CCameraApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Rule rule{.place = at(position_row::POSITION_ZOOM), .shows = {.image = Image::User, .prefix = "x"}};
};

/** Goes to flash at once. */
class CPosition::CComment : public Leaf<CComment, CCameraApiBase> {
 public:
  using Leaf::Leaf;
  static int32_t checkText(Request& request);
  static constexpr Rule rule{
      .accepts = Test{checkText},
      .place = at(position_row::POSITION_TITLE),
      .shows = {.image = Image::User, .escaped = true},
  };
  int32_t act(Request& request);
};

}  // namespace Camera
