#pragma once

#include <cstdint>
#include <string_view>

/** A frame size by its text; some sizes have two. */
struct Framesize {
  std::string_view text;
  int32_t width;
  int32_t height;

  [[nodiscard]] constexpr bool isWide() const { return width * 9 == height * 16; }
  [[nodiscard]] constexpr bool isNarrow() const { return width * 3 == height * 4; }
};

inline constexpr Framesize kFramesizes[] = {
    {"1920x1080", 1920, 1080}, {"quadvga", 1280, 960}, {"1280x960", 1280, 960}, {"1280x720", 1280, 720},
    {"vga", 640, 480},         {"640x480", 640, 480},  {"qvga", 320, 240},      {"320x240", 320, 240},
    {"640x360", 640, 360},     {"320x180", 320, 180},
};

/** The size of a text; none for another text. */
constexpr const Framesize* findFramesize(std::string_view text) {
  for (const Framesize& size : kFramesizes) {
    if (size.text == text) return &size;
  }
  return nullptr;
}
