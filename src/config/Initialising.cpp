#include "config/Initialising.h"

#include <utility>

#include "config/Config.h"

namespace {

bool isRaised = false;

void setInhibit(bool inhibit) {
  Config::getInstance()->setWriteInhibit(inhibit ? 1 : 0);
  CUserConfig::getInstance()->setWriteInhibit(inhibit ? 1 : 0);
}

}  // namespace

bool isInitialising() { return isRaised; }

InitialisingGuard::InitialisingGuard() : m_before(std::exchange(isRaised, true)) { setInhibit(true); }

InitialisingGuard::~InitialisingGuard() {
  isRaised = m_before;
  setInhibit(m_before);
}
