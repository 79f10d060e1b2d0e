// Neighbours that are down, refuse, close early or talk nonsense: the defined failure, and the next request is served.

#include <chrono>

#include "tests/camera/Camera.h"

namespace test {
namespace {

class Neighbours : public CameraTest {};

struct Exchanged {
  const char* neighbour;
  const char* request;
  const char* failed;   // the answer behind the path while the neighbour misbehaves
  const char* refused;  // and to its own refusal
};

constexpr const char* k500 = "&500 Internal Server Error";

TEST_F(Neighbours, EveryFaultOfEveryNeighbour) {
  const Exchanged exchanges[] = {
      {"detection", "camera.detection.level=50", k500, k500},
      {"ptz", "camera.motion.pan.mode=left", k500, nullptr},
      {"session", "system.session.total_bitrate", "=k&200 OK", nullptr},
  };
  for (const Exchanged& exchange : exchanges) {
    const std::string neighbour = exchange.neighbour;
    const std::string request = exchange.request;
    const std::string path = request.substr(0, request.find('='));
    const std::string healthy = camera().ask(request);
    for (const char* fault : {"down", "early", "short", "garbage", "refuse"}) {
      camera().tell(neighbour + " " + fault);
      const bool isRefusal = std::string_view(fault) == "refuse";
      const std::string answer = camera().ask(request);
      if (isRefusal && exchange.refused != nullptr) {
        EXPECT_EQ(answer, path + exchange.refused) << fault;
      } else if (neighbour == "detection" || std::string_view(fault) == "down" || std::string_view(fault) == "early") {
        // Half an answer or a garbled one is a text like any other to those who ask for texts.
        EXPECT_TRUE(answer == path + exchange.failed || std::string_view(fault) == "short")
            << neighbour << fault << answer;
      }
      EXPECT_EQ(camera().ask("system.model"), "system.model=KT-A10&200 OK") << neighbour << " " << fault;
      camera().tell(neighbour + " up");
      EXPECT_EQ(camera().ask(request), healthy) << neighbour << " " << fault;
    }
  }
}

TEST_F(Neighbours, ASilentSequencerCostsFiveSeconds) {
  camera().tell("ptz silent for=write");
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(camera().ask("camera.motion.pan.mode=left"), std::string("camera.motion.pan.mode") + k500);
  const std::chrono::duration<double> waited = std::chrono::steady_clock::now() - start;
  EXPECT_NEAR(waited.count(), 5, 2);
  camera().tell("ptz up");
}

TEST_F(Neighbours, TheCameraStartsWithoutThem) {
  for (const char* neighbour : {"gpio", "ptz", "recorder", "detection", "session", "defect", "serial", "sdrec"}) {
    camera().tell(std::string(neighbour) + " down");
  }
  EXPECT_EQ(
      camera().exec({"/bin/sh", "-c",
                     "pid=$(cat /var/run/tmxd.pid); kill $pid; while kill -0 $pid 2>/dev/null; do sleep 0.02; done; "
                     "/opt/camera/bin/tmxd"}),
      0);
  EXPECT_TRUE(eventually([] { return camera().ask("system.model") == "system.model=KT-A10&200 OK"; }));
  EXPECT_TRUE(camera().isLogged("putLedCommand: orange off error"));
}

}  // namespace
}  // namespace test
