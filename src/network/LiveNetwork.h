#pragma once

#include <netinet/in.h>

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

/**
 * What the kernel says about the camera's network at this moment. Texts are empty where it has nothing to say; failures
 * are logged. The readers of its tables take the table as a stream.
 */
namespace live_network {

inline constexpr const char* kPort = "eth0";

// The scope column of the kernel's table of IPv6 addresses.
inline constexpr std::string_view kScopeGlobal = "00";
inline constexpr std::string_view kScopeLink = "20";

[[nodiscard]] std::string getIpAddress(const std::string& device);
[[nodiscard]] std::string getNetmask(const std::string& device);
/** Twelve lower-case hexadecimal digits; empty for a device that is no Ethernet device. */
[[nodiscard]] std::string getMacAddress(const std::string& device);
/** Speed in megabits and duplex, such as "100full". */
[[nodiscard]] std::string getLinkSpeed(const std::string& device);
[[nodiscard]] std::string linkSpeedText(const std::string& device, uint32_t speed, uint8_t duplex);

/** The device's address number `count` of that scope, counted from 1. */
[[nodiscard]] std::string getIPv6Address(std::string_view device, int32_t count, std::string_view scope);
[[nodiscard]] std::string findIPv6Address(std::istream& table, std::string_view device, int32_t count,
                                          std::string_view scope);
/**
 * The usual short form of 32 hexadecimal digits: no leading zeros, "::" for the first of the longest runs of groups
 * that are 0, be it a single one. No part is ever shown as an IPv4 address.
 */
[[nodiscard]] std::string shortenIPv6(std::string_view digits);

/** The gateway of the first default route, 0.0.0.0 without one; none when the table cannot be read. */
[[nodiscard]] std::optional<in_addr> getDefaultGateway();
[[nodiscard]] std::optional<in_addr> findDefaultGateway(std::istream& table);

}  // namespace live_network
