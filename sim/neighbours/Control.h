#pragma once

#include <map>
#include <string>

#include "Loop.h"
#include "Neighbourhood.h"
#include "sim/common/UnixSocket.h"

namespace sim {

/** The control socket: takes lines, and answers each with one line. Owned by main. */
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
  void receive(int number);
  void drop(int number);

  Loop& m_loop;
  Neighbourhood& m_neighbourhood;
  std::string m_path;
  Descriptor m_listener;
  std::map<int, Client> m_clients;
};

}  // namespace sim
