#include "mqtt/Orders.h"

#include <syslog.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

#include "access/Body.h"
#include "cli/Json.h"

namespace mqtt {
namespace {

constexpr std::size_t kLongestRequest = 65536;
constexpr std::size_t kLongestId = 64;
constexpr std::size_t kLongestTopic = 128;
constexpr std::string_view kAnswerRoot = "tmx/1/answer/";
constexpr std::size_t kMostWaiting = 8;
constexpr std::size_t kMostAnswered = 64;
constexpr std::size_t kMostAnsweredBytes = 131072;

/** Whether anybody may be answered there: no topic of a camera, and one topic. */
bool isAnswerTopic(std::string_view topic) {
  const bool isPlain = std::ranges::all_of(topic, [](char c) { return c > ' ' && c != '+' && c != '#' && c != 0x7f; });
  return isPlain && topic.starts_with(kAnswerRoot) && topic.size() > kAnswerRoot.size() &&
         topic.size() <= kLongestTopic;
}

}  // namespace

void Orders::take(std::string_view payload) {
  std::string topic;
  std::string id;
  try {
    if (payload.size() > kLongestRequest) throw tmx::BadBody("the request is too long");
    const nlohmann::json body = tmx::parseBody(payload);
    if (!isAnswerTopic(tmx::textIn(body, "answer"))) throw tmx::BadBody("\"answer\" names no topic for answers");
    topic = tmx::textIn(body, "answer");
    if (tmx::textIn(body, "id").empty() || tmx::textIn(body, "id").size() > kLongestId)
      throw tmx::BadBody("\"id\" takes 1 to 64 characters");
    id = tmx::textIn(body, "id");
    add(id, topic, tmx::itemsIn(body));
  } catch (const tmx::BadBody& bad) {
    if (topic.empty()) {
      syslog(LOG_NOTICE, "a request that nobody can be answered: %s", bad.what());
    } else {
      m_answer(topic, errorText(id, bad.what()));
    }
  }
}

void Orders::add(const std::string& id, const std::string& topic, std::vector<tmx::Item> items) {
  if (const auto known = std::ranges::find(m_answered, id, &Order::id); known != m_answered.end()) {
    const std::string& answer = known->answer;
    return m_answer(topic, answer.empty() ? errorText(id, "carried out before; its answer is not kept") : answer);
  }
  if (const auto known = std::ranges::find(m_waiting, id, &Order::id); known != m_waiting.end()) {
    if (std::ranges::find(known->topics, topic) != known->topics.end()) return;
    if (known->topics.size() < kMostWaiting) return known->topics.push_back(topic);
    return m_answer(topic, errorText(id, "too many wait for this answer"));
  }
  if (m_waiting.size() == kMostWaiting) return m_answer(topic, errorText(id, "too many requests wait"));
  m_waiting.push_back(
      {.id = id,
       .topics = {topic},
       .work = std::make_shared<tmx::Work>(tmx::Work{.account = m_account, .items = std::move(items)})});
  if (m_waiting.size() == 1) begin();
}

void Orders::begin() {
  m_requests.carryOut(m_waiting.front().work, [this](const std::string& failure) { end(failure); });
}

/** What failed may have been carried out in part, so that it is not tried again under the same id either. */
void Orders::end(const std::string& failure) {
  Order order = std::move(m_waiting.front());
  m_waiting.pop_front();
  order.answer = failure.empty() ? tmx::JsonObject()
                                       .text("id", order.id)
                                       .text("guid", m_guid)
                                       .member("answers", "[" + tmx::answersText(*order.work) + "]")
                                       .str()
                                 : errorText(order.id, "the camera does not answer: " + failure);
  order.work.reset();
  for (const std::string& topic : order.topics)
    m_answer(topic, order.answer);
  remember(std::move(order));
  if (!m_waiting.empty()) begin();
}

/** The ids are kept longer than long answers. */
void Orders::remember(Order order) {
  m_answeredSize += order.answer.size();
  m_answered.push_back(std::move(order));
  if (m_answered.size() > kMostAnswered) {
    m_answeredSize -= m_answered.front().answer.size();
    m_answered.pop_front();
  }
  for (Order& oldest : m_answered) {
    if (m_answeredSize <= kMostAnsweredBytes) break;
    m_answeredSize -= std::exchange(oldest.answer, {}).size();
  }
}

std::string Orders::errorText(const std::string& id, const std::string& error) const {
  return tmx::JsonObject().text("id", id).text("guid", m_guid).text("error", error).str();
}

}  // namespace mqtt
