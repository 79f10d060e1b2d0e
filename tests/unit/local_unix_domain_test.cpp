#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "local/CommonInterface.h"
#include "local/FileDescriptor.h"
#include "local/UnixDomain.h"

namespace {

class UnixDomainTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_NE(mkdtemp(m_directory.data()), nullptr); }
  void TearDown() override { std::filesystem::remove_all(m_directory); }

  [[nodiscard]] std::string path(const std::string& name) const { return m_directory + "/" + name; }

 private:
  std::string m_directory = "/tmp/tmxXXXXXX";
};

TEST_F(UnixDomainTest, ServerTakesThePlaceOfWhatStoodThere) {
  { const FileDescriptor before(UnixDomain::createServSocket(path("s"))); }
  const FileDescriptor server(UnixDomain::createServSocket(path("s")));
  ASSERT_TRUE(server.isValid());

  EXPECT_EQ(UnixDomain::acceptClient(server.get()), -1);  // does not block
  const FileDescriptor client(UnixDomain::createClientSocket());
  ASSERT_EQ(UnixDomain::connectServ(client.get(), path("s")), 0);
  const FileDescriptor accepted(UnixDomain::acceptClient(server.get()));
  ASSERT_TRUE(accepted.isValid());

  const int flags = fcntl(server.get(), F_GETFL);
  EXPECT_EQ(flags & (O_NONBLOCK | O_ASYNC), O_NONBLOCK | O_ASYNC);
  for (const int descriptor : {server.get(), client.get(), accepted.get()}) {
    EXPECT_EQ(fcntl(descriptor, F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
  }
}

TEST_F(UnixDomainTest, ALongPathIsCutAtTheAddress) {
  const std::string whole = path(std::string(108 - path("").size(), 'x'));
  const std::string tooLong = whole + "yz";
  const FileDescriptor server(UnixDomain::createServSocket(tooLong));
  ASSERT_TRUE(server.isValid());
  const FileDescriptor client(UnixDomain::createClientSocket());
  EXPECT_EQ(UnixDomain::connectServ(client.get(), whole), 0);
  unlink(whole.c_str());
}

TEST_F(UnixDomainTest, FailuresAreNegative) {
  const FileDescriptor client(UnixDomain::createClientSocket());
  EXPECT_EQ(UnixDomain::connectServ(client.get(), path("nobody")), -1);
  EXPECT_EQ(UnixDomain::createServSocket(path("no/such/directory")), -1);
  EXPECT_EQ(UnixDomain::acceptClient(-1), -1);
  EXPECT_EQ(UnixDomain::closeClientSocket(-1), -1);
}

TEST_F(UnixDomainTest, AConnectionMovesExactCounts) {
  CommonInterface connection;
  char buffer[4] = {};
  EXPECT_FALSE(connection.Open(path("s")));
  EXPECT_FALSE(connection.Write("ab", 2));
  EXPECT_FALSE(connection.Read(buffer, 2));

  const FileDescriptor server(UnixDomain::createServSocket(path("s")));
  ASSERT_TRUE(connection.Open(path("s")));
  const FileDescriptor peer(UnixDomain::acceptClient(server.get()));
  EXPECT_TRUE(connection.Write("ab", 2));
  ASSERT_EQ(read(peer.get(), buffer, sizeof buffer), 2);
  ASSERT_EQ(write(peer.get(), "cde", 3), 3);
  EXPECT_TRUE(connection.Read(buffer, 2));
  EXPECT_FALSE(connection.Read(buffer, 4));  // only one byte is left
  connection.Close();
  EXPECT_FALSE(connection.Write("ab", 2));
  EXPECT_EQ(read(peer.get(), buffer, sizeof buffer), 0);
}

}  // namespace
