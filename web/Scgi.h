#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

namespace console {

/** One request of a browser, as the web server hands it on. */
struct Request {
  std::map<std::string, std::string, std::less<>> headers;  ///< as of CGI: "REQUEST_METHOD", "HTTP_X_TMX_CONSOLE"
  std::string body;

  /** A header's text, empty without it. */
  [[nodiscard]] std::string_view header(std::string_view name) const;
};

/** The headers of one request are at most so many bytes. */
inline constexpr std::size_t kMaxHeaders = 16384;
/** A body is at most so many bytes. */
inline constexpr std::size_t kMaxBody = 65536;

/** Takes one SCGI request apart while its bytes come. */
class ScgiParser {
 public:
  enum class State { Incomplete, Complete, Malformed, BodyTooLong };

  /** Takes further bytes. Behind any state but Incomplete nothing more is taken. */
  State take(std::string_view bytes);

  /** The request, once it is complete. */
  [[nodiscard]] const Request& request() const { return m_request; }

 private:
  [[nodiscard]] State parse();
  [[nodiscard]] bool parseHeaders(std::string_view block);
  [[nodiscard]] bool parseLength();

  State m_state = State::Incomplete;
  std::string m_bytes;  ///< what was not taken apart yet
  bool m_hasHeaders = false;
  std::size_t m_length = 0;  ///< of the body
  Request m_request;
};

}  // namespace console
