#include "tree/CApiBase.h"

#include "request/Log.h"
#include "request/Parameter.h"
#include "request/StatusCode.h"
#include "tree/RuleEngine.h"
#include "tree/Selector.h"

namespace {

int32_t execute(const Rule* rule, ExecArgs* args, int32_t (*operation)(const Rule&, ExecArgs&)) {
  if (args == nullptr || args->m_parameter == nullptr) return -1;
  if (rule != nullptr) return operation(*rule, *args);
  return RuleEngine::answerStatus(*args->m_parameter, status::kNotImplemented);
}

}  // namespace

CApiBase::CApiBase() = default;
CApiBase::~CApiBase() = default;

int32_t CApiBase::execRead(ExecArgs* args) { return execute(m_identity.rule, args, RuleEngine::read); }

int32_t CApiBase::execWrite(ExecArgs* args) { return execute(m_identity.rule, args, RuleEngine::write); }

int32_t CApiBase::checkAttribute(const std::string& selector, int32_t /*depth*/) {
  return m_identity.selector == nullptr ? 0 : checkSelector(*m_identity.selector, selector);
}

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
  if (!Parameter::isMatch(layer, getLayerName())) return nullptr;
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
  if (next.empty()) return getPermission().empty() ? nullptr : this;
  return findInLayers(m_nextLayers, parameter, next, depth, selectors);
}
