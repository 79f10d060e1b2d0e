#pragma once

#include "tree/Node.h"

/** Base of all nodes of the root `storage`. */
struct CStorageApiBase : CApiBase {};
