#pragma once

#include <map>
#include <memory>
#include <string>

#include "local/FileDescriptor.h"
#include "web/Account.h"
#include "web/Catalogue.h"
#include "web/Connection.h"
#include "web/Reactor.h"
#include "web/Upstream.h"
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
  Gateway(Reactor& reactor, FileDescriptor server, int opener, std::string page, Catalogue catalogue);

 private:
  using Client = std::shared_ptr<Connection>;

  void accept();
  void serve(const Client& client, const Request& request);
  void get(const Client& client, const Request& request, const Account& account, const std::string& path);
  void post(const Client& client, const Request& request, const Account& account, const std::string& path);
  void carryOut(const Client& client, const Account& account, const std::string& body);
  void answer(const Client& client, tmx::UserClass user, const std::vector<tmx::Item>& items,
              const std::vector<tmx::Answer>& answers, const std::string& failure);
  void look(const Client& client, const Account& account, const std::string& body);

  Reactor& m_reactor;
  FileDescriptor m_server;
  std::string m_page;
  Catalogue m_catalogue;
  Upstream m_upstream;
  Viewers m_viewers;
  std::map<const Connection*, Client> m_connections;
};

}  // namespace console
