#include "sim/sandbox/Files.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>

namespace sim {

void Fd::reset() {
  if (m_descriptor >= 0) ::close(m_descriptor);
  m_descriptor = -1;
}

void die(const std::string& what) {
  const int error = errno;
  std::fprintf(stderr, "camera: %s: %s\n", what.c_str(), std::strerror(error));
  std::exit(1);
}

void must(bool done, const std::string& what) {
  if (!done) die(what);
}

std::string readFile(const Path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

void writeFile(const Path& path, const std::string& text) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  if (!(file << text).flush()) die("write " + path.string());
}

std::string lastLines(const Path& path, int lines) {
  const std::string text = readFile(path);
  std::size_t begin = text.size();
  for (int line = 0; line <= lines && begin > 0 && begin != std::string::npos; ++line) {
    begin = begin < 2 ? std::string::npos : text.rfind('\n', begin - 1);
  }
  return begin == std::string::npos ? text : text.substr(begin == text.size() ? begin : begin + 1);
}

}  // namespace sim
