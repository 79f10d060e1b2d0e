#!/usr/bin/env bash
# load.sh PROGRAMS: the load program at a Mosquitto of its own. Its status tells whether all connected, and all that was
# sent arrived.
set -euo pipefail

bench=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/../../bench
folder=$(mktemp -d)
export ADDRESS=127.$((100 + ($$ >> 16))).$(($$ >> 8 & 255)).$(($$ & 255))
trap '"$bench/brokers" down "$folder"' EXIT

load() {
  "$1/tmx-mqtt-load" --broker "$(<"$folder/brokers")" --watch "$folder/pids" --agents 50 --values 40 --connections 200 \
    --rates 500 --seconds 1 --requests 50 --patience "${@:2}"
}

"$bench/brokers" up mosquitto "$folder"
load "$1" 30 --outage "$bench/brokers restart $folder"

# What a broker drops is missed.
"$bench/brokers" down "$folder"
"$bench/brokers" up mosquitto "$folder" "max_queued_messages 10"
status=0
load "$1" 1 || status=$?
((status == 1))

# Nobody else's broker is troubled.
status=0
"$1/tmx-mqtt-load" --broker 192.0.2.1:1883 || status=$?
((status == 2))
