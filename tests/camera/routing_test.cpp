// Gateways, resolver and names: what is taken, what waits, what reaches the kernel, the files and flash.

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

constexpr const char* kFile = "flash/sysconfig/network.conf";
constexpr const char* kInterfaceHint = "&202 Accepted(network.interface(1).status=restart)";
constexpr const char* kDnsHint = "&202 Accepted(network.dns.status=restart)";

class RoutingTest : public CameraTest {
 protected:
  void SetUp() override {
    camera().flash("off");
    camera().tell("dhcp usual");
    camera().ask("network.interface.dhcp.status=off&network.interface.dhcp.status=restart");
    for (const std::string index : {"(0)", "(1)", "(2)", "(3)"})
      camera().ask("network.gateway.ip" + index + "=0.0.0.0&network.domainname" + index + "=%00");
    camera().ask(
        "network.gateway.status=save&network.hostname=camera&network.dns.status=on&network.dns.ip=0.0.0.0&network.dns."
        "status=restart");
    CameraTest::SetUp();
  }

  /** The gateways of the default routes. */
  static std::string routes() { return camera().shell("route -n | awk '$1 == \"0.0.0.0\" {print $2}' | sort | xargs"); }
  static std::string resolverFile() { return camera().shell("cat /etc/resolv.conf 2>&1"); }
  /** Lets the address client bring what the words ask for. */
  static void lease(const std::string& words) {
    camera().ask("network.interface.dhcp.status=on&" + words);
    expectAnswers(camera(), {{"network.interface.dhcp.status=restart", kOk}});
    camera().ask("system.model");  // is answered when the client has its lease
  }
};

constexpr const char* kNoFile = "cat: /etc/resolv.conf: No such file or directory";

TEST_F(RoutingTest, ASaveSetsTheRoutesAtOnce) {
  expectAnswers(
      camera(), "network.gateway",
      {{"(ipv4)=192.168.0.1", kInterfaceHint}, {".ip(2)=192.168.0.3", kInterfaceHint}, {"(ipv4)", "=0.0.0.0&200 OK"}});
  EXPECT_EQ(routes(), "");
  expectAnswers(camera(), {{"network.gateway(ipv4).status=save", kOk}});
  EXPECT_EQ(routes(), "192.168.0.1 192.168.0.3");
  expectRows(camera(), kFile, {"GATEWAY_IPV4=192.168.0.1", "GATEWAY_IPV4_3=192.168.0.3"});
  expectAnswers(camera(), {{"network.gateway.ip", "=192.168.0.1&200 OK"}});

  camera().ask("network.gateway.ip(0)=192.168.0.254&network.gateway.ip(2)=0.0.0.0");
  camera().shell("route del default gw 192.168.0.3");  // somebody else did; that it is not there is no failure
  expectAnswers(camera(), {{"network.gateway.status=save", kOk}});
  EXPECT_EQ(routes(), "192.168.0.254");
}

TEST_F(RoutingTest, AGatewayThatDoesNotFitTakesAllBack) {
  const std::string before = camera().read(kFile);
  for (const std::string gateway :
       {"ip(0)=192.168.0.2", "ip(1)=192.168.0.0", "ip(2)=192.168.0.255", "ip(3)=10.0.0.1"}) {
    camera().ask("network.gateway.ip(0)=192.168.0.1");
    camera().ask("network.gateway." + gateway);
    expectAnswers(camera(), "network.gateway.status=",
                  {{"save",
                    "&412 Precondition "
                    "Failed(Mismatched:network.interface(1).ip=192.168.0.2,network.interface(1).subnetmask=255.255.255."
                    "0,network.gateway(ipv4)." +
                        gateway + ")"},
                   {"save", kOk}});  // nothing is left
  }
  EXPECT_EQ(routes(), "");
  EXPECT_EQ(camera().read(kFile), before);
}

TEST_F(RoutingTest, ALeaseOwnsTheRoutes) {
  camera().tell("dhcp lease 192.168.0.77 gateway=192.168.0.254");
  lease("network.gateway.ip(1)=192.168.0.3");
  expectAnswers(camera(), {{"network.gateway.status=save", kOk}});
  EXPECT_EQ(routes(), "192.168.0.254");
  EXPECT_EQ(camera().row(kFile, "GATEWAY_IPV4_2"), "192.168.0.3");
  for (const std::string path : {"network.gateway(ipv4)", "network.gateway(ipv4).ip(0)", "network.gateway.ip(1)"})
    expectAnswers(camera(), {{path, "=192.168.0.254&200 OK"}});
  camera().shell("route del default");
  expectAnswers(camera(), {{"network.gateway", "=0.0.0.0&200 OK"}});
}

TEST_F(RoutingTest, ARestartOfTheResolverMakesItsFile) {
  const struct {
    const char* staged;
    const char* file;
  } cases[] = {
      {"network.dns.ip=10.0.0.1", "nameserver 10.0.0.1"},
      {"network.domainname(1)=b.example&network.domainname(0)=a.example",
       "search a.example b.example\nnameserver 10.0.0.1"},
      {"network.domainname=%00&network.domainname(3)=D.example", "search b.example D.example\nnameserver 10.0.0.1"},
      {"network.dns.status=off", kNoFile},
      {"network.dns.status=on&network.dns.ip=10.0.0.2", "search b.example D.example\nnameserver 10.0.0.2"},
      {"network.dns.ip=0.0.0.0", kNoFile},
  };
  camera().shell("echo stale > /etc/resolv.conf");
  for (const auto& c : cases) {
    camera().ask(c.staged);
    expectAnswers(camera(), {{"network.dns.status=restart", kOk}});
    EXPECT_EQ(resolverFile(), c.file) << c.staged;
  }
  expectRows(camera(), kFile, {"DOMAINNAME4=D.example", "DNS_IP=0.0.0.0"});

  // Without a change nobody touches the file, and what is staged for others stays staged.
  camera().ask("network.gateway.ip(1)=192.168.0.9");
  camera().shell("echo mine > /etc/resolv.conf");
  expectAnswers(camera(), {{"network.dns.status=restart", kOk}});
  EXPECT_EQ(resolverFile(), "mine");
  EXPECT_EQ(camera().row(kFile, "GATEWAY_IPV4_2"), "0.0.0.0");
}

TEST_F(RoutingTest, TheResolversRefusals) {
  expectAnswers(camera(), "network.dns.status=", {{"off", kDnsHint}, {"on", kOk}});  // the active one again
  camera().ask("network.domainname=a");
  // The file that is to go is not there, and one that cannot be made.
  camera().shell("rm -f /etc/resolv.conf");
  expectAnswers(camera(), {{"network.dns.status=restart", k500}});
  EXPECT_TRUE(camera().isLogged("unlink error(No such file or directory)"));
  camera().shell("mkdir /etc/resolv.conf");
  camera().ask("network.dns.ip=10.0.0.1");
  expectAnswers(camera(), {{"network.dns.status=restart", k500}});
  EXPECT_TRUE(camera().isLogged("fstream open error"));
  expectAnswers(camera(), {{"network.dns.ip", "=10.0.0.1&200 OK"}});
  camera().shell("rmdir /etc/resolv.conf");
  camera().flash("full");
  camera().ask("network.dns.ip=10.0.0.2");
  expectAnswers(camera(), {{"network.dns.status=restart", k500}});
  EXPECT_EQ(resolverFile(), kNoFile);
}

TEST_F(RoutingTest, ALeaseMayOwnTheResolver) {
  camera().tell("dhcp lease 192.168.0.77 dns=192.168.0.53");
  lease("network.interface.dhcp.dns=on");
  EXPECT_EQ(resolverFile(), "nameserver 192.168.0.53");
  camera().ask("network.dns.ip=10.0.0.1");
  expectAnswers(camera(), {{"network.dns.status=restart", kOk}});
  EXPECT_EQ(resolverFile(), "nameserver 192.168.0.53");
  EXPECT_EQ(camera().row(kFile, "DNS_IP"), "10.0.0.1");
  expectAnswers(camera(), {{"network.dns.ip", "=192.168.0.53&200 OK"}});
}

TEST_F(RoutingTest, TheHostNameIsTheKernelsAtOnce) {
  const std::string longest(63, 'x');
  const struct {
    std::string value;
    const char* answer;
    std::string kernel;
  } cases[] = {{"gate", kOk, "gate"},
               {"Gate-2.example.org", kOk, "Gate-2.example.org"},
               {"cam_1", k451, "Gate-2.example.org"},
               {longest, kOk, longest},
               {"%00", kOk, ""}};
  for (const auto& c : cases) {
    expectAnswers(camera(), "network.hostname", {{"=" + c.value, c.answer}, {"", "=" + c.kernel + "&200 OK"}});
    EXPECT_EQ(camera().shell("cat /proc/sys/kernel/hostname"), c.kernel) << c.value;
    EXPECT_EQ(camera().row(kFile, "HOSTNAME"), c.kernel);
  }
  // The same name again acts again; a name that flash does not take is not the kernel's.
  camera().ask("network.hostname=gate");
  camera().shell("hostname other");
  expectAnswers(camera(), {{"network.hostname=gate", kOk}});
  EXPECT_EQ(camera().shell("hostname"), "gate");
  camera().flash("full");
  expectAnswers(camera(), {{"network.hostname=never", k500}});
  EXPECT_EQ(camera().shell("hostname"), "gate");
}

TEST_F(RoutingTest, ALeasedHostNameIsTheKernels) {
  camera().tell("dhcp lease 192.168.0.77 hostname=leased");
  lease("network.interface.dhcp.hostname=on");
  expectAnswers(camera(), "network.hostname", {{"", "=leased&200 OK"}, {"=mine", kOk}});
  EXPECT_EQ(camera().shell("hostname"), "leased");
  EXPECT_EQ(camera().row(kFile, "HOSTNAME"), "mine");
  camera().shell("hostname " + std::string(64, 'x'));
  expectAnswers(camera(), {{"network.hostname", k500}});
}

TEST_F(RoutingTest, AStartSetsEverythingAndWritesNothing) {
  camera().ask("network.gateway.ip(1)=192.168.0.4&network.gateway.status=save&network.hostname=gate");
  camera().ask("network.dns.ip=10.0.0.1&network.domainname(2)=c.example&network.dns.status=restart");
  const auto written = std::filesystem::last_write_time(camera().path(kFile));
  ASSERT_TRUE(camera().reboot());
  EXPECT_EQ(routes(), "192.168.0.4");
  EXPECT_EQ(resolverFile(), "search c.example\nnameserver 10.0.0.1");
  EXPECT_EQ(camera().shell("hostname"), "gate");
  EXPECT_EQ(std::filesystem::last_write_time(camera().path(kFile)), written);
}

}  // namespace
}  // namespace test
