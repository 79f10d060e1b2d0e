#pragma once

#include "tree/CManBase.h"

/** The root `encode`. */
class CEncodeMan : public CManBase {
 public:
  void build() override;
  [[nodiscard]] const Selector* getSelector() const override { return &selector; }

 private:
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 3}, .without = "1"};
};
