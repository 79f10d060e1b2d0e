#pragma once

#include <array>
#include <optional>
#include <string>

#include "Neighbour.h"

namespace sim {

/**
 * The streaming session daemon: up to 22 streams that the camera sends and one that it receives. Slots count from 1. A
 * slot in use tells its values; of a free slot every text is "-" and the bitrate "0", so that a reader can tell a free
 * slot from a stream of which something is not known.
 */
class SessionDaemon : public Neighbour {
 public:
  SessionDaemon(Loop& loop, const std::string& root);

 protected:
  [[nodiscard]] std::size_t requestSize(std::string_view bytes) const override;
  [[nodiscard]] std::string messageName(std::string_view request) const override;
  void describe(std::string_view request, Journal& line) const override;
  [[nodiscard]] std::string readable(std::string_view reply) const override;
  [[nodiscard]] std::string answer(std::string_view request) override;
  [[nodiscard]] std::string refusal(std::string_view request, std::optional<int> number) const override;
  [[nodiscard]] std::size_t framingSize() const override;
  [[nodiscard]] std::string change(const Words& words) override;
  void show(JsonObject& state) const override;

 private:
  struct Stream {
    std::string codec;
    int bitrate = 0;
    std::string protocol;
    std::string ip = "192.168.0.10";
    std::string port = "10000";
    std::string session = "rtsp";
    std::string framerate = "30";
    std::string encode = "0";
  };
  using Slot = std::optional<Stream>;

  [[nodiscard]] std::string query(int command, std::string_view request) const;
  [[nodiscard]] std::string totalBitrate() const;
  [[nodiscard]] std::string sendingCount() const;
  [[nodiscard]] std::string countOf(const std::string& codec) const;
  [[nodiscard]] const Slot& sendingSlot(int index) const;
  [[nodiscard]] static std::optional<Stream> parseStream(const Words& words);
  [[nodiscard]] std::string add(const Words& words);
  [[nodiscard]] std::string remove(const Words& words);
  [[nodiscard]] std::string receive(const Words& words);

  std::array<Slot, 22> m_sending;
  Slot m_receiving;
  const Slot m_free;
  int m_priority = 0;
  int m_reloads = 0;
  int m_onvif = 0;
};

}  // namespace sim
