#include "access/Upstream.h"

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <utility>

#include "access/Opener.h"

namespace tmx {
namespace {

/** A neighbour of the daemon's may keep it waiting for seconds. */
constexpr std::chrono::seconds kAnswerLimit{30};
/** An answer longer than this is none for a page. */
constexpr std::uint32_t kLongestAnswer = 262144;

/** Who has started both starts both anew. */
[[noreturn]] void endWithoutOpener() {
  std::fprintf(stderr, "%s: the opener has gone\n", program_invocation_short_name);
  std::exit(EXIT_FAILURE);
}

}  // namespace

void Upstream::run(Priority priority, UserClass user, const std::vector<Item>& items, Done done, Part part) {
  m_waiting.at(static_cast<std::size_t>(priority))
      .push_back({.user = user, .requests = splitRequests(items), .done = std::move(done), .part = std::move(part)});
  if (!m_job) begin();
}

void Upstream::begin() {
  for (const Priority priority : {Priority::Person, Priority::Reader}) {
    auto& waiting = m_waiting.at(static_cast<std::size_t>(priority));
    if (waiting.empty()) continue;
    m_priority = priority;
    m_job = std::move(waiting.front());
    waiting.pop_front();
    m_begin = Clock::now();
    if (!requestConnection(m_opener)) endWithoutOpener();
    m_reactor.watch(m_opener, POLLIN, [this](short) { connected(); });
    return;
  }
}

void Upstream::connected() {
  m_reactor.forget(m_opener);
  m_connection = takeConnection(m_opener);
  if (!m_connection.isValid()) {
    if (errno == EPIPE) endWithoutOpener();
    end({Outcome::kNoConnection, std::strerror(errno)});
    return;
  }
  m_exchange.emplace(m_connection.get(),
                     requestFrame(m_job->user, LineEnd::kPlain, requestText(m_job->requests[m_job->next])),
                     kLongestAnswer);
  m_reactor.watch(m_connection.get(), m_exchange->events(), [this](short) { step(); });
  m_limit = m_reactor.after(kAnswerLimit, [this] { end({Outcome::kTimedOut, "no answer in time"}); });
  step();
}

void Upstream::step() {
  if (const std::optional<Reply> reply = m_exchange->step()) {
    end(*reply);
  } else {
    m_reactor.setEvents(m_connection.get(), m_exchange->events());
  }
}

void Upstream::end(const Reply& reply) {
  m_exchange.reset();
  if (m_connection.isValid()) m_reactor.forget(m_connection.get());
  m_connection.reset();
  m_reactor.cancel(std::exchange(m_limit, 0));

  const bool isAnswered = reply.outcome == Outcome::kAnswered;
  if (m_heard) m_heard(isAnswered, Clock::now() - m_begin);
  Job job = std::move(*m_job);
  m_job.reset();
  if (isAnswered) {
    std::vector<Answer> answers = parseAnswers(job.requests[job.next], reply.text);
    if (job.part) {
      job.part(answers);
    } else {
      std::ranges::move(answers, std::back_inserter(job.answers));
    }
    ++job.next;
  }
  if (isAnswered && job.next < job.requests.size()) {
    m_waiting.at(static_cast<std::size_t>(m_priority)).push_back(std::move(job));
  } else {
    job.done(job.answers, isAnswered ? std::string() : reply.text);
  }
  if (!m_job) begin();
}

}  // namespace tmx
