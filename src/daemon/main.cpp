// The daemon: start-up in its order, the accept loop, and the orderly stop. The exit codes are the start scripts' way
// of telling what failed.

#include <getopt.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "config/Config.h"
#include "config/Initialising.h"
#include "daemon/ParamRequest.h"
#include "daemon/PidFile.h"
#include "daemon/Signals.h"
#include "local/UnixDomain.h"
#include "request/InternalRequest.h"
#include "request/Log.h"
#include "request/Parameter.h"
#include "service/CTmxdUtility.h"
#include "service/ParamPitcher.h"

namespace {

constexpr const char* kVersion = "0.8";
constexpr const char* kSocket = "/tmp/request";
constexpr const char* kListMode = "all_api";

enum ExitCode {
  kNormal = 0,
  kUsage = 1,
  kDaemonFailed = 2,
  kPidFileFailed = 3,
  kSignalsFailed = 4,
  kStoreFailed = 5,
  kSocketFailed = 6,
};

int32_t g_logLevel = LOG_INFO;

int32_t showUsage(const char* program) {
  std::printf("Tmx daemon version %s\nusage %s [--log=(0-7)] [--help]\n", kVersion, program);
  return -1;
}

int32_t analyzeOptions(int argc, char** argv) {
  static const std::array<option, 2> longOptions = {{{"log", required_argument, nullptr, 'l'}, {}}};
  opterr = 0;
  for (int choice = 0; (choice = getopt_long(argc, argv, "l:h?", longOptions.data(), nullptr)) != -1;) {
    if (choice != 'l') return showUsage(argv[0]);
    char* end = nullptr;
    const long level = std::strtol(optarg, &end, 10);
    if (*end != '\0' || level < LOG_EMERG || level > LOG_DEBUG) return showUsage(argv[0]);
    g_logLevel = static_cast<int32_t>(level);
  }
  return 0;
}

void setLogLevel() {
  TMX_LOG(LOG_INFO, "setLogLevel=%lx  ", static_cast<unsigned long>(g_logLevel));
  setlogmask(LOG_UPTO(g_logLevel));
}

/** Loads one store; where its files cannot be read, puts the factory's in their place and restarts the camera. */
bool load(Config& store, const char* message) {
  if (store.loadConfig() >= 0) return true;
  TMX_LOG(LOG_ERR, "%s", message);
  static_cast<void>(store.copyFactoryValueAndReboot());
  CTmxdUtility::reboot();
  return false;
}

/** Tells the recorder in which colour mode the camera comes up. */
void tellBoot(const Config& config) {
  const bool blackAndWhite = config.getCameraConfig(camera_row::TRUE_DAY_NIGHT) == "bw";
  static_cast<void>(ParamPitcher().putBootInfo(blackAndWhite ? 0 : 1));
}

void showReady() {
  const ParamPitcher recorder;
  // Both lamps log the same words.
  if (recorder.putLedCommand("orange", "off") != 200) TMX_LOG(LOG_ERR, "putLedCommand: orange off error");
  if (recorder.putLedCommand("green", "on") != 200) TMX_LOG(LOG_ERR, "putLedCommand: orange off error");
}

/** Gives the destinations 1 to 5 their stored state. */
void startDestinations(const Config& config) {
  constexpr std::array kStatusRows = {network_row::DEST1, network_row::DEST2, network_row::DEST3, network_row::DEST4,
                                      network_row::DEST5};
  const InitialisingGuard initialising;
  int destination = 0;
  for (const Row row : kStatusRows) {
    const char* word = config.get(row) == "on" ? "start" : "stop";
    execApiCommandInternal("network.destination(" + std::to_string(++destination) + ").status=" + word, nullptr,
                           user_class::kAdministrator, content_type::kPlain);
  }
}

/** Serves one client after the other, each to the end, until a stop signal has arrived. */
void acceptLoop(ParamRequest& requests, int32_t server) {
  while (Signals::keepsRunning()) {
    const int32_t client = UnixDomain::acceptClient(server);
    if (client < 0) continue;
    if (requests.processRequest(client) < 0) TMX_LOG(LOG_ERR, "ParamRequest::processRequest error");
    close(client);
  }
}

int listParameters() {
  const ParamRequest requests;
  ParamRequest::writeList();
  return kNormal;
}

int serve(const Config& config) {
  const int32_t server = UnixDomain::createServSocket(kSocket);
  if (server < 0) return kSocketFailed;
  tellBoot(config);
  {
    ParamRequest requests;
    showReady();
    CTmxdUtility::rebootDhcpcd();
    CTmxdUtility::rebootLighttpd();
    requests.startNvtAplThread();
    startDestinations(config);
    acceptLoop(requests, server);
  }
  unlink(kSocket);
  close(server);
  PidFile::remove();
  return kNormal;
}

}  // namespace

int main(int argc, char** argv) {
  Config* config = Config::getInstance();
  if (config == nullptr) return kUsage;
  CUserConfig* userConfig = CUserConfig::getInstance();
  if (analyzeOptions(argc, argv) < 0) return kUsage;
  setLogLevel();
  if (daemon(0, 0) < 0) {
    TMX_LOG(LOG_ERR, "daemon error(%m)");
    return kDaemonFailed;
  }
  switch (PidFile::create()) {
    case PidFile::kCreated:
      break;
    case PidFile::kOtherLives:
      return kNormal;
    default:
      TMX_LOG(LOG_ERR, "createPidFile error");
      return kPidFileFailed;
  }
  if (Signals::set() < 0) {
    TMX_LOG(LOG_ERR, "setSignalMask error");
    return kSignalsFailed;
  }
  if (!load(*config, "Config::loadConfig error")) return kStoreFailed;
  if (!load(*userConfig, "CUserConfig::loadConfig error")) return kStoreFailed;
  if (argc > 1 && std::strcmp(argv[1], kListMode) == 0) return listParameters();
  return serve(*config);
}
