#include "access/Requests.h"

#include <utility>

#include "cli/Json.h"

namespace tmx {

std::string answerText(const Answer& answer, const std::optional<std::string>& now) {
  JsonObject object;
  object.text("path", answer.path).number("status", answer.status).text("text", answer.statusText);
  if (answer.hasValue || now) object.text("value", unescapeValue(answer.hasValue ? answer.value : *now));
  if (!answer.hint.empty()) object.text("hint", answer.hint);
  return object.str();
}

std::string answersText(const Work& work) {
  std::string list;
  for (std::size_t i = 0; i < work.answers.size(); ++i) {
    const bool isRead = i < work.reads.size();
    list += (list.empty() ? "" : ",\n") + answerText(work.answers[i], isRead ? work.reads[i].now : std::nullopt);
  }
  return list;
}

void Requests::carryOut(const WorkPointer& work, std::function<void(const std::string& failure)> done) {
  readValues(work, &Waiting::Reads::before, [this, work, done = std::move(done)] {
    m_upstream.run(Priority::Person, work->account.user, work->items,
                   [this, work, done](const std::vector<Answer>& answers, const std::string& failure) {
                     if (answers.size() != work->items.size()) return done(failure);
                     work->answers = answers;
                     lookBehind(work, [done] { done({}); });
                   });
  });
}

void Requests::lookBehind(const WorkPointer& work, std::function<void()> done) {
  readValues(work, &Waiting::Reads::now, [this, work, done = std::move(done)] {
    for (std::size_t i = 0; i < work->answers.size(); ++i) {
      if (!work->items[i].isWrite || !work->answers[i].accepted()) continue;
      m_waiting.note(work->account, work->items[i], work->answers[i], work->reads[i]);
    }
    done();
  });
}

/** What is written is read; of a word that starts something there is nothing to read, or nobody to answer. */
void Requests::readValues(const WorkPointer& work, Kept kept, std::function<void()> next) {
  std::vector<Item> reads;
  std::vector<std::size_t> places;
  work->reads.resize(work->items.size());
  for (std::size_t i = 0; i < work->items.size(); ++i) {
    const Item& item = work->items[i];
    const bool isRefused = i < work->answers.size() && !work->answers[i].accepted();
    if (!item.isWrite || isRefused || m_catalogue.findCommand(item.path, item.value) != nullptr) continue;
    reads.push_back(Item::read(item.path));
    places.push_back(i);
  }
  if (reads.empty()) return next();
  const auto done = [work, kept, places, next = std::move(next)](const std::vector<Answer>& answers,
                                                                 const std::string& /*failure*/) {
    for (std::size_t i = 0; i < answers.size(); ++i) {
      if (answers[i].accepted() && answers[i].hasValue) work->reads[places[i]].*kept = answers[i].value;
    }
    next();
  };
  m_upstream.run(Priority::Person, work->account.user, reads, done);
}

}  // namespace tmx
