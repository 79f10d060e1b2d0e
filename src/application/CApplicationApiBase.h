#pragma once

#include "tree/Node.h"

/** Base of all nodes of the root `application`. */
struct CApplicationApiBase : CApiBase {};
