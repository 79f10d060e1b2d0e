// Measures the daemon of a running camera against the floor: the same bytes over the same kind of socket without a
// daemon behind it, the same file operations without a daemon in front of them.

#include <getopt.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "bench/Camera.h"
#include "bench/Flash.h"
#include "bench/Server.h"
#include "bench/SessionDaemon.h"
#include "bench/Statistics.h"
#include "cli/Item.h"

namespace {

namespace fs = std::filesystem;
using tmx::Item;

constexpr const char* kUsage =
    R"(usage: tmx_bench [--home DIR] [--turns N] [--soak N] [--beside PID]
  --home DIR    measure the camera that is up in DIR; without it one is booted for the measurement
  --turns N     turns of each comparison (default 30)
  --soak N      only send N requests and print the daemon's memory on the way
  --beside PID  only compare reads while this process of the camera runs with reads while it is stopped
)";

struct Options {
  std::string home;
  int turns = 30;
  long soak = 0;
  pid_t beside = 0;
};

bool parse(int argc, char** argv, Options& options) {
  const option longOptions[] = {{"home", required_argument, nullptr, 'h'},
                                {"turns", required_argument, nullptr, 't'},
                                {"soak", required_argument, nullptr, 's'},
                                {"beside", required_argument, nullptr, 'b'},
                                {nullptr, 0, nullptr, 0}};
  int option = 0;
  while ((option = getopt_long(argc, argv, "", longOptions, nullptr)) != -1) {
    if (option == 'h') options.home = optarg;
    if (option == 't') options.turns = std::atoi(optarg);
    if (option == 's') options.soak = std::atol(optarg);
    if (option == 'b') options.beside = std::atoi(optarg);
    if (option == '?') return false;
  }
  return optind == argc && options.turns > 0 && options.soak >= 0 && options.beside >= 0;
}

std::string frame(const std::vector<Item>& items) {
  return tmx::requestFrame(tmx::UserClass::kAdmin, tmx::LineEnd::kPlain, tmx::requestText(items));
}

/** Settings out of the daemon's memory; others ask the flash or a neighbour and wait for it. */
std::vector<Item> fifteenReads() {
  std::vector<Item> items;
  for (const char* channel : {"encode(1).", "encode(2).", "encode(3)."}) {
    for (const char* name : {"type", "framesize", "framerate", "bitrate", "quality"})
      items.push_back(Item::read(std::string(channel) + name));
  }
  return items;
}

/** The requests that are measured. The writes alternate between two values, so that each of them changes something. */
struct Requests {
  std::vector<std::string> read{frame({Item::read("encode(1).framerate")})};
  std::vector<std::string> fifteen{frame(fifteenReads())};
  std::vector<std::string> stage{frame({Item::write("encode(1).framerate", "10")}),
                                 frame({Item::write("encode(1).framerate", "15")})};
  std::vector<std::string> keep{frame({Item::write("userinterface.encode(1).cbr_mode(jpeg)", "vfs")}),
                                frame({Item::write("userinterface.encode(1).cbr_mode(jpeg)", "afs")})};
  std::vector<std::string> scene{frame({Item::write("camera.scene.image.color", "60")}),
                                 frame({Item::write("camera.scene.image.color", "70")})};
  std::vector<std::string> sessions{frame({Item::read("system.session")})};
};
/** The file that the kept parameter stands in. */
constexpr const char* kKeptFile = "flash/sysconfig/ui.conf";

/** A request that is refused is fast and says nothing: every one that is measured must be accepted. */
bool areAccepted(const tmx::Client& client, const std::vector<std::string>& frames) {
  for (const std::string& bytes : frames) {
    const tmx::Reply reply = client.exchangeFrame(bytes);
    const bool isAccepted =
        reply.text.find("&200 ") != std::string::npos || reply.text.find("&202 ") != std::string::npos;
    if (reply.outcome == tmx::Outcome::kAnswered && isAccepted) continue;
    std::fprintf(stderr, "tmx_bench: \"%s\": %s\n", bytes.c_str() + tmx::kLengthSize + 2, reply.text.c_str());
    return false;
  }
  return true;
}

void printRow(const char* name, const bench::Comparison& result) {
  if (!result.isDone) {
    std::printf("%-22s failed\n", name);
    return;
  }
  std::printf("%-22s %10s %10s   %5.2f  (%.2f to %.2f)", name, bench::timeText(result.wall.median).c_str(),
              bench::timeText(result.floorWall.median).c_str(), result.ratio.median, result.ratio.low,
              result.ratio.high);
  if (result.hasProcessor)
    std::printf("   %5.2f  (%.2f to %.2f)", result.processorRatio.median, result.processorRatio.low,
                result.processorRatio.high);
  std::printf("\n");
}

void printRequests(const Options& options, const bench::Camera& camera) {
  const bench::Server daemon(camera.socket());
  const bench::OneProcessor processor({daemon.pid()});
  const std::string floorSocket = camera.path("tmp/tmx_floor");
  const std::string pictureSocket = camera.path("tmp/tmx_floor.dsp");
  const bench::Floor floor(bench::programBeside("tmx_floor"), floorSocket);
  const bench::Floor pictureFloor(bench::programBeside("tmx_floor"), pictureSocket, camera.path("tmx_bench.journal"));
  if (!floor.isUp() || !pictureFloor.isUp()) {
    std::fprintf(stderr, "tmx_bench: the floor does not start\n");
    return;
  }
  const bench::Server bare(floorSocket);
  const bench::Server picture(pictureSocket);
  const auto compare = [&](const std::vector<std::string>& frames, const bench::Server& below, int repetitions) {
    return bench::compare([&](int n) { return daemon.send(frames, n); }, [&](int n) { return below.send(frames, n); },
                          options.turns, repetitions);
  };
  const Requests requests;
  std::printf("%-22s %10s %10s   %s   %s\n", "", "daemon", "floor", "time ratio (quartiles)",
              "processor ratio (quartiles)");
  printRow("read one parameter", compare(requests.read, bare, 400));
  printRow("read 15 in one request", compare(requests.fifteen, bare, 200));
  printRow("write in memory", compare(requests.stage, bare, 400));
  printRow("write of a scene item", compare(requests.scene, bare, 400));
  printRow("... with its DSP frame", compare(requests.scene, picture, 400));
  std::error_code error;
  const auto bytes = static_cast<std::size_t>(fs::file_size(camera.path(kKeptFile), error));
  const bench::Flash flash(camera.path("tmx_bench.flash"), error ? 0 : bytes);
  printRow("write to flash", bench::compare([&](int n) { return daemon.send(requests.keep, n); },
                                            [&](int n) { return flash.save(n); }, options.turns, 2));
}

/** The listing of all sessions, against a bare client of the session daemon that makes the same exchanges. */
void printSessions(const Options& options, const bench::Camera& camera) {
  const bench::Server daemon(camera.socket());
  const Requests requests;
  const std::string journal = camera.path("journal.jsonl");
  std::error_code error;
  const auto start = static_cast<long>(fs::file_size(journal, error));
  if (error || daemon.send(requests.sessions, 1).wall < 0) return;
  const bench::SessionDaemon bare(camera.path("tmp/session"), journal, start);
  printRow(("session listing (" + std::to_string(bare.exchanges()) + ")").c_str(),
           bench::compare([&](int n) { return daemon.send(requests.sessions, n); },
                          [&](int n) { return bare.exchangeAll(n); }, options.turns, 2));
}

/** A commit that changes one frame rate: its whole time, and what is left of it without its deliberate waits. */
void printCommit(const bench::Camera& camera) {
  const bench::Server daemon(camera.socket());
  const std::vector<std::string> steps{
      frame({Item::write("encode(1).framerate", "10")}), frame({Item::write("encode(1).status", "save")}),
      frame({Item::write("encode(1).framerate", "15")}), frame({Item::write("encode(1).status", "save")})};
  const bench::Cost cost = daemon.send(steps, 40);
  if (cost.wall < 0) return;
  // One wait for each of the three files that are read back, and one for each that is written.
  const double waits = 6 * std::chrono::duration<double>(bench::Flash::kWaitAfterUnlock).count();
  const double wall = cost.wall * 2;
  std::printf("%-22s %10s, without its waits %s, processor %s\n", "stage and commit", bench::timeText(wall).c_str(),
              bench::timeText(wall - waits).c_str(), bench::timeText(cost.processor * 2).c_str());
}

/** What a start costs, from the process's first moment to its first answer. */
void printStart(const bench::Camera& camera) {
  std::vector<double> walls;
  std::vector<double> processors;
  constexpr int kStarts = 5;
  bench::FileCounts counts;
  for (int i = 0; i < kStarts; ++i) {
    const bench::Start start = camera.restart();
    if (!start.isDone) {
      std::printf("start                  failed\n");
      return;
    }
    walls.push_back(start.wall);
    processors.push_back(start.processor);
    counts = start.counts;
  }
  const bench::Spread wall = bench::spreadOf(walls);
  const bench::Spread processor = bench::spreadOf(processors);
  std::printf("start to first answer  %s (%s to %s), processor %s (%s to %s)\n", bench::timeText(wall.median).c_str(),
              bench::timeText(wall.low).c_str(), bench::timeText(wall.high).c_str(),
              bench::timeText(processor.median).c_str(), bench::timeText(processor.low).c_str(),
              bench::timeText(processor.high).c_str());
  if (counts.isKnown)
    std::printf("a restart              %u file operations on flash, %u syncs, %u ms of deliberate waits\n",
                counts.operations, counts.syncs, counts.waited);
}

void printSize() {
  const long bytes = bench::strippedSize(bench::programBeside("tmxd"));
  if (bytes >= 0) std::printf("stripped binary        %.0f KiB\n", static_cast<double>(bytes) / 1024);
}

void printMemory(const bench::Server& daemon, const char* name) {
  const bench::Memory memory = daemon.memory();
  std::printf("%-22s %ld KiB resident, %ld KiB private and written to\n", name, memory.resident, memory.privateDirty);
}

/** Sends the three kinds of requests that write no file, and shows the memory ten times on the way. */
bool soak(const bench::Camera& camera, long requests) {
  const bench::Server daemon(camera.socket());
  const Requests kinds;
  std::vector<std::string> frames = kinds.read;
  frames.insert(frames.end(), kinds.fifteen.begin(), kinds.fifteen.end());
  frames.insert(frames.end(), kinds.stage.begin(), kinds.stage.end());
  constexpr int kSteps = 10;
  printMemory(daemon, "0 requests");
  for (int step = 1; step <= kSteps; ++step) {
    const long sent = requests * step / kSteps - requests * (step - 1) / kSteps;
    if (sent > 0 && daemon.send(frames, static_cast<int>(sent)).wall < 0) return false;
    printMemory(daemon, (std::to_string(requests * step / kSteps) + " requests").c_str());
    std::fflush(stdout);
  }
  return true;
}

/** What another process of the camera adds to the time of a read; as the floor stand the times without it. */
void printBeside(const Options& options, const bench::Camera& camera) {
  const bench::Server daemon(camera.socket());
  const bench::OneProcessor processor({daemon.pid(), options.beside});
  const Requests requests;
  constexpr int kReads = 50000;  // takes longer than the pauses of the other
  const auto reads = [&](int signal) {
    return [&, signal](int n) {
      kill(options.beside, signal);
      return daemon.send(requests.read, n);
    };
  };
  printRow("read one parameter", bench::compare(reads(SIGCONT), reads(SIGSTOP), options.turns, kReads));
}

/** Measures in the order in which the parts disturb each other least. */
bool measure(const Options& options, const bench::Camera& camera) {
  const tmx::Client client(camera.socket(), std::chrono::seconds(30));
  const Requests requests;
  for (const auto* frames : {&requests.read, &requests.fifteen, &requests.stage, &requests.keep, &requests.scene}) {
    if (!areAccepted(client, *frames)) return false;
  }
  if (options.soak > 0) return soak(camera, options.soak);
  if (options.beside > 0) {
    printBeside(options, camera);
    return true;
  }
  printStart(camera);
  printMemory(bench::Server(camera.socket()), "memory");
  printSize();
  std::printf("\n");
  printRequests(options, camera);
  printSessions(options, camera);
  printCommit(camera);
  return true;
}

/** The process that measures, for the signal handler. */
volatile sig_atomic_t g_measuring = 0;

/** Measures in a child, so that an interrupt ends the measurement and this process still takes its camera down. */
int measureInChild(const Options& options, const bench::Camera& camera) {
  const pid_t child = fork();
  if (child == 0) std::exit(measure(options, camera) ? 0 : 1);
  if (child < 0) return 1;
  g_measuring = child;
  for (const int number : {SIGINT, SIGTERM})
    std::signal(number, [](int) { kill(g_measuring, SIGTERM); });
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  if (options.beside > 0) kill(options.beside, SIGCONT);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  if (!parse(argc, argv, options)) {
    std::fputs(kUsage, stderr);
    return 2;
  }
  const bench::Camera camera(options.home);
  if (!camera.isUp()) {
    std::fprintf(stderr, "tmx_bench: no camera answers at %s\n", camera.socket().c_str());
    return 1;
  }
  return measureInChild(options, camera);
}
