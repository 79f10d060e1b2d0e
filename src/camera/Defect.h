#pragma once

#include <cstdint>
#include <string>

#include "camera/CCameraApiBase.h"
#include "dsp/Words.h"
#include "service/DefectDaemon.h"

/** The searches of the defect daemon: for pixels that are stuck, and for the fixed pattern of the sensor. */
namespace Camera {

using Search = DefectDaemon::Search;

/** Commands and fetches of either search. */
template <Search search>
int32_t startSearch(Request& /*request*/) {
  return DefectDaemon(search).startUnlessAdjusting();
}
template <Search search>
int32_t stopSearch(Request& /*request*/) {
  return DefectDaemon(search).stopIfAdjusting();
}
template <Search search>
int32_t searchStatus(const Request& /*request*/, std::string& text) {
  text = DefectDaemon(search).status();
  return 0;
}
template <Search search>
int32_t searchDetail(const Request& /*request*/, std::string& text) {
  text = DefectDaemon(search).statusDetail();
  return 0;
}

struct CDefectDetect : CCameraApiBase {
  struct CStatic;
  struct CDynamic;
};

struct CDefectDetect::CStatic : CCameraApiBase {
  // Guards: 412 while the correction of static defects is off, or is not on.
  static int32_t isNotOff(const Selectors& selectors);
  static int32_t isOn(const Selectors& selectors);
  /** Rule::fetch that asks only while the correction is on, and else shows "error". */
  template <Fetch live>
  static int32_t whileOn(const Request& request, std::string& text) {
    text = "error";
    return isOn(request.selectors) < 0 ? 0 : live(request, text);
  }
  struct CAdjust;
  struct CStatus;
  struct CAdjustDetail;
};

/** "start" starts a search, even anew; any other word stops one. */
struct CDefectDetect::CStatic::CAdjust : CCameraApiBase {
  static int32_t start(Request& request);
  static constexpr Rule rule{
      .guard = {.access = {isNotOff, "unless the correction is off"},
                .write = {{{isOn, "while the correction is on"}}}},
      .accepts = Text{.form = {"any other word stops a search"}},
      .commands = {{{"start", start}}},
      .act = stopSearch<Search::StaticDefects>,
      .fetch = whileOn<searchStatus<Search::StaticDefects>>,
  };
};

/** The stored copy alone carries the value; the working copy says "on" as soon as there was one. */
struct CDefectDetect::CStatic::CStatus : CCameraApiBase {
  static int32_t act(Request& request);
  static constexpr Rule rule{
      .accepts = dsp::words::kOffOn,
      .place = camera_row::DEFECT_DETECT,
      .act = act,
      .keeps = Keeps::ConfigInMemory,
      .unchanged = Unchanged::BeforeTest,
      .answers = kSaveCamera,
  };
};

struct CDefectDetect::CStatic::CAdjustDetail : CCameraApiBase {
  static constexpr Rule rule{.guard = {.access = {isNotOff, "unless the correction is off"}},
                             .fetch = whileOn<searchDetail<Search::StaticDefects>>};
};

struct CDefectDetect::CDynamic : CCameraApiBase {
  struct CStatus;
};

struct CDefectDetect::CDynamic::CStatus : CCameraApiBase {};

struct CFpn : CCameraApiBase {
  struct CAdjust;
  struct CAdjustDetail;
  struct CNum;
};

struct CFpn::CAdjust : CCameraApiBase {
  static constexpr Rule rule{
      .commands = {{{"start", startSearch<Search::FixedPattern>}, {"stop", stopSearch<Search::FixedPattern>}}},
      .fetch = searchStatus<Search::FixedPattern>,
  };
};

struct CFpn::CAdjustDetail : CCameraApiBase {
  static constexpr Rule rule{.fetch = searchDetail<Search::FixedPattern>};
};

/** How many places the pattern has. */
struct CFpn::CNum : CCameraApiBase {
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{.fetch = fetch};
};

}  // namespace Camera
