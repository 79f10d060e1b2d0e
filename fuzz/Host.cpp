// What the daemon's code asks of the host, without an effect on it: no program runs, nobody is signalled, nobody
// waits. A log line is made and goes nowhere.

#include <syslog.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <ctime>

extern "C" {

int system(const char* /*command*/) { return 0; }
FILE* popen(const char* /*command*/, const char* /*mode*/) { return std::fopen("/dev/null", "re"); }
int pclose(FILE* stream) { return std::fclose(stream); }
pid_t fork() noexcept { return -1; }
int kill(pid_t /*process*/, int /*signal*/) noexcept { return -1; }
void sync() noexcept {}
void syslog(int /*priority*/, const char* format, ...) {
  std::array<char, 1024> line{};
  va_list arguments;
  va_start(arguments, format);
  static_cast<void>(std::vsnprintf(line.data(), line.size(), format, arguments));
  va_end(arguments);
}
int usleep(useconds_t /*microseconds*/) { return 0; }
int nanosleep(const timespec* /*time*/, timespec* /*rest*/) { return 0; }
int clock_nanosleep(clockid_t /*clock*/, int /*flags*/, const timespec* /*time*/, timespec* /*rest*/) { return 0; }

}  // extern "C"
