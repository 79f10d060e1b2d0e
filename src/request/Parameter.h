#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/** What the request loop does once the client has its answer. */
enum class PostAction : uint32_t { None = 0, RestartWebServer = 1, RestartAddressClient = 2, Reboot = 3 };

/** The class of a caller, as it stands on the wire. */
namespace user_class {
inline constexpr int32_t kAdministrator = 0;
inline constexpr int32_t kOperator = 1;
inline constexpr int32_t kUser = 2;
inline constexpr int32_t kOnvif = 3;
inline constexpr int32_t kDebug = 4;
inline constexpr int32_t kUnknown = 5;
}  // namespace user_class

/** The line ends that a caller asks for, as they stand on the wire: "<BR>\r\n" or "\r\n". */
namespace content_type {
inline constexpr int32_t kHtml = 0;
inline constexpr int32_t kPlain = 1;
inline constexpr int32_t kUnknown = 2;
}  // namespace content_type

/**
 * The working record of one item of a request: path and value, a cursor over the layers of the path, and the text of
 * the answer with its line end. Owned by whoever runs the item; reset() makes it ready for the next one.
 */
class Parameter {
 public:
  /** Parses "path" or "path=value"; 0, or -404 (user class), -501 (content type), -461 (no path). */
  [[nodiscard]] int32_t setParameter(int8_t userType, int8_t contentType, const char* item);

  /** The next layer with its selector, empty behind the last one and on a malformed path (isInvalid). */
  [[nodiscard]] std::string getNextLayer();
  /** The selector of a layer, empty where it has none; a malformed one marks the parameter invalid. */
  [[nodiscard]] std::string getAttribute(const std::string& layer);

  /** Sets the answer, with the path in front of a text that begins with "&" or "=", and the line end; 0 or -1. */
  int32_t setResponse(const std::string& text);
  /** The same for an answer of many lines, which brings its own line ends. */
  int32_t setMultiLineResponse(const std::string& text);

  [[nodiscard]] static bool isMatch(std::string_view layer, std::string_view name);

  [[nodiscard]] bool isInvalid() const { return m_isInvalid; }
  [[nodiscard]] int32_t getUserType() const { return m_userType; }
  [[nodiscard]] int32_t getContentType() const { return m_contentType; }
  [[nodiscard]] const std::string& getPath() const { return m_path; }
  [[nodiscard]] const std::string& getValue() const { return m_value; }
  [[nodiscard]] const std::string& getResponse() const { return m_response; }
  [[nodiscard]] PostAction getPostAction() const { return m_postAction; }
  /** "<BR>\r\n" or "\r\n", by the content type. */
  [[nodiscard]] const char* getLineEnd() const;

  void setPostAction(PostAction action) { m_postAction = action; }
  void reset();

 private:
  std::string m_value;
  std::string m_path;
  int32_t m_userType = user_class::kUnknown;
  int32_t m_contentType = content_type::kUnknown;
  std::string m_response;
  int32_t m_position = -1;
  bool m_isInvalid = false;
  bool m_isLastLayer = false;
  PostAction m_postAction = PostAction::None;
};
