#include "camera/CCameraApiBase.h"

#include <string>

#include "config/Config.h"
#include "local/ModelFeature.h"

bool CCameraApiBase::hasTrueDaynight() {
  const std::string model = Config::getModelName();
  return ModelFeature::has(Feature::DAY_NIGHT) || model.starts_with("KT-A30") || model.starts_with("KT-A20");
}
