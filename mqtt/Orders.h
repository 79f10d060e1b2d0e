#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "access/Requests.h"

namespace mqtt {

/** Carries out what comes on the request topic, one request after the other, and each id once (docs/mqtt.md). */
class Orders {
 public:
  using Answer = std::function<void(const std::string& topic, const std::string& payload)>;

  /** @param account whose rights hold for all requests. */
  Orders(tmx::Requests& requests, tmx::Account account, std::string guid, Answer answer)
      : m_requests(requests), m_account(std::move(account)), m_guid(std::move(guid)), m_answer(std::move(answer)) {}

  void take(std::string_view payload);

 private:
  struct Order {
    std::string id;
    std::vector<std::string> topics;  ///< who waits for the answer
    std::shared_ptr<tmx::Work> work;  ///< none once it is answered
    std::string answer = {};          ///< empty where it had to make room
  };

  void add(const std::string& id, const std::string& topic, std::vector<tmx::Item> items);
  void begin();
  void end(const std::string& failure);
  void remember(Order order);
  [[nodiscard]] std::string errorText(const std::string& id, const std::string& error) const;

  tmx::Requests& m_requests;
  tmx::Account m_account;
  std::string m_guid;
  Answer m_answer;
  std::deque<Order> m_waiting;   ///< the first is under way
  std::deque<Order> m_answered;  ///< the last ones
  std::size_t m_answeredSize = 0;
};

}  // namespace mqtt
