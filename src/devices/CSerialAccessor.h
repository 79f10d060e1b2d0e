#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "local/FileDescriptor.h"

/** What the serial port is set to. */
struct SerialSettings {
  int32_t baud = 0;
  int32_t dataBits = 0;
  std::string parity = {};  ///< "none", "odd" or "even"
  int32_t stopBits = 0;
};

/** A connection to the serial daemon; closed at the end of its life. */
class CSerialAccessor {
 public:
  /** Connects; of the ports there is only the first, which any other number is taken for. */
  explicit CSerialAccessor(int32_t port, const std::string& path = "/tmp/serial");
  virtual ~CSerialAccessor() = default;
  CSerialAccessor(const CSerialAccessor&) = delete;
  CSerialAccessor& operator=(const CSerialAccessor&) = delete;

  /** Has the port set; 0, the negated status that the daemon refuses with, or -500. */
  [[nodiscard]] int32_t changeSettings(const SerialSettings& settings) const;

 private:
  static constexpr size_t kRequestSize = 112;
  static constexpr size_t kReplySize = 8;
  using Request = std::array<uint8_t, kRequestSize>;

  [[nodiscard]] Request makeRequest(const SerialSettings& settings) const;

  int32_t m_port;
  FileDescriptor m_socket;
};
