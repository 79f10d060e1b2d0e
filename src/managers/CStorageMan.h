#pragma once

#include "tree/CManBase.h"

/** The root `storage`. */
class CStorageMan : public CManBase {
 public:
  void build() override;
};
