// Web logins: the real password tool and the real web server.

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

constexpr const char* kFile = "flash/lighttpd/.htpasswd";
constexpr const char* kBackUp = "flash/lighttpd/.htpasswd.bak";

class AccountTest : public CameraTest {
 protected:
  void SetUp() override {
    camera().write(kFile, "");
    CameraTest::SetUp();
  }

  static void expect(const std::string& item, const std::string& answer, UserClass user = UserClass::kAdmin) {
    expectAnswers(camera(), "system.password.", {{item, answer, user}});
  }

  /** Whether the tool finds this password for the account. */
  static bool verifies(const std::string& account, const std::string& password) {
    return camera().exec({"htpasswd", "-vb", "/etc/lighttpd/.htpasswd", account, password}) == 0;
  }

  /** The web server's status for its guarded pages. */
  static std::string pageStatus(const std::string& account, const std::string& password) {
    return camera().pageStatus("/setup/", account, password);
  }
};

TEST_F(AccountTest, AnAccountIsMadeByItsPasswordAndDeleted) {
  expect("operator(2).status", "=unregistered&200 OK");
  expect("operator(2)=pass%26word%25+", kOk);
  expect("operator(2).status", "=registered&200 OK");
  EXPECT_TRUE(verifies("operator2", "pass&word%+"));
  expect("operator(2)=another", kOk);
  EXPECT_TRUE(verifies("operator2", "another"));
  EXPECT_FALSE(verifies("operator2", "pass&word%+"));
  expect("operator.status", "=unregistered&200 OK");
  expect("operator=base", kOk);
  expect("operator(0)=zero", kOk);
  EXPECT_TRUE(verifies("operator", "zero"));
  expect("operator(0).status", "=registered&200 OK");
  expect("operator(0).status=initialize", k401);
  expect("operator(0).status=delete", k451);
  expect("operator(2).status=initialize", kOk);
  expect("operator(2).status", "=unregistered&200 OK");
  expect("operator.status=initialize", kOk);
  EXPECT_EQ(camera().read(kFile), "");
  expect("operator(2).status=initialize", k500);
  EXPECT_FALSE(std::filesystem::exists(camera().path(kBackUp)));
}

TEST_F(AccountTest, TheThreeClassesAreAccountsOfTheirOwn) {
  for (const char* item : {"admin(1)=one", "operator(1)=two", "user(3)=three"})
    expect(item, kOk);
  EXPECT_TRUE(verifies("admin1", "one") && verifies("operator1", "two") && verifies("user3", "three"));
}

TEST_F(AccountTest, PasswordsHaveOneToSixteenCharacters) {
  expect("admin=" + std::string(15, 'a') + "%26", kOk);
  EXPECT_TRUE(verifies("admin", std::string(15, 'a') + "&"));
  const std::string before = camera().read(kFile);
  expect("admin=" + std::string(17, 'a'), k500);
  expect("admin=%00", k500);
  EXPECT_EQ(camera().read(kFile), before);
}

TEST_F(AccountTest, AnAccountIsFoundInAnyLineThatHoldsItsName) {
  camera().write(kFile, "superuser:$apr1$x$y\n");
  expect("user.status", "=registered&200 OK");
  expect("user(1).status", "=unregistered&200 OK");
  std::filesystem::remove(camera().path(kFile));
  expect("user.status", k500);
  expect("user.status=initialize", k500);
}

TEST_F(AccountTest, TheWebServerTakesTheLoginUntilItIsDeleted) {
  expect("admin(1)=letmein", kOk);
  ASSERT_TRUE(eventually([] { return !pageStatus("admin1", "letmein").empty(); })) << "the web server runs";
  EXPECT_EQ(pageStatus("admin1", "letmein"), "200");
  EXPECT_EQ(pageStatus("admin1", "letmeout"), "401");
  expect("admin(1).status=initialize", kOk);
  EXPECT_EQ(pageStatus("admin1", "letmein"), "401");
}

TEST_F(AccountTest, NoPasswordIsLogged) {
  camera().ask("system.loglevel=LOG_DEBUG");
  expect("admin(1)=topsecret", kOk);
  expect("admin(2)=" + std::string(9, 'x') + "topsecret", k500);
  camera().ask("system.loglevel=LOG_INFO");
  ASSERT_TRUE(camera().isLogged("system.password.admin(2)=*"));
  EXPECT_EQ(camera().log().find("topsecret"), std::string::npos);
  EXPECT_EQ(camera().read("journal.jsonl").find("topsecret"), std::string::npos);
}

}  // namespace
}  // namespace test
