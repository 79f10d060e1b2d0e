#pragma once

#include <cstdint>
#include <optional>
#include <string>

/** An entry of the access list: one host, or the hosts whose addresses begin with so many bits of this one. */
struct AccessHost {
  std::string address;
  int32_t prefix = 0;  ///< 0 for a single host

  friend bool operator==(const AccessHost&, const AccessHost&) = default;
};

/**
 * Reads "address" or "address/prefix", IPv6 where there is a ":". The prefix is 8 to 30 bits for IPv4 and 16 to 126 for
 * IPv6, and may be left out behind the "/". Empty is no host at all; nothing where the text is no entry.
 */
[[nodiscard]] std::optional<AccessHost> m_analyzeHost(const std::string& text);
