#!/usr/bin/env bash
# fleet_test.sh: cameras beside each other with ./camera fleet, their broker and Prometheus; six, or with TMX_LONG a hundred.
set -euo pipefail

checkout=$(readlink -f "$(dirname "${BASH_SOURCE[0]}")/../..")
count=6
[[ -z ${TMX_LONG-} ]] || count=100
fleet=$(mktemp -d "${TMX_TEST_HOMES-/dev/shm}/tmx-fleet-XXXXXX")
network=127.$((100 + $$ % 150))
servers=$network.255.1
broker=(-h "$servers" -p 8883 --cafile "$fleet/broker/ca.pem")

say() { printf 'fleet: %s\n' "$*"; }
fail() {
  say "$@"
  tail -n 5 "$fleet"/run/*.log
  exit 1
}
fleet() { "$checkout/camera" --home "$fleet" fleet "$@"; }
camera() { "$checkout/camera" --home "$fleet/$1" "${@:2}"; }

# expect WORDS COMMAND...: they stand in what the command says, now or within a minute.
expect() {
  local said end=$((SECONDS + 60))
  until said=$("${@:2}" 2>&1 || true) && [[ $said == *"$1"* ]]; do
    ((SECONDS < end)) || fail "${*:2}: \"$said\", without \"$1\""
    sleep 0.2
  done
}
refuse() { ! "$@" >/dev/null 2>&1 || fail "$* was carried out"; }

# publish CAMERA TOPIC PAYLOAD: with this camera's certificate.
publish() {
  local certificate
  certificate=$fleet/broker/$(guid "$1")
  mosquitto_pub "${broker[@]}" --cert "$certificate.pem" --key "$certificate.key" -q 1 -r -t "$2" -m "$3"
}
retained() { mosquitto_sub "${broker[@]}" --cert "$fleet/broker/operator.pem" --key "$fleet/broker/operator.key" -t "$1" -C 1 -W 5; }
query() { "$checkout/fleet/server" promtool query instant "http://$servers:9090" "$1"; }
guid() { cat "$fleet/$1/sysinfo/uuid"; }
password() { sed -n 's/^tmx_password: //p' "$fleet/inventory/host_vars/$(guid "$1").yml"; }
# console PATH USER PASSWORD: of camera 1, whose certificate must be right.
console() { curl -sS --cacert "$fleet/broker/ca.pem" -u "$2:$3" "https://$network.0.1:8443/console/$1"; }
roll_out() { (cd "$fleet" && ansible-playbook tmx.camera.frame_rates -e frame_rate=15 --limit "$(guid 001)"); }
# Processes of the fleet, those inside the cameras too; the name must not stand in the search's own command line.
left() { grep -lF -f <(echo "${fleet##*/}") /proc/[0-9]*/{cmdline,mountinfo} 2>/dev/null || true; }

finish() {
  fleet down >/dev/null 2>&1 || true
  rm -rf "$fleet"
}
trap finish EXIT

say "$count cameras at $network"
fleet up 3 --network "$network"
fleet up "$count"
expect "$count cameras, $count on, $count at the broker" fleet status
refuse fleet up x
refuse fleet up --network 127.99
refuse "$checkout/camera" --home "$fleet-other" fleet up 1 --network "$network"
rm -rf "$fleet-other"

say "logins and certificates"
expect '"class": "administrator"' console api/me admin "$(password 001)"
expect 401 console api/me admin "$(password 002)"
[[ ! $(find "$fleet/broker" "$fleet/prometheus" "$fleet/inventory" \( -name '*.key' -o -name password -o -path '*/host_vars/*' \) -perm /077) ]] ||
  fail "others can read passwords or keys"
console metrics user "$(<"$fleet/prometheus/password")" | "$checkout/fleet/server" promtool check metrics

say "the inventory"
hosts() { (cd "$fleet" && ansible-inventory --graph online | grep -c -- '--[0-9a-f]'); }
expect "$count" hosts
expect "changed=1" roll_out

# Its usual 15 s would be the longest part of this test.
sed -i "s/15s/$((1 + count / 20))s/" "$fleet/prometheus/prometheus.yml"
kill -HUP "$(cut -d ' ' -f 1 "$fleet/run/prometheus.pid")"
expect "=> $count @" query 'sum(up{job="camera"})'
expect "=> $count @" query 'sum(tmx_up * on (instance) group_left () (tmx_card_enabled))'

say "a camera loses its power"
away=$(guid 002)
camera 002 cut
expect false retained "tmx/1/$away/online"
expect 'alertstate="pending"' query "ALERTS{alertname=\"CameraAway\", guid=\"$away\"}"
expect "$count cameras, $((count - 1)) on, $((count - 1)) at the broker" fleet status
fleet up
expect "$count cameras, $count on, $count at the broker" fleet status
expect 1 cat "$fleet/001/run/boots"
expect "=> $count @" query 'sum(up{job="camera"})'

say "the list of targets"
listed() { grep -c '"guid"' "$fleet/prometheus/targets.json"; }
gone=$(guid 003)
for payload in nonsense '[]' '{"model": "x"}' '{"model": 5, "address": "127.0.0.1:1"}' '{"model": "x", "address": "a/b?c"}'; do
  publish 003 "tmx/1/$gone/about" "$payload"
done
publish 002 "tmx/1/$gone/about" ""
publish 003 "tmx/1/$gone/about" ""
expect "$((count - 1))" listed
refuse grep -F "$gone" "$fleet/prometheus/targets.json"
expect "=> $((count - 1)) @" query 'sum(up{job="camera"})'

say "the end"
fleet down
[[ ! $(left) ]] || fail "left behind: $(left)"
expect "$count cameras, 0 on, 0 at the broker" fleet status
say "passed"
