// Text of requests and of neighbours on its way to shells, command lines, paths and other programs' files
// (docs/security.md): what is refused, and that nothing of the rest is executed or written anywhere else.

#include <filesystem>

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

/** Whatever a shell is made to run leaves this file. */
constexpr const char* kMarker = "tmp/m";

const Texts kEvil{";>/tmp/m",      "|>/tmp/m",   "`>/tmp/m`",  "$(>/tmp/m)",  "%26>/tmp/m&", "';>/tmp/m;'",
                  "\";>/tmp/m;\"", "%0a>/tmp/m", "%0d>/tmp/m", "%00;>/tmp/m", "\n>/tmp/m",   "\r>/tmp/m",
                  "../../tmp/m",   "--x=y",      "%s%n",       "\n>/tmp/m\nx"};

/** A parameter whose text goes further than the store, a value for it, and the request that carries it on. */
struct Place {
  const char* path;
  const char* good;
  const char* commit = "";
};

const Place kRefusing[] = {
    {"system.date", "20240101000000"},
    {"system.timezone", "Japan"},
    {"network.hostname", "camera_"},
    {"network.domainname(0)", "lan_", "network.dns.status=restart"},
    {"network.dns.ip", "10.0.0.1", "network.dns.status=restart"},
    {"network.ntp.interval", "5", "network.ntp.status=restart"},
    {"network.ntp.unit", "day", "network.ntp.status=restart"},
    {"network.http(configuration).port", "8080", "network.http(configuration).status=restart"},
    {"network.https(configuration).port", "8443", "network.https(configuration).status=restart"},
    {"network.rtsp(configuration).port", "5544", "network.rtsp(configuration).status=restart"},
    {"network.interface(1).ip", "10.0.0.7"},
    {"network.interface(1).subnetmask", "255.255.255.0"},
    {"network.interface(1).dscp", "4"},
    {"network.interface(1).ttl.multicast", "5"},
    {"network.interface(1).ipv6.status", "on"},
    {"network.gateway(ipv4).ip(0)", "192.168.0.1", "network.gateway(ipv4).status=save"},
    {"network.access_control(stream_out).host(1)", "10.0.0.1/24"},
    {"network.destination(1).host", "239.0.0.1", "network.destination(1).status=save"},
    {"network.destination(1).port", "5000", "network.destination(1).status=save"},
    {"network.destination(1).framerate", "5", "network.destination(1).status=save"},
    {"encode(1).framerate", "5", "encode(1).status=save"},
    {"encode(1).bitrate", "1000000", "encode(1).status=save"},
    {"encode(1).iframeinterval", "5", "encode(1).status=save"},
    {"encode(1).framesize", "1920x1080", "encode(1).status=save"},
    {"camera.motion.pan", "s100"},
    {"camera.motion.pan.speed", "5"},
    {"camera.motion.clickoncenter", "s100-s100"},
    {"camera.motion.auto_patrol(0).position(1).duration", "10"},
    {"camera.detection.area", "00000000000000000000000000000000f0"},
    {"peripheral.serial.parity", "odd"},
};

/** What these take reaches the store, a library, a packet or a command line as it stands; each is one line or nothing.
 */
const Place kTaking[] = {
    {"system.password.admin(1)", "abc"},
    {"network.ntp.host", "time.example", "network.ntp.status=restart"},
    {"network.onvif.comment", "x"},
    {"camera.id", "x", "camera.status=save"},
    {"camera.comment", "x", "camera.status=save"},
    {"camera.position(3).comment", "x"},
    {"application.audioplay(1).name", "x"},
    {"application.event(1).trigger", "x", "application.event(1).status=restart"},
    {"application.event(1).action", "x", "application.event(1).status=restart"},
    {"application.object(1).source", "encode(1)"},
    {"application.ftp.host", "x"},
    {"application.ftp.user", "x"},
    {"application.ftp.password", "x"},
    {"application.ftp.path", "x"},
    {"application.ftp.naming_option", "x"},
    {"application.smtp.host", "x"},
    {"application.smtp.mailfrom", "a@b"},
    {"application.pop.host", "x"},
    {"application.pop.user", "x"},
    {"application.pop.password", "x"},
};

class Injection : public CameraTest {
 protected:
  static bool isMarked() { return std::filesystem::exists(camera().path(kMarker)); }

  static std::string status(const std::string& request) {
    const std::string answer = camera().ask(request);
    return answer.substr(answer.rfind('&') + 1, 3);
  }

  /** Everything that the daemon writes for itself and for others, and the names in the folders around it. */
  static std::string files() {
    return camera().shell(
        "ls -A / /etc /etc/lighttpd /mnt/sysinfo /mnt/flash; cat /etc/resolv.conf /etc/lighttpd/*.conf /etc/onvif/* "
        "2>&1; cat /etc/lighttpd/.htpasswd | sed 's/:.*//'; find /mnt/flash/sysconfig -type f | sort | xargs cat");
  }
  static long lines(const std::string& text) { return std::count(text.begin(), text.end(), '\n'); }

  /** Tries every text behind the front. */
  static void tryAll(const Place& place, const std::string& front, const Texts& statuses) {
    for (const std::string& evil : kEvil) {
      const std::string request = std::string(place.path) + "=" + front + evil;
      const std::string answer = status(request);
      EXPECT_EQ(std::count(statuses.begin(), statuses.end(), answer), 1) << request << ": " << answer;
      if (*place.commit != '\0') status(place.commit);
    }
    EXPECT_FALSE(isMarked()) << place.path;
  }
};

TEST_F(Injection, WhatIsNoValueIsRefused) {
  for (const Place& place : kRefusing) {
    if (*place.commit != '\0') status(place.commit);
    const std::string before = files();
    for (const char* front : {"", place.good})
      tryAll(place, front, {"451", "457"});
    EXPECT_EQ(files(), before) << place.path;
  }
}

TEST_F(Injection, WhatIsTakenStaysOneLine) {
  for (const Place& place : kTaking) {
    status(std::string(place.path) + "=" + place.good);
    const std::string before = files();
    tryAll(place, place.good, {"200", "202", "451", "457", "500"});
    EXPECT_EQ(lines(files()), lines(before)) << place.path;
  }
  ASSERT_TRUE(camera().reboot());
  EXPECT_FALSE(isMarked());
}

/** A host is one argument of the time client's, whatever stands in it. */
TEST_F(Injection, AHostIsOneArgument) {
  camera().ask("network.ntp.status=on&network.ntp.interval=7&network.ntp.unit=hour");
  for (const std::string evil : {";>/tmp/m", "$(>/tmp/m) x", "`>/tmp/m`", "'x' \"y", "%0a>/tmp/m"}) {
    camera().clearJournal();
    camera().ask("network.ntp.host=" + evil + "&network.ntp.status=restart");
    const Texts commands = camera().journalFields("child", "command");
    EXPECT_EQ(std::count(commands.begin(), commands.end(), "pntpd --interval 7 --unit hour " + evil), 1) << evil;
  }
  camera().ask("network.ntp.status=off&network.ntp.status=restart");
  EXPECT_FALSE(isMarked());
}

/** No text of a path or a selector gets anywhere. */
TEST_F(Injection, PathsAndSelectors) {
  const std::string before = files();
  for (const char* request :
       {"system.password.admin(1;>/tmp/m)=abc", "system.password.admin(../1)=abc",
        "camera.scene(1;>/tmp/m).status=save", "camera.scene(../../tmp/m).status=initialize",
        "camera.position(`>/tmp/m`).status=save", "application.audioplay(../../../../tmp/m).status=delete",
        "application.event(1|>/tmp/m).status=restart", "application.event(1).filter(monday;>/tmp/m).status=on",
        "network.domainname($(>/tmp/m))=x", "network.destination(1;>/tmp/m).status=start",
        "storage.disk(1;>/tmp/m).mount=on", "encode.range(jpeg;>/tmp/m)", "encode(1;>/tmp/m).status=save",
        "system.log;>/tmp/m", "`>/tmp/m`", "../../etc/passwd", "%s%n%s%n", "system.model%0a>/tmp/m"}) {
    const std::string answer = status(request);
    EXPECT_TRUE(answer == "451" || answer == "456" || answer == "461") << request << ": " << answer;
  }
  EXPECT_EQ(files(), before);
  EXPECT_FALSE(isMarked());
}

/** What neighbours and the address server say is shown, and nothing else. */
TEST_F(Injection, WhatNeighboursSayIsOnlyShown) {
  camera().tell("session add $(>/tmp/m) 10 `>/tmp/m` ip=;>/tmp/m port=|>/tmp/m session='x");
  camera().tell("dhcp lease 192.168.0.9 dns=;>/tmp/m ntp=$(>/tmp/m) hostname=`>/tmp/m`");
  camera().ask(
      "network.interface(1).dhcp.status=on&network.interface(1).dhcp.dns=on&network.interface(1).dhcp.ntp=on&"
      "network.interface(1).dhcp.hostname=on&network.interface(1).dhcp.status=restart");
  expectAnswers(camera(), {{"system.session.sending(1).to.ip", "=;>/tmp/m&200 OK"},
                           {"system.session.sending(1).to.protocol", "=`>/tmp/m`&200 OK"},
                           {"system.session.sending(1).from.encode", "=$(>/tmp/m)&200 OK"},
                           {"network.destination(1).status=start", "=on&200 OK"},
                           {"network.dns.ip", "=;>/tmp/m&200 OK"},
                           {"network.ntp.host", "=$(>/tmp/m)&200 OK"},
                           {"network.hostname", "=`>/tmp/m`&200 OK"}});
  camera().ask("network.ntp.status=restart&network.dns.status=restart&network.gateway.status=save");
  EXPECT_FALSE(isMarked());
}

/** The one value that a shell gets as it stands. It also shows that the marker tells. */
TEST_F(Injection, TheFactorysAddressReachesTheShell) {
  const std::string value = "x;>/tmp/m #345678";
  EXPECT_EQ(status("system._00c0de_ozm_mac=" + value + "x"), "451");
  EXPECT_FALSE(isMarked());
  EXPECT_EQ(status("system._00c0de_ozm_mac=" + value), "202");
  EXPECT_TRUE(isMarked());
  std::filesystem::remove(camera().path(kMarker));
}

}  // namespace
}  // namespace test
