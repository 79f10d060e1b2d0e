#pragma once

#include <cstdint>
#include <string>

#include "service/ParamPacket.h"

/**
 * Client of the recorder and event daemon: parameters by id, the camera's lamps, and news about boot, image and
 * encoders. Every operation is one connection. Results: 200 or the value asked for, -500 when the exchange or the
 * daemon failed, and otherwise the word that the daemon gave for its reason.
 */
class ParamPitcher {
 public:
  explicit ParamPitcher(std::string path = "/tmp/localrec");

  [[nodiscard]] int32_t getInt(int32_t id) const;
  /** The text, with result 200; empty with any other result. */
  [[nodiscard]] std::string getString(int32_t id, int32_t* result) const;
  [[nodiscard]] int32_t putInt(int32_t id, int32_t value) const;
  [[nodiscard]] int32_t putIntArg(int32_t id, int32_t value) const;
  [[nodiscard]] int32_t putString(int32_t id, const std::string& text) const;

  /** Restarts an event rule; -405 when the daemon refuses. */
  [[nodiscard]] int32_t putRestart(int32_t rule) const;
  [[nodiscard]] int32_t getStatus() const;

  /** name is "stealth", "identify", "green" or "orange"; every state but "on" is off. */
  [[nodiscard]] int32_t putLedCommand(const std::string& name, const std::string& state) const;
  /** word is "color" or "bw"; -500 for any other, with nothing sent. */
  [[nodiscard]] int32_t putImageMode(const std::string& word) const;
  /** Sends the model name along. */
  [[nodiscard]] int32_t putBootInfo(int32_t flag) const;
  [[nodiscard]] int32_t putEncoderChange() const;

  /** One exchange; the packet becomes the reply. 0 or -1. */
  [[nodiscard]] int32_t notifyChange(ParamPacket* packet) const;

 private:
  /** False when the exchange failed, or the daemon answered with a failure. */
  [[nodiscard]] bool exchange(ParamPacket* packet) const;
  [[nodiscard]] int32_t put(ParamPacket* packet) const;
  /** News that the daemon need only have received. */
  [[nodiscard]] int32_t notify(int32_t command, int32_t argument, const std::string& text = {}) const;

  std::string m_path;
};
