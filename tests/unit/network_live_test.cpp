#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "network/LiveNetwork.h"
#include "service/CTmxdNetworkUtility.h"

namespace {

using namespace live_network;

TEST(LiveNetwork, ShortensIPv6) {
  const struct {
    const char* digits;
    const char* text;
  } cases[] = {
      {"00000000000000000000000000000001", "::1"},
      {"00000000000000000000000000000000", "::"},
      {"fe8000000000000002c0defffe111111", "fe80::2c0:deff:fe11:1111"},
      {"20010db8000000000001000000000001", "2001:db8::1:0:0:1"},  // of two equal runs the first one
      {"20010db8000000010000000000000001", "2001:db8:0:1::1"},    // the longer run, not the first
      {"20010db8000100010001000100010000", "2001:db8:1:1:1:1:1::"},
      {"20010db8000000010001000100010001", "2001:db8::1:1:1:1:1"},  // a single group is a run too
      {"00000000000000000000ffffc0a80001", "::ffff:c0a8:1"},        // never an IPv4 tail
      {"20010db8123456780a0b00ff10000001", "2001:db8:1234:5678:a0b:ff:1000:1"},
      {"fe80", ""},
  };
  for (const auto& c : cases)
    EXPECT_EQ(shortenIPv6(c.digits), c.text) << c.digits;
}

TEST(LiveNetwork, CountsIPv6AddressesOfDeviceAndScope) {
  const std::string table =
      "00000000000000000000000000000001 01 80 10 80       lo\n"
      "fe8000000000000002c0defffe111111 02 40 20 80     eth0\n"
      "20010db8000000000000000000000002 03 40 00 80    eth00\n"
      "20010db8000000000000000000000003 02 40 00 80     eth0\n"
      "20010db8 02\n"
      "20010db8000000000000000000000004 02 40 00 80     eth0\n";
  const struct {
    const char* device;
    int32_t count;
    std::string_view scope;
    const char* text;
  } cases[] = {{"eth0", 1, kScopeLink, "fe80::2c0:deff:fe11:1111"},
               {"eth0", 2, kScopeLink, ""},
               {"eth0", 1, kScopeGlobal, "2001:db8::3"},
               {"eth0", 2, kScopeGlobal, "2001:db8::4"},
               {"eth0", 3, kScopeGlobal, ""},
               {"eth0", 0, kScopeGlobal, ""},
               {"eth1", 1, kScopeGlobal, ""}};
  for (const auto& c : cases) {
    std::istringstream rows(table);
    EXPECT_EQ(findIPv6Address(rows, c.device, c.count, c.scope), c.text) << c.device << c.count << c.scope;
  }
}

TEST(LiveNetwork, FindsTheFirstDefaultRoute) {
  const std::string head = "Iface\tDestination\tGateway \tFlags\tRefCnt\tUse\tMetric\tMask\t\tMTU\tWindow\tIRTT\n";
  const std::string rest = "\t0\t0\t0\t00000000\t0\t0\t0\n";
  const struct {
    std::string rows;
    const char* gateway;
  } cases[] = {{"", "0.0.0.0"},
               {head + "eth0\t0000A8C0\t00000000\t0001" + rest, "0.0.0.0"},
               {head + "eth0\t0000A8C0\t00000000\t0001" + rest + "eth0\t00000000\tFE00A8C0\t0003" + rest +
                    "eth0\t00000000\t0100A8C0\t0003" + rest,
                "192.168.0.254"},
               {head + "eth0\t00000000\t0100A8C0\t0001" + rest + "eth0\t00000000\t0100A8C0\t0203" + rest, "0.0.0.0"},
               {"eth0 00000000 \n", "0.0.0.0"}};
  for (const auto& c : cases) {
    std::istringstream table(c.rows);
    const auto gateway = findDefaultGateway(table);
    ASSERT_TRUE(gateway.has_value()) << c.rows;
    EXPECT_EQ(CTmxdNetworkUtility::Inet_ntop(&*gateway), c.gateway) << c.rows;
  }
  std::istringstream nonsense("eth0 00000000 nonsense 0003" + rest);
  EXPECT_FALSE(findDefaultGateway(nonsense).has_value());
}

TEST(LiveNetwork, LinkSpeeds) {
  const struct {
    uint32_t speed;
    uint8_t duplex;
    const char* text;
  } cases[] = {{10, 0, "10half"}, {100, 1, "100full"}, {1000, 1, "1000full"},
               {0, 1, ""},        {65535, 1, ""},      {100, 255, ""}};
  for (const auto& c : cases)
    EXPECT_EQ(linkSpeedText("eth0", c.speed, c.duplex), c.text) << c.speed;
}

TEST(LiveNetwork, ADeviceThatIsNotThereHasNothing) {
  for (const std::string& text : {getIpAddress("none0"), getNetmask("none0"), getMacAddress("none0"),
                                  getLinkSpeed("none0"), getIPv6Address("none0", 1, kScopeLink), getMacAddress("lo")})
    EXPECT_EQ(text, "");
  EXPECT_EQ(getIpAddress("lo"), "127.0.0.1");
}

}  // namespace
