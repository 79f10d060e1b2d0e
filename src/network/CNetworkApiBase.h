#pragma once

#include "tree/CApiBase.h"

/** Base of all nodes of the root `network`. */
class CNetworkApiBase : public CApiBase {
 public:
  using CApiBase::CApiBase;

 protected:
  // Programs that a camera without the service does not have.
  [[nodiscard]] static bool hasOpenssl();
  [[nodiscard]] static bool hasSnmpd();
};
