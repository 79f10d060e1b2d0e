#pragma once

#include "tree/CManBase.h"

/** The root `audio`. */
class CAudioMan : public CManBase {
 public:
  void build() override;
  void replay() override;
  [[nodiscard]] const Selector* getSelector() const override { return &selector; }

 private:
  static constexpr Selector selector{.available = has<Feature::AUDIO>};
};
