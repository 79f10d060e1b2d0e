#pragma once

#include "dsp/CameraDSP.h"
#include "dsp/CameraDspInstance.h"
#include "tree/CManBase.h"

/** The root `camera`. Owns the channel to the image DSP, which its nodes share. */
class CCameraMan : public CManBase {
 public:
  void build() override;
  void replay() override;

 private:
  // The start, in this order.
  static void m_setUpEncoders();
  void m_loadPicture();
  static void m_tellNeighbours();
  void m_loadFocus();
  void m_blackOutInitialize();
  static void m_setGpioInitDone();
  void m_replayShutters();
  void m_replayMotion();

  CameraDSP m_dsp;
  CameraDspInstance m_instance{m_dsp};
};
