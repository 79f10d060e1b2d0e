#pragma once

#include <map>
#include <memory>
#include <string>

#include "local/FileDescriptor.h"
#include "web/Account.h"
#include "web/Catalogue.h"
#include "web/Changes.h"
#include "web/ConfirmFile.h"
#include "web/Connection.h"
#include "web/Metrics.h"
#include "web/Reactor.h"
#include "web/Upstream.h"
#include "web/Viewers.h"
#include "web/Waiting.h"

namespace console {

/** The interface of docs/console.md, for all that the web server hands on. */
class Gateway {
 public:
  /**
   * @param server the socket that the web server connects to.
   * @param opener see startOpener().
   * @param page the folder of the page's files.
   */
  Gateway(Reactor& reactor, FileDescriptor server, int opener, std::string page, const Catalogue& catalogue,
          const ConfirmFile& file);

 private:
  using Client = std::shared_ptr<Connection>;

  void accept();
  void serve(const Client& client, const Request& request);
  void get(const Client& client, const Request& request, const Account& account, const std::string& path);
  void post(const Client& client, const Request& request, const Account& account, const std::string& path);
  void look(const Client& client, const Account& account, const std::string& body);

  Reactor& m_reactor;
  FileDescriptor m_server;
  std::string m_page;
  Upstream m_upstream;
  Waiting m_waiting;
  Viewers m_viewers;
  Changes m_changes;
  Metrics m_metrics;
  std::map<const Connection*, Client> m_connections;
};

}  // namespace console
