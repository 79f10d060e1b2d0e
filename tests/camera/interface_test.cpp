// The Ethernet port: what is staged, what a restart checks and takes over, what the real eth0 then carries, the lease.

#include <algorithm>

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

constexpr const char* kFile = "flash/sysconfig/network.conf";
constexpr const char* kHint = "&202 Accepted(network.interface(1).status=restart)";
const std::string kRestart = "network.interface(1).status=restart";
const std::string kDhcpRestart = "network.interface(1).dhcp.status=restart";

constexpr const char* kFactoryPort = "192.168.0.2 255.255.255.0 192.168.0.255";

/** Every case begins with the factory's network. */
class InterfaceTest : public CameraTest {
 protected:
  void SetUp() override {
    camera().flash("off");
    camera().tell("dhcp usual");
    const std::string port = "network.interface.";
    camera().ask(port + "ip=192.168.0.2&" + port + "subnetmask=255.255.255.0&" + port + "mtu=1500&" + port + "dscp=0&" +
                 port + "ttl.unicast=64&" + port + "negotiation=auto&" + port + "dhcp.status=off&" + port +
                 "dhcp.dns=off&" + port + "dhcp.ntp=off&" + port +
                 "dhcp.hostname=off&network.gateway=0.0.0.0&network.gateway.ip(3)=0.0.0.0");
    EXPECT_EQ(camera().ask(port + "status=save", UserClass::kOnvif), "network.interface.status&200 OK");
    if (InterfaceTest::port() != kFactoryPort) {
      ASSERT_TRUE(camera().reboot());
    }
    CameraTest::SetUp();
  }

  static void stage(std::initializer_list<const char*> items) {
    for (const std::string item : items) {
      const std::string path = "network.interface(1)." + item;
      EXPECT_EQ(camera().ask(path), path.substr(0, path.find('=')) + kHint);
    }
  }
  /** Orders something that the camera does behind its answer, and waits until it is done. */
  static std::string order(const std::string& request, UserClass user = UserClass::kAdmin) {
    const std::string answer = camera().ask(request, user);
    camera().ask("system.model");
    return answer.substr(answer.find('&'));
  }
  static std::string port() { return camera().shell("ifconfig eth0 | awk '$1 == \"inet\" {print $2, $4, $6}'"); }
  static Texts children(const std::string& program) {
    Texts lines;
    for (const std::string& line : camera().journal("child")) {
      if (Camera::field(line, "what") == program) lines.push_back(Camera::field(line, "command"));
    }
    return lines;
  }
  static bool restarts() { return !camera().journal("upreset").empty(); }
};

TEST_F(InterfaceTest, Values) {
  const struct {
    const char* leaf;
    const char* active;
    Texts taken;
    Texts notUnderstood;
    Texts outOfRange;
  } leaves[] = {
      {"ip",
       "192.168.0.2",
       {"192.168.0.3", "10.0.0.0", "192.168.0.255"},
       {"0.0.0.0", "127.0.0.1", "255.255.255.255", "224.1.1.1", "1.2.3", "a"},
       {}},
      {"subnetmask",
       "255.255.255.0",
       {"255.0.0.0", "255.255.255.252", "255.255.128.0"},
       {"254.0.0.0", "255.255.255.254", "255.255.255.255", "255.0.255.0", "0.0.0.0", "24"},
       {}},
      {"mtu", "1500", {"1280", "1499"}, {"abc", "1400x", "1400.5", "+1400"}, {"1279", "1501", "-1", "5000000000"}},
      {"ttl.multicast", "32", {"1", "255"}, {"x"}, {"0", "256"}},
      {"ttl.unicast", "64", {"1", "255"}, {"x"}, {"0", "256"}},
      {"dscp", "0", {"255", "4"}, {"x"}, {"256", "-1"}},
      {"negotiation", "auto", {"100full", "100half", "10full", "10half"}, {"1000full", "AUTO"}, {}},
      {"ipv6.status", "off", {"on"}, {"1"}, {}},
      {"dhcp.status", "off", {"on"}, {"yes", "save"}, {}},
      {"dhcp.ntp", "off", {"on"}, {"restart"}, {}},
      {"dhcp.dns", "off", {"on"}, {"restart"}, {}},
      {"dhcp.hostname", "off", {"on"}, {"restart"}, {}},
  };
  for (const auto& leaf : leaves) {
    const std::string path = std::string("network.interface(1).") + leaf.leaf;
    const auto expect = [&path](const Texts& values, const char* answer) {
      for (const std::string& value : values)
        EXPECT_EQ(camera().ask(path + "=" + value), path + answer) << value;
    };
    expect(leaf.taken, kHint);
    expect(leaf.notUnderstood, k451);
    expect(leaf.outOfRange, k457);
    EXPECT_EQ(camera().ask(path), path + "=" + leaf.active + "&200 OK");
    expect({leaf.active}, kOk);
  }
  EXPECT_EQ(camera().ask("network.interface(1).dscp=3"), "network.interface(1).dscp&200 OK");  // as good as 0
  EXPECT_EQ(order(kRestart), kOk);
  EXPECT_FALSE(restarts()) << "what was taken has been taken back";
  expectAnswers(camera(), {{"network.interface_count", "network.interface_count=1&200 OK"},
                           {"network.interface(2).ip", std::string("network.interface(2).ip") + k456},
                           {"network.interface(x).ip", std::string("network.interface(x).ip") + k451},
                           {"network.interface.ip", "network.interface.ip=192.168.0.2&200 OK"},
                           {"network.interface.mac=1", std::string("network.interface.mac") + k458},
                           {"network.interface.status", "network.interface.status=on&200 OK"},
                           {"network.interface.status=on", "network.interface.status&200 OK"},
                           {"network.interface.status=off", std::string("network.interface.status") + k451}});
}

TEST_F(InterfaceTest, ThePortAsItIs) {
  camera().shell("ip -6 address add 2001:db8::1:0:0:1/64 dev eth0 nodad");
  expectAnswers(
      camera(),
      {{"network.interface(1).mac", "network.interface(1).mac=00c0de111111&200 OK"},
       {"network.interface.negotiation_detail", "network.interface.negotiation_detail=100full&200 OK"},
       {"network.interface.ipv6.link_local", "network.interface.ipv6.link_local=fe80::2c0:deff:fe11:1111&200 OK"},
       {"network.interface.ipv6.global(1)", "network.interface.ipv6.global(1)=2001:db8::1:0:0:1&200 OK"},
       {"network.interface.ipv6.global(2)", "network.interface.ipv6.global(2)=&200 OK"},
       {"network.interface.ipv6.global(9)", std::string("network.interface.ipv6.global(9)") + k456},
       {"network.interface.ipv6.link_local(a)", std::string("network.interface.ipv6.link_local(a)") + k451}});
}

TEST_F(InterfaceTest, ARestartBringsTheStagedPortUp) {
  stage({"ip=10.1.2.3", "subnetmask=255.255.0.0", "dscp=255", "mtu=1400", "negotiation=10half", "ttl.unicast=9"});
  camera().ask(
      "network.gateway.ip(3)=10.1.255.254&network.dns.ip=10.1.0.1&network.ntp.interval=9&network.domainname=a");
  EXPECT_EQ(port(), kFactoryPort);
  ASSERT_TRUE(camera().restartsBehind(kRestart));
  EXPECT_EQ(port(), "10.1.2.3 255.255.0.0 10.1.255.255");
  EXPECT_EQ(camera().shell("route -n | awk '$1 == \"0.0.0.0\" {print $2}'"), "10.1.255.254");
  const struct {
    const char* key;
    const char* value;
  } rows[] = {{"IF1_IP", "10.1.2.3"},
              {"IF1_NETMASK", "255.255.0.0"},
              {"IF1_BROADCAST", "10.1.255.255"},
              {"GATEWAY_IPV4_4", "10.1.255.254"},
              {"IF1_MTU", "1400"},
              {"IF1_NEGOTIATION", "10half"},
              {"IF1_TTL_UNICAST", "9"},
              {"IF1_DSCP", "252"},
              {"IF1_DSCP_VIDEO", "252"},
              {"IF1_DSCP_VIDEOMPEG", "252"},
              {"IF1_DSCP_VIDEOH264", "252"},
              {"IF1_DSCP_AUDIO", "252"},
              {"DNS_IP", "192.168.0.1"},
              {"NTP_INTERVAL", "7"},
              {"DOMAINNAME", ""}};  // not the interface's
  for (const auto& row : rows)
    EXPECT_EQ(camera().row(kFile, row.key), row.value) << row.key;
}

TEST_F(InterfaceTest, WhatDoesNotFitIsRefusedAndTheAddressesTakenBack) {
  const struct {
    const char* item;
    const char* mismatch;
  } cases[] = {
      {"network.interface.ip=192.168.0.0",
       "network.interface(1).ip=192.168.0.0,network.interface(1).subnetmask=255.255.255.0"},
      {"network.interface.ip=192.168.0.255",
       "network.interface(1).ip=192.168.0.255,network.interface(1).subnetmask=255.255.255.0"},
      {"network.interface.ip=10.0.0.0&network.interface.subnetmask=255.0.0.0",
       "network.interface(1).ip=10.0.0.0,network.interface(1).subnetmask=255.0.0.0"},
      {"network.gateway.ip(1)=192.168.0.2",
       "network.interface(1).ip=192.168.0.2,network.interface(1).subnetmask=255.255.255.0,network.gateway(ipv4).ip(1)="
       "192.168.0.2"},
      {"network.interface.ip=10.0.0.2&network.gateway.ip(3)=192.168.0.1",
       "network.interface(1).ip=10.0.0.2,network.interface(1).subnetmask=255.255.255.0,network.gateway(ipv4).ip(3)=192."
       "168.0.1"},
  };
  stage({"mtu=1400", "dhcp.status=on"});
  const std::string before = camera().read(kFile);
  for (const auto& c : cases) {
    camera().ask(c.item);
    EXPECT_EQ(order(kRestart), "&405 Method Not Allowed(Mismatched:" + std::string(c.mismatch) + ")") << c.item;
    EXPECT_EQ(camera().read(kFile), before) << c.item;
  }
  EXPECT_FALSE(restarts());
  // Only the addresses were taken back: the rest waits on.
  ASSERT_TRUE(camera().restartsBehind(kRestart));
  EXPECT_EQ(camera().row(kFile, "IF1_MTU"), "1400");
  EXPECT_EQ(camera().row(kFile, "IF1_DHCP"), "on");
  EXPECT_EQ(camera().row(kFile, "IF1_IP"), "192.168.0.2");
}

TEST_F(InterfaceTest, WithoutAChangeNothingHappens) {
  // A broadcast address that is put right is no change.
  camera().setRow(kFile, "IF1_BROADCAST", "192.168.0.9");
  ASSERT_TRUE(camera().reboot());
  const std::string before = camera().read(kFile);
  EXPECT_EQ(order(kRestart), kOk);
  EXPECT_EQ(order(kDhcpRestart), kOk);
  EXPECT_EQ(camera().read(kFile), before);
  EXPECT_FALSE(restarts());
  EXPECT_EQ(children("dhcpcd"), Texts{});
}

TEST_F(InterfaceTest, OnlyTheOnvifServiceSavesWithoutARestart) {
  stage({"mtu=1400"});
  for (const UserClass user : {UserClass::kAdmin, UserClass::kDebug})
    EXPECT_EQ(order("network.interface.status=save", user), k451);
  EXPECT_EQ(camera().row(kFile, "IF1_MTU"), "1500");
  EXPECT_EQ(order("network.interface.status=save", UserClass::kOnvif), kOk);
  EXPECT_EQ(camera().row(kFile, "IF1_MTU"), "1400");
  stage({"mtu=1401"});
  EXPECT_EQ(order("onvif." + kRestart, UserClass::kOnvif), kOk);
  EXPECT_EQ(camera().row(kFile, "IF1_MTU"), "1401");
  EXPECT_FALSE(restarts());
}

TEST_F(InterfaceTest, DhcpOptionsWithoutDhcpAreSwitchedOff) {
  for (const std::string& restart : {kRestart, kDhcpRestart}) {
    stage({"dhcp.dns=on"});
    EXPECT_EQ(order(restart), "&412 Precondition Failed(Mismatched:network.interface(1).dhcp.status=off)");
    EXPECT_EQ(order(restart), kOk) << "nothing waits any more";
  }
  EXPECT_FALSE(restarts());
  // The addresses stay staged behind that refusal. An active option is switched off on flash.
  camera().setRow(kFile, "IF1_DHCP_HOSTNAME", "on");
  ASSERT_TRUE(camera().reboot());
  stage({"ip=192.168.0.3"});
  EXPECT_EQ(order(kRestart), "&412 Precondition Failed(Mismatched:network.interface(1).dhcp.status=off)");
  EXPECT_EQ(camera().row(kFile, "IF1_DHCP_HOSTNAME"), "off");
  EXPECT_EQ(camera().row(kFile, "IF1_IP"), "192.168.0.2");
  ASSERT_TRUE(camera().restartsBehind(kRestart));
  EXPECT_EQ(port(), "192.168.0.3 255.255.255.0 192.168.0.255");
}

TEST_F(InterfaceTest, TheAddressClientLeasesAndStopsAgain) {
  camera().tell("dhcp lease 192.168.7.77 mask=255.255.254.0 hostname=leased");
  stage({"dhcp.status=on", "dhcp.hostname=on"});
  EXPECT_EQ(order(kDhcpRestart), kOk);
  EXPECT_EQ(children("dhcpcd"), Texts{"dhcpcd -t 75 -N -R -H eth0"});
  expectAnswers(camera(), {{"network.interface.ip", "network.interface.ip=192.168.7.77&200 OK"},
                           {"network.interface.subnetmask", "network.interface.subnetmask=255.255.254.0&200 OK"},
                           {"network.hostname", "network.hostname=leased&200 OK"}});
  EXPECT_EQ(camera().row(kFile, "IF1_IP"), "192.168.0.2");

  // Without an address on the port there is nothing to show.
  camera().shell("ifconfig eth0 0.0.0.0");
  for (const std::string path : {"network.interface.ip", "network.interface.subnetmask"})
    EXPECT_EQ(camera().ask(path), path + k500);

  // Off clears the options, ends the client and sets the stored address.
  camera().clearJournal();
  stage({"dhcp.status=off"});
  EXPECT_EQ(order(kDhcpRestart), kOk);
  EXPECT_EQ(children("dhcpcd"), Texts{});
  EXPECT_TRUE(eventually([] { return camera().shell("pidof dhcpcd").empty(); }));
  EXPECT_EQ(port(), kFactoryPort);
  EXPECT_EQ(camera().row(kFile, "IF1_DHCP_HOSTNAME"), "off");
  EXPECT_EQ(camera().ask("network.interface.ip"), "network.interface.ip=192.168.0.2&200 OK");
  EXPECT_FALSE(restarts());
}

TEST_F(InterfaceTest, DhcpWithinARestartIsOneRestartOfTheCamera) {
  stage({"dhcp.status=on", "mtu=1400"});
  ASSERT_TRUE(camera().restartsBehind("network.interface.dhcp.status=restart&network.interface.status=restart"));
  EXPECT_EQ(children("dhcpcd").size(), 1U) << "the start's alone";
  camera().clearJournal();
  stage({"dhcp.dns=on"});
  ASSERT_TRUE(camera().restartsBehind(kRestart));
  EXPECT_EQ(children("dhcpcd"), Texts{"dhcpcd -t 75 -N eth0"});
}

TEST_F(InterfaceTest, TheAddressClientsRestartLeavesStagedValuesStaged) {
  camera().ask("network.gateway.ip(0)=192.168.0.1&network.dns.ip=10.0.0.1&network.interface.mtu=1400");
  camera().ask("network.ntp.status=on&network.ntp.host=192.168.0.9");
  stage({"dhcp.status=on"});
  EXPECT_EQ(order(kDhcpRestart), kOk);
  for (const auto& [key, value] :
       {std::pair("GATEWAY_IPV4", "0.0.0.0"), {"DNS_IP", "192.168.0.1"}, {"IF1_MTU", "1500"}, {"NTP", "off"}})
    EXPECT_EQ(camera().row(kFile, key), value);
  // The next write reaches flash, and what waited is taken over by its own request.
  EXPECT_EQ(order("network.hostname=gate"), kOk);
  EXPECT_EQ(camera().row(kFile, "HOSTNAME"), "gate");
  EXPECT_EQ(order("network.dns.status=restart"), kOk);
  EXPECT_EQ(camera().row(kFile, "DNS_IP"), "10.0.0.1");
  EXPECT_EQ(camera().row(kFile, "GATEWAY_IPV4"), "0.0.0.0");
}

TEST_F(InterfaceTest, AFullFlash) {
  camera().flash("full");
  stage({"mtu=1400"});
  EXPECT_EQ(order(kRestart), k500);
  stage({"dhcp.status=on"});
  EXPECT_EQ(order(kDhcpRestart), k500);
  EXPECT_FALSE(restarts());
  EXPECT_EQ(children("dhcpcd"), Texts{});
}

}  // namespace
}  // namespace test
