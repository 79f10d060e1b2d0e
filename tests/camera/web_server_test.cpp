// Web server control: on which ports and for which use the camera's own web server answers.

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

constexpr const char* kHttpHint = "&202 Accepted(network.http(configuration).status=restart)";
constexpr const char* kHttpStreamingHint = "&202 Accepted(network.http(streaming).status=restart)";
constexpr const char* kHttpsHint = "&202 Accepted(network.https(configuration).status=restart)";
constexpr const char* kHttpsStreamingHint = "&202 Accepted(network.https(streaming).status=restart)";

class WebServer : public CameraTest {
 protected:
  static std::string row(const char* key) { return camera().row("flash/sysconfig/network.conf", key); }

  static bool serves(const char* port) {
    return inside(std::string("exec 3<>/dev/tcp/127.0.0.1/") + port +
                  " && printf 'GET / HTTP/1.0\\r\\n\\r\\n' >&3 && grep -q '<h1>Camera</h1>' <&3");
  }
  static bool servesTls(const char* port) {
    return inside(std::string("printf 'GET / HTTP/1.0\\r\\n\\r\\n' | openssl s_client -quiet -connect 127.0.0.1:") +
                  port + " 2>/dev/null | grep -q '<h1>Camera</h1>'");
  }
  /** Which web server runs: another one behind each restart. */
  static std::string pid() { return camera().shell("cat /var/run/lighttpd.pid"); }

 private:
  static bool inside(const std::string& script) {
    return camera().exec({"/bin/bash", "-c", "exec 2>/dev/null; " + script}) == 0;
  }
};

TEST_F(WebServer, AChangeThatIsTakenBackRestartsNothing) {
  expectAnswers(camera(), "network.",
                {{"http(streaming).port=80", k461},
                 {"http.port=80", kOk},
                 {"http.type=http", k501},
                 {"http.status=off", kHttpHint},
                 {"http.status=on", kOk},
                 {"http(streaming).status=off", kHttpStreamingHint},
                 {"http(streaming).status=on", kOk},
                 {"http(streaming).status=restart", kOk},
                 {"https(streaming).port=443", k461},
                 {"https(streaming).status=on", kHttpsStreamingHint},
                 {"https(streaming).status=off", kOk},
                 {"https.status=on", kHttpsHint},
                 {"https.status", "=off&200 OK"},
                 {"https.status=off", kOk},
                 {"http.priority", k461},
                 {"http(configuration).priority=framerate", k461},
                 {"http(streaming).status=restart", kOk},
                 {"https.status=restart", kOk}});
  EXPECT_TRUE(camera().journal("child").empty());
}

TEST_F(WebServer, FavoursOneKindOfClients) {
  const std::string path = "network.http(streaming).priority";
  expectAnswers(camera(), path, {{"=clientnumber", kOk}, {"=framerate", kOk}});
  Texts told;
  for (const std::string& line : camera().journal("session")) {
    if (Camera::field(line, "what") == "priority") told.push_back(Camera::field(line, "index"));
  }
  EXPECT_EQ(told, (Texts{"0", "1"}));
  EXPECT_EQ(row("HTTP_CONFIG_STREAMING_PRIORITY"), "framerate");
  camera().tell("session add h264high 900 http");
  expectAnswers(camera(), path,
                {{"=clientnumber", "&403 Forbidden"}, {"=x", "&403 Forbidden"}, {"", "=framerate&200 OK"}});
  camera().tell("session clear");
  camera().flash("full");
  expectAnswers(camera(), path, {{"=clientnumber", k500}});
  camera().flash("off");
  expectAnswers(camera(), path, {{"=framerate", kOk}});

  // The session daemon hears of it at each start.
  camera().clearJournal();
  ASSERT_TRUE(camera().reboot());
  const Texts names = camera().journalFields("session", "what");
  EXPECT_NE(std::find(names.begin(), names.end(), "priority"), names.end());
}

TEST_F(WebServer, StaysReachable) {
  // Closed on both sides a use strikes every change; what is staged is kept.
  for (const std::string use : {"configuration", "streaming"}) {
    camera().ask("network.http(" + use + ").status=off");
    expectAnswers(camera(), {{"network.http.status=restart", k412}});
    EXPECT_EQ(row("HTTP_CONFIG_STATUS") + row("HTTP_CONFIG_STREAMING_STATUS"), "onon") << use;
    expectAnswers(camera(), "network.http", {{"(" + use + ").status=on", kOk}, {".status=restart", kOk}});
  }
}

TEST_F(WebServer, AnswersOnAnotherPort) {
  ASSERT_TRUE(serves("80"));
  const std::string before = pid();
  camera().ask("network.http.status=off&network.http(configuration).port=8088&network.http.status=restart");
  EXPECT_EQ(row("HTTP_CONFIG_PORT"), "80") << "refused";
  // The port that equals the one in force is no change, and takes nothing back.
  camera().ask("network.http.status=on&network.http.port=80");
  expectAnswers(camera(), {{"network.http.status=restart", kOk}});
  EXPECT_EQ(row("HTTP_CONFIG_PORT"), "8088");
  ASSERT_TRUE(eventually([] { return serves("8088"); }));
  EXPECT_FALSE(serves("80"));
  EXPECT_NE(pid(), before);

  ASSERT_TRUE(camera().reboot());
  ASSERT_TRUE(eventually([] { return serves("8088"); }));
  EXPECT_EQ(
      camera().ask("network.http.port=80&network.http.status=restart&network.http.status=restart"),
      std::string("network.http.port") + kHttpHint + "\r\nnetwork.http.status&200 OK\r\nnetwork.http.status&200 OK");
  ASSERT_TRUE(eventually([] { return serves("80"); }));
}

TEST_F(WebServer, AnswersOverTls) {
  expectAnswers(camera(), "network.https",
                {{".port=8443", kHttpsHint},
                 {".status=on", kHttpsHint},
                 {"(streaming).status=on", kHttpsStreamingHint},
                 {".status=restart", kOk}});
  EXPECT_EQ(row("HTTPS_CONFIG_PORT"), "8443");
  ASSERT_TRUE(eventually([] { return servesTls("8443"); }));

  // With the one on, the other may go; a status of HTTP alone restarts nothing.
  const std::string before = pid();
  camera().ask("network.http.status=off&network.http(streaming).status=off");
  expectAnswers(camera(), {{"network.http.status=restart", kOk}});
  EXPECT_EQ(row("HTTP_CONFIG_STATUS"), "off");
  camera().ask("network.https(streaming).status=off");
  expectAnswers(camera(), {{"network.https.status=restart", k412}});
  camera().ask("network.https(streaming).status=on&network.http.status=on&network.http(streaming).status=on");
  expectAnswers(camera(), {{"network.http.status=restart", kOk}});
  EXPECT_EQ(pid(), before);

  camera().ask("network.https.status=off&network.https(streaming).status=off");
  expectAnswers(camera(), {{"network.https.status=restart", kOk}});
  ASSERT_TRUE(eventually([&] { return !servesTls("8443") && serves("80"); }));
}

TEST_F(WebServer, NeedsACertificateForTls) {
  const auto move = [](const char* from, const char* to) { return camera().exec({"/bin/mv", from, to}); };
  constexpr const char* kFile = "/mnt/flash/lighttpd/server.pem";
  ASSERT_EQ(move(kFile, "/tmp/server.pem"), 0);
  expectAnswers(camera(), "network.https.status=", {{"on", k412}, {"off", k412}, {"maybe", k451}, {"restart", kOk}});
  ASSERT_EQ(move("/tmp/server.pem", kFile), 0);

  Camera without({.without = {"/bin/openssl"}});
  ASSERT_TRUE(without.up());
  expectAnswers(without, "network.https", {{".port", k461}, {".status=on", k461}, {"(word).port", k461}});
}

// What the web server says on the way out of the camera, back in through the relay, and out again.
TEST(Relay, LeadsInAndTheUplinkOut) {
  Camera camera;
  const Relay relay(camera);
  constexpr const char* kTitle = "grep -q '<h1>Camera</h1>'";
  const auto isServed = [&](const std::string& client) {
    return eventually([&] {
      return camera.exec(
                 {"/bin/bash", "-c", "printf 'GET / HTTP/1.0\r\n\r\n' | timeout 9 " + client + " | " + kTitle}) == 0;
    });
  };
  constexpr const char* kPlain = "bash -c 'exec 3<>/dev/tcp/127.0.0.1/8883 && cat >&3 && cat <&3'";
  camera.leadUplinkTo(relay.port());
  ASSERT_TRUE(camera.up());
  EXPECT_TRUE(isServed(kPlain));

  camera.setRows("flash/sysconfig/network.conf",
                 {"HTTPS_CONFIG_STATUS=on", "HTTPS_CONFIG_PORT=8443", "HTTP_CONFIG_PORT=8080"});
  ASSERT_TRUE(camera.reboot());
  EXPECT_TRUE(isServed(kPlain)) << "other network, other port";
  camera.down();
  camera.leadUplinkTo(relay.encryptedPort());
  ASSERT_TRUE(camera.up());
  EXPECT_TRUE(isServed("openssl s_client -quiet -connect 127.0.0.1:8883 2>/dev/null"));
}

}  // namespace
}  // namespace test
