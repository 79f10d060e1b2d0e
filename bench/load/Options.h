#pragma once

#include <string>
#include <vector>

namespace bench::load {

/** Where a broker listens. */
struct Address {
  std::string host;
  int port = 0;
};

/** PEM files; without a CA nothing is encrypted. */
struct Security {
  std::string ca;
  std::string certificate;
  std::string key;
};

constexpr int kMostAgents = 10000;

struct Options {
  std::vector<Address> brokers;  ///< the agents are spread over them; the observer is at the first
  Security security;
  int agents = 100;
  int values = 50;         ///< retained ones of each agent
  int connections = 500;   ///< tried a second, at most
  std::vector<int> rates;  ///< changed values a second, of all agents together; one after the other
  int seconds = 10;        ///< for each rate
  int requests = 0;        ///< agents that are asked
  std::string outage;      ///< a command that ends and restarts the broker
  int jitter = 1;          ///< seconds within which an agent comes back; twice as many after each failure
  int patience = 120;      ///< seconds after which a phase that is not done counts as failed
  int quality = 1;         ///< QoS of the observer's subscription
  std::string watched;     ///< a file with the numbers of the broker's processes; it may change
  bool showsJson = false;
};

/**
 * Reads the command line. Loads are kept on this machine: other addresses than those of 127.0.0.0/8 are refused.
 * @throws std::invalid_argument with what is wrong.
 */
[[nodiscard]] Options parse(int argc, char** argv);

/** The usage, a text of several lines. */
[[nodiscard]] const char* usage();

}  // namespace bench::load
