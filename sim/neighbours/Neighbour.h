#pragma once

#include <map>
#include <random>
#include <string>
#include <string_view>

#include "Fault.h"
#include "Loop.h"
#include "Words.h"
#include "sim/common/Journal.h"
#include "sim/common/Json.h"
#include "sim/common/UnixSocket.h"

namespace sim {

/**
 * A daemon that the camera's parameter daemon talks to: listens on its socket, cuts the bytes of each connection into
 * requests, lets the derived class answer them from its little world, records each in the journal before the answer
 * goes out, and misbehaves when told to. Owned by the neighbourhood; lives as long as the loop.
 */
class Neighbour {
 public:
  /** @param name what the journal and the control socket call it. */
  Neighbour(Loop& loop, std::string name, std::string socketPath);
  virtual ~Neighbour() = default;
  Neighbour(const Neighbour&) = delete;
  Neighbour& operator=(const Neighbour&) = delete;

  [[nodiscard]] const std::string& name() const { return m_name; }

  /** Listens and behaves; false when the socket cannot be made. */
  [[nodiscard]] bool up();

  /** Removes the socket and drops every connection. */
  void down();

  /** Carries out a control line; the answer is "ok", "error: …", or the state as JSON for "show". */
  [[nodiscard]] std::string tell(const Words& words);

 protected:
  /** Size of the request at the head of the bytes, 0 while it is not complete. */
  [[nodiscard]] virtual std::size_t requestSize(std::string_view bytes) const = 0;

  /** The message's name, which the journal shows under "what" and by which faults are limited. */
  [[nodiscard]] virtual std::string messageName(std::string_view request) const = 0;

  /** The request as the journal may show it: as it is, but for what must stay secret. */
  [[nodiscard]] virtual std::string recorded(std::string_view request) const { return std::string(request); }

  /** Adds the decoded fields of the request. */
  virtual void describe(std::string_view request, Journal& line) const = 0;

  /** Lets the request work on the world; the answer is empty where the protocol has none. */
  [[nodiscard]] virtual std::string answer(std::string_view request) = 0;

  /** The protocol's own refusal, which leaves the world alone; empty where the protocol has no answer. */
  [[nodiscard]] virtual std::string refusal(std::string_view request, std::optional<int> number) const = 0;

  /** The form in which the journal shows the right answer to a request. */
  [[nodiscard]] virtual std::string readable(std::string_view reply) const {
    return hexText(reply.data(), reply.size());
  }

  /** How many bytes at the head of an answer must stay right for the rest to be read at all. */
  [[nodiscard]] virtual std::size_t framingSize() const { return 0; }

  /** Carries out a change of the world's state; the error text, or empty when it was done. */
  [[nodiscard]] virtual std::string change(const Words& words);

  /** One "key=value" of a change: false when the key or the value means nothing. */
  [[nodiscard]] virtual bool set(const std::string& /*key*/, const std::string& /*value*/) { return false; }

  virtual void show(JsonObject& state) const = 0;

  [[nodiscard]] Loop& loop() { return m_loop; }

 private:
  /** A client; known by a number of its own, since descriptors come again. */
  struct Client {
    Descriptor socket;
    std::string pending;
  };

  void stopListening();
  void accept();
  /** Takes what that client has sent, and before it what older ones may have sent since the loop looked. */
  void receiveUpTo(unsigned id);
  void receive(unsigned id);
  /** Answers one request; false when that ended the connection. */
  bool exchange(unsigned id, const std::string& request);
  bool deliver(unsigned id, Fault::Kind fault, std::string reply);
  bool send(unsigned id, const std::string& bytes);
  void drip(unsigned id, const std::string& bytes);
  /** Sends that again and again, as fast as the client takes it, until it has gone. */
  void flood(unsigned id, const std::string& bytes);
  void drop(unsigned id);
  [[nodiscard]] std::string garbled(std::string reply);
  [[nodiscard]] std::string showLine() const;

  Loop& m_loop;
  std::string m_name;
  std::string m_path;
  Descriptor m_listener;
  Fault m_fault;
  unsigned m_lastId = 0;
  std::map<unsigned, Client> m_clients;
  /** Always seeded alike, so that a failing test fails again. */
  std::minstd_rand m_random;
};

}  // namespace sim
