#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <string>
#include <thread>

#include "local/FileDescriptor.h"
#include "service/CTmxdUtility.h"
#include "service/GpioMessage.h"
#include "service/ParamPacket.h"
#include "service/WebServerFiles.h"

namespace {

struct Pair {
  FileDescriptor near;
  FileDescriptor far;

  Pair() {
    int ends[2] = {-1, -1};
    if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends) == 0) {
      near.reset(ends[0]);
      far.reset(ends[1]);
    }
  }
};

TEST(Descriptor, ReadsAcrossPiecesUpToTheCountOrTheEnd) {
  Pair pair;
  std::thread writer([&] {
    for (const char* piece : {"ab", "c", "def"}) {
      EXPECT_GT(write(pair.far.get(), piece, strlen(piece)), 0);
      usleep(20000);
    }
    pair.far.reset();
  });
  std::array<char, 8> buffer{};
  EXPECT_EQ(CTmxdUtility::readData(pair.near.get(), buffer.data(), 4), 4);
  EXPECT_EQ(std::string(buffer.data()), "abcd");
  EXPECT_EQ(CTmxdUtility::readData(pair.near.get(), buffer.data(), 8), 2);
  EXPECT_EQ(CTmxdUtility::readData(pair.near.get(), buffer.data(), 8), 0);
  writer.join();
}

TEST(Descriptor, WritesMoreThanTheSocketHolds) {
  Pair pair;
  const std::string text(1 << 20, 'x');
  size_t received = 0;
  std::thread reader([&] {
    std::array<char, 5000> buffer{};
    for (ssize_t count = 1; count > 0; received += static_cast<size_t>(count)) {
      count = read(pair.far.get(), buffer.data(), buffer.size());
    }
  });
  EXPECT_EQ(CTmxdUtility::writeData(pair.near.get(), text.data(), text.size()), static_cast<ssize_t>(text.size()));
  pair.near.reset();
  reader.join();
  EXPECT_EQ(received, text.size());
}

TEST(Descriptor, FailuresAndPreconditions) {
  char byte = 0;
  EXPECT_EQ(CTmxdUtility::readData(1000, &byte, 1), -1);
  EXPECT_EQ(CTmxdUtility::writeData(1000, &byte, 1), -1);
  EXPECT_DEATH(static_cast<void>(CTmxdUtility::readData(-1, &byte, 1)), "fd >= 0");
  EXPECT_DEATH(static_cast<void>(CTmxdUtility::readData(0, nullptr, 1)), "buf != __null");
  EXPECT_DEATH(static_cast<void>(CTmxdUtility::readData(0, &byte, 0)), "reqLen > 0");
  EXPECT_DEATH(static_cast<void>(CTmxdUtility::writeData(1, &byte, 0)), "reqLen > 0");
}

TEST(GpioMessage, WordsLieLowestByteFirst) {
  const GpioMessage message{{31, 0x01020304, 0xfffffffe, 7}};
  const GpioMessage::Bytes bytes = {31, 0, 0, 0, 4, 3, 2, 1, 0xfe, 0xff, 0xff, 0xff, 7, 0, 0, 0};
  EXPECT_EQ(message.toBytes(), bytes);
  EXPECT_EQ(GpioMessage::fromBytes(bytes).words, message.words);
}

TEST(GpioMessage, AReplyAcknowledgesItsOwnCommandOnly) {
  const GpioMessage request{{9, 0, 0, 0}};
  EXPECT_TRUE((GpioMessage{{99, 9, 1, 2}}.acknowledges(request)));
  EXPECT_FALSE((GpioMessage{{99, 8, 1, 2}}.acknowledges(request)));
  EXPECT_FALSE((GpioMessage{{98, 9, 1, 2}}.acknowledges(request)));
}

TEST(ParamPacket, Layout) {
  ParamPacket packet;
  packet.setCmd(1);
  packet.setArg(-2);
  packet.setId(0x11210300);
  packet.setText("xyz");
  const std::array<uint8_t, 16> head = {1, 0, 0, 0, 0xfe, 0xff, 0xff, 0xff, 0, 3, 0x21, 0x11, 'x', 'y', 'z', 0};
  EXPECT_TRUE(std::equal(head.begin(), head.end(), packet.bytes().begin()));
  EXPECT_EQ(packet.nValue(), 0x007a7978);  // the text lies over the value
  EXPECT_EQ(packet.nArg(), -2);
}

TEST(ParamPacket, ATextIsCutAndEndsInNul) {
  ParamPacket packet;
  packet.setText(std::string(1000, 'a'));
  EXPECT_EQ(packet.text(), std::string(999, 'a'));
  EXPECT_EQ(packet.bytes().back(), 0);
  packet.setText("b");
  EXPECT_EQ(packet.text(), "b");
  packet.bytes().fill('c');  // a reply without a NUL
  EXPECT_EQ(packet.text(), std::string(1000, 'c'));
}

TEST(WebServerFiles, Lines) {
  using Lines = std::vector<std::string>;
  EXPECT_EQ(web_server_files::port("8080"), (Lines{"server.port = 8080"}));
  EXPECT_EQ(web_server_files::ipv6(true), (Lines{"server.use-ipv6 = \"enable\""}));
  EXPECT_EQ(web_server_files::ipv6(false), (Lines{"server.use-ipv6 = \"disable\""}));
  const Lines tls = {"$SERVER[\"socket\"] == \":443\" {",
                     "\t\tssl.engine                = \"enable\"",
                     "\t\tssl.pemfile               = \"/mnt/flash/lighttpd/server.pem\"",
                     "\t\tssl.verifyclient.activate = \"disable\"",
                     "\t\tssl.verifyclient.enforce  = \"disable\"",
                     "\t\tserver.document-root      = \"/var/www/\"",
                     "}"};
  EXPECT_EQ(web_server_files::tls("443", true), tls);
  EXPECT_EQ(web_server_files::tls("443", false)[1], "\t\tssl.engine                = \"disable\"");
}

}  // namespace
