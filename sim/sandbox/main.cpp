/** camera-sandbox: switches a simulated camera on and off and lets one in. */
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <set>
#include <thread>

#include "sim/preload/FaultPage.h"
#include "sim/sandbox/Enter.h"
#include "sim/sandbox/Home.h"
#include "sim/sandbox/Relay.h"
#include "sim/sandbox/Supervisor.h"
#include "sim/sandbox/Watch.h"

namespace sim {

namespace {

constexpr const char* alreadyOn = "the camera is already on; take it down first";

int complain(const char* text) {
  std::fprintf(stderr, "camera: %s\n", text);
  return 1;
}

/** Asks the supervisor and waits until the camera is off. */
int switchOff(const Home& home, const char* word) {
  if (!Supervisor::isOn(home) || Supervisor::ask(home, word) != 0) return 0;
  while (Supervisor::isOn(home))
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  return 0;
}

void showProgress(const Fd& progress, bool quiet) {
  FILE* steps = fdopen(dup(progress.get()), "r");
  for (int letter = 0; (letter = std::fgetc(steps)) != EOF && !quiet;)
    std::fputc(letter, stdout);
  std::fclose(steps);
}

/** Whether the camera is off and has its files. */
bool prepare(const Home& home) {
  std::error_code error;
  std::filesystem::create_directories(home.path("run"), error);
  if (Supervisor::isOn(home)) return false;
  home.prepare();
  return true;
}

int make(const Options& /*options*/, const Home& home) {
  if (!prepare(home)) return complain(alreadyOn);
  home.power();
  return 0;
}

int up(const Options& options, const Home& home) {
  if (!prepare(home)) return complain(alreadyOn);
  const Fd progress = Supervisor(options, home).start();
  if (!progress.valid()) return complain(alreadyOn);
  showProgress(progress, options.quiet);
  if (options.timeoutSeconds == 0 || waitForAnswer(home, 1, options.timeoutSeconds)) return 0;
  switchOff(home, "down");
  return 1;
}

int reboot(const Options& options, const Home& home) {
  const int next = boots(home) + 1;
  if (!Supervisor::isOn(home) || Supervisor::ask(home, "reboot") != 0) return complain("the camera is off");
  return options.timeoutSeconds == 0 || waitForAnswer(home, next, options.timeoutSeconds) ? 0 : 1;
}

/** For which machine a program was built, by the head of its file. */
std::string machineOf(const Path& program) {
  const std::map<char, std::string> machines{{3, "i386"}, {40, "ARM"}, {62, "x86-64"}, {'\xb7', "AArch64"}};
  const std::string head = readFile(program).substr(0, 20);
  if (head.size() < 20) return "not there any more";
  const auto machine = machines.find(head[18]);
  return std::string(head[4] == 1 ? "32-bit " : "64-bit ") + (machine == machines.end() ? "machine" : machine->second);
}

int status(const Options& /*options*/, const Home& home) {
  if (!Supervisor::isOn(home)) {
    std::puts("off");
    return 1;
  }
  const std::string program = readFile(home.run("program"));
  std::printf("on, with %s (%s%s)\n", program.c_str(), machineOf(program).c_str(),
              machineOf(program) == machineOf("/proc/self/exe") ? "" : ", emulated");
  return 0;
}

int runWords(const Options& options, const Home& home) {
  if (options.words.empty()) return complain("no command given");
  return runInside(home, options.words);
}

void show(const FaultPage& page) {
  std::printf("operations=%u syncs=%u waited=%u writes=%u\n", page.operations.load(), page.syncs.load(),
              page.waited.load(), page.writes.load());
}

/** Arms the page with one word of the command line, "NAME" or "NAME=N:HOW"; false when the word makes no sense. */
bool arm(FaultPage& page, const std::string& word) {
  const std::map<std::string, Fault> faults{
      {"count", Fault::None}, {"off", Fault::None}, {"cut", Fault::Cut}, {"fail", Fault::Fail}, {"full", Fault::Full}};
  const std::map<std::string, int> errors{{"EINTR", EINTR}, {"EIO", EIO}, {"ENOSPC", ENOSPC}, {"EROFS", EROFS}};
  std::array<char, 8> how{};
  unsigned at = 0;
  const std::string name = word.substr(0, word.find('='));
  std::sscanf(word.c_str() + name.size(), "=%u:%7s", &at, how.data());
  const bool fails = name == "fail";
  const bool known =
      fails ? errors.contains(how.data()) : std::set<std::string>{"", "half", "lose"}.contains(how.data());
  if (!faults.contains(name) || !known) return false;
  page.armed = 0;
  page.operations = 0;
  page.writes = 0;
  page.syncs = 0;
  page.waited = 0;
  page.dark = 0;
  page.fault = faults.at(name);
  page.at = at;
  page.error = fails ? errors.at(how.data()) : 0;
  page.halves = std::string("half") == how.data();
  page.loses = std::string("lose") == how.data();
  page.armed = word != "off";
  return true;
}

int flash(const Options& options, const Home& home) {
  const Fd file(open(home.run("fault").c_str(), O_RDWR | O_CLOEXEC));
  void* memory = mmap(nullptr, sizeof(FaultPage), PROT_READ | PROT_WRITE, MAP_SHARED, file.get(), 0);
  if (memory == MAP_FAILED) die("open " + home.run("fault").string());
  auto& page = *static_cast<FaultPage*>(memory);
  const std::string word = options.words.empty() ? "show" : options.words[0];
  if (word == "show") {
    show(page);
    return 0;
  }
  home.settle(true);
  return arm(page, word) ? 0 : complain("flash: count, cut=N[:half|:lose], fail=N:ERROR, full, off or show");
}

using Action = int (*)(const Options&, const Home&);

const std::map<std::string, Action> actions{
    {"make", make},
    {"up", up},
    {"down", [](const Options&, const Home& home) { return switchOff(home, "down"); }},
    {"cut", [](const Options&, const Home& home) { return switchOff(home, "cut"); }},
    {"reboot", reboot},
    {"status", status},
    {"shell",
     [](const Options&, const Home& home) {
       return runInside(home, {"/bin/sh", "-i"});
     }},
    {"exec", runWords},
    {"relay", [](const Options& options, const Home& home) -> int { relay(home, options.words); }},
    {"flash", flash},
};

}  // namespace

}  // namespace sim

int main(int argc, char** argv) {
  const auto options = sim::parseOptions(argc, argv);
  if (!options) return 2;
  const auto action = sim::actions.find(options->command);
  if (action == sim::actions.end()) {
    std::fprintf(stderr, "camera: there is no command \"%s\"\n", options->command.c_str());
    return 2;
  }
  return action->second(*options, sim::Home(*options));
}
