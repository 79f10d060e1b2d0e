#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "camera/CCameraApiBase.h"
#include "config/Rows.h"

/**
 * Pan, tilt and zoom, the patrol and the preset positions. The sequencer moves the camera; here are the checks of the
 * values and what is kept of them. Pan and tilt are sensor positions ("s"), zoom is a factor ("x").
 */
namespace Camera {

/** The rule of a setting that the sequencer hears of and that waits for a save. */
constexpr Rule motionSetting(const Accepts& accepts, const Place& place, const Peer& peer, const Hint& answers) {
  return {
      .accepts = accepts,
      .place = place,
      .peer = peer,
      .keeps = Keeps::Staged,
      .unchanged = Unchanged::AfterKeeping,
      .shows = {.image = Image::User},
      .answers = answers,
  };
}
inline constexpr Words kMoves{"start", "stop"};
inline constexpr Number kSpeeds{.low = 0, .high = 100};

struct CMotion : CCameraApiBase {
  struct CPosition;
  struct CAutoPatrol;
  struct CAutoReturn;
  struct CClickoncenter;
  struct CPan;
  struct CTilt;
  struct CZoom;
  struct CAbszoom;
};

struct CMotion::CPosition : CCameraApiBase {
  struct CSpeed;
};

struct CMotion::CPosition::CSpeed : CCameraApiBase {
  static constexpr Rule rule = motionSetting(kSpeeds, camera_row::POSITION_SPEED,
                                             peer::toSequencer("camera.motion.position.speed"), kSaveCamera);
};

// ---- The patrol ----------------------------------------------------------------------------------------------------

struct CMotion::CAutoPatrol : CCameraApiBase {
  static constexpr Selector selector{.takes = SelectorNumber{.low = 0, .high = 0, .digitsOnly = true}, .without = "0"};
  struct CStatus;
  struct CPosition;
};

/** Rule::peer: one value of a step, told to the sequencer under the step's path with `item` behind it. */
[[nodiscard]] int32_t tellPatrolStep(const Peer& peer, Request& request);
constexpr Rule patrolStep(const Accepts& accepts, patrol_row::Row row, std::string_view item) {
  constexpr size_t kStepLayer = 3;
  return motionSetting(accepts, {row, tableOf<kStepLayer, 0>}, {.tell = tellPatrolStep, .path = item},
                       {.layer = "camera.motion.auto_patrol(0)", .command = ".status=save", .brings = Brings::ToFlash});
}

/** Starts and stops the patrol; "save" writes its steps to flash. */
struct CMotion::CAutoPatrol::CStatus : CCameraApiBase {
  static int32_t save(Request& request);
  static constexpr Rule rule{.accepts = kMoves,
                             .commands = {{{"save", save}}},
                             .peer = peer::sequencer("camera.motion.auto_patrol(0).status")};
};

/** The preset position that a step goes to. */
struct CMotion::CAutoPatrol::CPosition : CCameraApiBase {
  static constexpr Selector selector{.takes = SelectorNumber{.low = 0, .high = 19, .digitsOnly = true}, .without = "0"};
  static constexpr Rule rule = patrolStep(Number{.low = 0, .high = 19}, patrol_row::PATROL_POSITION, "");
  struct CDuration;
  struct CSpeed;
};

/** Seconds. */
struct CMotion::CAutoPatrol::CPosition::CDuration : CCameraApiBase {
  static constexpr Rule rule = patrolStep(oneOf(0, 10, 20, 30, 45, 60, 120), patrol_row::PATROL_DURATION, ".duration");
};

struct CMotion::CAutoPatrol::CPosition::CSpeed : CCameraApiBase {
  static constexpr Rule rule = patrolStep(Decimal{.low = 0, .high = 100}, patrol_row::PATROL_SPEED, ".speed");
};

// ---- The return after a time without moves -------------------------------------------------------------------------

struct CMotion::CAutoReturn : CCameraApiBase {
  struct CStatus;
  struct CMode;
  struct CTimeout;
};

/** On or off; a start or a stop moves, and changes no setting. */
struct CMotion::CAutoReturn::CStatus : CCameraApiBase {
  static constexpr Rule rule{
      .accepts = Words{"on", "off"},
      .commands = {{{"start"}, {"stop"}}},
      .place = camera_row::RETURN_STATUS,
      .peer = peer::toSequencer("camera.motion.auto_return.status"),
      .keeps = Keeps::Staged,
      .unchanged = Unchanged::AfterKeeping,
      .shows = {.image = Image::User},
      .answers = kSaveCamera,
  };
};

struct CMotion::CAutoReturn::CMode : CCameraApiBase {
  static constexpr Rule rule = motionSetting(Words{"home", "auto_patrol(0)"}, camera_row::RETURN_MODE,
                                             peer::toSequencer("camera.motion.auto_return.mode"), kSaveCamera);
};

/** Seconds. */
struct CMotion::CAutoReturn::CTimeout : CCameraApiBase {
  static constexpr Rule rule =
      motionSetting(oneOf(60, 120, 180, 300, 600, 1200, 1800, 3600), camera_row::RETURN_TIMEOUT,
                    peer::toSequencer("camera.motion.auto_return.timeout"), kSaveCamera);
};

// ---- Moves ---------------------------------------------------------------------------------------------------------

/** The point that becomes the middle of the picture: "s" and "s" in sensor positions, or two percentages. */
struct CMotion::CClickoncenter : CCameraApiBase {
  static int32_t checkPoint(Request& request);
  static constexpr Rule rule{.accepts = Test{checkPoint,
                                             {"X-Y, each as s and a sensor position, or both in percent of the picture",
                                              "s10-s20 50-50", "x s1 1-2-3"}},
                             .peer = peer::toSequencer("camera.motion.clickoncenter")};
};

/** Where pan or tilt shall go: the sequencer's path, and the most that its sensor position can be. */
struct MotionAxis {
  std::string_view path;
  int32_t most;
};
inline constexpr MotionAxis kPan{"camera.motion.pan", 1918};
inline constexpr MotionAxis kTilt{"camera.motion.tilt", 1078};

[[nodiscard]] int32_t checkSensorPlace(Request& request, const MotionAxis& axis);
template <const MotionAxis& Axis>
int32_t checkPlace(Request& request) {
  return checkSensorPlace(request, Axis);
}

/** "s" with a number; with "+" or "-" in front, from the present place. */
struct CMotion::CPan : CCameraApiBase {
  static constexpr Rule rule{
      .accepts = Test{checkPlace<kPan>,
                      {"s and a sensor position, 0 to 1918; with + or - in front from the present one", "s0", "5 x",
                       status::kNotUnderstood}},
      .peer = peer::sequencer(kPan.path),
      .shows = {.prefix = "s"}};
  struct CStatus;
  struct CMode;
  struct CSpeed;
};

struct CMotion::CPan::CStatus : CCameraApiBase {
  static constexpr Rule rule{.accepts = kMoves, .peer = peer::sequencer("camera.motion.pan.status")};
};

struct CMotion::CPan::CMode : CCameraApiBase {
  static constexpr Rule rule{.accepts = Words{"right", "left"}, .peer = peer::sequencer("camera.motion.pan.mode")};
};

struct CMotion::CPan::CSpeed : CCameraApiBase {
  static constexpr Rule rule{.accepts = kSpeeds, .peer = peer::sequencer("camera.motion.pan.speed")};
};

/** As pan. */
struct CMotion::CTilt : CCameraApiBase {
  static constexpr Rule rule{
      .accepts = Test{checkPlace<kTilt>,
                      {"s and a sensor position, 0 to 1078; with + or - in front from the present one", "s0", "5 x"}},
      .peer = peer::sequencer(kTilt.path),
      .shows = {.prefix = "s"}};
  struct CStatus;
  struct CMode;
  struct CSpeed;
};

struct CMotion::CTilt::CStatus : CCameraApiBase {
  static constexpr Rule rule{.accepts = kMoves, .peer = peer::sequencer("camera.motion.tilt.status")};
};

struct CMotion::CTilt::CMode : CCameraApiBase {
  static constexpr Rule rule{.accepts = Words{"down", "up"}, .peer = peer::sequencer("camera.motion.tilt.mode")};
};

/** A text that is no number is out of range here, unlike with its siblings. */
struct CMotion::CTilt::CSpeed : CCameraApiBase {
  static constexpr Rule rule{.accepts = Number{.low = 0, .high = 100, .noNumber = status::kInvalidRange},
                             .peer = peer::sequencer("camera.motion.tilt.speed")};
};

/**
 * "x" with a factor or a percentage of the range; with "+" or "-" in front, from the present factor. The picture can be
 * enlarged only while a channel sends a small one.
 */
struct CMotion::CZoom : CCameraApiBase {
  static int32_t needsSmallPicture(const Selectors& selectors);
  static constexpr Condition kSmallPicture{needsSmallPicture, "while a channel sends vga or 640x360"};
  static int32_t checkFactor(Request& request);
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr std::string_view path = "camera.motion.zoom";
  static constexpr Rule rule{
      .guard = {.write = {{kSmallPicture}}},
      .accepts =
          Test{checkFactor,
               {"x and a factor, 1 to 8, or a percentage; with + or - in front from the present one", "x1.00", "x"}},
      .peer = peer::sequencer(path),
      .fetch = fetch,
      .shows = {.prefix = "x"},
  };
  struct CStatus;
  struct CMode;
  struct CSpeed;
};

struct CMotion::CZoom::CStatus : CCameraApiBase {
  static constexpr Rule rule{.accepts = kMoves, .peer = peer::sequencer("camera.motion.zoom.status")};
};

struct CMotion::CZoom::CMode : CCameraApiBase {
  static constexpr Rule rule{.accepts = Words{"in", "out"}, .peer = peer::sequencer("camera.motion.zoom.mode")};
};

struct CMotion::CZoom::CSpeed : CCameraApiBase {
  static constexpr Rule rule{.accepts = kSpeeds, .peer = peer::sequencer("camera.motion.zoom.speed")};
};

/** The zoom as a percentage of its range. */
struct CMotion::CAbszoom : CCameraApiBase {
  static int32_t checkPercentage(Request& request);
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{
      .guard = {.write = {{CZoom::kSmallPicture}}},
      .accepts =
          Test{checkPercentage, {"a percentage of the range; with + or - in front from the present one", "50", "x"}},
      .peer = peer::toSequencer(CZoom::path),
      .fetch = fetch,
  };
};

// ---- Preset positions ----------------------------------------------------------------------------------------------

/** Twenty places to go to, each with a file of its own; number 0 is the home position. */
struct CPosition : CCameraApiBase {
  static constexpr Selector selector{.takes = SelectorNumber{.low = 0, .high = 19, .digitsOnly = true}, .without = "0"};
  struct CStatus;
  struct CPan;
  struct CTilt;
  struct CZoom;
  struct CComment;
};

/** The rule of one text of a position as it was last saved. */
constexpr Rule positionText(position_row::Row row, std::string_view prefix) {
  return {.place = {row, tableOf<1, 0>}, .shows = {.image = Image::User, .prefix = prefix}};
}

/** Saves the present view as the position, forgets the position, or goes to it. */
struct CPosition::CStatus : CCameraApiBase {
  static int32_t checkWord(Request& request);
  static int32_t act(Request& request);
  static constexpr Rule rule{
      .accepts = Test{checkWord, {"save, initialize or goto", "save initialize goto", "x"}},
      .place = {position_row::POSITION_STATUS, tableOf<1, 0>},
      .act = act,
      .shows = {.image = Image::User},
  };
};

struct CPosition::CPan : CCameraApiBase {
  static constexpr Rule rule = positionText(position_row::POSITION_PAN, "s");
};

struct CPosition::CTilt : CCameraApiBase {
  static constexpr Rule rule = positionText(position_row::POSITION_TILT, "s");
};

struct CPosition::CZoom : CCameraApiBase {
  static constexpr Rule rule = positionText(position_row::POSITION_ZOOM, "x");
};

/** Goes to flash at once. */
struct CPosition::CComment : CCameraApiBase {
  static int32_t act(Request& request);
  static constexpr Rule rule{
      .accepts = Text{.most = 32, .wrongLength = status::kInvalidRange, .escapes = Escapes::DecodedPlus},
      .place = {position_row::POSITION_TITLE, tableOf<1, 0>},
      .act = act,
      .keeps = Keeps::ByAct,
      .shows = {.image = Image::User, .escaped = true},
  };
};

}  // namespace Camera
