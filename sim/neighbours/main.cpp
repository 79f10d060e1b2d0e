#include <sys/signalfd.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "Control.h"
#include "Loop.h"
#include "Neighbourhood.h"

/*
 * camera-neighbours [--root DIR]: the daemons around the parameter daemon, until SIGTERM or SIGINT. Their sockets, the
 * control socket and, unless $CAMERA_JOURNAL names another, the journal lie below the root.
 */
namespace {

int usage() {
  std::fputs("usage: camera-neighbours [--root DIR]\n", stderr);
  return 2;
}

/** A descriptor that becomes readable when the program is asked to end. */
sim::Descriptor endSignal() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGTERM);
  sigaddset(&signals, SIGINT);
  sigprocmask(SIG_BLOCK, &signals, nullptr);
  return sim::Descriptor(::signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK));
}

bool makeFolders(const std::string& root) {
  std::error_code fault;
  std::filesystem::create_directories(root + "/tmp", fault);
  if (!fault) std::filesystem::create_directories(root + "/run/camera", fault);
  if (fault) std::fprintf(stderr, "camera-neighbours: %s: %s\n", root.c_str(), fault.message().c_str());
  return !fault;
}

int serve(const std::string& root) {
  sim::Loop loop;
  sim::Neighbourhood neighbourhood(loop, root);
  const sim::Descriptor end = endSignal();
  loop.watch(end.number(), [&loop] { loop.stop(); });
  if (!neighbourhood.up()) {
    std::perror("camera-neighbours: cannot listen");
    return 1;
  }
  // The control socket comes last: who can reach it can reach every neighbour.
  const sim::Control control(loop, neighbourhood, root + "/run/camera/control");
  if (!control.isListening()) {
    std::perror("camera-neighbours: cannot listen for control");
    return 1;
  }
  loop.run();
  neighbourhood.down();
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  std::string root;
  if (argc == 3 && std::string(argv[1]) == "--root") {
    root = argv[2];
    while (root.ends_with('/'))
      root.pop_back();
  } else if (argc != 1) {
    return usage();
  }
  ::setenv("CAMERA_JOURNAL", (root + "/run/camera/journal.jsonl").c_str(), 0);
  return makeFolders(root) ? serve(root) : 1;
}
