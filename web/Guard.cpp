#include "web/Guard.h"

#include <poll.h>
#include <sys/inotify.h>
#include <syslog.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <optional>
#include <vector>

#include "access/Opener.h"
#include "cli/Client.h"
#include "cli/Item.h"
#include "local/FileDescriptor.h"

namespace console {
namespace {

constexpr std::chrono::seconds kAnswerLimit{30};
constexpr std::chrono::milliseconds kPause{1000};  ///< between two tries to reach the daemon
constexpr int kMaxRefusals = 3;

/** Seconds since the boot. */
std::int64_t now() {
  timespec time{};
  clock_gettime(CLOCK_BOOTTIME, &time);
  return time.tv_sec;
}

/** Waits until the folder's files change or the time is over. */
void waitForChange(int changes, std::chrono::milliseconds time) {
  pollfd ready{changes, POLLIN, 0};
  if (poll(&ready, 1, static_cast<int>(time.count())) <= 0) return;
  std::array<char, 4096> events{};
  while (read(changes, events.data(), events.size()) > 0) {
  }
}

/** The answers, as many as there are items, waiting for the daemon as long as it takes. */
std::vector<tmx::Answer> ask(int opener, tmx::UserClass user, const std::vector<tmx::Item>& items) {
  std::vector<tmx::Answer> answers;
  for (const std::vector<tmx::Item>& request : tmx::splitRequests(items)) {
    const std::string frame = tmx::requestFrame(user, tmx::LineEnd::kPlain, tmx::requestText(request));
    while (true) {
      if (!tmx::requestConnection(opener)) std::exit(EXIT_FAILURE);
      const FileDescriptor connection = tmx::takeConnection(opener);
      if (!connection.isValid() && errno == EPIPE) std::exit(EXIT_FAILURE);
      if (connection.isValid()) {
        const tmx::Reply reply = tmx::exchangeOver(connection.get(), frame, kAnswerLimit);
        if (reply.outcome == tmx::Outcome::kAnswered) {
          for (tmx::Answer& answer : tmx::parseAnswers(request, reply.text))
            answers.push_back(std::move(answer));
          break;
        }
      }
      poll(nullptr, 0, static_cast<int>(kPause.count()));
    }
  }
  return answers;
}

/** Whether everything is in force as it was before the change. */
bool isBefore(int opener, const Applied& change) {
  std::vector<tmx::Item> reads;
  for (const Applied::Item& item : change.items)
    reads.push_back(tmx::Item::read(item.path));
  const std::vector<tmx::Answer> answers = ask(opener, change.account.user, reads);
  return std::equal(answers.begin(), answers.end(), change.items.begin(), change.items.end(),
                    [](const tmx::Answer& answer, const Applied::Item& item) {
                      return answer.hasValue && tmx::unescapeValue(answer.value) == item.before;
                    });
}

/**
 * Where the commit was never sent, writing what is in force takes back what was staged. The first refusals may come
 * from a camera that is just starting.
 */
void putBack(const ConfirmFile& file, int opener, const Applied& change) {
  for (int refusals = 0; refusals < kMaxRefusals; ++refusals) {
    std::vector<tmx::Item> writes;
    for (auto item = change.items.rbegin(); item != change.items.rend(); ++item)
      writes.push_back(tmx::Item::write(item->path, tmx::escapeValue(item->before)));
    const bool isCommitNeeded = !isBefore(opener, change);
    bool isDone = std::ranges::all_of(ask(opener, change.account.user, writes), &tmx::Answer::accepted);
    if (isDone && isCommitNeeded) {
      const std::size_t equals = change.commit.find('=');
      const tmx::Item commit = tmx::Item::write(change.commit.substr(0, equals), change.commit.substr(equals + 1));
      isDone = ask(opener, change.account.user, {commit}).front().accepted();
    }
    if (isDone) {
      syslog(LOG_NOTICE, "nobody confirmed %s: put back", change.commit.c_str());
      file.removeClaimed();
      return;
    }
    poll(nullptr, 0, static_cast<int>(kPause.count()));
  }
  syslog(LOG_ERR, "%s cannot be put back", change.commit.c_str());
  file.removeClaimed();
}

/** Waits for a confirmation; puts back without one. */
void watch(const ConfirmFile& file, int opener, int changes, std::chrono::seconds time) {
  const std::int64_t deadline = now() + time.count();
  std::ofstream(kDeadlineFile, std::ios::trunc) << deadline << "\n";
  while (file.exists() && now() < deadline)
    waitForChange(changes, std::chrono::seconds(deadline - now()));
  unlink(kDeadlineFile);
  const std::optional<Applied> change = file.read();
  if (!file.claim()) return;
  if (change) {
    putBack(file, opener, *change);
  } else {
    file.removeClaimed();
  }
}

}  // namespace

std::int64_t secondsLeft(std::chrono::seconds whole) {
  std::int64_t deadline = 0;
  if (!(std::ifstream(kDeadlineFile) >> deadline)) return whole.count();
  return std::max<std::int64_t>(deadline - now(), 0);
}

void guard(const ConfirmFile& file, int opener, std::chrono::seconds time) {
  // Before the first look, so that nothing is missed between it and the wait.
  const FileDescriptor changes(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
  inotify_add_watch(changes.get(), file.folder().c_str(), IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE);
  if (const auto change = file.claimed()) putBack(file, opener, *change);
  // A camera that went off before the change was in force has nothing to confirm.
  if (const auto change = file.read(); change && isBefore(opener, *change)) static_cast<void>(file.remove());
  while (true) {
    if (file.exists()) {
      watch(file, opener, changes.get(), time);
    } else {
      waitForChange(changes.get(), std::chrono::milliseconds(-1));
    }
  }
}

}  // namespace console
