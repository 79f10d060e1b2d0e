#include "web/Response.h"

#include <array>
#include <utility>

#include "cli/Json.h"

namespace console {
namespace {

constexpr std::string_view kCommonHeaders =
    "Content-Security-Policy: default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data:; "
    "connect-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'\r\n"
    "X-Content-Type-Options: nosniff\r\n"
    "Referrer-Policy: no-referrer\r\n";
constexpr std::string_view kNotKept = "Cache-Control: no-store\r\n";

constexpr std::array<std::pair<int, std::string_view>, 10> kReasons{{{200, "OK"},
                                                                     {204, "No Content"},
                                                                     {301, "Moved Permanently"},
                                                                     {304, "Not Modified"},
                                                                     {400, "Bad Request"},
                                                                     {403, "Forbidden"},
                                                                     {404, "Not Found"},
                                                                     {405, "Method Not Allowed"},
                                                                     {413, "Content Too Large"},
                                                                     {503, "Service Unavailable"}}};

std::string head(int status, std::string_view type, std::string_view further) {
  std::string text = "Status: " + std::to_string(status);
  for (const auto& [number, reason] : kReasons) {
    if (number == status) text.append(" ").append(reason);
  }
  text += "\r\n";
  if (!type.empty()) text.append("Content-Type: ").append(type).append("\r\n");
  text += kCommonHeaders;
  if (further.find("Cache-Control:") == std::string_view::npos) text += kNotKept;
  return text.append(further);
}

}  // namespace

Response refusal(int status, std::string_view text) {
  return {.status = status, .body = tmx::JsonObject().text("error", text).str() + "\n"};
}

Response json(std::string text) { return {.body = std::move(text)}; }

Response nothing() { return {.status = 204, .type = ""}; }

std::string wire(const Response& response) {
  std::string text = head(response.status, response.type, response.headers);
  if (response.status != 204 && response.status != 304) {
    text += "Content-Length: " + std::to_string(response.body.size()) + "\r\n";
  }
  return text + "\r\n" + response.body;
}

std::string eventStreamHead() { return head(200, "text/event-stream", "") + "\r\n"; }

}  // namespace console
