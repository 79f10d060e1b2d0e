#include "bench/load/Options.h"

#include <arpa/inet.h>
#include <getopt.h>

#include <charconv>
#include <map>
#include <stdexcept>

namespace bench::load {
namespace {

constexpr int kMostValues = 1000;
constexpr int kMostRate = 100000;
constexpr int kMostSeconds = 300;
constexpr int kMostPatience = 900;

int number(std::string_view text, int least, int most) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || value < least || value > most)
    throw std::invalid_argument("\"" + std::string(text) + "\" is no number from " + std::to_string(least) + " to " +
                                std::to_string(most));
  return value;
}

/** Calls the function with each part of a list that is parted by commas. */
template <typename Function>
void forEachPart(std::string_view list, Function function) {
  while (true) {
    const auto comma = list.find(',');
    function(list.substr(0, comma));
    if (comma == std::string_view::npos) return;
    list.remove_prefix(comma + 1);
  }
}

Address address(std::string_view text) {
  const auto colon = text.rfind(':');
  const std::string host(text.substr(0, colon));
  in_addr bytes{};
  if (colon == std::string_view::npos || inet_pton(AF_INET, host.c_str(), &bytes) != 1 ||
      ntohl(bytes.s_addr) >> 24 != 127)
    throw std::invalid_argument("\"" + std::string(text) + "\" is no 127.X.X.X:PORT");
  return {host, number(text.substr(colon + 1), 1, 65535)};
}

void check(const Options& options) {
  if (options.brokers.empty()) throw std::invalid_argument("a broker must be named");
  if (options.requests > options.agents) throw std::invalid_argument("there are fewer agents than requests");
  if (options.security.ca.empty() && !options.security.certificate.empty())
    throw std::invalid_argument("a certificate needs the broker's CA");
}

}  // namespace

Options parse(int argc, char** argv) {
  Options options;
  const std::map<std::string_view, void (*)(Options&, std::string_view)> setters = {
      {"broker",
       [](Options& o, std::string_view t) {
         forEachPart(t, [&](std::string_view part) { o.brokers.push_back(address(part)); });
       }},
      {"ca", [](Options& o, std::string_view t) { o.security.ca = t; }},
      {"certificate", [](Options& o, std::string_view t) { o.security.certificate = t; }},
      {"key", [](Options& o, std::string_view t) { o.security.key = t; }},
      {"agents", [](Options& o, std::string_view t) { o.agents = number(t, 1, kMostAgents); }},
      {"values", [](Options& o, std::string_view t) { o.values = number(t, 1, kMostValues); }},
      {"connections", [](Options& o, std::string_view t) { o.connections = number(t, 1, kMostAgents); }},
      {"rates",
       [](Options& o, std::string_view t) {
         forEachPart(t, [&](std::string_view part) { o.rates.push_back(number(part, 1, kMostRate)); });
       }},
      {"seconds", [](Options& o, std::string_view t) { o.seconds = number(t, 1, kMostSeconds); }},
      {"requests", [](Options& o, std::string_view t) { o.requests = number(t, 0, kMostAgents); }},
      {"outage", [](Options& o, std::string_view t) { o.outage = t; }},
      {"jitter", [](Options& o, std::string_view t) { o.jitter = number(t, 1, kMostSeconds); }},
      {"patience", [](Options& o, std::string_view t) { o.patience = number(t, 1, kMostPatience); }},
      {"qos", [](Options& o, std::string_view t) { o.quality = number(t, 0, 1); }},
      {"watch", [](Options& o, std::string_view t) { o.watched = t; }},
  };
  std::vector<option> longOptions = {{"json", no_argument, nullptr, 0}};
  for (const auto& [name, setter] : setters)
    longOptions.push_back({name.data(), required_argument, nullptr, 0});
  longOptions.push_back({});
  int index = 0;
  int found = 0;
  while ((found = getopt_long(argc, argv, "", longOptions.data(), &index)) != -1) {
    if (found != 0) throw std::invalid_argument("see the usage");
    if (index == 0) {
      options.showsJson = true;
    } else {
      setters.at(longOptions[static_cast<std::size_t>(index)].name)(options, optarg);
    }
  }
  if (optind != argc) throw std::invalid_argument("see the usage");
  check(options);
  return options;
}

const char* usage() {
  return R"(usage: tmx-mqtt-load --broker 127.X.X.X:PORT[,…] [OPTION]...
Plays the agents of cameras at a broker, and one who observes all of them.
  --agents N        agents (100; 10000 at most)
  --values N        retained values of each (50)
  --connections N   new connections a second (500)
  --rates N,…       changed values a second of all agents, one rate after the other
  --seconds N       for each rate (10)
  --requests N      so many agents are asked, all at once
  --outage COMMAND  a command that restarts the broker; all agents come back
  --jitter N        within so many seconds, and twice as many after each failure (1)
  --patience N      seconds until a phase counts as failed (120)
  --qos 0|1         of the observer's subscription (1)
  --ca FILE --certificate FILE --key FILE
                    TLS, with one certificate for all
  --watch FILE      with the numbers of the broker's processes, whose memory and processor time is shown
  --json            one object a phase, one a line
)";
}

}  // namespace bench::load
