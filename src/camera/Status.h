#pragma once

#include <cstdint>

#include "camera/CCameraApiBase.h"

namespace Camera {

/** Writes all live camera settings with all scenes, or throws the changes since the last save away. */
struct CStatus : CCameraApiBase {
  static int32_t save(Request& request);
  static int32_t restore(Request& request);
  static constexpr Rule rule{.commands = {{{"save", save}, {"restore", restore}}}};
};

}  // namespace Camera
