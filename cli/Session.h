#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cli/Client.h"
#include "cli/Item.h"
#include "cli/Options.h"

namespace tmx {

/** What takes the answers of a run, request by request. */
using AnswerSink = std::function<void(const std::vector<Answer>&)>;

/**
 * The daemon as the commands see it: items go in, answers come out, in as many requests as the limits need. Every
 * command owns none and borrows the one of main().
 */
class Session {
 public:
  explicit Session(const Options& options) : m_options(options), m_client(options.socket, options.timeout) {}

  /**
   * Sends the items and hands the answers of each request to the sink. The result is an exit status. When a request
   * is not answered the run ends with a message on standard error, and the later items are not sent.
   */
  [[nodiscard]] int run(const std::vector<Item>& items, const AnswerSink& sink) const;

  [[nodiscard]] const Options& options() const { return m_options; }

  /** A value of the daemon's as the user shall see it, and the reverse. */
  [[nodiscard]] std::string shown(const std::string& wire) const;
  [[nodiscard]] std::string sent(std::string_view typed) const;

  /** Whether the daemon can take each of the items; says on standard error which one it cannot. */
  [[nodiscard]] bool isSendable(const std::vector<Item>& items) const;

 private:
  const Options& m_options;
  Client m_client;
};

}  // namespace tmx
