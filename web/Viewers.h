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
#include "access/Reader.h"
#include "access/Upstream.h"
#include "access/Waiting.h"
#include "web/Body.h"
#include "web/ConfirmFile.h"
#include "web/Connection.h"

namespace console {

/**
 * Everybody who has a page open: what pages of one class look at is read once for all. Without a page nothing is read.
 */
class Viewers {
 public:
  Viewers(tmx::Reactor& reactor, tmx::Upstream& upstream, tmx::Waiting& waiting, const ConfirmFile& file);

  /** Makes the connection a stream of events; false when there are too many. */
  [[nodiscard]] bool add(const std::shared_ptr<Connection>& connection, const tmx::Account& account);

  enum class Result { Taken, NoSuchPage, TooMuch };
  /** From now on the page with this id, which must be of the account, looks at these paths. */
  [[nodiscard]] Result look(const tmx::Account& account, const View& view);

  /** To be told when what waits, for a commit or to be confirmed, may be another. */
  void tellWaiting();

  /** To be told of each request to the daemon. */
  void noteAnswer(bool isAnswered);

 private:
  struct Viewer {
    std::string id;
    tmx::Account account;
    std::weak_ptr<Connection> connection;
    std::vector<std::shared_ptr<const tmx::Reader::Value>> values = {};
    std::uint64_t seen = 0;   ///< the change up to which it was told
    std::size_t pending = 0;  ///< a hash of what it was told last of what waits
  };

  void remove(const std::string& id);
  void compareWaiting();
  void tell(Viewer& viewer) const;
  void tellPending(Viewer& viewer) const;
  [[nodiscard]] std::string confirmText() const;
  void keepAlive();
  void streamToAll(std::string_view text) const;

  tmx::Reactor& m_reactor;
  tmx::Upstream& m_upstream;
  tmx::Waiting& m_waiting;
  const ConfirmFile& m_file;
  tmx::Reader m_reader;
  bool m_isConfirmTold = false;
  bool m_isComparing = false;
  std::map<std::string, Viewer> m_viewers;  ///< by their ids
  bool m_answers = true;
  tmx::Reactor::Timer m_nextComparison = 0;
  tmx::Reactor::Timer m_nextSign = 0;
};

}  // namespace console
