#include "camera/SceneExposure.h"

#include "dsp/ExposureTables.h"
#include "service/Numbers.h"
#include "tree/RuleEngine.h"

namespace Camera {

int32_t CScene::CAutoExposure::CReference::fetch(const Request& request, std::string& text) {
  const int32_t raw = parseNumber(RuleEngine::stored(rule, request.selectors)).value_or(0);
  text = std::to_string(dsp::aeReferenceIndex(raw));
  return 0;
}

}  // namespace Camera
