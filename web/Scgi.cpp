#include "web/Scgi.h"

#include <algorithm>
#include <charconv>

namespace console {
namespace {

/** A count of decimal digits alone. */
bool parseCount(std::string_view text, std::size_t& count) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
  return error == std::errc() && end == text.data() + text.size();
}

constexpr std::size_t kCountDigits = 5;  // of kMaxHeaders

}  // namespace

std::string_view Request::header(std::string_view name) const {
  const auto found = headers.find(name);
  return found == headers.end() ? std::string_view() : found->second;
}

ScgiParser::State ScgiParser::take(std::string_view bytes) {
  if (m_state != State::Incomplete) return m_state;
  m_bytes.append(bytes);
  return m_state = parse();
}

/** "COUNT:NAME\0VALUE\0…,BODY", the COUNT bytes being the headers. */
ScgiParser::State ScgiParser::parse() {
  if (!m_hasHeaders) {
    const std::size_t colon = m_bytes.find(':');
    if (std::min(colon, m_bytes.size()) > kCountDigits) return State::Malformed;
    if (colon == std::string::npos) return State::Incomplete;
    std::size_t count = 0;
    if (!parseCount(std::string_view(m_bytes).substr(0, colon), count) || count > kMaxHeaders) return State::Malformed;
    const std::size_t end = colon + 1 + count;
    if (m_bytes.size() <= end) return State::Incomplete;
    if (m_bytes[end] != ',' || !parseHeaders(std::string_view(m_bytes).substr(colon + 1, count))) {
      return State::Malformed;
    }
    if (!parseLength()) return State::Malformed;
    if (m_length > kMaxBody) return State::BodyTooLong;
    m_bytes.erase(0, end + 1);
    m_hasHeaders = true;
  }
  if (m_bytes.size() > m_length) return State::Malformed;
  if (m_bytes.size() < m_length) return State::Incomplete;
  m_request.body = std::move(m_bytes);
  return State::Complete;
}

bool ScgiParser::parseHeaders(std::string_view block) {
  const auto next = [&block](std::string& text) {
    const std::size_t end = block.find('\0');
    if (end == std::string_view::npos) return false;
    text = block.substr(0, end);
    block.remove_prefix(end + 1);
    return true;
  };
  std::string name;
  std::string value;
  while (!block.empty()) {
    if (!next(name) || !next(value) || name.empty()) return false;
    // Which of two the web server means is not for this side to guess.
    if (!m_request.headers.emplace(name, value).second) return false;
  }
  return m_request.header("SCGI") == "1";
}

bool ScgiParser::parseLength() { return parseCount(m_request.header("CONTENT_LENGTH"), m_length); }

}  // namespace console
