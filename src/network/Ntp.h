#pragma once

#include <cstdint>

#include "network/CNetworkApiBase.h"
#include "network/NtpClient.h"
#include "tree/Node.h"

/** The time client: how often it asks which server. All is staged until `network.ntp.status=restart`. */
namespace Network {

struct CNtp : CNetworkApiBase {
  struct CInterval;
  struct CUnit;
  struct CStatus;
  struct CHost;
};

/** Counted in units; what is too long for the unit is cut when it is taken over. */
struct CNtp::CInterval : CNetworkApiBase {
  static constexpr Rule rule = staged(Number{.low = 1, .high = 60}, network_row::NTP_INTERVAL, kNtpHint);
};

struct CNtp::CUnit : CNetworkApiBase {
  static constexpr Rule rule = staged(Words{"min", "hour", "day"}, network_row::NTP_UNIT, kNtpHint);
};

/** "restart" with nothing staged lets the client synchronise at once. */
struct CNtp::CStatus : CNetworkApiBase {
  static constexpr Rule rule =
      staged(Words{"on", "off"}, network_row::NTP, kNtpHint, nullptr, {"restart", ntp_client::restart});
};

/** An address or a name; a read shows the server that the address client brought. */
struct CNtp::CHost : CNetworkApiBase {
  static int32_t checkHost(Request& request);
  static constexpr Rule rule =
      staged(Test{checkHost,
                  {"an IPv4 address or a name of up to 63 characters; %00 for none",
                   "192.168.7.20 pool.example.org %00", "224.0.0.1"}},
             network_row::NTP_HOST, kNtpHint, leased<network_row::IF1_DHCP_NTP, ntp_client::fetchServer>);
};

}  // namespace Network
