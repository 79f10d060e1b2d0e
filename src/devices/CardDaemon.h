#pragma once

#include <cstdint>
#include <string>

/** Client of the recording daemon that owns the memory card. Every operation is one connection. */
class CardDaemon {
 public:
  enum Command : uint16_t { kInitialize = 517, kMount = 518, kUnmount = 519 };
  enum Query : uint16_t { kCardState = 1025, kInitializeState = 1026 };

  explicit CardDaemon(std::string path = "/tmp/sdrec");

  /** Has a command carried out; -1 only when the daemon refuses: one that is away takes it silently, with 0. */
  [[nodiscard]] int32_t m_setSdrecdData(Command command) const;
  /** Asks for a state; -1 when the daemon has none. A daemon that is away leaves the value as it was, with 0. */
  [[nodiscard]] int32_t m_getSdrecdData(Query query, int32_t* value) const;

 private:
  struct Reply {
    uint16_t value = 0;
    uint16_t message = 0;
  };
  /** False when there was no whole exchange. */
  [[nodiscard]] bool exchange(uint16_t command, Reply* reply) const;

  std::string m_path;
};
