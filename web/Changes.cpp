#include "web/Changes.h"

#include <algorithm>
#include <utility>

#include "cli/Json.h"

namespace console {
namespace {

std::string toJson(const tmx::Answer& answer, const std::optional<std::string>& now) {
  tmx::JsonObject object;
  object.text("path", answer.path).number("status", answer.status).text("text", answer.statusText);
  if (answer.hasValue || now) object.text("value", tmx::unescapeValue(answer.hasValue ? answer.value : *now));
  if (!answer.hint.empty()) object.text("hint", answer.hint);
  return object.str();
}

bool areAccepted(const std::vector<tmx::Answer>& answers) {
  return std::ranges::all_of(answers, &tmx::Answer::accepted);
}

}  // namespace

void Changes::request(const Client& client, const tmx::Account& account, std::vector<tmx::Item> items) {
  const auto task = std::make_shared<Task>(Task{.client = client, .account = account, .what = {std::move(items), {}}});
  readValues(task, &tmx::Waiting::Reads::before, [this, task] {
    run(task, task->what.items, [this, task](const std::vector<tmx::Answer>& answers) {
      task->answers = answers;
      readBehind(task);
    });
  });
}

void Changes::apply(const Client& client, const tmx::Account& account, Application application) {
  const auto task = std::make_shared<Task>(Task{.client = client, .account = account, .what = std::move(application)});
  if (!task->what.isConfirmed) return write(task);
  if (m_isApplying || m_file.exists()) return refuse(task, 400, "another change waits to be confirmed");
  m_isApplying = true;
  std::vector<tmx::Item> reads;
  for (const tmx::Item& item : task->what.items)
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
    refuse(task, 503, "the camera does not answer: " + failure);
    if (task->what.isConfirmed) m_isApplying = false;
    m_changed();
  };
  m_upstream.run(tmx::Priority::Person, task->account.user, items, done);
}

void Changes::keepBefore(const TaskPointer& task, const std::vector<tmx::Answer>& answers) {
  task->before = {.account = task->account, .commit = task->what.commit.text(), .items = {}};
  for (std::size_t i = 0; i < answers.size(); ++i) {
    task->before.items.push_back({.path = answers[i].path,
                                  .before = tmx::unescapeValue(answers[i].value),
                                  .after = tmx::unescapeValue(task->what.items[i].value)});
  }
  const bool isReadable = std::ranges::all_of(answers, [](const auto& a) { return a.accepted() && a.hasValue; });
  if (isReadable && m_file.write(task->before)) return write(task);
  m_isApplying = false;
  refuse(task, isReadable ? 503 : 400,
         isReadable ? "what to put back cannot be kept" : "what cannot be read cannot be put back");
}

void Changes::write(const TaskPointer& task) {
  run(task, task->what.items, [this, task](const std::vector<tmx::Answer>& answers) {
    task->answers = answers;
    if (areAccepted(answers)) return commit(task);
    takeBack(task);
  });
}

void Changes::commit(const TaskPointer& task) {
  run(task, {task->what.commit}, [this, task](const std::vector<tmx::Answer>& answers) {
    task->commit = answers.front();
    if (!task->commit->accepted()) return takeBack(task);
    if (task->what.isConfirmed) m_isApplying = false;
    m_waiting.note(task->account, task->what.commit, *task->commit, {});
    finish(task);
  });
}

/** Behind a refusal: what was to be confirmed was not brought into force, and what was staged goes. */
void Changes::takeBack(const TaskPointer& task) {
  if (!task->what.isConfirmed) return readBehind(task);
  std::vector<tmx::Item> writes;
  for (const Applied::Item& item : task->before.items)
    writes.push_back(tmx::Item::write(item.path, tmx::escapeValue(item.before)));
  run(task, writes, [this, task](const std::vector<tmx::Answer>& /*answers*/) {
    m_isApplying = false;
    static_cast<void>(m_file.remove());
    finish(task);
  });
}

/** What is written is read; of a word that starts something there is nothing to read, or nobody to answer. */
void Changes::readValues(const TaskPointer& task, Kept kept, std::function<void()> next) {
  std::vector<tmx::Item> reads;
  std::vector<std::size_t> places;
  task->reads.resize(task->what.items.size());
  for (std::size_t i = 0; i < task->what.items.size(); ++i) {
    const tmx::Item& item = task->what.items[i];
    const bool isRefused = i < task->answers.size() && !task->answers[i].accepted();
    if (!item.isWrite || isRefused || m_catalogue.findCommand(item.path, item.value)) continue;
    reads.push_back(tmx::Item::read(item.path));
    places.push_back(i);
  }
  if (reads.empty()) return next();
  const auto done = [task, kept, places, next = std::move(next)](const std::vector<tmx::Answer>& answers,
                                                                 const std::string& /*failure*/) {
    for (std::size_t i = 0; i < answers.size(); ++i) {
      if (answers[i].accepted() && answers[i].hasValue) task->reads[places[i]].*kept = answers[i].value;
    }
    next();
  };
  m_upstream.run(tmx::Priority::Person, task->account.user, reads, done);
}

void Changes::readBehind(const TaskPointer& task) {
  readValues(task, &tmx::Waiting::Reads::now, [this, task] {
    for (std::size_t i = 0; i < task->answers.size(); ++i) {
      if (!task->what.items[i].isWrite || !task->answers[i].accepted()) continue;
      m_waiting.note(task->account, task->what.items[i], task->answers[i], task->reads[i]);
    }
    finish(task);
  });
}

void Changes::finish(const TaskPointer& task) {
  std::string list;
  task->reads.resize(task->answers.size());
  for (std::size_t i = 0; i < task->answers.size(); ++i)
    list += (list.empty() ? "" : ",\n") + toJson(task->answers[i], task->reads[i].now);
  if (task->commit) list += ",\n" + toJson(*task->commit, std::nullopt);
  if (const Client client = task->client.lock()) client->answer(json(R"({"answers": [)" + list + "]}\n"));
  m_changed();
}

void Changes::refuse(const TaskPointer& task, int status, const std::string& text) {
  if (const Client client = task->client.lock()) client->answer(refusal(status, text));
}

}  // namespace console
