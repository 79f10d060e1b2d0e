#include "tree/CManBase.h"

#include <algorithm>
#include <cassert>
#include <exception>

#include "request/Log.h"
#include "request/Parameter.h"
#include "request/StatusCode.h"

namespace {

int32_t refuse(Parameter& parameter, int32_t code) {
  parameter.setResponse(getStatusCode(code));
  return -1;
}

/** Whether the string grants the right anywhere, to whatever class. */
bool grants(std::string_view permission, char right) { return permission.find(right) != std::string::npos; }

int32_t execute(CApiBase* node, ExecArgs* args, int32_t (CApiBase::*operation)(ExecArgs*)) {
  if (node == nullptr || args == nullptr || args->m_parameter == nullptr) {
    TMX_LOG(LOG_ERR, "arg is null\n");
    return -1;
  }
  try {
    return (node->*operation)(args);
  } catch (const std::exception& failure) {  // of the library, for want of memory: this item fails, and no other
    TMX_LOG(LOG_ERR, "%s", failure.what());
    return refuse(*args->m_parameter, status::kInternalError);
  }
}

}  // namespace

CManBase::CManBase() = default;
CManBase::~CManBase() = default;

void CManBase::init() {
  build();
  replay();
}

void CManBase::replay() {}

const Selector* CManBase::getSelector() const { return nullptr; }

int32_t CManBase::m_execReadCommand(CApiBase* node, ExecArgs* args) { return execute(node, args, &CApiBase::execRead); }

int32_t CManBase::m_execWriteCommand(CApiBase* node, ExecArgs* args) {
  return execute(node, args, &CApiBase::execWrite);
}

int32_t CManBase::APIsetup(Parameter& parameter, const std::string& layer) {
  parameter.setResponse(getStatusCode(status::kCommandNotFound));
  const std::string selector = parameter.getAttribute(layer);
  if (parameter.isInvalid()) return -1;
  const int32_t refused = getSelector() == nullptr ? 0 : checkSelector(*getSelector(), selector);
  if (refused < 0) return refuse(parameter, -refused);

  ExecArgs args{&parameter, {selector}};
  int32_t depth = 0;
  CApiBase* node = findInLayers(m_nextLayers, parameter, parameter.getNextLayer(), &depth, &args.m_selectors);
  if (node == nullptr) return -1;

  int32_t write = 0;
  if (m_checkPermission(parameter, node, &write) < 0) return -1;
  return write == 0 ? m_execReadCommand(node, &args) : m_execWriteCommand(node, &args);
}

int32_t CManBase::m_checkPermission(Parameter& parameter, const CApiBase* node, int32_t* write) {
  if (node == nullptr || write == nullptr) return refuse(parameter, status::kInternalError);
  *write = parameter.getValue().empty() ? 0 : 1;
  const int32_t user = parameter.getUserType();
  if (user == user_class::kOnvif) {
    TMX_LOG(LOG_INFO, "user is onvif user");
    return 0;
  }
  if (user == user_class::kDebug) {
    TMX_LOG(LOG_INFO, "user is debug user");
    return 0;
  }
  const std::string_view permission = node->getPermission();
  if (permission.size() != 6) return refuse(parameter, status::kInternalError);
  const bool readable = grants(permission, 'R');
  const bool writable = grants(permission, 'W');
  if (!readable && !writable) return refuse(parameter, status::kUnauthorized);
  if (*write != 0 && !writable) return refuse(parameter, status::kReadOnly);
  if (*write == 0 && !readable) return refuse(parameter, status::kMethodNotAllowed);
  if (user > user_class::kUser) {
    if (user == user_class::kUnknown) TMX_LOG(LOG_ERR, "user is unknown user");
    return refuse(parameter, status::kInternalError);
  }
  const auto position = static_cast<size_t>(2 * user + *write);
  if (permission[position] == '-') return refuse(parameter, status::kUnauthorized);
  return 0;
}

int32_t CManBase::m_replay(const std::string& query) {
  Parameter parameter;
  if (parameter.setParameter(user_class::kAdministrator, content_type::kPlain, query.c_str()) < 0) return -1;
  const std::string layer = parameter.getNextLayer();
  if (parameter.isInvalid()) return -1;
  return APIsetup(parameter, layer) < 0 ? -1 : 0;
}

int32_t CManBase::m_replay(const std::string& path, const std::string& value) {
  return m_replay(path + "=" + (value.empty() ? "%00" : value));
}

int32_t CManBase::m_replayStored(const std::string& path) {
  Parameter parameter;
  if (parameter.setParameter(user_class::kAdministrator, content_type::kPlain, path.c_str()) < 0) return -1;
  Selectors selectors{parameter.getAttribute(parameter.getNextLayer())};
  int32_t depth = 0;
  const CApiBase* node = findInLayers(m_nextLayers, parameter, parameter.getNextLayer(), &depth, &selectors);
  if (node == nullptr) return -1;
  assert(node->getRule() != nullptr && node->getRule()->place.row.exists());
  const Cell cell = node->getRule()->place.cell(selectors);
  return m_replay(path, Config::getInstance()->get(cell.row, cell.table));
}

void CManBase::link(std::string_view path, NodeIdentity identity, CApiBase* node) {
  m_nodes.emplace_back(node);
  const std::list<CApiBase*>* layers = &m_nextLayers;
  CApiBase* parent = nullptr;
  for (size_t dot = 0; (dot = path.find('.')) != std::string_view::npos; path.remove_prefix(dot + 1)) {
    const auto found = std::ranges::find(*layers, path.substr(0, dot), &CApiBase::getLayerName);
    assert(found != layers->end());  // a layer is added before what lies under it
    parent = *found;
    layers = &parent->getNextLayers();
  }
  identity.name = path.data();
  node->setIdentity(identity);
  if (parent != nullptr) {
    parent->addNextLayer(node);
  } else {
    m_nextLayers.push_back(node);
  }
}
