#include "request/StatusCode.h"

#include <map>

#include "request/Log.h"

const std::string& getStatusCode(int32_t code) {
  static const std::map<int32_t, std::string> texts = {
      {status::kOk, "&200 OK"},
      {status::kAccepted, "&202 Accepted"},
      {status::kUnauthorized, "&401 Unauthorized"},
      {status::kForbidden, "&403 Forbidden"},
      {status::kNotFound, "&404 Not Found"},
      {status::kMethodNotAllowed, "&405 Method Not Allowed"},
      {status::kPreconditionFailed, "&412 Precondition Failed"},
      {status::kEntityTooLarge, "&413 Request Entity Too Large"},
      {status::kUriTooLong, "&414 Request URI Too Long"},
      {status::kNotUnderstood, "&451 Parameter Not Understood"},
      {status::kNotEnoughBandwidth, "&453 Not Enough Bandwidth"},
      {status::kNotValidForResource, "&456 Header Field Not Valid for Resource"},
      {status::kInvalidRange, "&457 Invalid Range"},
      {status::kReadOnly, "&458 Parameter Is Read Only"},
      {status::kCommandNotFound, "&461 Command Not Found"},
      {status::kInternalError, "&500 Internal Server Error"},
      {status::kNotImplemented, "&501 Not Implemented"},
  };
  const auto found = texts.find(code);
  if (found != texts.end()) return found->second;
  TMX_LOG(LOG_ERR, "code[%ld] not hundle", static_cast<long>(code));
  return texts.at(status::kInternalError);
}
