#include "managers/CEncodeMan.h"

#include "encode/Range.h"
#include "encode/Status.h"
#include "encode/Values.h"

void CEncodeMan::build() {
  add<Encode::CType>("type", "RWRWR-");
  add<Encode::CQuality>("quality", "RWRWR-");
  add<Encode::CBitrate>("bitrate", "RWRWR-");
  add<Encode::CIframeinterval>("iframeinterval", "RWRWR-");
  add<Encode::CCbrMode>("cbr_mode", "RWRWR-");
  add<Encode::CFramerate>("framerate", "RWRWR-");
  add<Encode::CFramesize>("framesize", "RWRWR-");
  add<Encode::CStatus>("status", "RWRWR-");
  add<Encode::CSource>("source", "R-R-R-");

  add<Encode::CRange>("range");
  add<Encode::CRange::CQuality>("range.quality", "R-R-R-");
  add<Encode::CRange::CFramesize>("range.framesize", "R-R-R-");
  add<Encode::CRange::CFramerate>("range.framerate", "R-R-R-");
  add<Encode::CRange::CBitrate>("range.bitrate", "R-R-R-");
  add<Encode::CRange::CIframeinterval>("range.iframeinterval", "R-R-R-");
  add<Encode::CRange::CFramerateLimit>("range.framerate_limit", "RWR-R-");
  add<Encode::CRange::CIframeintervalLimit>("range.iframeinterval_limit", "RWR-R-");
}
