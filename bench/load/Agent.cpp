#include "bench/load/Agent.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <random>

#include "bench/load/Crowd.h"

namespace bench::load {
namespace {

/** As many as the library sends without an acknowledgement. */
constexpr int kMostUnacknowledged = 20;
constexpr int kLongestPause = 60;  // seconds

/** Any time up to a limit that doubles with each failure, as the agents of cameras have it. */
std::chrono::milliseconds randomPause(int seconds, int failures) {
  static std::minstd_rand random{std::random_device{}()};
  const int limit = std::min(kLongestPause, seconds << std::min(failures, 6));
  return std::chrono::milliseconds(std::uniform_int_distribution<int>(0, limit * 1000)(random));
}

}  // namespace

std::string guidOf(int number) {
  char text[40];
  std::snprintf(text, sizeof text, "00000000-0000-4000-8000-%012d", number);
  return text;
}

std::string stampOf(Clock::time_point moment) {
  return std::to_string(std::chrono::duration_cast<std::chrono::microseconds>(moment.time_since_epoch()).count());
}

Clock::time_point momentOf(std::string_view stamp) {
  long long count = 0;
  std::from_chars(stamp.data(), stamp.data() + stamp.size(), count);
  return Clock::time_point(std::chrono::microseconds(count));
}

Agent::Agent(Poll& poll, const Options& options, Crowd& crowd, Returns& returns, int number)
    : Client(poll, guidOf(number), options.security),
      m_options(options),
      m_crowd(crowd),
      m_returns(returns),
      m_number(number),
      m_topic("tmx/1/" + guidOf(number)) {}

void Agent::connect() {
  m_wanted = Clock::now();
  const auto& brokers = m_options.brokers;
  Client::connect(brokers[static_cast<std::size_t>(m_number) % brokers.size()], m_topic + "/online", "false");
}

void Agent::change(Clock::time_point due) {
  if (!m_isReady) return;
  m_changed = (m_changed + 1) % m_options.values;
  publishValue(m_changed, due);
}

void Agent::connected() {
  m_published = 0;
  m_unacknowledged = 3;  // the three that follow
  subscribe(m_topic + "/request", 1);
  publish(m_topic + "/online", "true", true);
  publish(m_topic + "/about", R"({"model":"load","version":"1","address":"127.0.0.1:8443"})", true);
  publishMore();
}

void Agent::lost() {
  ++m_crowd.lost;
  if (m_isReady) --m_crowd.ready;
  m_isReady = false;
  m_returns.emplace(Clock::now() + randomPause(m_options.jitter, m_failures++), this);
}

void Agent::received(const mosquitto_message& message) {
  const auto* text = static_cast<const char*>(message.payload);
  const auto request = nlohmann::json::parse(text, text + message.payloadlen, nullptr, false);
  if (!request.is_object()) return;
  auto answers = nlohmann::json::array();
  for (const auto& item : request.at("items"))
    answers.push_back({{"path", item.at("path")}, {"status", 200}, {"text", "200 OK"}, {"value", "10"}});
  const nlohmann::json answer = {{"id", request.at("id")}, {"guid", guidOf(m_number)}, {"answers", answers}};
  publish(request.at("answer").get<std::string>(), answer.dump(), false);
  ++m_unacknowledged;
}

void Agent::acknowledged() {
  --m_unacknowledged;
  ++m_crowd.acknowledged;
  if (m_isReady) return;
  publishMore();
  m_isReady = m_unacknowledged == 0;
  if (!m_isReady) return;
  m_failures = 0;
  ++m_crowd.ready;
  m_crowd.waits[static_cast<std::size_t>(m_number)] = std::chrono::duration<double>(Clock::now() - m_wanted).count();
}

void Agent::publishMore() {
  while (m_published < m_options.values && m_unacknowledged < kMostUnacknowledged)
    publishValue(m_published++, Clock::now());
}

void Agent::publishValue(int value, Clock::time_point moment) {
  char path[48];  // as long as a parameter's is on average
  std::snprintf(path, sizeof path, "/value/camera/scene(1)/value(%03d)", value);
  ++m_unacknowledged;
  publish(m_topic + path, '"' + stampOf(moment) + '"', true);
}

}  // namespace bench::load
