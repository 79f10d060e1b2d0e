#include "request/Parameter.h"

#include <cassert>

#include "request/StatusCode.h"

int32_t Parameter::setParameter(int8_t userType, int8_t contentType, const char* item) {
  assert(item != nullptr);
  const auto user = static_cast<uint8_t>(userType);
  if (user >= user_class::kUnknown) {
    m_userType = user_class::kUnknown;
    return -status::kNotFound;
  }
  m_userType = user;
  if (contentType != content_type::kHtml && contentType != content_type::kPlain) {
    m_contentType = content_type::kUnknown;
    return -status::kNotImplemented;
  }
  m_contentType = static_cast<uint8_t>(contentType);

  const std::string_view text = item;
  const size_t equals = text.find('=');
  if (equals == 0) return -status::kCommandNotFound;
  m_path = text.substr(0, equals);
  m_value = equals == std::string_view::npos ? std::string_view() : text.substr(equals + 1);
  return 0;
}

std::string Parameter::getNextLayer() {
  if (m_path.empty() || m_isInvalid || m_isLastLayer) return {};
  const auto start = static_cast<size_t>(m_position + 1);
  const size_t dot = m_path.find('.', start);
  if (start == m_path.size() || dot == start) {
    m_isInvalid = true;
    return {};
  }
  if (dot == std::string::npos) {
    m_position = -1;
    m_isLastLayer = true;
    return m_path.substr(start);
  }
  m_position = static_cast<int32_t>(dot);
  return m_path.substr(start, dot - start);
}

std::string Parameter::getAttribute(const std::string& layer) {
  const size_t open = layer.find('(');
  if (open == std::string::npos) return {};
  const size_t close = layer.find(')', open);
  if (close != layer.size() - 1 || close == open + 1) {
    m_isInvalid = true;
    return {};
  }
  return layer.substr(open + 1, close - open - 1);
}

bool Parameter::isMatch(std::string_view layer, std::string_view name) {
  return layer.substr(0, layer.find('(')) == name || layer == name;
}

const char* Parameter::getLineEnd() const { return m_contentType == content_type::kHtml ? "<BR>\r\n" : "\r\n"; }

int32_t Parameter::setMultiLineResponse(const std::string& text) {
  if (text.empty()) return -1;
  m_response = text.front() == '&' || text.front() == '=' ? m_path + text : text;
  return 0;
}

int32_t Parameter::setResponse(const std::string& text) {
  const int32_t result = setMultiLineResponse(text);
  if (result == 0) m_response += getLineEnd();
  return result;
}

void Parameter::reset() { *this = Parameter(); }
