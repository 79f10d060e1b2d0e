#include <fcntl.h>
#include <sys/mount.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <sstream>

#include "sim/programs/Programs.h"

namespace sim {

namespace {

constexpr std::size_t erasedSize = 64 * 1024;

int fail(const Arguments& arguments, const std::string& what) {
  std::cerr << arguments[0] << ": " << what << ": " << std::strerror(errno) << '\n';
  return 1;
}

}  // namespace

/** Behind its start it writes what /run/camera/sdtest holds; the word "killed" there ends it before it wrote anything.
 */
int sdTest(const Arguments& arguments) {
  noteStart(arguments);
  if (setting("sdtest", "") == "killed") raise(SIGKILL);
  std::stringstream found;
  found << std::ifstream("/run/camera/sdtest").rdbuf();
  std::ofstream file(optionValue(arguments, "-outfile"), std::ios::trunc);
  file << "Process start\n" << (found.str().empty() ? "Process complete : Success\n" : found.str()) << std::flush;
  return file ? 0 : fail(arguments, "-outfile");
}

int macman(const Arguments& arguments) {
  noteStart(arguments);
  return 0;
}

int flashEraseall(const Arguments& arguments) {
  noteStart(arguments);
  std::ofstream device(arguments.size() == 2 ? arguments[1] : "", std::ios::trunc);
  device << std::string(erasedSize, '\xff') << std::flush;
  return device ? 0 : fail(arguments, "device");
}

/** "mount -r -t TYPE DEVICE DIRECTORY"; alone it lists what is mounted. */
int mountFactory(const Arguments& arguments) {
  if (arguments.size() == 1) {
    std::cout << std::ifstream("/proc/self/mounts").rdbuf();
    return 0;
  }
  noteStart(arguments);
  if (arguments.size() < 3) return 1;
  const std::string& device = arguments[arguments.size() - 2];
  const std::string& directory = arguments.back();
  const std::string type = optionValue(arguments, "-t");
  const bool done = mount(device.c_str(), directory.c_str(), type.c_str(), MS_RDONLY, nullptr) == 0;
  return done ? 0 : fail(arguments, device);
}

}  // namespace sim
