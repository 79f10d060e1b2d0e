#pragma once

#include <map>
#include <string>

#include "Words.h"

namespace sim {

/**
 * The file of orders that the stand-in of the closed library reads. It is written as a whole and put in its place at
 * once, so that the library never sees half of it.
 */
class DspOrders {
 public:
  explicit DspOrders(std::string path) : m_path(std::move(path)) {}

  /** "key=value…" adds orders, "key=" takes one back, "clear" all, "show" gives them as JSON. */
  [[nodiscard]] std::string tell(const Words& words);

 private:
  [[nodiscard]] bool write() const;

  std::string m_path;
  std::map<std::string, std::string> m_orders;
};

}  // namespace sim
