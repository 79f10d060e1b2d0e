#pragma once

#include <array>
#include <cstdint>

// The microphone's gain: a client's number is put to a step of the codec, and each step has a value of its register.

/** The step that stands for the automatic gain control. */
inline constexpr int32_t kAutomaticGain = -1;

/** The step for a client's number. */
[[nodiscard]] constexpr int32_t gainStep(int32_t gain) {
  if (gain < 10) return 0;
  if (gain < 23) return 20;
  return gain < 29 ? 26 : 32;
}

/** The register's value for a step; that of the automatic gain control for any number that is none. */
[[nodiscard]] constexpr int32_t gainRegister(int32_t step) {
  struct Entry {
    int32_t step;
    int32_t value;
  };
  constexpr std::array<Entry, 5> kEntries = {{{0, 8}, {20, 0}, {26, 1}, {32, 2}, {38, 3}}};
  constexpr int32_t kAutomatic = 12;
  for (const Entry& entry : kEntries) {
    if (entry.step == step) return entry.value;
  }
  return kAutomatic;
}
