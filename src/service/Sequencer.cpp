#include "service/Sequencer.h"

#include "request/StatusCode.h"
#include "service/CTmxdUtility.h"

namespace sequencer {

int32_t tell(const std::string& request) {
  std::string ignored;
  return CTmxdUtility::sendPtzseq(request, &ignored) < 0 ? -status::kInternalError : 0;
}

int32_t ask(std::string_view path, std::string& value) {
  return CTmxdUtility::sendPtzseq(std::string(path), &value) < 0 ? -status::kInternalError : 0;
}

}  // namespace sequencer
