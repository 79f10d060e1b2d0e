#include <gtest/gtest.h>

#include <string>

#include "request/Items.h"

namespace {

TEST(Items, TheLogShowsNoPassword) {
  struct Case {
    const char* query;
    const char* shown;
  };
  const Case cases[] = {
      {"", ""},
      {"system.model", "system.model"},
      {"system.password.admin=secret", "system.password.admin=*"},
      {"system.password.operator(2)=a=b&system.model&", "system.password.operator(2)=*&system.model&"},
      {"&application.ftp.user=password&&application.ftp.password=x&a=b",
       "&application.ftp.user=password&&application.ftp.password=*&a=b"},
      {"application.pop.password", "application.pop.password"},
      {"application.pop.password=", "application.pop.password=*"},
  };
  for (const Case& c : cases)
    EXPECT_EQ(withoutPasswords(c.query), c.shown);
}

}  // namespace
