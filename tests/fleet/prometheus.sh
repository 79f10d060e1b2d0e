#!/usr/bin/env bash
# prometheus.sh: promtool's checks of a fleet's configuration, and its tests of the rules.
set -euo pipefail

fleet=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/../../fleet
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

cp "$fleet"/prometheus/*.yml "$folder"
"$fleet/certificates" "$folder" ca
echo secret >"$folder/password"
echo '[{"targets": ["127.0.0.1:8443"], "labels": {"guid": "a", "model": "b"}}]' >"$folder/targets.json"
"$fleet/server" promtool check config --lint-fatal "$folder/prometheus.yml"
"$fleet/server" promtool test rules "$folder/rules_test.yml"
