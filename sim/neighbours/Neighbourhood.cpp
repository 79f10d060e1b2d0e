#include "Neighbourhood.h"

#include <algorithm>
#include <sstream>

#include "CardDaemon.h"
#include "DefectDaemon.h"
#include "Detection.h"
#include "Gpio.h"
#include "PtzSequencer.h"
#include "Recorder.h"
#include "SerialDaemon.h"
#include "SessionDaemon.h"

namespace sim {

Neighbourhood::Neighbourhood(Loop& loop, const std::string& root)
    : m_dsp(root + "/run/camera/dsp"), m_programs(root + "/run/camera/program."), m_dhcp(root + "/run/camera/lease") {
  m_neighbours.push_back(std::make_unique<Gpio>(loop, root, m_pins));
  m_neighbours.push_back(std::make_unique<PtzSequencer>(loop, root));
  m_neighbours.push_back(std::make_unique<Recorder>(loop, root, m_pins));
  m_neighbours.push_back(std::make_unique<Detection>(loop, root));
  m_neighbours.push_back(std::make_unique<SessionDaemon>(loop, root));
  m_neighbours.push_back(std::make_unique<DefectDaemon>(loop, root));
  m_neighbours.push_back(std::make_unique<SerialDaemon>(loop, root));
  m_neighbours.push_back(std::make_unique<CardDaemon>(loop, root));
}

bool Neighbourhood::up() {
  return std::ranges::all_of(m_neighbours, [](const auto& neighbour) { return neighbour->up(); });
}

void Neighbourhood::down() {
  for (const auto& neighbour : m_neighbours)
    neighbour->down();
}

std::string Neighbourhood::tell(const std::string& line) {
  std::istringstream stream(line);
  std::string name;
  stream >> name;
  Words words;
  for (std::string word; stream >> word;)
    words.push_back(word);
  if (name == "dsp") return m_dsp.tell(words);
  if (name == "program") return m_programs.tell(words);
  if (name == "dhcp") return m_dhcp.tell(words);
  if (name == "ptz") name = "ptzseq";
  const auto found = std::ranges::find(m_neighbours, name, [](const auto& neighbour) { return neighbour->name(); });
  if (found != m_neighbours.end()) return (*found)->tell(words);
  std::string names = "dsp program dhcp";
  for (const auto& neighbour : m_neighbours)
    names += " " + neighbour->name();
  return "error: no neighbour \"" + name + "\"; there are " + names;
}

}  // namespace sim
