#pragma once

#include <string>

#include "Words.h"

namespace sim {

/**
 * The address server of the camera's network: the lease that it gives lies in a file, where the address client's
 * stand-in finds it at its next start.
 */
class AddressServer {
 public:
  explicit AddressServer(std::string path) : m_path(std::move(path)) {}

  /** "lease ADDRESS key=value…" is the lease from now on, "silent" gives none, "usual" the built-in one. */
  [[nodiscard]] std::string tell(const Words& words) const;

 private:
  std::string m_path;
};

}  // namespace sim
