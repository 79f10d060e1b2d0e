#pragma once

#include <cstdint>
#include <string>

#include "devices/CVideoApiBase.h"
#include "tree/Leaf.h"

/** The analog video output, which can run only beside the first encoder alone. */
namespace Video {

class COutput : public CVideoApiBase {
 public:
  using CVideoApiBase::CVideoApiBase;
  class CStatus;
  class CVideoSignal;
};

/** "off" while the output cannot run, whatever is stored. The colour bar is for the moment and never stored. */
class COutput::CStatus : public Leaf<CStatus, CVideoApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Rule rule{.accepts = Words{"on", "off", "colorbar"}};
  int32_t fetch(const Request& request, std::string& text);
  int32_t act(Request& request);
};

/** The signal's standard: at each start the one of the switch on the board. */
class COutput::CVideoSignal : public Leaf<CVideoSignal, CVideoApiBase> {
 public:
  CVideoSignal(std::string layerName, std::string attribute);
  static constexpr Rule rule{.accepts = Words{Word{"ntsc", 1}, Word{"pal", 2}}};  // numbers of the camera library
  int32_t fetch(const Request& request, std::string& text) const;
  int32_t act(Request& request);

 private:
  std::string m_signal;
};

}  // namespace Video
