#include "encode/CEncodeApiBase.h"

#include "tree/Selector.h"

int32_t CEncodeApiBase::m_getChannel(const Selectors& selectors) { return selectorNumber(selectors, 0, 1); }

Cell CEncodeApiBase::locate(const Selectors& selectors, int32_t row) { return {m_getChannel(selectors) - 1, row}; }
