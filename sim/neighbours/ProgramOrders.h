#pragma once

#include <string>

#include "Words.h"

namespace sim {

/** How the stand-ins of the camera's programs are to behave: a file for each that was told something. */
class ProgramOrders {
 public:
  /** @param prefix what stands in front of a program's name in the path of its file. */
  explicit ProgramOrders(std::string prefix) : m_prefix(std::move(prefix)) {}

  /** "NAME normal|slow|fail|nopid|hang", or "NAME show". */
  [[nodiscard]] std::string tell(const Words& words) const;

 private:
  std::string m_prefix;
};

}  // namespace sim
