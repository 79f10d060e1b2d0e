#include "camera/Scene.h"

#include <algorithm>

#include "config/Config.h"
#include "dsp/ExposureTables.h"
#include "dsp/Step.h"
#include "request/Log.h"
#include "service/Numbers.h"

namespace Camera {
namespace {

/** The scene of a request, without an index the current one; or a negated status. */
int32_t sceneOf(const Selectors& selectors) {
  const std::string& index = selectors.at(CScene::kLayer);
  const auto scene = parseNumber(index.empty() ? CCameraApiBase::currentScene() : index);
  if (!scene) return -status::kNotUnderstood;
  return *scene < 0 || *scene >= CScene::kScenes ? -status::kNotValidForResource : *scene;
}

bool isCurrent(int32_t scene) { return std::to_string(scene) == CCameraApiBase::currentScene(); }

}  // namespace

void CScene::remember(const std::string& scene) { m_selectedSceneId = parseNumber(scene).value_or(0); }

int32_t isScene(const Selectors& selectors) { return std::min(sceneOf(selectors), 0); }

int32_t isCurrentScene(const Selectors& selectors) {
  return isCurrent(sceneOf(selectors)) ? 0 : -status::kPreconditionFailed;
}

Cell inScene(const Selectors& selectors, Row row) {
  const int32_t scene = sceneOf(selectors);
  if (row.family == Family::Scene) return {.row = row, .table = scene};
  if (isCurrent(scene)) return {.row = row, .image = Image::User};
  return {.row = {Family::Scene, row.number - camera_row::COMMENT2}, .table = scene, .image = Image::Config};
}

int32_t told(int32_t result, const std::string& value) {
  if (result >= 0) return 0;
  TMX_LOG(LOG_WARNING, "failed[errorcode:%ld] agcmode(%s) to send detectd", static_cast<long>(result), value.c_str());
  return result;
}

int32_t CScene::CShutter::check(Request& request) {
  const std::string& value = request.value;
  if (value.find("auto") != std::string::npos || value == "flickerless") return 0;
  request.step = dsp::stepDirection(value);
  if (request.step != 0) return 0;
  const auto speed = parseNumber(value);
  if (!speed) return -status::kNotUnderstood;
  request.number = *speed;
  return std::ranges::count(dsp::shutter::kLadder, *speed) > 0 ? 0 : -status::kInvalidRange;
}

int32_t CScene::CShutter::act(Request& request) {
  if (request.step != 0) return cameraDsp().stepShutter(request.value);
  if (request.number == 0) return cameraDsp().setShutterByName(request.value);
  const bool isSlowest = request.number == dsp::shutter::kSlowest;
  return cameraDsp().setShutterSpeedWithAGC(isSlowest ? dsp::shutter::kManual30 : dsp::shutter::kManual,
                                            request.number);
}

int32_t CScene::CShutter::fetch(const Request& request, std::string& text) {
  if (!isCurrent(sceneOf(request.selectors))) return kShowStored;
  text = cameraDsp().getShutterSpeedMode();
  return 0;
}

int32_t CScene::CShutter::execRead(ExecArgs* args) {
  const bool isNameless = isCurrent(sceneOf(args->m_selectors)) && cameraDsp().getShutterSpeedMode().empty();
  if (!isNameless) return CCameraApiBase::execRead(args);
  args->m_parameter->setResponse("=" + getStatusCode(status::kInternalError));
  return -1;
}

}  // namespace Camera
