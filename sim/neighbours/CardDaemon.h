#pragma once

#include <string>

#include "Neighbour.h"

namespace sim {

/**
 * The recording daemon that owns the memory card: card state, initialising, mounting, and the marker files by which it
 * shows that it records and what went wrong.
 */
class CardDaemon : public Neighbour {
 public:
  CardDaemon(Loop& loop, const std::string& root);

 protected:
  [[nodiscard]] std::size_t requestSize(std::string_view bytes) const override;
  [[nodiscard]] std::string messageName(std::string_view request) const override;
  void describe(std::string_view request, Journal& line) const override;
  [[nodiscard]] std::string readable(std::string_view reply) const override;
  [[nodiscard]] std::string answer(std::string_view request) override;
  [[nodiscard]] std::string refusal(std::string_view request, std::optional<int> number) const override;
  [[nodiscard]] bool set(const std::string& key, const std::string& value) override;
  void show(JsonObject& state) const override;

 private:
  enum class Card { empty, readOnly, on, full, broken };
  enum class Initialised { off, no, yes };

  [[nodiscard]] bool initialise();
  void insert(Card card);
  void mark(std::string_view file, bool present) const;
  [[nodiscard]] bool setMark(std::string_view file, const std::string& value) const;
  [[nodiscard]] bool isMarked(const std::string& file) const;

  std::string m_root;
  std::string m_folder;
  Card m_card = Card::on;
  Initialised m_initialised = Initialised::yes;
  bool m_mounted = true;
  int m_runMilliseconds = 300;
  unsigned m_run = 0;
};

}  // namespace sim
