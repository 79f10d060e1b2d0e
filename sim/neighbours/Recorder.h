#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "Bytes.h"
#include "EventRules.h"
#include "Neighbour.h"
#include "Pins.h"
#include "RecorderValues.h"

namespace sim {

/**
 * The recorder and event daemon: keeps what it is told by parameter id, so that a read gives it back, answers for the
 * alarm pins and runs the event rules. Passwords that it is told show as asterisks in the journal and in its state.
 */
class Recorder : public Neighbour {
 public:
  Recorder(Loop& loop, const std::string& root, Pins& pins);

 protected:
  [[nodiscard]] std::size_t requestSize(std::string_view bytes) const override;
  [[nodiscard]] std::string messageName(std::string_view request) const override;
  [[nodiscard]] std::string recorded(std::string_view request) const override;
  void describe(std::string_view request, Journal& line) const override;
  [[nodiscard]] std::string readable(std::string_view reply) const override { return numbersText(reply, 4); }
  [[nodiscard]] std::string answer(std::string_view request) override;
  [[nodiscard]] std::string refusal(std::string_view request, std::optional<int> number) const override;
  [[nodiscard]] bool set(const std::string& key, const std::string& value) override;
  void show(JsonObject& state) const override;

 private:
  [[nodiscard]] std::string valueOf(std::uint32_t id) const;
  void put(std::uint32_t id, std::string_view value);
  [[nodiscard]] bool* pinOf(std::uint32_t id) const;

  Pins& m_pins;
  RecorderValues m_values;
  EventRules m_rules;
  int m_status = 0;
  std::string m_model;
  std::map<std::string, bool> m_leds;
  std::string m_imageMode;
  int m_lastRestart = 0;
};

}  // namespace sim
