#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "access/Account.h"
#include "access/Reactor.h"
#include "access/Upstream.h"
#include "access/Waiting.h"
#include "web/Body.h"
#include "web/ConfirmFile.h"
#include "web/Connection.h"

namespace console {

/**
 * Everybody who has a page open, and the one reader for all of them: what pages of one class look at is read once for
 * all. Without a page nothing is read.
 */
class Viewers {
 public:
  Viewers(tmx::Reactor& reactor, tmx::Upstream& upstream, tmx::Waiting& waiting, const ConfirmFile& file)
      : m_reactor(reactor), m_upstream(upstream), m_waiting(waiting), m_file(file) {}

  /** Makes the connection a stream of events; false when there are too many. */
  [[nodiscard]] bool add(const std::shared_ptr<Connection>& connection, const tmx::Account& account);

  enum class Result { Taken, NoSuchPage, TooMuch };
  /** From now on the page with this id, which must be of the account, looks at these paths. */
  [[nodiscard]] Result look(const tmx::Account& account, const View& view);

  /** Why the reader must not ask for the path again and again; a null pointer for one that it may ask for. */
  [[nodiscard]] static const char* faultOf(std::string_view path);

  /** To be told when what waits, for a commit or to be confirmed, may be another. */
  void tellWaiting();

  /** To be told of each request to the daemon. */
  void noteAnswer(bool isAnswered);

 private:
  /** A parameter as the pages of one class see it. */
  struct Value {
    tmx::UserClass user;
    std::string path;
    bool isSlow;
    int status = 0;  ///< 0 before it was read
    std::string text = {};
    bool hasText = false;
    std::uint64_t changed = 0;  ///< counts the changes of all values
    tmx::Clock::time_point read = {};
  };
  struct Viewer {
    std::string id;
    tmx::Account account;
    std::weak_ptr<Connection> connection;
    std::vector<std::shared_ptr<Value>> values = {};
    std::uint64_t seen = 0;   ///< the change up to which it was told
    std::size_t pending = 0;  ///< a hash of what it was told last of what waits
  };

  void remove(const std::string& id);
  [[nodiscard]] std::shared_ptr<Value> value(tmx::UserClass user, const std::string& path);
  void readSoon(std::chrono::milliseconds time);
  void readAll();
  void readOf(tmx::UserClass user);
  void compareWaiting();
  void endRound();
  void take(Value& value, const tmx::Answer& answer);
  void tell(Viewer& viewer) const;
  void tellPending(Viewer& viewer) const;
  [[nodiscard]] std::string confirmText() const;
  void keepAlive();
  void streamToAll(std::string_view text) const;

  tmx::Reactor& m_reactor;
  tmx::Upstream& m_upstream;
  tmx::Waiting& m_waiting;
  const ConfirmFile& m_file;
  tmx::Clock::time_point m_compared = {};
  bool m_isConfirmTold = false;
  std::map<std::string, Viewer> m_viewers;  ///< by their ids
  std::map<std::pair<tmx::UserClass, std::string>, std::weak_ptr<Value>> m_values;
  std::uint64_t m_changes = 0;
  unsigned m_underWay = 0;  ///< parts of a round that are being read
  bool m_isReadAgain = false;
  bool m_answers = true;
  tmx::Reactor::Timer m_nextRead = 0;
  tmx::Reactor::Timer m_nextSign = 0;
};

}  // namespace console
