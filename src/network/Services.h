#pragma once

#include "network/CNetworkApiBase.h"
#include "service/Daemon.h"
#include "tree/Commit.h"
#include "tree/Node.h"

/**
 * The services that are switched on and off, and the list of who may have streams. A row holds the wish; the fact is a
 * process that its pid file names.
 */
namespace Network {

// ---- RTSP ----------------------------------------------------------------------------------------------------------

/** Commit::apply: stops the server, and starts it where it is to run. */
int32_t restartRtspd(Request& request);
inline constexpr Row kRtspRows[] = {network_row::RTSP_CONFIG_PORT, network_row::RTSP_SERVER_STATUS};
inline constexpr Commit kRtspCommit{.rows = kRtspRows, .apply = restartRtspd};
inline constexpr Hint kRestartRtsp{.layer = "network.rtsp(configuration)", .command = ".status=restart"};

struct CRtsp : CNetworkApiBase {
  static constexpr Selector selector{.takes = SelectorWord{.words = Words{"configuration"}},
                                     .without = "configuration"};
  struct CStatus;
  struct CPort;
};

struct CRtsp::CStatus : CNetworkApiBase {
  static constexpr Rule rule{
      .accepts = Words{"on", "off"},
      .commands = {{{.word = "restart", .run = takeOver<kRtspCommit>, .stops = "the streams by RTSP"}}},
      .place = network_row::RTSP_SERVER_STATUS,
      .keeps = Keeps::Staged,
      .unchanged = Unchanged::AfterKeeping,
      .answers = kRestartRtsp,
  };
};

struct CRtsp::CPort : CNetworkApiBase {
  static constexpr Rule rule{
      .accepts = Number{.low = 1, .high = 65535},
      .place = network_row::RTSP_CONFIG_PORT,
      .keeps = Keeps::Staged,
      .unchanged = Unchanged::AfterTest,
      .answers = kRestartRtsp,
  };
};

// ---- ONVIF ---------------------------------------------------------------------------------------------------------

struct COnvif : CNetworkApiBase {
  static constexpr Selector selector{.available = has<Feature::ONVIF>};
  struct CQuality;
  struct CStatus;
  struct CComment;
  struct CMetadata;
};

/** The service itself is started and watched by a thread of its own (OnvifThread.h). */
struct COnvif::CStatus : CNetworkApiBase {
  static int32_t turn(Request& request);
  static constexpr Rule rule{
      .accepts = Words{"on", "off"}, .place = network_row::ONVIF_SERVER_STATUS, .act = turn, .keeps = Keeps::ByAct};

 private:
  [[nodiscard]] static int32_t turnOn();
  [[nodiscard]] static int32_t turnOff();
};

struct COnvif::CComment : CNetworkApiBase {
  static constexpr Rule rule{.accepts = Text{}, .place = network_row::ONVIF_COMMENT, .keeps = Keeps::WriteThrough};
};

struct COnvif::CQuality : CNetworkApiBase {
  struct CPriority;
};

/** What the service gives up first, for each kind of stream. */
struct COnvif::CQuality::CPriority : CNetworkApiBase {
  static constexpr std::string_view kH264 = "h264";
  static constexpr Selector selector{.empty = status::kNotUnderstood,
                                     .takes = SelectorWord{.words = Words{"jpeg", "h264"}}};
  static constexpr Rule rule{.accepts = Words{"bitrate", "quality"},
                             .place = {network_row::ONVIF_QUALITY_PRIORITY_JPEG,
                                       rowOfWord<3, kH264, network_row::ONVIF_QUALITY_PRIORITY_H264>},
                             .keeps = Keeps::WriteThrough};
};

struct COnvif::CMetadata : CNetworkApiBase {
  static constexpr Selector selector{.empty = status::kNotUnderstood,
                                     .takes = SelectorWord{.words = Words{"MotionDetectionEvent"}}};
  static constexpr Rule rule{.accepts = Words{"on", "off"},
                             .place = network_row::ONVIF_METADATA_MOTION_DETECTION_EVENT,
                             .keeps = Keeps::WriteThrough};
};

// ---- PSIA, SNMP, beacon --------------------------------------------------------------------------------------------

/** Rule::act: the daemon is stopped, and with "on" started. */
template <const Service& (*daemon)()>
int32_t run(Request& request) {
  const int32_t stopped = daemon().stop();
  return request.value == "off" || stopped < 0 ? stopped : daemon().start();
}

/** A service whose process follows the value: `follow` starts or stops it before the value is kept. */
constexpr Rule serviceSwitch(network_row::Row row, Act follow = nullptr, Unchanged unchanged = Unchanged::IsWritten) {
  return {
      .accepts = Words{"on", "off"}, .place = row, .act = follow, .keeps = Keeps::WriteThrough, .unchanged = unchanged};
}

struct CPsia : CNetworkApiBase {
  static constexpr Selector selector{.available = has<Feature::PSIA>};
  struct CStatus;
};

/** Another program reads it from the file. */
struct CPsia::CStatus : CNetworkApiBase {
  static constexpr Rule rule = serviceSwitch(network_row::PSIA_SERVER_STATUS);
};

struct CSnmpAgent : CNetworkApiBase {
  static constexpr Selector selector{.available = {hasSnmpd, "/bin/snmpd"}};
  struct CStatus;
};

const Service& snmpd();

struct CSnmpAgent::CStatus : CNetworkApiBase {
  static constexpr Rule rule = serviceSwitch(network_row::SNMP_AGENT_STATUS, run<snmpd>);
};

struct CAmxBeacon : CNetworkApiBase {
  static constexpr Selector selector{.available = has<Feature::AMX_PROTOCOL>};
  struct CStatus;
};

struct CAmxBeacon::CStatus : CNetworkApiBase {
  static int32_t restart(Request& request);
  static int32_t turn(Request& request);
  static constexpr Rule rule = [] {
    Rule beacon = serviceSwitch(network_row::AMX_BEACON_SERVER, turn, Unchanged::AfterTest);
    beacon.commands = {{{"restart", restart}}};
    return beacon;
  }();

 private:
  [[nodiscard]] static int32_t m_restartAMXBeacond();
};

// ---- Access list ---------------------------------------------------------------------------------------------------

struct CAccessControl : CNetworkApiBase {
  static constexpr Selector selector{.takes = SelectorWord{.words = Words{"stream_out"}}, .without = "stream_out"};
  struct CLogic;
  struct CHost;
};

/** Whether the hosts of the list are the ones that may have streams, or those that may not. */
struct CAccessControl::CLogic : CNetworkApiBase {
  static constexpr Rule rule{
      .accepts = Words{"allow", "deny"}, .place = network_row::AC_CTRL_LOGIC, .keeps = Keeps::WriteThrough};
};

/** "%00" takes the entry out of the list. */
struct CAccessControl::CHost : CNetworkApiBase {
  static int32_t isHost(Request& request);
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 10}, .without = "1"};
  static constexpr Rule rule{.accepts = Test{isHost,
                                             {"an IPv4 address, with /BITS a network; %00 for none",
                                              "192.168.7.20 192.168.0.0/16 %00", "300.1.1.1 x"}},
                             .place = {network_row::AC_CTRL_HOST1, nthRow<2>},
                             .keeps = Keeps::WriteThrough};
};

}  // namespace Network
