#pragma once

#include <cstdint>

#include "camera/CCameraApiBase.h"
#include "tree/Leaf.h"

namespace Camera {

/** Writes all live camera settings with all scenes, or throws the changes since the last save away. */
class CStatus : public Leaf<CStatus, CCameraApiBase> {
 public:
  using Leaf::Leaf;
  enum Command { kSave, kRestore };
  static constexpr Rule rule{.accepts = Words{Word{"save", kSave}, Word{"restore", kRestore}}};
  int32_t act(Request& request);

 private:
  [[nodiscard]] static int32_t m_save();
  [[nodiscard]] int32_t m_restore();
};

}  // namespace Camera
