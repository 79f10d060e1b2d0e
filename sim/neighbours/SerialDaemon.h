#pragma once

#include <string>

#include "Bytes.h"
#include "Neighbour.h"

namespace sim {

/** The serial daemon: takes the settings of the one port and refuses what the port cannot do. */
class SerialDaemon : public Neighbour {
 public:
  SerialDaemon(Loop& loop, const std::string& root);

 protected:
  [[nodiscard]] std::size_t requestSize(std::string_view bytes) const override;
  [[nodiscard]] std::string messageName(std::string_view request) const override;
  void describe(std::string_view request, Journal& line) const override;
  [[nodiscard]] std::string readable(std::string_view reply) const override { return numbersText(reply, 2); }
  [[nodiscard]] std::string answer(std::string_view request) override;
  [[nodiscard]] std::string refusal(std::string_view request, std::optional<int> number) const override;
  void show(JsonObject& state) const override;

 private:
  int m_baud = 9600;
  int m_dataBits = 8;
  std::string m_parity = "none";
  int m_stopBits = 1;
};

}  // namespace sim
