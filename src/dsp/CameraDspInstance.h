#pragma once

class CameraDSP;

/** The one channel to the image DSP; asked for only while the owner of one lives. */
[[nodiscard]] CameraDSP& cameraDsp();

/** Makes a channel the one that cameraDsp gives, for as long as it lives. The owner of the channel holds it. */
class CameraDspInstance {
 public:
  explicit CameraDspInstance(CameraDSP& dsp);
  ~CameraDspInstance();
  CameraDspInstance(const CameraDspInstance&) = delete;
  CameraDspInstance& operator=(const CameraDspInstance&) = delete;
};
