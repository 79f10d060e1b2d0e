#pragma once

#include "tree/Node.h"

/** Base of all nodes of the root `network`. */
struct CNetworkApiBase : CApiBase {
 protected:
  // Programs that a camera without the service does not have.
  [[nodiscard]] static bool hasOpenssl();
  [[nodiscard]] static bool hasSnmpd();
};
