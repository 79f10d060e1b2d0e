/** camera-stub: stands in for the camera's programs that cannot be had, under the name by which it is called. */
#include <cstdio>
#include <cstring>
#include <fstream>
#include <map>

#include "sim/common/Journal.h"
#include "sim/programs/Programs.h"

namespace sim {

namespace {

using Program = int (*)(const Arguments&);

const std::map<std::string, Program> programs{
    {"rtpd", rtpd},          {"rtspd", rtspd},      {"nvt_apl", nvtApl}, {"amx_beacond", amxBeacond},
    {"pntpd", pntpd},        {"dhcpcd", dhcpcd},    {"count", count},    {"upreset", upreset},
    {"date", date},          {"SdTestPrg", sdTest}, {"macman", macman},  {"flash_eraseall", flashEraseall},
    {"mount", mountFactory}, {"tmxd", tmxd}};

}  // namespace

void noteStart(const Arguments& arguments) {
  std::string line;
  for (const std::string& argument : arguments)
    line += (line.empty() ? "" : " ") + argument;
  Journal("child", arguments[0]).text("command", line).list("args", {arguments.begin() + 1, arguments.end()}).write();
}

std::string optionValue(const Arguments& arguments, const std::string& name) {
  for (std::size_t at = 1; at + 1 < arguments.size(); ++at) {
    if (arguments[at] == name) return arguments[at + 1];
  }
  return "";
}

std::string setting(const std::string& name, const std::string& usual) {
  std::ifstream file("/run/camera/" + name);
  std::string line;
  return std::getline(file, line) ? line : usual;
}

void writeText(const std::string& path, const std::string& text) {
  std::ofstream file(path, std::ios::trunc);
  file << text;
}

}  // namespace sim

int main(int argc, char** argv) {
  const char* slash = std::strrchr(argv[0], '/');
  sim::Arguments arguments(argv, argv + argc);
  arguments[0] = slash != nullptr ? slash + 1 : argv[0];
  const auto program = sim::programs.find(arguments[0]);
  if (program != sim::programs.end()) return program->second(arguments);
  std::fprintf(stderr, "camera-stub: there is no program \"%s\"\n", arguments[0].c_str());
  return 127;
}
