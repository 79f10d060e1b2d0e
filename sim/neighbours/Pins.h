#pragma once

#include <array>
#include <functional>
#include <string>
#include <utility>

namespace sim {

/**
 * The alarm pins of the camera, true while made. The GPIO daemon drives them and the recorder daemon tells their
 * levels, so both hold the one set, which the neighbourhood owns. Who must know of a change is called back.
 */
struct Pins {
  std::array<bool, 2> input{};
  std::array<bool, 2> output{};
  std::function<void(const std::string& word)> onInput;

  /** Carries out "pin1=make", "out2=break"; false for anything else. */
  [[nodiscard]] bool set(const std::string& key, const std::string& value) {
    if (value != "make" && value != "break") return false;
    const bool made = value == "make";
    if (key == "out1" || key == "out2") {
      output[key == "out2"] = made;
      return true;
    }
    if (key != "pin1" && key != "pin2") return false;
    if (std::exchange(input[key == "pin2"], made) != made && onInput) onInput(key + "=" + value);
    return true;
  }
};

}  // namespace sim
