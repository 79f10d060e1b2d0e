#pragma once

#include "network/CNetworkApiBase.h"
#include "tree/Node.h"

namespace Network {

struct CRtsp : CNetworkApiBase {
  static constexpr Selector selector{.takes = SelectorWord{.words = Words{"configuration"}}};
  struct CStatus;
  struct CPort;
};

struct CRtsp::CStatus : CNetworkApiBase {};

struct CRtsp::CPort : CNetworkApiBase {};

struct COnvif : CNetworkApiBase {
  static constexpr Selector selector{.available = has<Feature::ONVIF>};
  struct CQuality;
  struct CStatus;
  struct CComment;
  struct CMetadata;
};

struct COnvif::CQuality : CNetworkApiBase {
  struct CPriority;
};

struct COnvif::CQuality::CPriority : CNetworkApiBase {
  static constexpr Selector selector{.empty = status::kNotUnderstood,
                                     .takes = SelectorWord{.words = Words{"jpeg", "h264"}}};
};

struct COnvif::CStatus : CNetworkApiBase {};

struct COnvif::CComment : CNetworkApiBase {};

struct COnvif::CMetadata : CNetworkApiBase {
  static constexpr Selector selector{.empty = status::kNotUnderstood,
                                     .takes = SelectorWord{.words = Words{"MotionDetectionEvent"}}};
};

struct CPsia : CNetworkApiBase {
  static constexpr Selector selector{.available = has<Feature::PSIA>};
  struct CStatus;
};

struct CPsia::CStatus : CNetworkApiBase {};

struct CSnmpAgent : CNetworkApiBase {
  static constexpr Selector selector{.available = hasSnmpd};
  struct CStatus;
};

struct CSnmpAgent::CStatus : CNetworkApiBase {};

struct CAmxBeacon : CNetworkApiBase {
  static constexpr Selector selector{.available = has<Feature::AMX_PROTOCOL>};
  struct CStatus;
};

struct CAmxBeacon::CStatus : CNetworkApiBase {};

struct CAccessControl : CNetworkApiBase {
  static constexpr Selector selector{.takes = SelectorWord{.words = Words{"stream_out"}}};
  struct CLogic;
  struct CHost;
};

struct CAccessControl::CLogic : CNetworkApiBase {};

struct CAccessControl::CHost : CNetworkApiBase {
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 10}};
};

}  // namespace Network
