#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>

#include "camera/CCameraApiBase.h"
#include "camera/Counter.h"
#include "dsp/Words.h"

/** The focus: what users order, and what the GPIO daemon, which drives it, reports. */
namespace Camera {

/** Takes rows of the working copy over into the stored focus table and writes its file; 0 or -500, logged. */
[[nodiscard]] int32_t saveFocus(std::initializer_list<Row> rows);

/** Starts an automatic run in mode "day", or stops it; shows the one that is on, "stop" without one. */
struct CFocus : CCameraApiBase {
  static int32_t act(Request& request);
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Selector selector{.available = has<Feature::FOCUS_CTRL>};
  static constexpr Rule rule{
      .accepts = Words{"stop", "op_auto", "op_auto_full", "op_auto_full_forced"},
      .act = act,
      .fetch = fetch,
  };

  /** A fixed mode has been entered, and "select" has not been told to the daemon yet. */
  static bool m_secondStep;
  /** Whether the day/night logic has the filter, and no fixed mode waits to be left. */
  [[nodiscard]] static bool isSelecting();

  struct CGpiofrom;
  struct CDate;
  struct CAssist;
  struct CRunCounter;
  struct CAdjustMode;
  struct CProgress;
  struct CStatus;
  struct CFinefocus;
  struct CNightfocus;
  struct CAbfPos;
};

struct CFocus::CStatus : CCameraApiBase {
  static constexpr Rule rule{
      .accepts = Text{.form = {"a state by its word or number, as the GPIO daemon reports it", "stop", "x",
                               status::kInternalError}},
      .act = toDsp<&CameraDSP::setFocusStateAf>,
      .fetch = fromDsp<&CameraDSP::getFocusStateAf>,
  };
};

/** Percent of the run. */
struct CFocus::CProgress : CCameraApiBase {
  static constexpr Rule rule{.peer = peer::gpioValue(GpioCommand::FocusProgress)};
};

struct CFocus::CRunCounter : CCameraApiBase {
  static constexpr Rule rule = counterRule<gpio::Counter::Focus>();
};

/** Leaves the filter to the day/night logic ("select"), or holds filter and picture for an adjustment. */
struct CFocus::CAdjustMode : CCameraApiBase {
  /** Refused while the lens moves; from here on the state waits for the daemon, whatever becomes of the request. */
  static int32_t beginAdjusting(const Selectors& selectors);
  static int32_t act(Request& request);
  static int32_t clearFilterFlag();
  static void leaveFixedMode();
  static constexpr Rule rule{
      .guard = {.write = {{{beginAdjusting, "while the focus is not being adjusted"}}}},
      .accepts = dsp::focus::kModes,
      .act = act,
      .fetch = fromDsp<&CameraDSP::getAFadjustmode>,
      .refusals = {{{dsp::kNotUnderstood, status::kNotUnderstood}, {dsp::kRefused, status::kPreconditionFailed}}},
  };
};

/** The statuses for what a run of the lens is refused with. */
inline constexpr Refusals kRunRefusals{
    {{dsp::kOutOfRange, status::kInvalidRange}, {dsp::kRefused, status::kPreconditionFailed}}};
/** The channel looks at the state before it looks at the range. */
inline constexpr Number kSteps{.low = INT32_MIN, .high = INT32_MAX, .steps = true};

/** Moves the lens by a step, -1000 to 1000, in mode "day"; shows its position. */
struct CFocus::CFinefocus : CCameraApiBase {
  static int32_t act(Request& request);
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{.accepts = kSteps, .act = act, .fetch = fetch, .refusals = kRunRefusals};
};

/** The offset of the focus at night, 0 to 20, in mode "night". */
struct CFocus::CNightfocus : CCameraApiBase {
  static int32_t act(Request& request);
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{.accepts = kSteps, .act = act, .fetch = fetch, .refusals = kRunRefusals};
};

/** Drives the back focus to its start, in mode "init_pos". */
struct CFocus::CAbfPos : CCameraApiBase {
  static int32_t act(Request& request);
  static constexpr Selector selector{.available = has<Feature::BACK_FOCUS_MODEL>};
  static constexpr Rule rule{.accepts = Words{"initialize"}, .act = act, .refusals = kRunRefusals};
};

/** A picture that makes focusing easier; it stands a second time at `camera.focusassist`. */
struct CFocus::CAssist : CCameraApiBase {
  struct CStatus;
};

struct CFocus::CAssist::CStatus : CCameraApiBase {
  static int32_t act(Request& request);
  static int32_t start();
  static int32_t end();
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{.accepts = dsp::words::kOffOn, .act = act, .fetch = fetch};
};

struct CFocus::CDate : CCameraApiBase {
  struct CStatus;
};

/** When the filter moved the last time that the power went before the focus could be checked. */
struct CFocus::CDate::CStatus : CCameraApiBase {
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{.fetch = fetch};
};

// ---- What the daemon reports ---------------------------------------------------------------------------------------

struct CFocus::CGpiofrom : CCameraApiBase {
  /** Rule::accepts of a place of the filter: "day" or "night", else 457. */
  static int32_t checkFilter(Request& request);
  struct CIcrStatus;
  struct CStatus;
  struct CCheckStatus;
};

/** The filter is about to move. */
struct CFocus::CGpiofrom::CCheckStatus : CCameraApiBase {
  static int32_t act(Request& request);
  static constexpr Rule rule{.accepts = Test{checkFilter, {"night or day", "night", "x", status::kInvalidRange}},
                             .act = act};
};

/** The filter has arrived. */
struct CFocus::CGpiofrom::CIcrStatus : CCameraApiBase {
  static int32_t act(Request& request);
  static constexpr Rule rule{
      .accepts = Test{checkFilter, {"night or day", "night", "x", status::kInvalidRange}},
      .act = act,
      .fetch = fromDsp<&CameraDSP::getStoredFilter>,
  };
};

/** What a run came to. */
struct CFocus::CGpiofrom::CStatus : CCameraApiBase {
  static int32_t act(Request& request);
  static constexpr Rule rule{
      .accepts = Text{.form = {"a state by its word or number, as the GPIO daemon reports it", "stop", "x",
                               status::kInvalidRange}},
      .act = act,
      .fetch = fromDsp<&CameraDSP::getFocusStateAf>,
      .refusals = {{{dsp::kNotUnderstood, status::kInvalidRange}}},
  };
};

}  // namespace Camera
