#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "Bytes.h"

namespace sim {

/**
 * What the recorder keeps, by parameter id. The bytes of a value are kept as they came, since only the reader knows
 * whether they are a number or a text; an id never put reads as the number 0 and as an empty text.
 */
class RecorderValues {
 public:
  using Map = std::map<std::uint32_t, std::string>;

  void put(std::uint32_t id, std::string_view bytes) { m_values[id] = bytes; }

  [[nodiscard]] std::string bytes(std::uint32_t id) const {
    const auto found = m_values.find(id);
    return found == m_values.end() ? std::string(4, '\0') : found->second;
  }
  [[nodiscard]] std::int32_t number(std::uint32_t id) const { return signed32(bytes(id), 0); }
  [[nodiscard]] std::string text(std::uint32_t id) const { return textAt(bytes(id), 0); }

  [[nodiscard]] const Map& all() const { return m_values; }

 private:
  Map m_values;
};

}  // namespace sim
