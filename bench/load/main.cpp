// Plays the agents of many cameras at an MQTT broker, and measures what the broker makes of them.

#include <mosquitto.h>

#include <csignal>
#include <cstdio>
#include <functional>
#include <stdexcept>
#include <vector>

#include "bench/load/Fleet.h"

namespace {

using bench::load::Options;
using bench::load::Row;

/** Whether all of every phase was done; the first that achieves nothing ends the load. */
bool run(const Options& options) {
  bench::load::Fleet fleet(options);
  std::vector<std::function<Row()>> phases = {[&] { return fleet.connect(); }, [&] { return fleet.subscribe(); }};
  for (const int rate : options.rates)
    phases.emplace_back([&fleet, rate] { return fleet.change(rate); });
  if (options.requests > 0) phases.emplace_back([&] { return fleet.ask(); });
  if (!options.outage.empty()) phases.emplace_back([&] { return fleet.outage(); });
  bool isDone = true;
  for (std::size_t i = 0; i < phases.size(); ++i) {
    const Row row = phases[i]();
    bench::load::print(row, i == 0, options.showsJson);
    isDone = isDone && row.done == row.wanted;
    if (row.done == 0) return false;
  }
  return isDone;
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  try {
    options = bench::load::parse(argc, argv);
  } catch (const std::invalid_argument& error) {
    std::fprintf(stderr, "tmx-mqtt-load: %s\n%s", error.what(), bench::load::usage());
    return 2;
  }
  std::signal(SIGPIPE, SIG_IGN);
  mosquitto_lib_init();
  try {
    return run(options) ? 0 : 1;
  } catch (const std::runtime_error& error) {
    std::fprintf(stderr, "tmx-mqtt-load: %s\n", error.what());
    return 1;
  }
}
