#include "application/Transfer.h"

#include "application/ParamChecker.h"
#include "config/Config.h"

namespace Application {
namespace {

constexpr int32_t kTables = 10;
constexpr const char* kNoServer = "0.0.0.0";
constexpr const char* kEmptied = "%00";

}  // namespace

void keepInAllTables(Row row, const std::string& value) {
  for (int32_t table = 0; table < kTables; ++table) {
    CUserConfig::getInstance()->set(row, value, table);
    Config::getInstance()->set(row, value, table);
    static_cast<void>(Config::getInstance()->save(row.family, table));
  }
}

int32_t refuseRead(const Request& /*request*/, std::string& /*text*/) { return -status::kNotImplemented; }

int32_t checkHost(Request& request) {
  if (request.value == kEmptied) {
    request.value = kNoServer;
    return 0;
  }
  return ParamChecker::checkHostName(request.value) < 0 ? -status::kNotUnderstood : 0;
}

int32_t checkMailFrom(Request& request) {
  if (request.value == kEmptied) request.value.clear();
  return ParamChecker::checkMailAddress(request.value) < 0 ? -status::kNotUnderstood : 0;
}

}  // namespace Application
