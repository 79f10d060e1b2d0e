#pragma once

#include "system/CSystemApiBase.h"

namespace System {

struct CDate : CSystemApiBase {};

struct CTimezone : CSystemApiBase {};

}  // namespace System
