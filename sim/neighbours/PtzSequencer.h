#pragma once

#include <array>
#include <optional>
#include <string>

#include "Neighbour.h"

namespace sim {

/**
 * The PTZ sequencer: pan, tilt and zoom with their steady moves, twenty presets, one patrol, auto return. Time is made
 * up for when a message or a look at the state comes in, so nothing runs between them. A write answers "OK", a read the
 * bare value, and a text that means nothing "ERROR".
 */
class PtzSequencer : public Neighbour {
 public:
  PtzSequencer(Loop& loop, const std::string& root);

 protected:
  [[nodiscard]] std::size_t requestSize(std::string_view bytes) const override { return bytes.size(); }
  [[nodiscard]] std::string messageName(std::string_view request) const override;
  void describe(std::string_view request, Journal& line) const override;
  [[nodiscard]] std::string readable(std::string_view reply) const override { return std::string(reply); }
  [[nodiscard]] std::string answer(std::string_view request) override;
  [[nodiscard]] std::string refusal(std::string_view request, std::optional<int> number) const override;
  [[nodiscard]] bool set(const std::string& key, const std::string& value) override;
  void show(JsonObject& state) const override;

 private:
  using Time = Loop::Clock::time_point;

  /** Where the camera looks: pan and tilt in sensor positions, zoom as a factor. */
  struct View {
    double pan = 0;
    double tilt = 0;
    double zoom = 1;
  };

  /** One direction of movement: its steady move, if it is under way, and the settings of that. */
  struct Axis {
    std::string name;
    std::string forward;
    std::string backward;
    double View::*place;
    double lowest;
    double highest;
    /** Way per second at speed 100. */
    double fullSpeed;
    std::string mode = forward;
    int speed = 50;
    bool moving = false;
  };

  struct AxisItem {
    std::size_t axis;
    std::string item;
  };

  struct Step {
    int position = 0;
    double seconds = 0;
    double speed = 0;
  };

  /** A time that was told to stand still is the last one that was asked for. */
  [[nodiscard]] Time now() const { return m_timeStands ? m_lastUpdate : Loop::Clock::now(); }
  void advance();
  void advancePatrol(Time now);
  [[nodiscard]] std::optional<std::string> read(const std::string& path) const;
  [[nodiscard]] bool write(const std::string& path, const std::string& value);
  [[nodiscard]] std::optional<std::string> readAxis(const Axis& axis, const std::string& item) const;
  [[nodiscard]] bool writeAxis(Axis& axis, const std::string& item, const std::string& value);
  [[nodiscard]] bool writeReturn(const std::string& item, const std::string& value);
  [[nodiscard]] bool writePatrol(const std::string& path, const std::string& value);
  [[nodiscard]] bool writePosition(const std::string& path, const std::string& value);
  [[nodiscard]] bool centre(const std::string& value);
  void startPatrol();
  void stopMoves();
  [[nodiscard]] std::optional<AxisItem> axisItem(const std::string& path) const;

  View m_view;
  std::array<Axis, 3> m_axes;
  std::array<std::optional<View>, 20> m_positions;
  int m_positionSpeed = 100;

  std::array<Step, 20> m_patrol{};
  bool m_patrolling = false;
  std::size_t m_step = 0;
  Time m_stepEnd;

  bool m_returns = false;
  std::string m_returnMode = "home";
  int m_returnSeconds = 60;

  bool m_timeStands = false;
  Time m_lastUpdate = Loop::Clock::now();
  Time m_lastMove = m_lastUpdate;
};

}  // namespace sim
