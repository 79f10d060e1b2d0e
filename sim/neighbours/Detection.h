#pragma once

#include <map>
#include <string>

#include "Bytes.h"
#include "Neighbour.h"

namespace sim {

/** The detection daemon, for motion, tampering and sound: keeps the text of each kind of setting. */
class Detection : public Neighbour {
 public:
  Detection(Loop& loop, const std::string& root);

 protected:
  [[nodiscard]] std::size_t requestSize(std::string_view bytes) const override;
  [[nodiscard]] std::string messageName(std::string_view request) const override;
  void describe(std::string_view request, Journal& line) const override;
  [[nodiscard]] std::string readable(std::string_view reply) const override { return numbersText(reply, 1); }
  [[nodiscard]] std::string answer(std::string_view request) override;
  [[nodiscard]] std::string refusal(std::string_view request, std::optional<int> number) const override;
  void show(JsonObject& state) const override;

 private:
  std::map<int, std::string> m_settings;
};

}  // namespace sim
