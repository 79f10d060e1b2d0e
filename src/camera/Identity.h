#pragma once

#include "camera/CCameraApiBase.h"

namespace Camera {

struct CId : CCameraApiBase {};

struct CStealth : CCameraApiBase {};

struct CIdentify : CCameraApiBase {};

}  // namespace Camera
