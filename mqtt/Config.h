#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "cli/Client.h"

namespace mqtt {

/** Where the broker is, and who is shown to it. */
struct Broker {
  std::string host;
  int port = 0;
  std::string ca;  ///< empty for a connection that is not encrypted; then the other two are empty too
  std::string certificate;
  std::string key;
};

/** The configuration, docs/mqtt.md. */
struct Config {
  Broker broker;
  tmx::UserClass user = tmx::UserClass::kOperator;  ///< of what comes by request
  std::string address;              ///< of the console; empty for the one that the broker is reached from
  std::vector<std::string> values;  ///< only these and what lies below them; empty for all
  std::string discovery;            ///< the prefix; empty for none
};

/** A configuration that is wrong; what() says where and why. */
struct BadConfig : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/** Throws BadConfig for whatever is not right: a camera that is half configured would not do what somebody meant. */
[[nodiscard]] Config parseConfig(std::string_view text);

/** The text of the file parsed. Throws BadConfig, for a file that cannot be read too. */
[[nodiscard]] Config readConfig(const std::string& file);

}  // namespace mqtt
