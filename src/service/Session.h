#pragma once

#include <cstdint>
#include <span>
#include <string>

/**
 * Client of the streaming session daemon: live data of the streams that the camera sends and receives. Every operation
 * is one connection and gives the daemon's text, empty when the exchange failed or brought several lines. Slots count from 1.
 */
class Session {
 public:
  explicit Session(std::string path = "/tmp/session");

  [[nodiscard]] std::string getTotalBitrate() const { return request(5); }

  [[nodiscard]] std::string getSendingCount() const { return request(6); }
  [[nodiscard]] std::string getSendingBitrate(int32_t slot) const { return request(7, slot); }
  [[nodiscard]] std::string getSendingToIp(int32_t slot) const { return request(8, slot); }
  [[nodiscard]] std::string getSendingToPort(int32_t slot) const { return request(9, slot); }
  [[nodiscard]] std::string getSendingToProtocol(int32_t slot) const { return request(10, slot); }
  [[nodiscard]] std::string getSendingToSession(int32_t slot) const { return request(11, slot); }
  [[nodiscard]] std::string getSendingFromFramerate(int32_t slot) const { return request(13, slot); }
  [[nodiscard]] std::string getSendingFromEncode(int32_t slot) const { return request(14, slot); }
  /** The encoder channel, as a number. */
  [[nodiscard]] std::string getSendingFromFramesize(int32_t slot) const { return request(15, slot); }

  [[nodiscard]] std::string getReceivingCount() const { return request(22); }
  [[nodiscard]] std::string getReceivingBitrate(int32_t slot) const { return request(23, slot); }
  [[nodiscard]] std::string getReceivingFromIp(int32_t slot) const { return request(24, slot); }
  [[nodiscard]] std::string getReceivingFromPort(int32_t slot) const { return request(25, slot); }
  [[nodiscard]] std::string getReceivingFromProtocol(int32_t slot) const { return request(26, slot); }
  [[nodiscard]] std::string getReceivingFromSession(int32_t slot) const { return request(27, slot); }
  [[nodiscard]] std::string getReceivingToDecode(int32_t slot) const { return request(30, slot); }
  [[nodiscard]] std::string getReceivingToChannel(int32_t slot) const { return request(31, slot); }

  /** Which of its clients the daemon favours: 1 the frame rate, 0 the number of clients. */
  std::string setStreamingPriority(int32_t mode) const { return request(38, mode); }
  std::string reloadStreamingPriority() const { return request(40); }
  /** ONVIF service is on (1) or off (0). */
  std::string setOnvifService(int32_t state) const { return request(43, state); }

  /** The number of sessions with a codec, "jpeg", "h264" or "mpeg4". */
  [[nodiscard]] std::string getCodecCount(const std::string& codec) const { return request(42, codec); }
  /** The number of sessions of all three codecs. */
  [[nodiscard]] std::string getSessionCount() const;

 private:
  // The commands' payloads: none, a word, or a text.
  [[nodiscard]] std::string request(uint32_t command) const;
  [[nodiscard]] std::string request(uint32_t command, int32_t index) const;
  [[nodiscard]] std::string request(uint32_t command, const std::string& text) const;
  [[nodiscard]] std::string processRequest(uint32_t command, std::span<const uint8_t> payload) const;

  std::string m_path;
};
