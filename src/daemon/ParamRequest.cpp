#include "daemon/ParamRequest.h"

#include <algorithm>
#include <cassert>

#include "config/Initialising.h"
#include "local/LittleEndian.h"
#include "managers/Roots.h"
#include "request/InternalRequest.h"
#include "request/Items.h"
#include "request/Log.h"
#include "request/Parameter.h"
#include "request/StatusCode.h"
#include "service/CTmxdUtility.h"

namespace {

/** Bytes of a frame behind its length field: two header bytes and a text. */
constexpr uint32_t kShortestFrame = 3;
constexpr uint32_t kFrameLengths = 1024;
constexpr size_t kLengthField = 4;
constexpr size_t kHeader = 2;

void runPostActions(bool reboot, bool addressClient, bool webServer) {
  CTmxdUtility utility;
  if (reboot) {
    utility.reboot();
    return;
  }
  if (addressClient) utility.rebootDhcpcd();
  if (webServer) utility.rebootLighttpd();
}

}  // namespace

const Roots* ParamRequest::m_roots = nullptr;

ParamRequest::ParamRequest() : m_userType(user_class::kUnknown), m_contentType(content_type::kUnknown) {
  const InitialisingGuard initialising;
  m_tree = std::make_unique<Roots>([](CManBase& manager) { manager.init(); });
  m_roots = m_tree.get();
}

ParamRequest::~ParamRequest() { m_roots = nullptr; }

void ParamRequest::startNvtAplThread() { m_tree->network().startNvtAplThread(); }

CManBase* ParamRequest::findRoot(std::string_view layer) {
  if (m_roots == nullptr) return nullptr;
  for (const auto& [manager, name] : m_roots->names()) {
    if (Parameter::isMatch(layer, name)) return manager;
  }
  return nullptr;
}

int32_t ParamRequest::processRequest(int32_t descriptor) {
  if (descriptor < 0 || recvRequest(descriptor) < 0) return -1;
  if (static_cast<uint8_t>(m_userType) > user_class::kDebug) return -1;
  if (static_cast<uint8_t>(m_contentType) > content_type::kPlain) return -1;
  const size_t count = divideRequest();
  if (count == 0) return -1;

  std::string response;
  if (checkRestrictions(&response, count) < 0) {
    sendResponse(descriptor, response);
    m_params.clear();
    return -1;
  }
  PostActions actions{};
  processParameters(&response, &actions);
  m_params.clear();
  if (sendResponse(descriptor, response) < 0) TMX_LOG(LOG_DEBUG, "sendResponse error");
  const auto asked = [&actions](PostAction action) { return actions.at(static_cast<size_t>(action)); };
  runPostActions(asked(PostAction::Reboot), asked(PostAction::RestartAddressClient),
                 asked(PostAction::RestartWebServer));
  return 0;
}

int32_t ParamRequest::recvRequest(int32_t descriptor) {
  CTmxdUtility utility;
  std::array<uint8_t, kLengthField> field{};
  if (utility.readData(descriptor, field.data(), field.size()) < static_cast<int32_t>(field.size())) {
    TMX_LOG(LOG_DEBUG, "read query length error");
    return -1;
  }
  const uint32_t length = getWord(field, 0);
  if (length - kShortestFrame >= kFrameLengths) {
    TMX_LOG(LOG_DEBUG, "query length error");
    return -1;
  }
  std::vector<char> frame(length + 1, '\0');
  if (utility.readData(descriptor, frame.data(), length) < static_cast<int32_t>(length)) {
    TMX_LOG(LOG_DEBUG, "read data error");
    return -1;
  }
  m_userType = static_cast<int8_t>(frame[0]);
  m_contentType = static_cast<int8_t>(frame[1]);
  m_request = frame.data() + kHeader;
  TMX_LOG(LOG_DEBUG, "RecvMessage[msg(%d:%d:%s)]", m_userType, m_contentType, withoutPasswords(m_request).c_str());
  return 0;
}

size_t ParamRequest::divideRequest() { return divideItems(m_request, kMaxItems, &m_params); }

int32_t ParamRequest::checkRestrictions(std::string* response, size_t count) const {
  if (count <= kMaxItems) return 0;
  for (const std::string& item : m_params) {
    Parameter parameter;
    static_cast<void>(parameter.setParameter(m_userType, m_contentType, item.c_str()));
    parameter.setResponse(getStatusCode(status::kMethodNotAllowed));
    *response += parameter.getResponse();
  }
  return -1;
}

void ParamRequest::processParameters(std::string* response, PostActions* actions) {
  assert(!m_params.empty());
  assert(response != nullptr);
  response->clear();
  Parameter parameter;
  for (const std::string& item : m_params) {
    processItem(parameter, item, actions);
    *response += parameter.getResponse();
    parameter.reset();
  }
}

void ParamRequest::processItem(Parameter& parameter, const std::string& item, PostActions* actions) const {
  const int32_t result = parameter.setParameter(m_userType, m_contentType, item.c_str());
  if (result < 0) {
    parameter.setResponse(getStatusCode(-result));
    return;
  }
  const std::string layer = parameter.getNextLayer();
  CManBase* root = parameter.isInvalid() ? nullptr : findRoot(layer);
  if (root == nullptr) {
    parameter.setResponse(getStatusCode(status::kCommandNotFound));
    return;
  }
  root->APIsetup(parameter, layer);
  actions->at(static_cast<size_t>(parameter.getPostAction())) = true;
}

int32_t ParamRequest::sendResponse(int32_t descriptor, const std::string& text) {
  if (text.empty()) return -1;
  std::vector<uint8_t> frame(kLengthField);
  putWord(frame, 0, static_cast<uint32_t>(text.size()));
  frame.insert(frame.end(), text.begin(), text.end());
  if (CTmxdUtility().writeData(descriptor, frame.data(), frame.size()) < static_cast<int32_t>(frame.size())) return -1;
  TMX_LOG(LOG_DEBUG, "response(%s)", text.c_str());
  return 0;
}

int32_t execApiCommandInternal(const std::string& query, std::string* response, int8_t userType, int8_t contentType) {
  Parameter parameter;
  static_cast<void>(parameter.setParameter(userType, contentType, query.c_str()));
  const std::string layer = parameter.getNextLayer();
  if (parameter.isInvalid()) return -1;
  CManBase* root = ParamRequest::findRoot(layer);
  if (root == nullptr) return -1;
  root->APIsetup(parameter, layer);
  if (response == nullptr) return 0;

  const std::string& path = parameter.getPath();
  *response = parameter.getResponse().substr(std::min(path.size(), parameter.getResponse().size()));
  if (contentType != content_type::kHtml && contentType != content_type::kPlain) {
    TMX_LOG(LOG_ERR, "invalid content type[%ld]", static_cast<long>(contentType));
    return 0;
  }
  const size_t end = response->rfind(parameter.getLineEnd());
  if (end != std::string::npos) {
    response->erase(end);
  } else if (contentType == content_type::kPlain) {
    TMX_LOG(LOG_ERR, "[%s]not found <CRLF>", path.c_str());
  } else {
    TMX_LOG(LOG_ERR, "[%s]not found <BR><CRLF>", path.c_str());
  }
  return 0;
}

void ParamRequest::writeList() {
  CManBase::clearList();
  for (const auto& [manager, name] : m_roots->names()) {
    manager->writeList(std::string(name));
  }
}
