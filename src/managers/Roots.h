#pragma once

#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "managers/CNetworkMan.h"
#include "tree/CManBase.h"

/** The eleven roots of the tree with all below them. */
class Roots {
 public:
  /** Makes each manager and hands it to `begin` before the next, in the order in which later ones rely on earlier. */
  explicit Roots(void (*begin)(CManBase& manager));
  ~Roots();
  Roots(const Roots&) = delete;
  Roots& operator=(const Roots&) = delete;

  using Names = std::vector<std::pair<CManBase*, std::string_view>>;
  /** The managers by the first layer of a path, two of them also by a short name; searched front to back. */
  [[nodiscard]] const Names& names() const { return m_names; }
  [[nodiscard]] CNetworkMan& network() const { return *m_network; }

 private:
  std::vector<std::unique_ptr<CManBase>> m_managers;  ///< in the order of creation
  CNetworkMan* m_network = nullptr;                   ///< one of them
  Names m_names;
};
