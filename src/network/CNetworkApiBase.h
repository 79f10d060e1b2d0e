#pragma once

#include <cstdint>

#include "tree/Node.h"

/** Base of all nodes of the root `network`. */
struct CNetworkApiBase : CApiBase {
 protected:
  // Programs that a camera without the service does not have.
  [[nodiscard]] static bool hasOpenssl();
  [[nodiscard]] static bool hasSnmpd();

  // Tests of values.
  /** An IPv4 address that a host may have. */
  static int32_t checkAddress(Request& request);
  /** The same, or 0.0.0.0, which means none. */
  static int32_t checkAddressOrNone(Request& request);
  /** A host's or a domain's name; "%00" is none. */
  static int32_t checkName(Request& request);
};

namespace Network {

// What a client is told to send next.
inline constexpr Hint kInterfaceHint{.layer = "network.interface(1)", .command = ".status=restart"};
inline constexpr Hint kDnsHint{.layer = "network.dns", .command = ".status=restart"};
inline constexpr Hint kNtpHint{.layer = "network.ntp", .command = ".status=restart"};

/** The rule of a value that is staged until the request of the hint; the active value needs no such request. */
constexpr Rule staged(const Accepts& accepts, const Place& place, const Hint& hint, Fetch fetch = nullptr,
                      const Command& command = {}) {
  return {
      .accepts = accepts,
      .commands = {command},
      .place = place,
      .fetch = fetch,
      .keeps = Keeps::Staged,
      .unchanged = Unchanged::AfterKeeping,
      .answers = hint,
  };
}

}  // namespace Network
