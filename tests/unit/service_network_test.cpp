#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <string>

#include "service/CTmxdNetworkUtility.h"

namespace {

using Net = CTmxdNetworkUtility;

TEST(NetworkUtility, HostAddresses) {
  const struct {
    const char* text;
    int32_t result;
  } cases[] = {{"192.168.0.1", 0},      {"1.0.0.1", 0},          {"1.0.0.0", -1},
               {"10.0.0.0", 0},       // the subnet's rule comes later
               {"192.168.0.255", 0},  // the same
               {"126.255.255.254", 0},  {"126.255.255.255", -1}, {"127.0.0.1", -1},
               {"0.0.0.0", -1},         {"0.1.2.3", -1},         {"128.0.0.0", -1},
               {"128.0.0.1", 0},        {"191.255.255.254", 0},  {"191.255.255.255", -1},
               {"192.0.0.0", -1},       {"192.0.0.1", 0},        {"223.255.255.254", 0},
               {"223.255.255.255", -1}, {"224.0.0.1", -1},       {"240.0.0.1", -1},
               {"255.255.255.255", -1}};
  for (const auto& c : cases)
    EXPECT_EQ(Net::checkHostAddress({Net::Inet_pton(c.text)}), c.result) << c.text;
}

TEST(NetworkUtility, DottedTexts) {
  for (const char* text : {"1.2.3.4", "255.255.255.255", "0.0.0.0"}) {
    in_addr address{};
    EXPECT_EQ(Net::parseAddress(text, &address), 1) << text;
    EXPECT_EQ(Net::Inet_ntop(&address), text);
  }
  for (const char* text : {"", "1", "1.2.3", "1.2.3.4.5", "1.2.3.256", "1.2.3.4 ", "0x1.2.3.4", "1.2.3.04", "::1"}) {
    in_addr address{};
    EXPECT_EQ(Net::parseAddress(text, &address), 0) << text;
    EXPECT_EQ(Net::Inet_pton(text), INADDR_NONE) << text;
  }
  EXPECT_DEATH(static_cast<void>(Net::Inet_ntop(nullptr)), "address");
}

TEST(NetworkUtility, Netmasks) {
  int32_t accepted = 0;
  for (uint32_t ones = 0; ones <= 32; ++ones) {
    const uint32_t mask = ones == 0 ? 0 : ~uint32_t{0} << (32 - ones);
    const int32_t result = Net::checkNetmask({htonl(mask)});
    EXPECT_EQ(result, ones >= 8 && ones <= 30 ? 0 : -1) << ones;
    accepted += result == 0 ? 1 : 0;
  }
  EXPECT_EQ(accepted, 23);
  for (const char* text : {"255.0.255.0", "0.255.255.255", "255.255.255.253", "127.0.0.0"})
    EXPECT_EQ(Net::checkNetmask({Net::Inet_pton(text)}), -1) << text;
}

TEST(NetworkUtility, Gateways) {
  const struct {
    const char* address;
    const char* mask;
    const char* gateway;
    int32_t result;
  } cases[] = {{"192.168.0.10", "255.255.255.0", "0.0.0.0", 0},
               {"192.168.0.10", "255.255.255.0", "192.168.0.1", 0},
               {"192.168.0.10", "255.255.255.0", "192.168.0.254", 0},
               {"192.168.0.10", "255.255.255.0", "192.168.0.10", -1},   // the camera itself
               {"192.168.0.10", "255.255.255.0", "192.168.0.0", -1},    // the subnet
               {"192.168.0.10", "255.255.255.0", "192.168.0.255", -1},  // everybody there
               {"192.168.0.10", "255.255.255.0", "192.168.1.1", -1},
               {"192.168.0.10", "255.255.255.252", "192.168.0.9", 0},
               {"192.168.0.10", "255.255.255.252", "192.168.0.13", -1},
               {"10.1.2.3", "255.0.0.0", "10.255.255.254", 0},
               {"10.1.2.3", "255.0.0.0", "255.255.255.255", -1},
               {"10.1.2.3", "255.0.0.0", "nonsense", -1}};
  for (const auto& c : cases)
    EXPECT_EQ(Net::checkGateway(c.address, c.mask, c.gateway), c.result) << c.gateway << " in " << c.mask;
}

TEST(NetworkUtility, Names) {
  EXPECT_EQ(Net::checkName(""), 0);
  EXPECT_EQ(Net::checkName("Cam-1.example.org"), 0);
  for (const char* name : {"cam_1", "a b", "a\n",
                           "stra\xc3\x9f"
                           "e"})
    EXPECT_EQ(Net::checkName(name), -1) << name;
  EXPECT_EQ(Net::checkName(std::string(63, 'a')), 0);
  EXPECT_EQ(Net::checkName(std::string(64, 'a')), -2);
}

}  // namespace
