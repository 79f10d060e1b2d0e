#include "bench/Camera.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

#include "bench/Server.h"
#include "cli/Client.h"

namespace bench {
namespace {

namespace fs = std::filesystem;

/** Runs a program and collects what it prints; its exit status, -1 when it did not run to its end. */
int execute(const std::vector<std::string>& words, std::string* output) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return -1;
  const pid_t child = fork();
  if (child == 0) {
    std::vector<char*> argv;
    argv.reserve(words.size() + 1);
    for (const std::string& word : words)
      argv.push_back(const_cast<char*>(word.c_str()));
    argv.push_back(nullptr);
    if (output != nullptr) dup2(ends[1], STDOUT_FILENO);
    execvp(argv[0], argv.data());
    _exit(127);
  }
  close(ends[1]);
  char buffer[256];
  ssize_t got = 0;
  while (child > 0 && output != nullptr && (got = read(ends[0], buffer, sizeof buffer)) > 0)
    output->append(buffer, static_cast<std::size_t>(got));
  close(ends[0]);
  int status = 0;
  return child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/** Seconds since the process began, to a hundredth. */
double ageOf(pid_t pid) {
  std::ifstream file("/proc/" + std::to_string(pid) + "/stat");
  std::string text;
  std::getline(file, text);
  // The name may hold blanks; behind its ")" stand single words, the start in clock ticks as the 20th.
  std::istringstream words(text.substr(std::min(text.rfind(')') + 1, text.size())));
  std::string word;
  for (int i = 0; i < 20; ++i)
    words >> word;
  timespec now{};
  clock_gettime(CLOCK_BOOTTIME, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9 -
         std::strtod(word.c_str(), nullptr) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

}  // namespace

Camera::Camera(const std::string& home) : m_home(home), m_isOwn(home.empty()) {
  std::error_code error;
  if (m_isOwn) {
    m_home = fs::temp_directory_path(error).string() + "/tmx_bench." + std::to_string(getpid());
    run("up", {"--quiet"});
  }
}

Camera::~Camera() {
  if (!m_isOwn) return;
  run("down", {});
  std::error_code error;
  fs::remove_all(m_home, error);
}

bool Camera::isUp() const { return Server(socket()).pid() > 0; }

Start Camera::restart() const {
  const pid_t old = Server(socket()).pid();
  run("flash", {"count"});
  if (run("reboot", {"--timeout", "0"}) != 0) return {};
  const tmx::Client client(socket(), std::chrono::seconds(30));
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
  while (std::chrono::steady_clock::now() < end) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    const Server daemon(socket());
    if (daemon.pid() <= 0 || daemon.pid() == old) continue;
    const tmx::Reply reply = client.exchange(tmx::UserClass::kAdmin, tmx::LineEnd::kPlain, "system.model");
    if (reply.outcome != tmx::Outcome::kAnswered) continue;
    const Start start{true, ageOf(daemon.pid()), daemon.processorTime(), counts()};
    run("flash", {"off"});  // counting costs a system call for every write
    return start;
  }
  return {};
}

int Camera::run(const std::string& command, const std::vector<std::string>& arguments, std::string* output) const {
  std::vector<std::string> words = {programBeside("camera-sandbox"), command, "--home", m_home};
  words.insert(words.end(), arguments.begin(), arguments.end());
  return execute(words, output);
}

FileCounts Camera::counts() const {
  FileCounts counts;
  std::string text;
  counts.isKnown =
      run("flash", {"show"}, &text) == 0 && std::sscanf(text.c_str(), "operations=%u syncs=%u waited=%u",
                                                        &counts.operations, &counts.syncs, &counts.waited) == 3;
  return counts;
}

std::string programBeside(const std::string& name) {
  std::error_code error;
  return fs::read_symlink("/proc/self/exe", error).parent_path() / name;
}

long strippedSize(const std::string& program) {
  std::error_code error;
  const std::string copy = fs::temp_directory_path(error).string() + "/tmx_bench.strip." + std::to_string(getpid());
  if (execute({"strip", "-o", copy, program}, nullptr) != 0) return -1;
  const auto size = fs::file_size(copy, error);
  fs::remove(copy);
  return error ? -1 : static_cast<long>(size);
}

}  // namespace bench
