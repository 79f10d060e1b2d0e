#include "Neighbour.h"

#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <vector>

namespace sim {

namespace {

/** No request of any neighbour is longer; a connection that holds more is not one of theirs. */
constexpr std::size_t largestRequest = 8192;
/** How many bytes of a flood are handed over with one call. */
constexpr std::size_t floodedAtOnce = 65536;

/** A packet of a thousand bytes is mostly zeros behind its text; the journal leaves them out. */
std::string_view withoutPadding(std::string_view request) {
  constexpr std::size_t always = 16;
  const std::size_t last = request.find_last_not_of('\0');
  const std::size_t used = last == std::string_view::npos ? 0 : last + 1;
  return request.substr(0, std::max(used, always));
}

}  // namespace

Neighbour::Neighbour(Loop& loop, std::string name, std::string socketPath)
    : m_loop(loop), m_name(std::move(name)), m_path(std::move(socketPath)) {}

bool Neighbour::up() {
  m_fault = {};
  if (m_listener.isOpen()) return true;
  m_listener = listenAt(m_path);
  if (!m_listener.isOpen()) return false;
  m_loop.watch(m_listener.number(), [this] { accept(); });
  return true;
}

void Neighbour::stopListening() {
  if (!m_listener.isOpen()) return;
  m_loop.unwatch(m_listener.number());
  m_listener = Descriptor();
  ::unlink(m_path.c_str());
}

void Neighbour::down() {
  stopListening();
  while (!m_clients.empty())
    drop(m_clients.begin()->first);
}

std::string Neighbour::tell(const Words& words) {
  if (words.empty()) return "error: tell " + m_name + " what?";
  const std::string& first = words.front();
  if (first == "show") return showLine();
  if (first == "up") return up() ? "ok" : "error: cannot listen at " + m_path;
  if (first == "down") {
    down();
    return "ok";
  }
  if (isFaultName(first)) {
    const auto fault = parseFault(words);
    if (!fault) return "error: a fault is told as: FAULT [NUMBER] [for=MESSAGE], slow with its milliseconds";
    m_fault = *fault;
    return "ok";
  }
  const std::string problem = change(words);
  return problem.empty() ? "ok" : "error: " + problem;
}

std::string Neighbour::change(const Words& words) {
  for (const std::string& word : words) {
    const auto pair = keyAndValue(word);
    if (!pair || !set(pair->first, pair->second)) return m_name + " makes nothing of \"" + word + "\"";
  }
  return "";
}

std::string Neighbour::showLine() const {
  JsonObject state;
  state.text("who", m_name).text("socket", m_listener.isOpen() ? "up" : "down");
  state.text("fault", faultName(m_fault.kind));
  show(state);
  return state.toString();
}

void Neighbour::accept() {
  while (true) {
    Descriptor socket = acceptFrom(m_listener);
    if (!socket.isOpen()) return;
    if (m_fault.kind == Fault::Kind::early) {
      Journal(m_name, "connection").text("fault", faultName(m_fault.kind)).write();
      continue;
    }
    const unsigned id = ++m_lastId;
    m_loop.watch(socket.number(), [this, id] { receiveUpTo(id); });
    m_clients[id].socket = std::move(socket);
  }
}

void Neighbour::receiveUpTo(unsigned id) {
  std::vector<unsigned> ids;
  for (const auto& [other, client] : m_clients) {
    if (other <= id) ids.push_back(other);
  }
  for (const unsigned each : ids)
    receive(each);
}

void Neighbour::receive(unsigned id) {
  std::array<char, 4096> buffer{};
  Client& client = m_clients.at(id);
  const ssize_t count = ::recv(client.socket.number(), buffer.data(), buffer.size(), 0);
  if (count < 0 && (errno == EAGAIN || errno == EINTR)) return;
  if (count <= 0) return drop(id);
  client.pending.append(buffer.data(), static_cast<std::size_t>(count));
  while (const std::size_t size = requestSize(client.pending)) {
    const std::string request = client.pending.substr(0, size);
    client.pending.erase(0, size);
    if (!exchange(id, request)) return;
  }
  if (client.pending.size() > largestRequest) drop(id);
}

bool Neighbour::exchange(unsigned id, const std::string& request) {
  const std::string name = messageName(request);
  const Fault::Kind fault = m_fault.kindFor(name);
  std::string reply;
  if (fault == Fault::Kind::refuse) {
    reply = refusal(request, m_fault.number);
  } else if (fault != Fault::Kind::silent) {
    reply = answer(request);
  }
  Journal line(m_name, name);
  const std::string open = recorded(request);
  describe(open, line);
  const std::string_view shown = withoutPadding(open);
  line.raw(shown.data(), shown.size());
  if (!reply.empty()) line.text("answer", readable(reply));
  if (fault != Fault::Kind::none) line.text("fault", faultName(fault));
  line.write();
  if (fault == Fault::Kind::leave) stopListening();
  return reply.empty() || deliver(id, fault, std::move(reply));
}

bool Neighbour::deliver(unsigned id, Fault::Kind fault, std::string reply) {
  if (fault == Fault::Kind::slow) {
    const std::chrono::milliseconds delay(m_fault.number.value_or(0));
    m_loop.after(delay, [this, id, reply = std::move(reply)] { send(id, reply); });
    return true;
  }
  if (fault == Fault::Kind::cut) {
    if (send(id, reply.substr(0, reply.size() / 2))) drop(id);
    return false;
  }
  if (fault == Fault::Kind::drip) {
    drip(id, reply);
    return true;
  }
  if (fault == Fault::Kind::huge) reply.assign(reply.size(), '\xff');
  if (fault == Fault::Kind::huge || fault == Fault::Kind::endless) {
    while (reply.size() < floodedAtOnce)
      reply += reply;
    flood(id, reply);
    return true;
  }
  return send(id, fault == Fault::Kind::garbage ? garbled(std::move(reply)) : reply);
}

void Neighbour::drip(unsigned id, const std::string& bytes) {
  if (bytes.empty() || !send(id, bytes.substr(0, 1))) return;
  m_loop.after(std::chrono::milliseconds(m_fault.number.value_or(0)),
               [this, id, rest = bytes.substr(1)] { drip(id, rest); });
}

void Neighbour::flood(unsigned id, const std::string& bytes) {
  constexpr std::chrono::milliseconds pause(1);
  const auto client = m_clients.find(id);
  if (client == m_clients.end()) return;
  const ssize_t sent = ::send(client->second.socket.number(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
  if (sent < 0 && errno != EAGAIN) return drop(id);
  // What the client has not taken comes first the next time.
  const std::size_t taken = sent < 0 ? 0 : static_cast<std::size_t>(sent);
  m_loop.after(pause, [this, id, rest = bytes.substr(taken) + bytes.substr(0, taken)] { flood(id, rest); });
}

bool Neighbour::send(unsigned id, const std::string& bytes) {
  const auto client = m_clients.find(id);
  if (client == m_clients.end()) return false;
  if (bytes.empty()) return true;
  const ssize_t sent = ::send(client->second.socket.number(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
  if (sent == static_cast<ssize_t>(bytes.size())) return true;
  // A client that has gone, or that lets its answers pile up.
  drop(id);
  return false;
}

void Neighbour::drop(unsigned id) {
  const auto client = m_clients.find(id);
  m_loop.unwatch(client->second.socket.number());
  m_clients.erase(client);
}

std::string Neighbour::garbled(std::string reply) {
  std::uniform_int_distribution<int> nonZero(1, 255);
  for (std::size_t at = framingSize(); at < reply.size(); ++at) {
    reply[at] = static_cast<char>(reply[at] ^ nonZero(m_random));
  }
  return reply;
}

}  // namespace sim
