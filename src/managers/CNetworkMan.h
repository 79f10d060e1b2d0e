#pragma once

#include "network/OnvifThread.h"
#include "tree/CManBase.h"

/** The root `network`, and the thread that keeps the ONVIF service running. */
class CNetworkMan : public CManBase {
 public:
  void build() override;
  void replay() override;

  /** Once the tree stands; the thread ends with this object. */
  void startNvtAplThread();

 private:
  OnvifThread m_onvifThread;
};
