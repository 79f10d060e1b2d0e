#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "access/Reactor.h"
#include "local/FileDescriptor.h"
#include "web/Response.h"
#include "web/Scgi.h"

namespace console {

/**
 * One request of the web server's: read whole, then answered once, or by a stream without an end. Whoever still has to
 * answer holds a weak pointer, since the browser may leave.
 */
class Connection : public std::enable_shared_from_this<Connection> {
 public:
  using OnRequest = std::function<void(const std::shared_ptr<Connection>&, const Request&)>;
  using OnClosed = std::function<void(const Connection*)>;

  Connection(tmx::Reactor& reactor, FileDescriptor descriptor, OnRequest onRequest, OnClosed onClosed);
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection();

  /** Answers and closes. */
  void answer(const Response& response);

  /** Begins a stream: the browser may take its time with it, but not without an end. */
  void beginStream();
  /** More of the stream; a browser that has left too much untaken is dropped soon. */
  void stream(std::string_view bytes);
  /** Called when the stream's browser has left or was dropped. */
  void onLeave(std::function<void()> leave) { m_leave = std::move(leave); }

 private:
  void ready(short events);
  void readSome();
  /** Sends what goes now; false when that is the end of the connection. */
  [[nodiscard]] bool write();
  void close();

  tmx::Reactor& m_reactor;
  FileDescriptor m_descriptor;
  OnRequest m_onRequest;
  OnClosed m_onClosed;
  std::function<void()> m_leave;
  ScgiParser m_parser;
  bool m_isRequestRead = false;
  bool m_isStream = false;
  std::string m_output;
  tmx::Reactor::Timer m_limit = 0;
};

}  // namespace console
