#include "service/Sequencer.h"

#include "request/Log.h"
#include "request/StatusCode.h"
#include "service/CTmxdUtility.h"

namespace sequencer {

int32_t tell(const std::string& request) {
  std::string ignored;
  return CTmxdUtility::sendPtzseq(request, &ignored) < 0 ? -status::kInternalError : 0;
}

int32_t ask(std::string_view path, std::string& value) {
  if (CTmxdUtility::sendPtzseq(std::string(path), &value) < 0) return -status::kInternalError;
  if (value.find_first_of("\r\n") == std::string::npos) return 0;
  TMX_LOG(LOG_ERR, "[ptzseq] answer of several lines[%s]", std::string(path).c_str());
  return -status::kInternalError;
}

}  // namespace sequencer
