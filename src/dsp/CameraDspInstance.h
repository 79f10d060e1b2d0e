#pragma once

class CameraDSP;

/** The one channel to the image DSP, for who stands outside the root `camera`; none before that root exists. */
[[nodiscard]] CameraDSP* getCameraDsp();

/** Makes a channel the one that getCameraDsp gives, for as long as it lives. The owner of the channel holds it. */
class CameraDspInstance {
 public:
  explicit CameraDspInstance(CameraDSP& dsp);
  ~CameraDspInstance();
  CameraDspInstance(const CameraDspInstance&) = delete;
  CameraDspInstance& operator=(const CameraDspInstance&) = delete;
};
