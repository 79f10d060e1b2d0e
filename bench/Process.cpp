#include "bench/Process.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace bench {
namespace {

std::string processFile(pid_t pid, const char* name) { return "/proc/" + std::to_string(pid) + "/" + name; }

}  // namespace

double processorTimeOf(pid_t pid) {
  double seconds = 0;
  std::error_code error;
  for (const auto& thread : std::filesystem::directory_iterator(processFile(pid, "task"), error)) {
    std::ifstream file(thread.path() / "schedstat");
    double nanoseconds = 0;
    file >> nanoseconds;
    seconds += nanoseconds * 1e-9;
  }
  return seconds;
}

Memory memoryOf(pid_t pid) {
  Memory memory;
  std::ifstream file(processFile(pid, "smaps_rollup"));
  for (std::string line; std::getline(file, line);) {
    std::istringstream words(line);
    std::string key;
    long kibibytes = 0;
    words >> key >> kibibytes;
    if (key == "Rss:") memory.resident = kibibytes;
    if (key == "Private_Dirty:") memory.privateDirty = kibibytes;
  }
  return memory;
}

}  // namespace bench
