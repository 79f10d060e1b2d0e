#include "managers/CAudioMan.h"

#include "devices/AudioInput.h"
#include "devices/AudioOutput.h"

void CAudioMan::build() {
  add<Audio::CInput>("input");
  add<Audio::CInput::CHalfduplex>("input.halfduplex", "RWRWR-");
  add<Audio::CInput::CPowersupply>("input.powersupply");
  add<Audio::CInput::CPowersupply::CStatus>("input.powersupply.status", "RWRWR-");
  add<Audio::CInput::CGain>("input.gain", "RWRWR-");
  add<Audio::CInput::CDetection>("input.detection");
  add<Audio::CInput::CDetection::CStatus>("input.detection.status", "RWRWR-");
  add<Audio::CInput::CDetection::CLevel>("input.detection.level", "RWRWR-");
  add<Audio::CInput::CDetection::CTemporal>("input.detection.temporal", "RWRWR-");
  add<Audio::CInput::CLoopback>("input.loopback", "RW----");

  add<Audio::COutput>("output");
  add<Audio::COutput::CVolume>("output.volume", "RWRWR-");
}

void CAudioMan::replay() {
  m_replayStored("audio.input.powersupply.status");
  m_replayStored("audio.input.halfduplex");
  m_replayStored("audio.input.gain");
  for (const char* channel : {"audio.input.detection(1)", "audio.input.detection(2)"}) {
    for (const char* item : {".status", ".level", ".temporal"})
      m_replayStored(std::string(channel) + item);
  }
  m_replayStored("audio.output.volume");
}
