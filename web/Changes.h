#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "access/Account.h"
#include "access/Catalogue.h"
#include "access/Requests.h"
#include "access/Upstream.h"
#include "access/Waiting.h"
#include "web/Body.h"
#include "web/ConfirmFile.h"
#include "web/Connection.h"

namespace console {

/** What people ask for and change. Each call answers the client, at once or later. */
class Changes {
 public:
  using Client = std::shared_ptr<Connection>;

  /** @param changed called when what waits, for a commit or to be confirmed, is another. */
  Changes(tmx::Upstream& upstream, const tmx::Catalogue& catalogue, tmx::Waiting& waiting, const ConfirmFile& file,
          std::function<void()> changed)
      : m_upstream(upstream),
        m_waiting(waiting),
        m_requests(upstream, catalogue, waiting),
        m_file(file),
        m_changed(std::move(changed)) {}

  /** Reads and writes. */
  void request(const Client& client, const tmx::Account& account, std::vector<tmx::Item> items);
  /** Writes and commits; the commit is left out behind a refusal. */
  void apply(const Client& client, const tmx::Account& account, Application application);
  /** Keeps what was applied to be confirmed. */
  void confirm(const Client& client, const tmx::Account& account);

 private:
  struct Task {
    std::weak_ptr<Connection> client;
    tmx::Work work;
    tmx::Item commit = {};
    bool isConfirmed = false;
    std::optional<tmx::Answer> committed = {};
    Applied before = {};
  };
  using TaskPointer = std::shared_ptr<Task>;

  void run(const TaskPointer& task, const std::vector<tmx::Item>& items,
           std::function<void(const std::vector<tmx::Answer>&)> next);
  void keepBefore(const TaskPointer& task, const std::vector<tmx::Answer>& answers);
  void write(const TaskPointer& task);
  void commit(const TaskPointer& task);
  void takeBack(const TaskPointer& task);
  void lookBehind(const TaskPointer& task);
  void finish(const TaskPointer& task);
  void fail(const TaskPointer& task, const std::string& failure);
  static void refuse(const TaskPointer& task, int status, const std::string& text);

  /** The task's work, which lives as long as the task. */
  [[nodiscard]] static std::shared_ptr<tmx::Work> workOf(const TaskPointer& task) { return {task, &task->work}; }

  tmx::Upstream& m_upstream;
  tmx::Waiting& m_waiting;
  tmx::Requests m_requests;
  const ConfirmFile& m_file;
  std::function<void()> m_changed;
  bool m_isApplying = false;  ///< something that is to be confirmed
};

}  // namespace console
