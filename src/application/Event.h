#pragma once

#include <cstdint>

#include "application/CApplicationApiBase.h"
#include "config/Rows.h"

namespace Application {

/**
 * A rule of the recorder's: what happens when its trigger does, and at which hours of which day. The recorder hears of
 * each change at once; the trigger and the action wait for the restart of their rule, and nothing else writes its file.
 */
struct CEvent : CApplicationApiBase {
  static constexpr size_t kLayer = 1;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 10}, .without = "1"};
  struct CFilter;
  struct CStatus;
  struct CTrigger;
  struct CAction;
};

inline constexpr Hint kRestartEvent{
    .layer = "application.event", .command = ".status=restart", .selector = CEvent::kLayer};

/** Of what the recorder has heard and follows already. */
inline constexpr Hint kStoreEvent = [] {
  Hint hint = kRestartEvent;
  hint.brings = Brings::ToFlash;
  return hint;
}();
/** Of the switch of the rule, whose answer does not name it. */
inline constexpr Hint kStoreEventSilently = [] {
  Hint hint = kStoreEvent;
  hint.isTold = false;
  return hint;
}();

/** What the recorder adds to an id for the rule of a path. */
[[nodiscard]] uint32_t ofEvent(const Selectors& selectors);

/** Words for the recorder's numbers of a switch. */
inline constexpr Words kOffOn{"off", "on"};

struct CEvent::CStatus : CApplicationApiBase {
  static int32_t restart(Request& request);
  static constexpr Rule rule{
      .accepts = kOffOn,
      .commands = {{{"restart", restart}}},
      .place = {event_row::EVENT_STATUS, tableOf<kLayer, 1>},
      .peer = peer::recorderNumber(0x210100, ofEvent),
      .keeps = Keeps::ConfigInMemory,
      .answers = kStoreEventSilently,
  };
};

struct CEvent::CTrigger : CApplicationApiBase {
  static constexpr Rule rule{
      .accepts = Text{},
      .place = {event_row::EVENT_TRIGGER, tableOf<kLayer, 1>},
      .peer = peer::recorderText(0x210200, ofEvent),
      .keeps = Keeps::Staged,
      .answers = kRestartEvent,
  };
};

struct CEvent::CAction : CApplicationApiBase {
  static constexpr Rule rule{
      .accepts = Text{.escapes = Escapes::DecodedPlus},
      .place = {event_row::EVENT_ACTION, tableOf<kLayer, 1>},
      .peer = peer::recorderText(0x210300, ofEvent),
      .keeps = Keeps::Staged,
      .shows = {.escaped = true},
      .answers = kRestartEvent,
  };
};

// ---- The filter of a day -------------------------------------------------------------------------------------------

struct CEvent::CFilter : CApplicationApiBase {
  static constexpr size_t kLayer = 2;
  static constexpr Words days{Word{"sunday", 1},   Word{"monday", 2}, Word{"tuesday", 3}, Word{"wednesday", 4},
                              Word{"thursday", 5}, Word{"friday", 6}, Word{"saturday", 7}};
  static constexpr Selector selector{.empty = status::kNotUnderstood,
                                     .takes = SelectorWord{.words = days, .anyCase = true}};
  struct CStatus;
  struct CType;
  struct CTime;
};

/** What the recorder adds to an id for the rule and the day of a path. */
[[nodiscard]] uint32_t ofDay(const Selectors& selectors);
/** The cell of that day, from the row of sunday. */
[[nodiscard]] Cell inDay(const Selectors& selectors, Row row);

/** The rule of a filter's word, which the recorder hears as a number. */
constexpr Rule filterItem(const Words& words, event_row::Row sunday, uint32_t id) {
  return {
      .accepts = words,
      .place = {sunday, inDay},
      .peer = peer::recorderNumber(id, ofDay),
      .keeps = Keeps::InMemory,
      .answers = kStoreEvent,
  };
}

struct CEvent::CFilter::CStatus : CApplicationApiBase {
  static constexpr Rule rule = filterItem(kOffOn, event_row::FILTER_STATUS1, 0x210401);
};

struct CEvent::CFilter::CType : CApplicationApiBase {
  static constexpr Rule rule = filterItem(Words{Word{"mask", 1}, Word{"unmask", 2}}, event_row::FILTER_TYPE1, 0x210402);
};

/** "HHMMSS-HHMMSS": the seconds of its day between which the filter holds. */
struct CEvent::CFilter::CTime : CApplicationApiBase {
  static int32_t check(Request& request);
  static int32_t act(Request& request);
  static constexpr Rule rule{
      .accepts = Test{check, {"HHMMSS-HHMMSS, the beginning not behind the end", "080000-180000", "240000-250000 x"}},
      .place = {event_row::FILTER_TIME1, inDay},
      .act = act,
      .keeps = Keeps::InMemory,
      .answers = kStoreEvent,
  };
};

}  // namespace Application
