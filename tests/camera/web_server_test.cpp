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
  static std::string pid() {
    camera().exec({"/bin/cat", "/var/run/lighttpd.pid"});
    return camera().read("sandbox-output");
  }

 private:
  static bool inside(const std::string& script) {
    return camera().exec({"/bin/bash", "-c", "exec 2>/dev/null; " + script}) == 0;
  }
};

TEST_F(WebServer, TakesItsValues) {
  expectAnswers(camera(), {
                              {"network.http.port", "=80&200 OK"},
                              {"network.http.port=80", kOk},
                              {"network.http.port=80x", k451},
                              {"network.http.port=0", k457},
                              {"network.http.port=65536", k457},
                              {"network.http(streaming).port=80", k461},
                              {"network.http(streaming).port=x", k451},
                              {"network.http(streaming).port", k461},
                              {"network.http(video).port", k451},
                              {"network.http.type", "=http&200 OK"},
                              {"network.http.type=http", k501},
                              {"network.http.status", "=on&200 OK"},
                              {"network.http.status=off", kHttpHint},
                              {"network.http.status=on", kOk},
                              {"network.http(streaming).status=off", kHttpStreamingHint},
                              {"network.http(streaming).status=on", kOk},
                              {"network.http(streaming).status=yes", k451},
                              {"network.http(streaming).status=restart", kOk},
                              {"network.https.port", "=443&200 OK"},
                              {"network.https(configuration).port=443", kOk},
                              {"network.https(streaming).port=443", k461},
                              {"network.https(streaming).status=on", kHttpsStreamingHint},
                              {"network.https(streaming).status=off", kOk},
                              {"network.https.status=on", kHttpsHint},
                              {"network.https.status", "=off&200 OK"},
                              {"network.https.status=off", kOk},
                              {"network.http.priority", k461},
                              {"network.http(configuration).priority=framerate", k461},
                              {"network.http(streaming).priority=quality", k451},
                          });
  EXPECT_EQ(camera().ask("network.http(streaming).status=restart&network.https.status=restart"),
            "network.http(streaming).status&200 OK\r\nnetwork.https.status&200 OK");
  EXPECT_TRUE(camera().journal("child").empty());
}

TEST_F(WebServer, FavoursOneKindOfClients) {
  const std::string path = "network.http(streaming).priority";
  camera().clearJournal();
  EXPECT_EQ(camera().ask(path + "=clientnumber"), path + "&200 OK");
  EXPECT_EQ(camera().ask(path + "=framerate"), path + "&200 OK");
  Texts told;
  for (const std::string& line : camera().journal("session")) {
    if (Camera::field(line, "what") == "priority") told.push_back(Camera::field(line, "index"));
  }
  EXPECT_EQ(told, (Texts{"0", "1"}));
  EXPECT_EQ(row("HTTP_CONFIG_STREAMING_PRIORITY"), "framerate");
  camera().tell("session add h264high 900 http");
  EXPECT_EQ(camera().ask(path + "=clientnumber"), path + "&403 Forbidden");
  EXPECT_EQ(camera().ask(path + "=x"), path + "&403 Forbidden");
  EXPECT_EQ(camera().ask(path), path + "=framerate&200 OK");
  camera().tell("session clear");
  EXPECT_EQ(camera().ask(path + "=framerate"), path + "&200 OK");

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
    EXPECT_EQ(camera().ask("network.http.status=restart"), std::string("network.http.status") + k412) << use;
    EXPECT_EQ(row("HTTP_CONFIG_STATUS") + row("HTTP_CONFIG_STREAMING_STATUS"), "onon") << use;
    EXPECT_EQ(camera().ask("network.http(" + use + ").status=on&network.http.status=restart"),
              "network.http(" + use + ").status&200 OK\r\nnetwork.http.status&200 OK");
  }
}

TEST_F(WebServer, AnswersOnAnotherPort) {
  ASSERT_TRUE(serves("80"));
  const std::string before = pid();
  camera().ask("network.http.status=off&network.http(configuration).port=8088&network.http.status=restart");
  EXPECT_EQ(row("HTTP_CONFIG_PORT"), "80") << "refused";
  // The port that equals the one in force is no change, and takes nothing back.
  camera().ask("network.http.status=on&network.http.port=80");
  EXPECT_EQ(camera().ask("network.http.status=restart"), "network.http.status&200 OK");
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
  EXPECT_EQ(camera().ask("network.https.port=8443&network.https.status=on&network.https(streaming).status=on"),
            std::string("network.https.port") + kHttpsHint + "\r\nnetwork.https.status" + kHttpsHint +
                "\r\nnetwork.https(streaming).status" + kHttpsStreamingHint);
  EXPECT_EQ(camera().ask("network.https.status=restart"), "network.https.status&200 OK");
  EXPECT_EQ(row("HTTPS_CONFIG_PORT"), "8443");
  ASSERT_TRUE(eventually([] { return servesTls("8443"); }));

  // With the one on, the other may go; a status of HTTP alone restarts nothing.
  const std::string before = pid();
  camera().ask("network.http.status=off&network.http(streaming).status=off");
  EXPECT_EQ(camera().ask("network.http.status=restart"), "network.http.status&200 OK");
  EXPECT_EQ(row("HTTP_CONFIG_STATUS"), "off");
  camera().ask("network.https(streaming).status=off");
  EXPECT_EQ(camera().ask("network.https.status=restart"), std::string("network.https.status") + k412);
  camera().ask("network.https(streaming).status=on&network.http.status=on&network.http(streaming).status=on");
  EXPECT_EQ(camera().ask("network.http.status=restart"), "network.http.status&200 OK");
  EXPECT_EQ(pid(), before);

  camera().ask("network.https.status=off&network.https(streaming).status=off");
  EXPECT_EQ(camera().ask("network.https.status=restart"), "network.https.status&200 OK");
  ASSERT_TRUE(eventually([&] { return !servesTls("8443") && serves("80"); }));
}

TEST_F(WebServer, NeedsACertificateForTls) {
  const auto move = [](const char* from, const char* to) { return camera().exec({"/bin/mv", from, to}); };
  constexpr const char* kFile = "/mnt/flash/lighttpd/server.pem";
  ASSERT_EQ(move(kFile, "/tmp/server.pem"), 0);
  for (const char* value : {"on", "off"})
    EXPECT_EQ(camera().ask(std::string("network.https.status=") + value), std::string("network.https.status") + k412);
  EXPECT_EQ(camera().ask("network.https.status=maybe"), std::string("network.https.status") + k451);
  EXPECT_EQ(camera().ask("network.https.status=restart"), "network.https.status&200 OK");
  ASSERT_EQ(move("/tmp/server.pem", kFile), 0);

  Camera without({.without = {"/bin/openssl"}});
  ASSERT_TRUE(without.up());
  for (const char* request : {"network.https.port", "network.https.status=on", "network.https(word).port"})
    EXPECT_TRUE(without.ask(request).ends_with(k461)) << request;
}

}  // namespace
}  // namespace test
