// Plays the agents of many cameras at an MQTT broker, and measures what the broker makes of them.

#include <mosquitto.h>

#include <csignal>
#include <cstdio>
#include <stdexcept>

#include "bench/load/Fleet.h"

namespace {

using bench::load::Options;
using bench::load::Row;

/** Whether all of every phase was done. */
bool run(const Options& options) {
  bench::load::Fleet fleet(options);
  bool isFirst = true;
  bool isDone = true;
  const auto take = [&](const Row& row) {
    bench::load::print(row, isFirst, options.showsJson);
    isFirst = false;
    isDone = isDone && row.done == row.wanted;
  };
  take(fleet.connect());
  take(fleet.subscribe());
  for (const int rate : options.rates)
    take(fleet.change(rate));
  if (options.requests > 0) take(fleet.ask());
  if (!options.outage.empty()) take(fleet.outage());
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
