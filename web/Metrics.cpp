#include "web/Metrics.h"

#include <unistd.h>

#include <charconv>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <limits>
#include <utility>

#include "encode/budget/BitrateLimit.h"

namespace console {
namespace {

constexpr std::chrono::seconds kPeriod{2};

enum Value : std::size_t { kModel, kVersion, kSending, kReceiving, kBitrate, kScene, kCard, kCardErrors, kValues };
constexpr std::array<const char*, kValues> kPaths{"system.model",
                                                  "system.software.revision",
                                                  "system.session.sending_count",
                                                  "system.session.receiving_count",
                                                  "system.session.total_bitrate",
                                                  "camera.scene.status",
                                                  "storage.disk(1).status",
                                                  "storage.disk(1).errcode"};

/** A label's text in its quotes. */
std::string quoted(const std::string& text) {
  std::string result = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') result += '\\';
    result += c == '\n' ? ' ' : c;
  }
  return result + "\"";
}

std::string head(const char* name, const char* type, const char* help) {
  return std::string("# HELP ") + name + " " + help + "\n# TYPE " + name + " " + type + "\n";
}

std::string number(double value) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.12g", value);
  return text.data();
}

/** The number that a text begins with; "NaN" without one. */
std::string leading(const std::string& text, double factor = 1) {
  double value = std::numeric_limits<double>::quiet_NaN();
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value == value ? number(value * factor) : "NaN";
}

std::string sample(const char* name, const char* label, const char* value, bool isSo) {
  return std::string(name) + "{" + label + "=\"" + value + "\"} " + (isSo ? "1\n" : "0\n");
}

/** The card by its state, such as "off_read_only"; nothing where the model has none, or its daemon says nothing. */
std::string card(std::string_view state, std::string_view errors) {
  if (state.empty()) return "";
  const bool isOff = state.starts_with("off");
  std::string text = head("tmx_card_enabled", "gauge", "Whether the memory card is used.") + "tmx_card_enabled " +
                     (isOff ? "0\n" : "1\n") +
                     head("tmx_card_state", "gauge", "Whether the memory card is in a state.");
  if (isOff) state = state == "off" ? "on" : state.substr(std::string_view("off_").size());
  for (const char* name : {"empty", "on", "read_only"})
    text += sample("tmx_card_state", "state", name, state == name);
  return text + head("tmx_card_error", "gauge", "Whether a recording has failed on the memory card.") +
         sample("tmx_card_error", "error", "write", errors.find('1') != std::string_view::npos) +
         sample("tmx_card_error", "error", "space", errors.find('2') != std::string_view::npos);
}

/** Seconds since the camera's first process began. */
double uptime() {
  std::ifstream file("/proc/1/stat");
  std::string text;
  std::getline(file, text);
  text.erase(0, text.rfind(')') + 1);
  constexpr int kStart = 20;  // of the fields behind the name
  std::size_t at = 0;
  for (int field = 0; field < kStart && at != std::string::npos; ++field)
    at = text.find(' ', at + (field > 0 ? 1 : 0));
  timespec now{};
  clock_gettime(CLOCK_BOOTTIME, &now);
  const double ticks = at == std::string::npos ? 0 : std::strtod(text.c_str() + at, nullptr);
  return static_cast<double>(now.tv_sec) - ticks / static_cast<double>(sysconf(_SC_CLK_TCK));
}

}  // namespace

void Metrics::serve(const std::shared_ptr<Connection>& client) {
  m_clients.push_back(client);
  if (m_clients.size() > 1) return;
  if (tmx::Clock::now() - m_read < kPeriod) return take({});
  m_waiting.compare(m_upstream, tmx::UserClass::kAdmin, [this] {
    std::vector<tmx::Item> reads;
    reads.reserve(kPaths.size());
    for (const char* path : kPaths)
      reads.push_back(tmx::Item::read(path));
    m_upstream.run(tmx::Priority::Reader, tmx::UserClass::kUser, reads,
                   [this](const std::vector<tmx::Answer>& values, const std::string& /*failure*/) {
                     m_values.clear();
                     m_read = tmx::Clock::now();
                     take(values);
                   });
  });
}

void Metrics::noteAnswer(bool isAnswered, tmx::Clock::duration time) {
  if (!isAnswered) return;
  const double seconds = std::chrono::duration<double>(time).count();
  ++m_requests;
  m_seconds += seconds;
  for (std::size_t i = 0; i < kBounds.size(); ++i) {
    if (seconds <= kBounds[i]) ++m_counts[i];
  }
}

/** Answers all who wait. */
void Metrics::take(const std::vector<tmx::Answer>& answers) {
  m_values.reserve(kPaths.size());
  for (const tmx::Answer& answer : answers)
    m_values.push_back(tmx::unescapeValue(answer.value));
  const Response response{.type = "text/plain; version=0.0.4; charset=utf-8", .body = text()};
  for (const auto& waiting : std::exchange(m_clients, {})) {
    if (const auto client = waiting.lock()) client->answer(response);
  }
}

std::string Metrics::text() const {
  const bool isUp = m_values.size() == kValues;
  std::string text = head("tmx_up", "gauge", "Whether the parameter daemon answers.") + "tmx_up " + (isUp ? "1" : "0");
  text += "\n" + head("tmx_uptime_seconds", "gauge", "Time since the camera started.") + "tmx_uptime_seconds " +
          number(uptime()) + "\n";
  text += head("tmx_pending_changes", "gauge", "Changes that wait for their commit.") + "tmx_pending_changes " +
          std::to_string(m_waiting.count()) + "\n" + requestTimes();
  if (!isUp) return text;
  text += head("tmx_camera_info", "gauge", "Model and firmware.") +
          "tmx_camera_info{model=" + quoted(m_values[kModel]) + ",version=" + quoted(m_values[kVersion]) + "} 1\n";
  text += head("tmx_sessions", "gauge", "Streams that are sent and received.") +
          "tmx_sessions{direction=\"sending\"} " + leading(m_values[kSending]) +
          "\ntmx_sessions{direction=\"receiving\"} " + leading(m_values[kReceiving]) + "\n";
  constexpr double kBytesPerKilobit = 125;
  text += head("tmx_streams_bytes_per_second", "gauge", "Rate of all streams together.") +
          "tmx_streams_bytes_per_second " + leading(m_values[kBitrate], kBytesPerKilobit) + "\n";
  text += head("tmx_streams_limit_bytes_per_second", "gauge", "What all streams together may take.") +
          "tmx_streams_limit_bytes_per_second " + number(kBytesPerKilobit * bitrate_budget::kLimitKilobits) + "\n";
  return text + head("tmx_scene_number", "gauge", "Scene in force.") + "tmx_scene_number " + leading(m_values[kScene]) +
         "\n" + card(m_values[kCard], m_values[kCardErrors]);
}

std::string Metrics::requestTimes() const {
  const std::string name = "tmx_request_duration_seconds";
  std::string text = head(name.c_str(), "histogram", "Time of the console's requests to the parameter daemon.");
  for (std::size_t i = 0; i < kBounds.size(); ++i)
    text += name + "_bucket{le=\"" + number(kBounds[i]) + "\"} " + std::to_string(m_counts[i]) + "\n";
  return text + name + "_bucket{le=\"+Inf\"} " + std::to_string(m_requests) + "\n" + name + "_sum " +
         number(m_seconds) + "\n" + name + "_count " + std::to_string(m_requests) + "\n";
}

}  // namespace console
