#pragma once

#include <string>

#include "config/Config.h"

/** The texts of the network table. */
namespace network_rows {

/** In the active image. */
[[nodiscard]] inline std::string active(network_row::Row row) { return Config::getInstance()->get(row); }
/** In the staging image, whose texts wait for the request that takes them over. */
[[nodiscard]] inline std::string staged(network_row::Row row) { return CUserConfig::getInstance()->get(row); }

/** Whether the active text is "on". */
[[nodiscard]] inline bool isOn(network_row::Row row) { return active(row) == "on"; }
/** Whether the address client is used, and brings what the option says. */
[[nodiscard]] inline bool isLeased(network_row::Row dhcpOption) {
  return isOn(network_row::IF1_DHCP) && isOn(dhcpOption);
}

}  // namespace network_rows
