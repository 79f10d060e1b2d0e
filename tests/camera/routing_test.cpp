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
    camera().ask(
        "network.gateway.ip(0)=0.0.0.0&network.gateway.ip(1)=0.0.0.0&network.gateway.ip(2)=0.0.0.0&"
        "network.gateway.ip(3)=0.0.0.0&network.gateway.status=save&network.hostname=camera&network.dns.status=on&"
        "network.dns.ip=0.0.0.0&network.domainname(0)=%00&network.domainname(1)=%00&network.domainname(2)=%00&"
        "network.domainname(3)=%00&network.dns.status=restart");
    CameraTest::SetUp();
  }

  /** The gateways of the default routes. */
  static std::string routes() { return camera().shell("route -n | awk '$1 == \"0.0.0.0\" {print $2}' | sort | xargs"); }
  static std::string resolverFile() { return camera().shell("cat /etc/resolv.conf 2>&1"); }
  /** Lets the address client bring what the words ask for. */
  static void lease(const std::string& words) {
    EXPECT_EQ(camera().ask("network.interface.dhcp.status=on"),
              std::string("network.interface.dhcp.status") + kInterfaceHint);
    camera().ask(words);
    EXPECT_EQ(camera().ask("network.interface.dhcp.status=restart"), "network.interface.dhcp.status&200 OK");
    camera().ask("system.model");  // is answered when the client has its lease
  }
};

constexpr const char* kNoFile = "cat: /etc/resolv.conf: No such file or directory";

TEST_F(RoutingTest, Addresses) {
  const struct {
    const char* path;
    std::string hint;
  } leaves[] = {{"network.gateway(ipv4).ip(0)", kInterfaceHint},
                {"network.gateway.ip(3)", kInterfaceHint},
                {"network.gateway(ipv4)", kInterfaceHint},
                {"network.dns.ip", kDnsHint}};
  const struct {
    const char* value;
    const char* answer;  // none: the hint
  } cases[] = {{"192.168.0.1", nullptr}, {"10.0.0.0", nullptr}, {"0.0.0.0", kOk}, {"255.255.255.255", k451},
               {"127.0.0.1", k451},      {"1.2.3", k451},       {"::1", k451},    {"0", k451}};
  for (const auto& leaf : leaves) {
    const std::string path = leaf.path;
    for (const auto& c : cases)
      EXPECT_EQ(camera().ask(path + "=" + c.value), path + (c.answer != nullptr ? c.answer : leaf.hint)) << c.value;
    EXPECT_EQ(camera().ask(path), path + "=0.0.0.0&200 OK");
  }
  expectAnswers(camera(), {{"network.gateway(ipv6)", "network.gateway(ipv6)" + std::string(k451)},
                           {"network.gateway.ip(4)", "network.gateway.ip(4)" + std::string(k456)},
                           {"network.gateway.ip(x)=1.2.3.4", "network.gateway.ip(x)" + std::string(k451)},
                           {"network.gateway.status", "network.gateway.status" + std::string(k405)},
                           {"network.gateway.status=restart", "network.gateway.status" + std::string(k451)},
                           {"network.dns.type", "network.dns.type=dns&200 OK"},
                           {"network.dns.type=dns", "network.dns.type&200 OK"},
                           {"network.dns.type=wins", "network.dns.type" + std::string(k451)}});
}

TEST_F(RoutingTest, ASaveSetsTheRoutesAtOnce) {
  expectAnswers(camera(), {{"network.gateway(ipv4)=192.168.0.1", std::string("network.gateway(ipv4)") + kInterfaceHint},
                           {"network.gateway.ip(2)=192.168.0.3", std::string("network.gateway.ip(2)") + kInterfaceHint},
                           {"network.gateway(ipv4)", "network.gateway(ipv4)=0.0.0.0&200 OK"}});
  EXPECT_EQ(routes(), "");
  EXPECT_EQ(camera().ask("network.gateway(ipv4).status=save"), "network.gateway(ipv4).status&200 OK");
  EXPECT_EQ(routes(), "192.168.0.1 192.168.0.3");
  EXPECT_EQ(camera().row(kFile, "GATEWAY_IPV4"), "192.168.0.1");
  EXPECT_EQ(camera().row(kFile, "GATEWAY_IPV4_3"), "192.168.0.3");
  EXPECT_EQ(camera().ask("network.gateway.ip"), "network.gateway.ip=192.168.0.1&200 OK");

  camera().ask("network.gateway.ip(0)=192.168.0.254&network.gateway.ip(2)=0.0.0.0");
  camera().shell("route del default gw 192.168.0.3");  // somebody else did; that it is not there is no failure
  EXPECT_EQ(camera().ask("network.gateway.status=save"), "network.gateway.status&200 OK");
  EXPECT_EQ(routes(), "192.168.0.254");
}

TEST_F(RoutingTest, AGatewayThatDoesNotFitTakesAllBack) {
  const struct {
    const char* gateway;
    const char* index;
  } cases[] = {{"192.168.0.2", "0"}, {"192.168.0.0", "1"}, {"192.168.0.255", "2"}, {"10.0.0.1", "3"}};
  const std::string before = camera().read(kFile);
  for (const auto& c : cases) {
    const std::string path = std::string("network.gateway.ip(") + c.index + ")";
    camera().ask("network.gateway.ip(0)=192.168.0.1");
    camera().ask(path + "=" + c.gateway);
    EXPECT_EQ(camera().ask("network.gateway.status=save"),
              "network.gateway.status&412 Precondition Failed(Mismatched:network.interface(1).ip=192.168.0.2,"
              "network.interface(1).subnetmask=255.255.255.0,network.gateway(ipv4).ip(" +
                  std::string(c.index) + ")=" + c.gateway + ")");
    EXPECT_EQ(camera().ask("network.gateway.status=save"), "network.gateway.status&200 OK") << "nothing may be left";
  }
  EXPECT_EQ(routes(), "");
  EXPECT_EQ(camera().read(kFile), before);
}

TEST_F(RoutingTest, ALeaseOwnsTheRoutes) {
  camera().tell("dhcp lease 192.168.0.77 gateway=192.168.0.254");
  lease("network.gateway.ip(1)=192.168.0.3");
  EXPECT_EQ(camera().ask("network.gateway.status=save"), "network.gateway.status&200 OK");
  EXPECT_EQ(routes(), "192.168.0.254");
  EXPECT_EQ(camera().row(kFile, "GATEWAY_IPV4_2"), "192.168.0.3");
  for (const std::string path : {"network.gateway(ipv4)", "network.gateway(ipv4).ip(0)", "network.gateway.ip(1)"})
    EXPECT_EQ(camera().ask(path), path + "=192.168.0.254&200 OK");
  camera().shell("route del default");
  EXPECT_EQ(camera().ask("network.gateway"), "network.gateway=0.0.0.0&200 OK");
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
    EXPECT_EQ(camera().ask("network.dns.status=restart"), "network.dns.status&200 OK") << c.staged;
    EXPECT_EQ(resolverFile(), c.file) << c.staged;
  }
  EXPECT_EQ(camera().row(kFile, "DOMAINNAME4"), "D.example");
  EXPECT_EQ(camera().row(kFile, "DNS_IP"), "0.0.0.0");

  // Without a change nobody touches the file, and what is staged for others stays staged.
  camera().ask("network.gateway.ip(1)=192.168.0.9");
  camera().shell("echo mine > /etc/resolv.conf");
  EXPECT_EQ(camera().ask("network.dns.status=restart"), "network.dns.status&200 OK");
  EXPECT_EQ(resolverFile(), "mine");
  EXPECT_EQ(camera().row(kFile, "GATEWAY_IPV4_2"), "0.0.0.0");
}

TEST_F(RoutingTest, TheResolversRefusals) {
  expectAnswers(camera(), {{"network.dns.status=off", std::string("network.dns.status") + kDnsHint},
                           {"network.dns.status=on", "network.dns.status&200 OK"},  // the active one again
                           {"network.dns.status=auto", std::string("network.dns.status") + k451},
                           {"network.domainname(4)=a", std::string("network.domainname(4)") + k456},
                           {"network.domainname=a_b", std::string("network.domainname") + k451},
                           {"network.domainname=" + std::string(64, 'a'), std::string("network.domainname") + k451},
                           {"network.domainname=" + std::string(63, 'a'), std::string("network.domainname") + kDnsHint},
                           {"network.domainname", "network.domainname=&200 OK"}});
  // The file that is to go is not there, and one that cannot be made.
  camera().shell("rm -f /etc/resolv.conf");
  EXPECT_EQ(camera().ask("network.dns.status=restart"), std::string("network.dns.status") + k500);
  EXPECT_TRUE(camera().isLogged("unlink error(No such file or directory)"));
  camera().shell("mkdir /etc/resolv.conf");
  camera().ask("network.dns.ip=10.0.0.1");
  EXPECT_EQ(camera().ask("network.dns.status=restart"), std::string("network.dns.status") + k500);
  EXPECT_TRUE(camera().isLogged("fstream open error"));
  EXPECT_EQ(camera().ask("network.dns.ip"), "network.dns.ip=10.0.0.1&200 OK");
  camera().shell("rmdir /etc/resolv.conf");
  camera().flash("full");
  camera().ask("network.dns.ip=10.0.0.2");
  EXPECT_EQ(camera().ask("network.dns.status=restart"), std::string("network.dns.status") + k500);
  EXPECT_EQ(resolverFile(), kNoFile);
}

TEST_F(RoutingTest, ALeaseMayOwnTheResolver) {
  camera().tell("dhcp lease 192.168.0.77 dns=192.168.0.53");
  lease("network.interface.dhcp.dns=on");
  EXPECT_EQ(resolverFile(), "nameserver 192.168.0.53");
  camera().ask("network.dns.ip=10.0.0.1");
  EXPECT_EQ(camera().ask("network.dns.status=restart"), "network.dns.status&200 OK");
  EXPECT_EQ(resolverFile(), "nameserver 192.168.0.53");
  EXPECT_EQ(camera().row(kFile, "DNS_IP"), "10.0.0.1");
  EXPECT_EQ(camera().ask("network.dns.ip"), "network.dns.ip=192.168.0.53&200 OK");
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
               {"a%20b", k451, "Gate-2.example.org"},
               {longest + "x", k451, "Gate-2.example.org"},
               {longest, kOk, longest},
               {"%00", kOk, ""}};
  for (const auto& c : cases) {
    EXPECT_EQ(camera().ask("network.hostname=" + c.value), std::string("network.hostname") + c.answer) << c.value;
    EXPECT_EQ(camera().shell("cat /proc/sys/kernel/hostname"), c.kernel) << c.value;
    EXPECT_EQ(camera().row(kFile, "HOSTNAME"), c.kernel);
    EXPECT_EQ(camera().ask("network.hostname"), "network.hostname=" + c.kernel + "&200 OK");
  }
  // The same name again acts again; a name that flash does not take is not the kernel's.
  camera().ask("network.hostname=gate");
  camera().shell("hostname other");
  EXPECT_EQ(camera().ask("network.hostname=gate"), "network.hostname&200 OK");
  EXPECT_EQ(camera().shell("hostname"), "gate");
  camera().flash("full");
  EXPECT_EQ(camera().ask("network.hostname=never"), std::string("network.hostname") + k500);
  EXPECT_EQ(camera().shell("hostname"), "gate");
}

TEST_F(RoutingTest, ALeasedHostNameIsTheKernels) {
  camera().tell("dhcp lease 192.168.0.77 hostname=leased");
  lease("network.interface.dhcp.hostname=on");
  EXPECT_EQ(camera().ask("network.hostname"), "network.hostname=leased&200 OK");
  EXPECT_EQ(camera().ask("network.hostname=mine"), "network.hostname&200 OK");
  EXPECT_EQ(camera().shell("hostname"), "leased");
  EXPECT_EQ(camera().row(kFile, "HOSTNAME"), "mine");
  camera().shell("hostname " + std::string(64, 'x'));
  EXPECT_EQ(camera().ask("network.hostname"), std::string("network.hostname") + k500);
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
