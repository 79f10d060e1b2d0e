#include "encode/CEncodeApiBase.h"

int32_t CEncodeApiBase::m_getChannel(const Selectors& selectors) { return selectorNumber(selectors, 0, 1); }
