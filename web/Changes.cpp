#include "web/Changes.h"

#include <algorithm>
#include <utility>

#include "cli/Json.h"

namespace console {
namespace {

bool areAccepted(const std::vector<tmx::Answer>& answers) {
  return std::ranges::all_of(answers, &tmx::Answer::accepted);
}

}  // namespace

void Changes::request(const Client& client, const tmx::Account& account, std::vector<tmx::Item> items) {
  const auto task = std::make_shared<Task>(Task{.client = client, .work = {account, std::move(items)}});
  m_requests.carryOut(workOf(task), [this, task](const std::string& failure) {
    if (failure.empty()) return finish(task);
    fail(task, failure);
  });
}

void Changes::apply(const Client& client, const tmx::Account& account, Application application) {
  const auto task = std::make_shared<Task>(Task{.client = client,
                                                .work = {account, std::move(application.items)},
                                                .commit = std::move(application.commit),
                                                .isConfirmed = application.isConfirmed});
  if (!task->isConfirmed) return write(task);
  if (m_isApplying || m_file.exists()) return refuse(task, 400, "another change waits to be confirmed");
  m_isApplying = true;
  std::vector<tmx::Item> reads;
  for (const tmx::Item& item : task->work.items)
    reads.push_back(tmx::Item::read(item.path));
  run(task, reads, [this, task](const std::vector<tmx::Answer>& answers) { keepBefore(task, answers); });
}

void Changes::confirm(const Client& client, const tmx::Account& account) {
  const std::optional<Applied> change = m_file.read();
  if (!change) return client->answer(refusal(404, "nothing waits to be confirmed"));
  if (account.user != tmx::UserClass::kAdmin && account.name != change->account.name) {
    return client->answer(refusal(403, "only " + change->account.name + " or an administrator can confirm"));
  }
  // The guard may just have taken it.
  client->answer(m_file.remove() ? nothing() : refusal(404, "nothing waits to be confirmed any more"));
  m_changed();
}

/** Without an answer to all of the items the client is told, and what is to be confirmed is left to the guard. */
void Changes::run(const TaskPointer& task, const std::vector<tmx::Item>& items,
                  std::function<void(const std::vector<tmx::Answer>&)> next) {
  const auto done = [this, task, next = std::move(next), count = items.size()](const std::vector<tmx::Answer>& answers,
                                                                               const std::string& failure) {
    if (answers.size() == count) return next(answers);
    fail(task, failure);
  };
  m_upstream.run(tmx::Priority::Person, task->work.account.user, items, done);
}

void Changes::keepBefore(const TaskPointer& task, const std::vector<tmx::Answer>& answers) {
  task->before = {.account = task->work.account, .commit = task->commit.text(), .items = {}};
  for (std::size_t i = 0; i < answers.size(); ++i) {
    task->before.items.push_back({.path = answers[i].path,
                                  .before = tmx::unescapeValue(answers[i].value),
                                  .after = tmx::unescapeValue(task->work.items[i].value)});
  }
  const bool isReadable = std::ranges::all_of(answers, [](const auto& a) { return a.accepted() && a.hasValue; });
  if (isReadable && m_file.write(task->before)) return write(task);
  m_isApplying = false;
  refuse(task, isReadable ? 503 : 400,
         isReadable ? "what to put back cannot be kept" : "what cannot be read cannot be put back");
}

void Changes::write(const TaskPointer& task) {
  run(task, task->work.items, [this, task](const std::vector<tmx::Answer>& answers) {
    task->work.answers = answers;
    if (areAccepted(answers)) return commit(task);
    takeBack(task);
  });
}

void Changes::commit(const TaskPointer& task) {
  run(task, {task->commit}, [this, task](const std::vector<tmx::Answer>& answers) {
    task->committed = answers.front();
    if (!task->committed->accepted()) return takeBack(task);
    if (task->isConfirmed) m_isApplying = false;
    m_waiting.note(task->work.account, task->commit, *task->committed, {});
    finish(task);
  });
}

/** Behind a refusal: what was to be confirmed was not brought into force, and what was staged goes. */
void Changes::takeBack(const TaskPointer& task) {
  if (!task->isConfirmed) return lookBehind(task);
  std::vector<tmx::Item> writes;
  for (const Applied::Item& item : task->before.items)
    writes.push_back(tmx::Item::write(item.path, tmx::escapeValue(item.before)));
  run(task, writes, [this, task](const std::vector<tmx::Answer>& /*answers*/) {
    m_isApplying = false;
    static_cast<void>(m_file.remove());
    finish(task);
  });
}

void Changes::lookBehind(const TaskPointer& task) {
  m_requests.lookBehind(workOf(task), [this, task] { finish(task); });
}

void Changes::finish(const TaskPointer& task) {
  std::string list = tmx::answersText(task->work);
  if (task->committed) list += ",\n" + tmx::answerText(*task->committed, std::nullopt);
  if (const Client client = task->client.lock()) client->answer(json(R"({"answers": [)" + list + "]}\n"));
  m_changed();
}

void Changes::fail(const TaskPointer& task, const std::string& failure) {
  refuse(task, 503, "the camera does not answer: " + failure);
  if (task->isConfirmed) m_isApplying = false;
  m_changed();
}

void Changes::refuse(const TaskPointer& task, int status, const std::string& text) {
  if (const Client client = task->client.lock()) client->answer(refusal(status, text));
}

}  // namespace console
