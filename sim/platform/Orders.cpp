#include "Orders.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace sim {

namespace {

bool sameFile(const struct stat& one, const struct stat& other) {
  return one.st_ino == other.st_ino && one.st_size == other.st_size && one.st_mtim.tv_sec == other.st_mtim.tv_sec &&
         one.st_mtim.tv_nsec == other.st_mtim.tv_nsec;
}

void addItems(std::set<std::string>& items, std::string list) {
  std::ranges::transform(list, list.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  std::istringstream stream(list);
  for (std::string item; std::getline(stream, item, ',');) {
    if (!item.empty()) items.insert(item);
  }
}

}  // namespace

void Orders::refresh() {
  const char* named = std::getenv("CAMERA_DSP");
  const char* path = named != nullptr ? named : "/run/camera/dsp";
  struct stat stamp {};
  if (::stat(path, &stamp) != 0) stamp = {};
  if (sameFile(stamp, m_stamp)) return;
  m_stamp = stamp;
  read(path);
}

void Orders::read(const char* path) {
  m_values.clear();
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) {
    const std::size_t equals = line.find('=');
    if (equals != std::string::npos) m_values[line.substr(0, equals)] = line.substr(equals + 1);
  }
  m_failing.clear();
  m_failingOnce.clear();
  addItems(m_failing, text("fail", ""));
  addItems(m_failing, text("fail_addr", ""));
  addItems(m_failingOnce, text("fail_once", ""));
}

bool Orders::fails(std::initializer_list<std::string> names) {
  return std::ranges::any_of(
      names, [this](const std::string& name) { return m_failing.contains(name) || m_failingOnce.erase(name) > 0; });
}

std::string Orders::text(const std::string& key, const std::string& preset) const {
  const auto found = m_values.find(key);
  return found == m_values.end() ? preset : found->second;
}

int Orders::number(const std::string& key, int preset) const {
  const auto found = m_values.find(key);
  return found == m_values.end() ? preset : std::atoi(found->second.c_str());
}

}  // namespace sim
