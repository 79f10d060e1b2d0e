#include "tree/CApiBase.h"

#include <utility>

#include "request/Log.h"
#include "request/Parameter.h"
#include "request/StatusCode.h"

namespace {
int32_t notImplemented(const ExecArgs* args) {
  if (args != nullptr && args->m_parameter != nullptr) {
    args->m_parameter->setResponse(getStatusCode(status::kNotImplemented));
  }
  return -1;
}
}  // namespace

CApiBase::CApiBase(std::string layerName, std::string attribute)
    : m_layerName(std::move(layerName)), m_attribute(std::move(attribute)) {}

CApiBase::~CApiBase() = default;

int32_t CApiBase::execRead(ExecArgs* args) { return notImplemented(args); }

int32_t CApiBase::execWrite(ExecArgs* args) { return notImplemented(args); }

int32_t CApiBase::checkAttribute(const std::string& /*selector*/, int32_t /*depth*/) { return 0; }

void CApiBase::addNextLayer(CApiBase* node) {
  if (node == nullptr) {
    TMX_LOG(LOG_ERR, "null pointer!");
    return;
  }
  m_nextLayers.push_back(node);
}

CApiBase* findInLayers(const std::list<CApiBase*>& layers, Parameter& parameter, const std::string& layer,
                       int32_t* depth, Selectors* selectors) {
  const int32_t before = *depth;
  for (CApiBase* child : layers) {
    CApiBase* found = child->getProcInstance(parameter, layer, depth, selectors);
    if (found != nullptr || *depth != before) return found;
  }
  return nullptr;
}

CApiBase* CApiBase::getProcInstance(Parameter& parameter, const std::string& layer, int32_t* depth,
                                    Selectors* selectors) {
  if (depth == nullptr || selectors == nullptr) {
    TMX_LOG(LOG_ERR, "getProcInstance arg err");
    return nullptr;
  }
  if (!Parameter::isMatch(layer, m_layerName)) return nullptr;
  ++*depth;
  const std::string selector = parameter.getAttribute(layer);
  if (parameter.isInvalid()) return nullptr;
  const int32_t refused = checkAttribute(selector, *depth);
  if (refused < 0) {
    parameter.setResponse(getStatusCode(-refused));
    return nullptr;
  }
  selectors->push_back(selector);
  const std::string next = parameter.getNextLayer();
  if (parameter.isInvalid()) return nullptr;
  if (next.empty()) return m_attribute.empty() ? nullptr : this;
  return findInLayers(m_nextLayers, parameter, next, depth, selectors);
}
