#pragma once

#include <array>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "access/Reactor.h"
#include "cli/Client.h"
#include "cli/Item.h"
#include "local/FileDescriptor.h"

namespace tmx {

enum class Priority { Person, Reader };

/**
 * The way to the daemon: one request of at most 15 items at a time, those of people before those of the reader. Whoever
 * has many items waits behind each request for the others, so that nobody waits for all of them.
 */
class Upstream {
 public:
  /**
   * The answers in the order of the items, and the HTTP-free reason where the daemon did not answer; then the answers
   * are those that had come before.
   */
  using Done = std::function<void(const std::vector<Answer>& answers, const std::string& failure)>;

  /** @param opener see startOpener(). */
  Upstream(Reactor& reactor, int opener) : m_reactor(reactor), m_opener(opener) {}

  using Part = std::function<void(const std::vector<Answer>& answers)>;

  /**
   * Sends items that faultOf() finds no fault with.
   *
   * @param part hears of the answers to each request as they come; then `done` gets none of them.
   */
  void run(Priority priority, UserClass user, const std::vector<Item>& items, Done done, Part part = {});

  /** Hears of each request whether the daemon has answered it, and of the time that it took. */
  void onAnswer(std::function<void(bool isAnswered, Clock::duration time)> heard) { m_heard = std::move(heard); }

 private:
  struct Job {
    UserClass user;
    std::vector<std::vector<Item>> requests;
    Done done;
    Part part;
    std::size_t next = 0;  ///< of the requests
    std::vector<Answer> answers = {};
  };

  void begin();
  void connected();
  void step();
  void end(const Reply& reply);

  Reactor& m_reactor;
  int m_opener;
  std::function<void(bool, Clock::duration)> m_heard;
  std::array<std::deque<Job>, 2> m_waiting;
  Priority m_priority = Priority::Person;  ///< of the job that is under way
  std::optional<Job> m_job;
  FileDescriptor m_connection;
  std::optional<Exchange> m_exchange;
  Reactor::Timer m_limit = 0;
  Clock::time_point m_begin;
};

}  // namespace tmx
