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

using TransferTest = CameraTest;

TEST_F(TransferTest, WhatIsTakenIsToldKeptInTenFilesAndShown) {
  const Taken cases[] = {
      {"ftp.host=files.example", "ftp.host files.example", "FTP_HOST", "files.example", "files.example"},
      {"ftp.host=%00", "ftp.host 0.0.0.0", "FTP_HOST", "0.0.0.0", "0.0.0.0"},
      {"ftp.user=a+b%25%22%26c", "ftp.user a b%\"&c", "FTP_USER", "a b%\"&c", "a b%25%22%26c"},
      {"ftp.user=%00", "ftp.user ", "FTP_USER", "", ""},
      {"ftp.mode=passive", "ftp.mode 1", "FTP_MODE", "passive", "passive"},
      {"ftp.mode=active", "ftp.mode 0", "FTP_MODE", "active", "active"},
      {"ftp.port=2121", "ftp.port 2121", "POP_PORT", "2121", "2121"},
      {"pop.port=65535", "pop.port 65535", "POP_PORT", "65535", "65535"},
      {"smtp.port=007", "smtp.port 7", "SMTP_PORT", "007", "007"},
      {"ftp.path=a/b+c", "ftp.path a/b+c", "FTP_PATH", "a/b+c", "a/b+c"},
      {"ftp.naming=type2", "ftp.naming 2", "FTP_NAMING", "type2", "type2"},
      {"ftp.naming=default", "ftp.naming 0", "FTP_NAMING", "default", "default"},
      {"ftp.naming_option=cam%25", "ftp.naming_option cam%", "FTP_NAMING_OPTION", "cam%", "cam%25"},
      {"smtp.type=pbs", "smtp.type 1", "SMTP_TYPE", "pbs", "pbs"},
      {"smtp.host=10.1.2.3", "smtp.host 10.1.2.3", "SMTP_HOST", "10.1.2.3", "10.1.2.3"},
      {"smtp.mailfrom=me%40+x@y", "", "SMTP_MAILFROM", "me%40+x@y", "me%40+x@y"},
      {"smtp.mailfrom=%00", "", "SMTP_MAILFROM", "", ""},
      {"pop.host=%00", "pop.host 0.0.0.0", "POP_HOST", "0.0.0.0", "0.0.0.0"},
      {"pop.user=a+b%25", "pop.user a+b%", "POP_USER", "a+b%", "a+b%25"},
      {"pop.user=%00", "pop.user ", "POP_USER", "", ""},
  };
  for (const Taken& c : cases) {
    expectSteps(camera(), "application.", {{c.write, kOk, c.told.empty() ? Texts() : Texts{c.told}}},
                [] { return camera().toldRecorder(); });
    for (int table = 0; table < 10; ++table)
      EXPECT_EQ(camera().row(file(table), std::string("APPLICATION_") + c.key), c.kept) << c.write << " " << table;
    expectAnswers(camera(), "application.", {{c.write.substr(0, c.write.find('=')), "=" + c.shown + kOk}});
  }
  EXPECT_EQ(camera().row(file(0), "APPLICATION_FTP_PORT"), "21") << "a port that no node writes";
}

TEST_F(TransferTest, WhatIsRefusedReachesNobody) {
  const std::string before = camera().read(file(0));
  for (const std::string server : {"ftp", "smtp", "pop"})
    expectEach(camera(), "application." + server, {".host=127.0.0.1", ".port=65536", ".port=x"}, k451);
  expectAnswers(camera(), "application.",
                {{"ftp.user=a%0Ab", k451},
                 {"ftp.user=a%00b", k451},
                 {"pop.password=" + std::string(33, 'p'), k451},
                 {"smtp.mailfrom=.me", k451},
                 {"ftp.path=a%7C", k451}});
  EXPECT_EQ(camera().toldRecorder(), Texts());
  EXPECT_EQ(camera().read(file(0)), before);
  EXPECT_TRUE(camera().isLogged("[a|] is include invalid character[|]"));
}

TEST_F(TransferTest, PasswordsAreToldAndNeverShown) {
  for (const std::string server : {"ftp", "pop"}) {
    expectAnswers(camera(), "application." + server + ".password",
                  {{"=s%25cret+", kOk}, {"", k405}, {"", k501, UserClass::kOnvif}, {"", k501, UserClass::kDebug}});
  }
  EXPECT_EQ(camera().toldRecorder(), (Texts{"ftp.password *******", "pop.password *******"}));
  expectRows(camera(), file(9), {"APPLICATION_FTP_PASSWORD=s%cret+", "APPLICATION_POP_PASSWORD=s%cret+"});
  expectAnswers(camera(), "application.", {{"ftp.password=%00", kOk}, {"pop.password=%00", kOk}});
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
  expectUnderFaults(camera(), "recorder", {{"down", k500}, {"refuse 403", "&403 Forbidden"}, {"short", k500}},
                    "application.", {"ftp.host=a.example", "ftp.mode=passive", "ftp.port=99", "pop.user=me"});
  camera().tell("recorder down");
  EXPECT_EQ(camera().ask("application.smtp.mailfrom=me"), "application.smtp.mailfrom&200 OK") << "nobody is told";
  camera().tell("recorder up");
  camera().ask("application.smtp.mailfrom=%00");
  EXPECT_EQ(camera().read(file(0)), before);
}

TEST(Transfer, AStartTellsTheStoredSettingsInTheirOrderAndWritesNothing) {
  Camera camera;
  ASSERT_TRUE(camera.up());
  for (const auto& [key, value] : TextPairs{{"FTP_HOST", "0.0.0.0"},
                                            {"FTP_PORT", "2100"},
                                            {"FTP_PATH", "a%41&b"},
                                            {"POP_PORT", "1100"},
                                            {"POP_USER", "me%"},
                                            {"POP_PASSWORD", "secret"},
                                            {"SMTP_HOST", "mail.example"},
                                            {"FTP_USER", "a+b c"}})
    camera.setRow(file(0), "APPLICATION_" + key, value);
  const std::string before = camera.read(file(0));
  camera.clearJournal();
  ASSERT_TRUE(camera.reboot());
  const Texts expected = {
      "pop.host 192.168.0.1",   "pop.port 1100",   "pop.user me%",   "pop.password ******", "smtp.type 0",
      "smtp.host mail.example", "smtp.port 25",    "ftp.user a+b c", "ftp.password ",       "ftp.mode 0",
      "ftp.port 2100",          "ftp.path a%41&b", "ftp.naming 0",   "ftp.naming_option "};
  EXPECT_EQ(camera.toldRecorder({"ftp.", "smtp.", "pop."}), expected);
  EXPECT_EQ(camera.read(file(0)), before);
  EXPECT_EQ(camera.ask("application.ftp.port"), "application.ftp.port=1100&200 OK");
  for (const std::string& text : {camera.log(), camera.read("journal.jsonl")})
    EXPECT_EQ(text.find("secret"), std::string::npos);
}

}  // namespace
}  // namespace test
