#include <fcntl.h>
#include <sys/mount.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>

#include "sim/programs/Programs.h"

namespace sim {

namespace {

constexpr std::size_t erasedSize = 64 * 1024;

int fail(const Arguments& arguments, const std::string& what) {
  std::cerr << arguments[0] << ": " << what << ": " << std::strerror(errno) << '\n';
  return 1;
}

}  // namespace

/** The card's verdict is what /run/camera/sdtest says: Success, Protected or Failure. */
int sdTest(const Arguments& arguments) {
  noteStart(arguments);
  std::ofstream file(optionValue(arguments, "-outfile"), std::ios::trunc);
  file << "Process start\nProcess complete : " << setting("sdtest", "Success") << '\n' << std::flush;
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
