#include "platform/zr_com.h"
