#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace sim {

/** Values of an encoder call by their names. */
using EncoderValue = std::pair<std::string, int>;
using EncoderValues = std::vector<EncoderValue>;

/**
 * One encoder behind the closed library: keeps what it was last set to, so that a start can tell what it runs with.
 * Owned by the library, which guards it with its lock.
 */
class EncoderChannel {
 public:
  /** What a call of this name set; a resolution has a width and a height, the others one value. */
  void set(std::string_view what, const EncoderValues& values);

  /** The settings that count for the channel's format, in the order in which they are told; none without a format. */
  [[nodiscard]] EncoderValues settings() const;

 private:
  std::map<std::string, int, std::less<>> m_settings;
};

}  // namespace sim
