#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

/** Client of the detection daemon: hands it a value of some kind. Every operation is one connection. */
class ParamPitcherDetection {
 public:
  explicit ParamPitcherDetection(std::string path = "/tmp/detection_request");

  /** Hands a text over, cut to 63 characters; 200, or -500 when the exchange failed or the daemon refused. */
  [[nodiscard]] int32_t putString(int32_t kind, const std::string& text) const;

 private:
  static constexpr size_t kMaxText = 63;
  /** The kind of the value (in a reply: 0 on success), then the text with its NUL. */
  using Packet = std::array<uint8_t, 4 + kMaxText + 1>;

  [[nodiscard]] int32_t notifyChange(Packet* packet) const;

  std::string m_path;
};
