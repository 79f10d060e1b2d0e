// Neighbours that are down, refuse, close early or talk nonsense: the defined failure, and the next request is served.

#include <chrono>

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

class Neighbours : public CameraTest {};

TEST_F(Neighbours, EveryFaultOfEveryNeighbour) {
  struct Case {
    const char* neighbour;
    const char* request;
    const char* answer;  // behind the path, while the neighbour misbehaves
    const char* faults;  // those that fail the exchange; the others bring an answer like any other
  };
  const Case cases[] = {
      {"detection", "camera.detection.level=50", k500, "down early garbage refuse"},
      {"ptz", "camera.motion.pan.mode=left", k500, "down early"},
      {"session", "system.session.total_bitrate", "=&200 OK", "down early short"},
  };
  for (const Case& item : cases) {
    const std::string request = item.request;
    const std::string healthy = camera().ask(request);
    for (const char* fault : {"down", "early", "short", "garbage", "refuse"}) {
      const std::string what = std::string(item.neighbour) + " " + fault;
      camera().tell(what);
      const std::string answer = camera().ask(request);
      if (std::string_view(item.faults).find(fault) != std::string_view::npos) {
        EXPECT_EQ(answer, request.substr(0, request.find('=')) + item.answer) << what;
      }
      EXPECT_EQ(camera().ask("system.model"), "system.model=KT-A10&200 OK") << what;
      camera().tell(std::string(item.neighbour) + " up");
      EXPECT_EQ(camera().ask(request), healthy) << what;
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
