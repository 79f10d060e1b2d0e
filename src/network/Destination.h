#pragma once

#include "network/CNetworkApiBase.h"
#include "network/StreamDestination.h"
#include "tree/Commit.h"
#include "tree/Node.h"

/** The fixed multicast streams: their values wait for a save, their senders are started and stopped. */
namespace Network {

/** Place::locate: the row of the destination that the path speaks of; the rule names the first one's. */
template <network_row::Row stream_destination::Rows::*Member>
Cell ofDestination(const Selectors& selectors, Row /*first*/) {
  return {stream_destination::rows(selectorNumber(selectors, 1, 1)).*Member};
}

constexpr Rule stagedForDestination(const Accepts& accepts, const Place& place, Unchanged unchanged) {
  return {
      .accepts = accepts,
      .place = place,
      .keeps = Keeps::Staged,
      .unchanged = unchanged,
      .answers = {.layer = "network.destination", .command = ".status=save", .selector = 1, .byDefault = "1"},
  };
}

struct CDestination : CNetworkApiBase {
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 5}, .without = "1"};
  struct CHost;
  struct CPort;
  struct CFramerate;
  struct CProtocol;
  struct CEncodeCh;
  struct CInterface;
  struct CUserdata;
  struct CStatus;
};

/** A multicast address of either kind. */
struct CDestination::CHost : CNetworkApiBase {
  static int32_t isMulticast(Request& request);
  static constexpr Rule rule = stagedForDestination(
      Test{isMulticast, {"a multicast address of IPv4 or IPv6", "239.1.2.3 ff15::1", "192.168.7.20 x"}},
      {network_row::DEST1_HOST, ofDestination<&stream_destination::Rows::host>}, Unchanged::BeforeTest);
};

struct CDestination::CPort : CNetworkApiBase {
  static constexpr Rule rule = stagedForDestination(
      Number{.low = 1, .high = 65535}, {network_row::DEST1_PORT, ofDestination<&stream_destination::Rows::port>},
      Unchanged::AfterTest);
};

/** Pictures per second; -n is one picture every n seconds. */
struct CDestination::CFramerate : CNetworkApiBase {
  static int32_t sendsPictures(const Selectors& selectors);
  static int32_t isRate(Request& request);
  static constexpr Rule rule = [] {
    Rule staged = stagedForDestination(
        Test{isRate, {"frames a second, up to 30, or -k for one every k seconds, down to -30", "10 -5 29.97", "x"}},
        {network_row::DEST1_FRAMERATE, ofDestination<&stream_destination::Rows::framerate>}, Unchanged::AfterTest);
    staged.guard.access = {sendsPictures, "for the destinations of pictures, 1 to 3"};
    return staged;
  }();
};

struct CDestination::CProtocol : CNetworkApiBase {
  static constexpr Rule rule{.accepts = Words{"udp"}, .shows = {.fixed = "udp"}};
};

struct CDestination::CEncodeCh : CNetworkApiBase {
  static constexpr Rule rule{.accepts = Number{.low = 1, .high = 1}, .shows = {.fixed = "1"}};
};

struct CDestination::CInterface : CNetworkApiBase {
  static constexpr Rule rule{.accepts = Number{.low = 1, .high = 1}, .shows = {.fixed = "1"}};
};

/** One setting for all. */
struct CDestination::CUserdata : CNetworkApiBase {
  static constexpr Rule rule =
      stagedForDestination(Words{"on", "off"}, network_row::DEST_USERDATA, Unchanged::AfterKeeping);
};

inline constexpr Row kDestinationRows[] = {
    network_row::DEST1_HOST,      network_row::DEST2_HOST,      network_row::DEST3_HOST,
    network_row::DEST4_HOST,      network_row::DEST5_HOST,      network_row::DEST1_PORT,
    network_row::DEST2_PORT,      network_row::DEST3_PORT,      network_row::DEST4_PORT,
    network_row::DEST5_PORT,      network_row::DEST1_FRAMERATE, network_row::DEST2_FRAMERATE,
    network_row::DEST3_FRAMERATE, network_row::DEST_USERDATA,
};
inline constexpr Commit kDestinationsCommit{.rows = kDestinationRows};

/** Whether the stream is sent; "save" takes over what waits for any of the destinations, and touches no sender. */
struct CDestination::CStatus : CNetworkApiBase {
  static int32_t start(Request& request);
  static int32_t stop(Request& request);
  static int32_t state(const Request& request, std::string& text);
  static constexpr Rule rule{.commands = {{{"save", takeOver<kDestinationsCommit>}, {"start", start}, {"stop", stop}}},
                             .place = {network_row::DEST1, ofDestination<&stream_destination::Rows::status>},
                             .fetch = state};

  /** What "start" and "stop" have done is answered as a value. */
  int32_t execWrite(ExecArgs* args) override;

 private:
  [[nodiscard]] static int32_t checkBandwidth(int32_t number);
  [[nodiscard]] static int32_t m_restartDestd(int32_t number);
  [[nodiscard]] static int32_t m_startDestd(int32_t number);
};

}  // namespace Network
