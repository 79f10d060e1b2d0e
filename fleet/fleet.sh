# shellcheck shell=bash
# Many simulated cameras on one machine, with a broker, Prometheus and an inventory for them. The script "camera" sources
# this file. Everything of a fleet is in its folder:
#
#   001, 002, …   the cameras' homes
#   broker        certificates, and Mosquitto's configuration
#   prometheus    configuration, rules, the list of targets, what was measured
#   inventory     Ansible's, with the administrators' passwords; ansible.cfg names it
#   run           what each program in the background said; the first half of the addresses: network

servers=$build/servers
server_packages=(mosquitto prometheus nats-server)
# Clients, none of which is a service.
fleet_packages=(openssl mosquitto-clients python3-paho-mqtt ansible-core)
default_network=127.77
at_once=10            # cameras that boot or end side by side
patience=30          # seconds for a server to listen, and for the cameras to find the broker
agent=/mnt/flash/mqtt # its folder inside

make_servers() { lay_out "$servers" "${server_packages[@]}"; }

fleet_usage() {
  cat <<END
usage: $program [--home DIR] fleet COMMAND

  up [N] [--network 127.X]  N cameras, or those there are, with broker, Prometheus and inventory; more with another N
  down                      stop all of it
  status                    each camera: whether it is on, and at the broker

The fleet is in DIR, or in $checkout/.fleet. Camera 1 is at http://127.77.0.1:8080 and https://127.77.0.1:8443, camera 251 at
127.77.1.1; the broker at 127.77.255.1:8883, Prometheus at http://127.77.255.1:9090. Another network for a second fleet.
END
}

# Programs in the background. A number alone could by now be another program's, so it is kept with the time of its birth.

# born PID: nothing for one that has ended.
born() {
  local stat fields
  read -r stat 2>/dev/null <"/proc/$1/stat" || return 0
  read -ra fields <<<"${stat##*) }"
  [[ ${fields[0]} == Z ]] || echo "${fields[19]}"
}

# runs NAME: sets pid.
runs() {
  local birth
  read -r pid birth 2>/dev/null <"$fleet/run/$1.pid" && [[ $(born "$pid") == "$birth" ]]
}

# start NAME COMMAND...: unless it runs.
start() {
  local pid
  ! runs "$1" || return 0
  setsid "${@:2}" </dev/null >"$fleet/run/$1.log" 2>&1 &
  echo "$! $(born $!)" >"$fleet/run/$1.pid"
}

# end NAME
end() {
  local pid tries=0
  while runs "$1"; do
    ((tries++ < 500)) || kill -KILL "$pid"
    ((tries > 1)) || kill "$pid"
    sleep 0.02
  done
  rm -f "$fleet/run/$1.pid"
}

listens() { (exec 3<>"/dev/tcp/$1/$2") 2>/dev/null; }

# serve NAME ADDRESS PORT COMMAND...: started, unless it runs, and listening there.
serve() {
  local pid end=$((SECONDS + patience))
  ! runs "$1" || return 0
  ! listens "$2" "$3" || fail "something else listens at $2:$3; another fleet needs another --network"
  start "$1" "${@:4}"
  until listens "$2" "$3"; do
    { runs "$1" && ((SECONDS < end)); } || fail "$1 does not listen at $2:$3: $(tail -n 3 "$fleet/run/$1.log")"
    sleep 0.05
  done
}

# progress WHAT DONE ALL: one line of a terminal; elsewhere a line now and then.
progress() {
  if [[ -t 1 ]]; then
    printf '\r\e[Kcamera: %s: %d of %d' "$@"
    (($2 < $3)) || echo
  elif (($2 == $3 || $2 % at_once == 0)); then
    say "$1: $2 of $3"
  fi
}

# each WHAT COMMAND CAMERA...: for every camera; fails with the first lines of those that failed.
each() {
  local what=$1 command=$2 camera pid running=0 ended=0 status failed=()
  local -A names=()
  shift 2
  for camera in "$@" ""; do
    while ((running == at_once)) || [[ -z $camera ]] && ((running)); do
      status=0
      wait -n -p pid || status=$?
      ((status == 0)) || failed+=("${names[$pid]}")
      running=$((running - 1)) ended=$((ended + 1))
      progress "$what" "$ended" "$#"
    done
    [[ $camera ]] || break
    (set -e && "$command" "$camera") >"$fleet/run/$camera.log" 2>&1 &
    names[$!]=$camera running=$((running + 1))
  done
  ((${#failed[@]} == 0)) || fail "$what failed: ${failed[*]}; $(tail -n 3 "$fleet/run/${failed[0]}.log")"
}

# The cameras of the fleet, one a line.
cameras() { (cd "$fleet" && find . -maxdepth 1 -name '[0-9][0-9]*' -printf '%f\n' | sort -n); }

address_of() { echo "$network.$(((10#$1 - 1) / 250)).$(((10#$1 - 1) % 250 + 1))"; }
guid_of() {
  local guid
  read -r guid <"$fleet/$1/sysinfo/uuid" && echo "$guid"
}

new_password() {
  local password
  password=$(LC_ALL=C tr -dc 'a-km-zA-HJ-NP-Z2-9' </dev/urandom | head -c 12) || [[ ${#password} -eq 12 ]]
  echo "$password"
}

# What an installer prepares on a camera that is off: name, certificates, logins, HTTPS, and where the broker is.
prepare_camera() {
  local guid address flash=$home/flash certificates=$fleet/broker password
  sandbox make
  [[ -s $home/sysinfo/uuid ]] || cat /proc/sys/kernel/random/uuid >"$home/sysinfo/uuid"
  guid=$(guid_of "$1")
  address=$(address_of "$1")
  "$checkout/fleet/certificates" "$certificates" camera "$guid"
  "$checkout/fleet/certificates" "$certificates" console "$guid" "$address"
  cat "$certificates/$guid.console".{key,pem} >"$flash/lighttpd/server.pem"
  chmod 600 "$flash/lighttpd/server.pem"
  sed -i 's/^HTTPS_CONFIG_STATUS=.*/HTTPS_CONFIG_STATUS=on/' "$flash/sysconfig/network.conf"

  password=$(new_password)
  (umask 077 && printf 'tmx_user: admin\ntmx_password: %s\ntmx_flash: %s\n' "$password" "$flash" >"$fleet/inventory/host_vars/$guid.yml")
  paste -d : <(printf 'admin\nuser\n') \
    <(printf '%s\n' "$password" "$(<"$fleet/prometheus/password")" | openssl passwd -apr1 -stdin) >"$flash/lighttpd/.htpasswd"

  # The agent is another user; its key becomes its own at the start.
  install -D -m 644 "$certificates/ca.pem" "$flash/mqtt/ca.pem"
  install -m 644 "$certificates/$guid.pem" "$flash/mqtt/certificate.pem"
  install -m 600 "$certificates/$guid.key" "$flash/mqtt/key.pem"
  cat >"$flash/mqtt/agent.conf.new" <<END
broker=127.0.0.1:8883
ca=$agent/ca.pem
certificate=$agent/certificate.pem
key=$agent/key.pem
address=$address:8443
discovery=homeassistant
END
  mv "$flash/mqtt/agent.conf.new" "$flash/mqtt/agent.conf"
}

start_camera() {
  local home=$fleet/$1 address
  address=$(address_of "$1")
  [[ -e $home/flash/mqtt/agent.conf ]] || prepare_camera "$1"
  sandbox status >/dev/null || sandbox up --quiet --uplink "$network.255.1:8883"
  serve "relay-$1" "$address" 8443 "$programs/bin/camera-sandbox" relay --home "$home" "$address:8080" "$address:8443"
}

end_camera() {
  local home=$fleet/$1
  sandbox down
  end "relay-$1"
}

start_broker() {
  serve broker "$network.255.1" 8883 "$checkout/fleet/broker" "$fleet/broker" 8883 "$network.255.1"
}

start_prometheus() {
  local folder=$fleet/prometheus
  mkdir -p "$folder"
  [[ -e $folder/password ]] || (umask 077 && new_password >"$folder/password")
  cp "$checkout"/fleet/prometheus/{prometheus,rules}.yml "$fleet/broker/ca.pem" "$folder"
  start targets "$checkout/fleet/targets" --broker "$network.255.1:8883" --certificates "$fleet/broker" "$folder/targets.json"
  serve prometheus "$network.255.1" 9090 "$checkout/fleet/server" prometheus --config.file="$folder/prometheus.yml" \
    --storage.tsdb.path="$folder/data" --storage.tsdb.retention.time=7d --web.listen-address="$network.255.1:9090" \
    --log.level=warn
}

make_inventory() {
  local folder=$fleet/inventory
  mkdir -p "$folder"/{group,host}_vars
  cat >"$folder/broker.tmx.yml" <<END
plugin: tmx.camera.broker
host: $network.255.1
port: 8883
ca: $fleet/broker/ca.pem
certificate: $fleet/broker/operator.pem
key: $fleet/broker/operator.key
END
  printf 'tmx_ca_path: %s\n' "$fleet/broker/ca.pem" >"$folder/group_vars/all.yml"
  printf '[defaults]\ninventory = %s\ncollections_path = %s\n' "$folder" "$checkout/fleet" >"$fleet/ansible.cfg"
}

# What the broker keeps: TOPIC PAYLOAD of the topics, one a line; ends when there are COUNT, or after SECONDS.
retained() {
  local count=$1 seconds=$2 topics=() topic
  shift 2
  for topic; do topics+=(-t "$topic"); done
  mosquitto_sub -h "$network.255.1" -p 8883 --cafile "$fleet/broker/ca.pem" --cert "$fleet/broker/operator.pem" \
    --key "$fleet/broker/operator.key" "${topics[@]}" -F '%t %p' -C "$count" -W "$seconds" 2>/dev/null || true
}

fleet_up() {
  local wanted=0 number all=() online
  while (($#)); do
    case $1 in
      --network) network=${2:?"--network needs 127.X"} && shift ;;
      *) wanted=$1 ;;
    esac
    shift
  done
  [[ $wanted =~ ^[0-9]{1,4}$ && $network =~ ^127\.[0-9]{1,3}$ ]] || fail "fleet up [N] [--network 127.X]"
  # What the cameras have on flash names it.
  [[ ! -e $fleet/network || $(<"$fleet/network") == "$network" ]] || fail "the cameras of $fleet are at $(<"$fleet/network")"
  mkdir -p "$fleet/run"
  echo "$network" >"$fleet/network"
  for ((number = 1; number <= wanted; ++number)); do mkdir -p "$(printf '%s/%03d' "$fleet" "$number")"; done
  mapfile -t all < <(cameras)
  ((${#all[@]})) || fail "how many cameras? $(called) fleet up N"
  make_inventory
  start_broker
  start_prometheus
  each "booting" start_camera "${all[@]}"
  online=$(await_online "${#all[@]}")
  say "${#all[@]} cameras are up, $online of them at the broker ($network.255.1:8883); Prometheus: http://$network.255.1:9090"
}

# The broker's retained topic says it of each; how many there are at last.
await_online() {
  local end=$((SECONDS + patience)) online=0
  while ((online < $1 && SECONDS < end)); do
    online=$(retained "$1" 1 'tmx/1/+/online' | grep -c ' true$') || true
  done
  echo "$online"
}

fleet_down() {
  local all=()
  mapfile -t all < <(cameras)
  each "ending" end_camera "${all[@]}"
  for name in prometheus targets broker; do end "$name"; done
}

fleet_status() {
  local camera home all=() pid power said on=0 online=0 guid
  mapfile -t all < <(cameras)
  local -A states=()
  while read -r topic payload; do states[$topic]=$payload; done < <(! runs broker || retained "${#all[@]}" 2 'tmx/1/+/online')
  for camera in "${all[@]}"; do
    home=$fleet/$camera power=off said="not at the broker"
    guid=$(guid_of "$camera" 2>/dev/null) || guid="not made yet"
    ! sandbox status >/dev/null || power=on on=$((on + 1))
    [[ ${states[tmx/1/$guid/online]-} != true ]] || said="at the broker" online=$((online + 1))
    printf '%s  %-3s  %-17s  https://%s:8443/console/  %s\n' "$camera" "$power" "$said" "$(address_of "$camera")" "$guid"
  done
  say "${#all[@]} cameras, $on on, $online at the broker"
  for name in broker targets prometheus; do
    if runs "$name"; then say "$name is on"; else say "$name is off"; fi
  done
}

# fleet COMMAND [ARGUMENT]...
fleet() {
  local fleet=${named:-$checkout/.fleet} network=$default_network name topic payload
  [[ ! -e $fleet/network ]] || network=$(<"$fleet/network")
  [[ ! -e $fleet/flash ]] || fail "$fleet is the home of one camera"
  case ${1-} in
    up)
      install_missing "${boot_packages[@]}" "${fleet_packages[@]}"
      make_userland
      make_servers
      say "building"
      compile_camera
      fleet_up "${@:2}"
      ;;
    down | status)
      [[ -e $fleet/network ]] || fail "there is no fleet in $fleet"
      "fleet_$1"
      ;;
    *)
      fleet_usage >&2
      return 2
      ;;
  esac
}
