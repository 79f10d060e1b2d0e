#pragma once

#include <netinet/in.h>
#include <sys/types.h>

#include <cstdint>
#include <string>

/**
 * The network nodes' toolbox: IPv4 addresses as text and number, the rules for addresses and names, and daemons found
 * by their pid files. Stateless. Addresses as numbers are in network order; failures are logged.
 */
class CTmxdNetworkUtility {
 public:
  // Addresses and names (CTmxdNetworkUtility.cpp).
  /** The dotted text; empty on failure. */
  [[nodiscard]] static std::string Inet_ntop(const in_addr* address);
  /** -1 on failure, which is also 255.255.255.255: whoever must tell them apart asks parseAddress. */
  [[nodiscard]] static in_addr_t Inet_pton(const std::string& text);
  /** 1 with the address when the text is a dotted one, 0 when it is not, below 0 when the conversion failed. */
  [[nodiscard]] static int32_t parseAddress(const std::string& text, in_addr* address);
  /** 0 when a host may have the address: class A, B or C without the ends of each, nor the nets 0 and 127; else -1. */
  [[nodiscard]] static int32_t checkHostAddress(in_addr address);
  /** 0 for a mask of 8 to 30 ones in front of zeros, else -1. */
  [[nodiscard]] static int32_t checkNetmask(in_addr mask);
  /** 0 when the gateway is 0.0.0.0, or another host of the subnet that the address and its mask make; else -1. */
  [[nodiscard]] static int32_t checkGateway(const std::string& address, const std::string& mask,
                                            const std::string& gateway);
  /** 0 when the text is empty or a name; -1 for a character other than a letter, a digit, "." and "-", -2 above 63. */
  [[nodiscard]] static int32_t checkName(const std::string& name);

  // Daemons (Daemon.cpp).
  /** The pid in the file: 0 without a file, -1 when the file holds none. */
  [[nodiscard]] static pid_t readPid(const std::string& pidFile);
  /**
   * Ends the daemon and waits for that, at most five seconds and a bit. 0 when it is gone or never ran, -1 without a
   * pid in the file, -2 when it could not be signalled, -3 when it lives on.
   */
  [[nodiscard]] static int32_t stopDaemon(const std::string& pidFile);
  /** Polls every 10 milliseconds: 0 when the process has gone, -1 for a pid below 1, -2 when it is still there. */
  [[nodiscard]] static int32_t waitForExit(pid_t pid, int32_t attempts);
  /** Polls every 10 microseconds: 0 when the file can be opened, else -1. */
  [[nodiscard]] static int32_t waitForFile(const char* path, int32_t attempts);
};
