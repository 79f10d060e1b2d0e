#pragma once

#include "network/CNetworkApiBase.h"
#include "tree/Leaf.h"

namespace Network {

class CRtsp : public Leaf<CRtsp, CNetworkApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorWord{.words = Words{"configuration"}}};
  class CStatus;
  class CPort;
};

class CRtsp::CStatus : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CRtsp::CPort : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class COnvif : public Leaf<COnvif, CNetworkApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.available = has<Feature::ONVIF>};
  class CQuality;
  class CStatus;
  class CComment;
  class CMetadata;
};

class COnvif::CQuality : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
  class CPriority;
};

class COnvif::CQuality::CPriority : public Leaf<COnvif::CQuality::CPriority, CNetworkApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.empty = status::kNotUnderstood,
                                     .takes = SelectorWord{.words = Words{"jpeg", "h264"}}};
};

class COnvif::CStatus : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class COnvif::CComment : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class COnvif::CMetadata : public Leaf<COnvif::CMetadata, CNetworkApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.empty = status::kNotUnderstood,
                                     .takes = SelectorWord{.words = Words{"MotionDetectionEvent"}}};
};

class CPsia : public Leaf<CPsia, CNetworkApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.available = has<Feature::PSIA>};
  class CStatus;
};

class CPsia::CStatus : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CSnmpAgent : public Leaf<CSnmpAgent, CNetworkApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.available = hasSnmpd};
  class CStatus;
};

class CSnmpAgent::CStatus : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CAmxBeacon : public Leaf<CAmxBeacon, CNetworkApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.available = has<Feature::AMX_PROTOCOL>};
  class CStatus;
};

class CAmxBeacon::CStatus : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CAccessControl : public Leaf<CAccessControl, CNetworkApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorWord{.words = Words{"stream_out"}}};
  class CLogic;
  class CHost;
};

class CAccessControl::CLogic : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CAccessControl::CHost : public Leaf<CAccessControl::CHost, CNetworkApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 10}};
};

}  // namespace Network
