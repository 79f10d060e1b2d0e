#include "camera/Register.h"

namespace Camera {

int32_t CRawFrame::execRead(ExecArgs* args) {
  Parameter& parameter = *args->m_parameter;
  std::string frame;
  const int32_t result = (cameraDsp().*m_exchange)(parameter.getValue(), frame);
  if (result == dsp::kDone) return RuleEngine::answerValue(parameter, frame);
  const bool isNoAddress = result == dsp::kReadFailed;
  return RuleEngine::answerStatus(parameter, isNoAddress ? status::kInvalidRange : status::kInternalError);
}

}  // namespace Camera
