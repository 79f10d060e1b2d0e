#pragma once

#include <map>
#include <memory>
#include <string>

#include "access/Account.h"
#include "access/Catalogue.h"
#include "access/Reactor.h"
#include "access/Upstream.h"
#include "access/Waiting.h"
#include "local/FileDescriptor.h"
#include "web/Changes.h"
#include "web/ConfirmFile.h"
#include "web/Connection.h"
#include "web/Metrics.h"
#include "web/Viewers.h"

namespace console {

/** The interface of docs/console.md, for all that the web server hands on. */
class Gateway {
 public:
  /**
   * @param server the socket that the web server connects to.
   * @param opener see startOpener().
   * @param page the folder of the page's files.
   */
  Gateway(tmx::Reactor& reactor, FileDescriptor server, int opener, std::string page, const tmx::Catalogue& catalogue,
          const ConfirmFile& file);

 private:
  using Client = std::shared_ptr<Connection>;

  void accept();
  void serve(const Client& client, const Request& request);
  void get(const Client& client, const Request& request, const tmx::Account& account, const std::string& path);
  void post(const Client& client, const Request& request, const tmx::Account& account, const std::string& path);
  void look(const Client& client, const tmx::Account& account, const std::string& body);

  tmx::Reactor& m_reactor;
  FileDescriptor m_server;
  std::string m_page;
  tmx::Upstream m_upstream;
  tmx::Waiting m_waiting;
  Viewers m_viewers;
  Changes m_changes;
  Metrics m_metrics;
  std::map<const Connection*, Client> m_connections;
};

}  // namespace console
