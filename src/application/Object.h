#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "application/CApplicationApiBase.h"
#include "config/Rows.h"

namespace Application {

/**
 * A recording job of the recorder's: the encoder it records from, at which rate, and how much around an event. Each has
 * a file of its own, written with every change.
 */
struct CObject : CApplicationApiBase {
  static constexpr size_t kLayer = 1;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 10}, .without = "1"};
  struct COverwrite;
  struct CSource;
  struct CFramesize;
  struct CFramerate;
  struct CPrerec;
  struct CPostrec;
};

/** What the recorder adds to an id for the object of a path. */
[[nodiscard]] uint32_t ofObject(const Selectors& selectors);

/** The rule of an item that the recorder hears as a number. */
constexpr Rule objectItem(const Accepts& accepts, application_row::Row row, uint32_t id, Place::Also also = nullptr) {
  return {
      .accepts = accepts,
      .place = {row, tableOf<CObject::kLayer, 1>, also},
      .peer = peer::recorderNumber(id, ofObject),
      .keeps = Keeps::ConfigOnly,
  };
}

/** "encode(2)". */
struct CObject::CSource : CApplicationApiBase {
  static int32_t check(Request& request);
  static constexpr Rule rule =
      objectItem(Test{check, {"encode(1), encode(2) or encode(3)", "encode(2) encode(1)", "x"}},
                 application_row::APPLICATION_OBJECT_SOURCE, 0x250100);
};

/** The size of the source's pictures, which cannot be set here. */
struct CObject::CFramesize : CApplicationApiBase {
  static int32_t act(Request& request);
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{
      .accepts = Text{.form = {"the frame size of the source, if it has one here", "", "x", status::kInternalError}},
      .act = act,
      .fetch = fetch};
};

/**
 * Frames a second, or -k for one every k seconds, at most as many as the encoder's. The recorder hears the rate of the
 * ladder, the row keeps the text; a read brings a rate down that the encoder no longer reaches.
 */
struct CObject::CFramerate : CApplicationApiBase {
  static int32_t check(Request& request);
  static int32_t act(Request& request);
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{
      .accepts =
          Test{check,
               {"frames a second, or -k for one every k seconds, at most as many as the source encodes", "1 -5", "x"}},
      .place = {application_row::APPLICATION_OBJECT_FRAMERATE, tableOf<kLayer, 1>},
      .act = act,
      .fetch = fetch,
      .keeps = Keeps::ConfigOnly,
  };
};

/** Seconds of recording before or behind an event; not both may be 0. */
[[nodiscard]] int32_t checkSeconds(Request& request, uint32_t id, Row other);

/** The rule of one of the two; `other` is the row of the other one. */
template <uint32_t id, application_row::Row other>
constexpr Rule secondsItem(application_row::Row row) {
  return objectItem(Test{[](Request& request) { return checkSeconds(request, id, other); },
                         {"seconds, 0 to 60; not both of them 0", "5 60", "x -1"}},
                    row, id);
}

struct CObject::CPrerec : CApplicationApiBase {
  static constexpr Rule rule =
      secondsItem<0x250200, application_row::APPLICATION_OBJECT_POSTREC>(application_row::APPLICATION_OBJECT_PREREC);
};

struct CObject::CPostrec : CApplicationApiBase {
  static constexpr Rule rule =
      secondsItem<0x250300, application_row::APPLICATION_OBJECT_PREREC>(application_row::APPLICATION_OBJECT_POSTREC);
};

struct CObject::COverwrite : CApplicationApiBase {
  struct CStatus;
  struct CPeriod;
};

/** The last three objects share one. */
struct CObject::COverwrite::CStatus : CApplicationApiBase {
  static std::vector<Cell> shared(const Selectors& selectors);
  static constexpr Rule rule =
      objectItem(Words{"off", "on"}, application_row::APPLICATION_OBJECT_OVERWRITE_STATUS, 0x250610, shared);
};

/** There is no period: always empty. */
struct CObject::COverwrite::CPeriod : CApplicationApiBase {
  static inline std::string none;
  static constexpr Rule rule{.place = &none};
};

}  // namespace Application
