#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "network/LiveNetwork.h"
#include "service/NetworkRows.h"
#include "tree/Node.h"

// Forms of what the tests below take.
inline constexpr Form kHostAddress{"an IPv4 address of a host", "192.168.0.20", "300.1.1.1 0.0.0.0 x"};
inline constexpr Form kAddressOrNone{"an IPv4 address of a host, or 0.0.0.0 for none", "192.168.0.1 0.0.0.0",
                                     "300.1.1.1 x"};
inline constexpr Form kName{"a name of up to 63 letters, digits, - and .; %00 for none", "camera-2 %00", "a_b a/b"};

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
  /** A mask of 8 to 30 ones. */
  static int32_t checkNetmask(Request& request);
  /** A host's or a domain's name; "%00" is none. */
  static int32_t checkName(Request& request);
};

namespace Network {

// What a client is told to send next.
inline constexpr Hint kInterfaceHint{.layer = "network.interface(1)", .command = ".status=restart"};
inline constexpr Hint kDnsHint{.layer = "network.dns", .command = ".status=restart"};
inline constexpr Hint kNtpHint{.layer = "network.ntp", .command = ".status=restart"};

/** Rule::fetch of what the Ethernet port has; 500 where it has none. */
template <std::string (*get)(const std::string& device)>
int32_t ofPort(const Request& /*request*/, std::string& text) {
  text = get(live_network::kPort);
  return text.empty() ? -status::kInternalError : 0;
}

/** Rule::fetch of what the address client brings while the option says so; the stored text otherwise. */
template <network_row::Row option, Fetch live>
int32_t leased(const Request& request, std::string& text) {
  return network_rows::isLeased(option) ? live(request, text) : kShowStored;
}

/** Place::locate: the row of the list that a selector counts from 0; the rule names the first. */
template <const auto& rows, size_t Layer>
Cell rowOf(const Selectors& selectors, Row /*first*/) {
  return {rows.at(static_cast<size_t>(selectorNumber(selectors, Layer, 0)))};
}

/** Place::locate: the row of the list that a selector counts from 1; the rule names the first, the others follow it. */
template <size_t Layer>
Cell nthRow(const Selectors& selectors, Row first) {
  return {Row(first.family, first.number + selectorNumber(selectors, Layer, 1) - 1)};
}

/** Place::locate: another row than the rule's where a selector is the word. */
template <size_t Layer, const std::string_view& word, network_row::Row other>
Cell rowOfWord(const Selectors& selectors, Row otherwise) {
  return {selectors.at(Layer) == word ? Row(other) : otherwise};
}

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
