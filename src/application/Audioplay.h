#pragma once

#include <cstdint>
#include <string>

#include "application/CApplicationApiBase.h"
#include "config/Rows.h"

namespace Application {

/** An alarm clip that the camera can play (AudioClip.h). */
struct CAudioplay : CApplicationApiBase {
  static constexpr size_t kLayer = 1;
  static constexpr Selector selector{.available = has<Feature::AUDIO>,
                                     .empty = status::kNotValidForResource,
                                     .takes = SelectorNumber{.low = 1, .high = 5}};
  struct CStatus;
  struct CName;
  struct CTime;
};

/** Shows whether there is a clip. Whether one that is to be played is there, the library finds out. */
struct CAudioplay::CStatus : CApplicationApiBase {
  static int32_t remove(Request& request);
  static int32_t play(Request& request);
  static int32_t stop(Request& request);
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{
      .commands = {{{"delete", remove}, {"play", play}, {"stop", stop}}},
      .fetch = fetch,
  };
};

struct CAudioplay::CName : CApplicationApiBase {
  static Cell locate(const Selectors& selectors, Row row);
  static int32_t act(Request& request);
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{
      .accepts = Text{.most = 128, .wrongLength = status::kUriTooLong, .escapes = Escapes::DecodedPlus},
      .place = {application_row::APPLICATION_AUDIO_FILENAME_1, locate},
      .act = act,
      .fetch = fetch,
      .keeps = Keeps::ByAct,
      .shows = {.escaped = true},
  };
};

struct CAudioplay::CTime : CApplicationApiBase {
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{.fetch = fetch};
};

}  // namespace Application
