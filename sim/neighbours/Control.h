#pragma once

#include <map>
#include <string>

#include "Loop.h"
#include "Neighbourhood.h"
#include "sim/common/UnixSocket.h"

namespace sim {

/**
 * The control socket: takes lines, and answers each with one line. A line is carried out behind every message that was
 * sent to a neighbour before it, so that its answer also says that those have been dealt with. Owned by main.
 */
class Control {
 public:
  Control(Loop& loop, Neighbourhood& neighbourhood, std::string path);
  ~Control();
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  [[nodiscard]] bool isListening() const { return m_listener.isOpen(); }

 private:
  struct Client {
    Descriptor socket;
    std::string pending;
  };

  void accept();
  void receive(unsigned id);
  void carryOut(unsigned id, const std::string& line);
  void drop(unsigned id);

  Loop& m_loop;
  Neighbourhood& m_neighbourhood;
  std::string m_path;
  Descriptor m_listener;
  unsigned m_lastId = 0;
  std::map<unsigned, Client> m_clients;
};

}  // namespace sim
