#include "bench/load/Observer.h"

#include <nlohmann/json.hpp>
#include <string_view>

namespace bench::load {
namespace {

constexpr const char* kAnswerTopic = "tmx/1/answer/load";

}  // namespace

Observer::Observer(Poll& poll, const Options& options)
    : Client(poll, "tmx-mqtt-load", options.security), m_options(options) {}

void Observer::connect() { Client::connect(m_options.brokers.front()); }

void Observer::ask(int number) {
  // The id tells when the request left.
  const nlohmann::json request = {{"id", stampOf(Clock::now())},
                                  {"answer", kAnswerTopic},
                                  {"items", nlohmann::json::array({{{"path", "system.model"}}})}};
  publish("tmx/1/" + guidOf(number) + "/request", request.dump(), false);
}

void Observer::care() {
  Client::care();
  if (Clock::now() < m_return) return;
  m_return = Clock::time_point::max();
  connect();
}

void Observer::connected() {
  subscribe("tmx/1/+/value/#", m_options.quality);
  subscribe(kAnswerTopic, 1);
}

void Observer::lost() { m_return = Clock::now() + std::chrono::seconds(1); }

void Observer::received(const mosquitto_message& message) {
  const bool isAnswer = message.topic == std::string_view(kAnswerTopic);
  if (!isAnswer && message.retain) {
    ++m_arrivals.retained;
    return;
  }
  const std::string_view payload(static_cast<const char*>(message.payload),
                                 static_cast<std::size_t>(message.payloadlen));
  const auto json = nlohmann::json::parse(payload, nullptr, false);
  const auto& stamp = isAnswer && json.is_object() ? json.at("id") : json;
  if (!stamp.is_string()) return;
  const auto age = Clock::now() - momentOf(stamp.get_ref<const std::string&>());
  (isAnswer ? m_arrivals.answers : m_arrivals.changes).push_back(std::chrono::duration<double>(age).count());
}

}  // namespace bench::load
