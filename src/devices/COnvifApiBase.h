#pragma once

#include "tree/Node.h"

/** Base of all nodes of the root `onvif`. */
struct COnvifApiBase : CApiBase {};
