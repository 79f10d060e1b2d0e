#pragma once

#include <memory>
#include <string>
#include <vector>

#include "AddressServer.h"
#include "DspOrders.h"
#include "Loop.h"
#include "Neighbour.h"
#include "Pins.h"
#include "ProgramOrders.h"

namespace sim {

/** All the neighbours of the parameter daemon, and the words by which they are told what to do. Owned by main. */
class Neighbourhood {
 public:
  /** @param root the folder under which their sockets lie, empty for the file system's own root. */
  Neighbourhood(Loop& loop, const std::string& root);

  /** Lets every neighbour listen; false when one cannot. */
  [[nodiscard]] bool up();
  void down();

  /** Carries out one control line, "NEIGHBOUR words…", and gives the line to answer. */
  [[nodiscard]] std::string tell(const std::string& line);

 private:
  Pins m_pins;
  std::vector<std::unique_ptr<Neighbour>> m_neighbours;
  DspOrders m_dsp;
  ProgramOrders m_programs;
  AddressServer m_dhcp;
};

}  // namespace sim
