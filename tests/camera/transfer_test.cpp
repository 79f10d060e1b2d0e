// Servers and accounts for files and mail: what each item takes, what reaches the recorder, and the ten files it is in.

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

std::string file(int table) { return "flash/sysconfig/application/application" + std::to_string(table) + ".conf"; }

/** A write that is taken: what is told, which row holds what, and what a read shows. */
struct Taken {
  std::string write;
  std::string told;  ///< empty: nobody
  const char* key;
  std::string kept;
  std::string shown;
};

struct Refused {
  std::string write;
  const char* answer = k451;
};

class TransferTest : public CameraTest {
 protected:
  void SetUp() override {
    camera().tell("recorder up");
    CameraTest::SetUp();
  }
};

TEST_F(TransferTest, WhatIsTakenIsToldKeptInTenFilesAndShown) {
  const Taken cases[] = {
      {"ftp.host=10.1.2.3", "ftp.host 10.1.2.3", "FTP_HOST", "10.1.2.3", "10.1.2.3"},
      {"ftp.host=files.example", "ftp.host files.example", "FTP_HOST", "files.example", "files.example"},
      {"ftp.host=%00", "ftp.host 0.0.0.0", "FTP_HOST", "0.0.0.0", "0.0.0.0"},
      {"ftp.user=a+b%25%22%26c", "ftp.user a b%\"&c", "FTP_USER", "a b%\"&c", "a b%25%22%26c"},
      {"ftp.user=%00", "ftp.user ", "FTP_USER", "", ""},
      {"ftp.user=" + std::string(31, 'u') + "%75", "ftp.user " + std::string(32, 'u'), "FTP_USER", std::string(32, 'u'),
       std::string(32, 'u')},
      {"ftp.mode=passive", "ftp.mode 1", "FTP_MODE", "passive", "passive"},
      {"ftp.mode=active", "ftp.mode 0", "FTP_MODE", "active", "active"},
      {"ftp.port=2121", "ftp.port 2121", "POP_PORT", "2121", "2121"},
      {"pop.port=65535", "pop.port 65535", "POP_PORT", "65535", "65535"},
      {"smtp.port=1", "smtp.port 1", "SMTP_PORT", "1", "1"},
      {"smtp.port=007", "smtp.port 7", "SMTP_PORT", "007", "007"},
      {"ftp.path=a/b+c", "ftp.path a/b+c", "FTP_PATH", "a/b+c", "a/b+c"},
      {"ftp.path=" + std::string(63, 'p'), "ftp.path " + std::string(63, 'p'), "FTP_PATH", std::string(63, 'p'),
       std::string(63, 'p')},
      {"ftp.path=%00", "ftp.path ", "FTP_PATH", "", ""},
      {"ftp.naming=type2", "ftp.naming 2", "FTP_NAMING", "type2", "type2"},
      {"ftp.naming=default", "ftp.naming 0", "FTP_NAMING", "default", "default"},
      {"ftp.naming_option=cam%25", "ftp.naming_option cam%", "FTP_NAMING_OPTION", "cam%", "cam%25"},
      {"ftp.naming_option=" + std::string(16, 'n'), "ftp.naming_option " + std::string(16, 'n'), "FTP_NAMING_OPTION",
       std::string(16, 'n'), std::string(16, 'n')},
      {"smtp.type=pbs", "smtp.type 1", "SMTP_TYPE", "pbs", "pbs"},
      {"smtp.host=10.1.2.3", "smtp.host 10.1.2.3", "SMTP_HOST", "10.1.2.3", "10.1.2.3"},
      {"smtp.mailfrom=me%40+x@y", "", "SMTP_MAILFROM", "me%40+x@y", "me%40+x@y"},
      {"smtp.mailfrom=%00", "", "SMTP_MAILFROM", "", ""},
      {"smtp.mailfrom=" + std::string(96, 'm'), "", "SMTP_MAILFROM", std::string(96, 'm'), std::string(96, 'm')},
      {"pop.host=" + std::string(63, 'h'), "pop.host " + std::string(63, 'h'), "POP_HOST", std::string(63, 'h'),
       std::string(63, 'h')},
      {"pop.host=%00", "pop.host 0.0.0.0", "POP_HOST", "0.0.0.0", "0.0.0.0"},
      {"pop.user=a+b%25" + std::string(60, 'u'), "pop.user a+b%" + std::string(60, 'u'), "POP_USER",
       "a+b%" + std::string(60, 'u'), "a+b%25" + std::string(60, 'u')},
      {"pop.user=%00", "pop.user ", "POP_USER", "", ""},
  };
  for (const Taken& c : cases) {
    camera().clearJournal();
    const std::string path = "application." + c.write.substr(0, c.write.find('='));
    EXPECT_EQ(camera().ask("application." + c.write), path + kOk);
    EXPECT_EQ(camera().toldRecorder(), c.told.empty() ? Texts() : Texts{c.told}) << c.write;
    for (int table = 0; table < 10; ++table)
      EXPECT_EQ(camera().row(file(table), std::string("APPLICATION_") + c.key), c.kept) << c.write << " " << table;
    EXPECT_EQ(camera().ask(path), path + "=" + c.shown + kOk);
  }
  EXPECT_EQ(camera().row(file(0), "APPLICATION_FTP_PORT"), "21") << "a port that no node writes";
}

TEST_F(TransferTest, WhatIsRefusedReachesNobody) {
  std::vector<Refused> cases = {{"ftp.user=" + std::string(33, 'u')},
                                {"ftp.user=a%0Ab"},
                                {"ftp.user=a%00b"},
                                {"ftp.password=" + std::string(33, 'p')},
                                {"pop.password=" + std::string(33, 'p')},
                                {"pop.user=" + std::string(65, 'u')},
                                {"pop.user=a%0D%0Ab"},
                                {"ftp.path=" + std::string(64, 'p')},
                                {"ftp.naming_option=" + std::string(17, 'n')},
                                {"ftp.naming_option=a/b"},
                                {"ftp.naming_option=a%2Fb"},
                                {"ftp.mode=Active"},
                                {"ftp.naming=type3"},
                                {"ftp.type=http"},
                                {"pop.type=pop"},
                                {"smtp.type=none"},
                                {"smtp.mailfrom=.me"},
                                {"smtp.mailfrom=a@b@c"},
                                {"smtp.mailfrom=" + std::string(97, 'm')}};
  for (const char* host : {"0.0.0.0", "127.0.0.1", "224.0.0.1", "192.0.0.0"}) {
    for (const char* server : {"ftp", "smtp", "pop"})
      cases.push_back({std::string(server) + ".host=" + host});
  }
  for (const char* port : {"0", "65536", "-1", "4294967297", "x", "21x"}) {
    for (const char* server : {"ftp", "smtp", "pop"})
      cases.push_back({std::string(server) + ".port=" + port});
  }
  for (const char* character : {"\\", ":", "*", "?", "\"", "<", ">", "|", "%7C"}) {
    cases.push_back({std::string("ftp.path=a") + character});
    cases.push_back({std::string("ftp.naming_option=a") + character});
  }
  cases.push_back({"ftp.host=" + std::string(64, 'h')});
  const std::string before = camera().read(file(0));
  for (const Refused& c : cases) {
    const std::string path = "application." + c.write.substr(0, c.write.find('='));
    EXPECT_EQ(camera().ask("application." + c.write), path + c.answer) << c.write;
  }
  EXPECT_EQ(camera().toldRecorder(), Texts());
  EXPECT_EQ(camera().read(file(0)), before);
  EXPECT_TRUE(camera().isLogged("[a|] is include invalid character[|]"));
}

TEST_F(TransferTest, FixedTypesAndPasswords) {
  expectAnswers(camera(),
                {{"application.ftp.type", "application.ftp.type=ftp&200 OK"},
                 {"application.ftp.type=ftp", "application.ftp.type&200 OK"},
                 {"application.pop.type", "application.pop.type=pop3&200 OK"},
                 {"application.pop.type=pop3", "application.pop.type&200 OK"},
                 {"application.ftp.password=s%25cret+", "application.ftp.password&200 OK"},
                 {"application.pop.password=s%25cret+", "application.pop.password&200 OK"},
                 {"application.ftp.password", "application.ftp.password&405 Method Not Allowed"},
                 {"application.pop.password", "application.pop.password&405 Method Not Allowed"},
                 {"application.ftp.password", "application.ftp.password&501 Not Implemented", UserClass::kOnvif},
                 {"application.pop.password", "application.pop.password&501 Not Implemented", UserClass::kDebug},
                 {"application.ftp.password=x", "application.ftp.password&401 Unauthorized", UserClass::kUser}});
  EXPECT_EQ(camera().toldRecorder(), (Texts{"ftp.password *******", "pop.password *******"}));
  EXPECT_EQ(camera().row(file(9), "APPLICATION_FTP_PASSWORD"), "s%cret+");
  EXPECT_EQ(camera().row(file(9), "APPLICATION_POP_PASSWORD"), "s%cret+");
  EXPECT_EQ(camera().ask("application.ftp.password=%00&application.pop.password=%00"),
            "application.ftp.password&200 OK\r\napplication.pop.password&200 OK");
  EXPECT_EQ(camera().row(file(0), "APPLICATION_POP_PASSWORD"), "");
}

TEST_F(TransferTest, EachOfTheTenFilesKeepsItsOtherRows) {
  camera().ask("application.object(3).prerec=7");
  camera().ask("application.smtp.host=mail.example");
  EXPECT_EQ(camera().row(file(2), "APPLICATION_OBJECT_PREREC"), "7");
  EXPECT_EQ(camera().row(file(3), "APPLICATION_OBJECT_PREREC"), "5");
  std::filesystem::remove(camera().path(file(4)));
  EXPECT_EQ(camera().ask("application.smtp.host=post.example"), "application.smtp.host&200 OK");
  EXPECT_EQ(camera().row(file(9), "APPLICATION_SMTP_HOST"), "post.example") << "behind the file that is not there";
}

TEST_F(TransferTest, ARecorderThatDoesNotTakeItLeavesTheRows) {
  camera().ask("application.smtp.mailfrom=%00");
  const std::string before = camera().read(file(0));
  for (const auto& [fault, answer] :
       {std::pair("recorder down", k500), {"recorder refuse 403", "&403 Forbidden"}, {"recorder short", k500}}) {
    camera().tell("recorder up");
    camera().tell(fault);
    for (const char* write : {"ftp.host=a.example", "ftp.mode=passive", "ftp.port=99", "pop.user=me"}) {
      const std::string text(write);
      EXPECT_EQ(camera().ask("application." + text), "application." + text.substr(0, text.find('=')) + answer);
    }
  }
  EXPECT_EQ(camera().ask("application.smtp.mailfrom=me"), "application.smtp.mailfrom&200 OK") << "nobody is told";
  camera().ask("application.smtp.mailfrom=%00");
  EXPECT_EQ(camera().read(file(0)), before);
}

TEST(Transfer, AStartTellsTheStoredSettingsInTheirOrderAndWritesNothing) {
  Camera camera;
  ASSERT_TRUE(camera.up());
  for (const auto& [key, value] :
       std::initializer_list<std::pair<const char*, const char*>>{{"FTP_HOST", "0.0.0.0"},
                                                                  {"FTP_PORT", "2100"},
                                                                  {"FTP_PATH", "a%41&b"},
                                                                  {"POP_PORT", "1100"},
                                                                  {"POP_USER", "me%"},
                                                                  {"POP_PASSWORD", "secret"},
                                                                  {"SMTP_HOST", "mail.example"},
                                                                  {"FTP_USER", "a+b c"}})
    camera.setRow(file(0), std::string("APPLICATION_") + key, value);
  const std::string before = camera.read(file(0));
  camera.clearJournal();
  ASSERT_TRUE(camera.reboot());
  Texts told;
  for (const std::string& line : camera.toldRecorder()) {
    for (const char* server : {"ftp.", "smtp.", "pop."}) {
      if (line.starts_with(server)) told.push_back(line);
    }
  }
  const Texts expected = {
      "pop.host 192.168.0.1",   "pop.port 1100",   "pop.user me%",   "pop.password ******", "smtp.type 0",
      "smtp.host mail.example", "smtp.port 25",    "ftp.user a+b c", "ftp.password ",       "ftp.mode 0",
      "ftp.port 2100",          "ftp.path a%41&b", "ftp.naming 0",   "ftp.naming_option "};
  EXPECT_EQ(told, expected);
  EXPECT_EQ(camera.read(file(0)), before);
  EXPECT_EQ(camera.ask("application.ftp.port"), "application.ftp.port=1100&200 OK");
  for (const std::string& text : {camera.log(), camera.read("journal.jsonl")})
    EXPECT_EQ(text.find("secret"), std::string::npos);
}

}  // namespace
}  // namespace test
