#pragma once

#include <chrono>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "tests/camera/Camera.h"

namespace test {

using Json = nlohmann::json;

/** A camera's console as the web server sees it: requests of any account, behind the login. */
class Console {
 public:
  explicit Console(const Camera& camera) : m_camera(camera) {}

  struct Answer {
    int status = 0;  ///< 0 without one
    std::string head;
    std::string body;
    [[nodiscard]] Json json() const { return Json::parse(body, nullptr, false); }
  };
  using Headers = std::vector<std::pair<std::string, std::string>>;

  [[nodiscard]] Answer get(const std::string& account, const std::string& path) const;
  [[nodiscard]] Answer post(const std::string& account, const std::string& path, const Json& body) const;
  /** A request with these headers behind its length. */
  [[nodiscard]] Answer ask(const Headers& headers, const std::string& body = {}) const;
  /** The bytes as they stand; what comes until the end. */
  [[nodiscard]] std::string exchange(std::string_view bytes) const;

  [[nodiscard]] static std::string frame(const Headers& headers, const std::string& body);
  /** A connected socket; -1 when nobody listens. */
  [[nodiscard]] int connect() const;
  [[nodiscard]] std::string pid() const { return m_camera.shell("pgrep -x tmx-console"); }

 private:
  const Camera& m_camera;
};

/** The events of one open page. */
class Page {
 public:
  Page(const Console& console, std::string account);
  ~Page();
  Page(const Page&) = delete;
  Page& operator=(const Page&) = delete;

  /** Looks at these values; the status. */
  [[nodiscard]] int look(const Texts& paths) const;
  /** Waits for an event whose data the test takes; null, and a failure, when none comes. */
  Json await(const std::string& event, const std::function<bool(const Json&)>& isIt);

 private:
  [[nodiscard]] bool next(std::string& event, std::string& data, std::chrono::steady_clock::time_point limit);

  Console m_console;
  std::string m_account;
  int m_socket;
  std::string m_bytes;
  std::string m_id;
};

}  // namespace test
