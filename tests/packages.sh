#!/usr/bin/env bash
# Installs packages in a fresh Debian root, uses them, and purges them; they may leave nothing.
#
#     unshare --mount --pid --fork --kill-child packages.sh CACHE FOLDER ARCHITECTURE [LIBRARY]
#
# The root is a tmpfs of this mount namespace, its processes are of this pid namespace, and its camera has no network: all
# that is gone with this script, however it ends. CACHE keeps what was downloaded. A daemon of another architecture than
# this machine's runs under qemu-arm, with LIBRARY in place of the camera's own.
set -euo pipefail

cache=$1 folder=$2 architecture=$3 library=${4-}
root=$cache/root
packages=(tmxd tmxctl tmx-console tmx-mqtt)
emulator=qemu-arm
if [[ -z $library ]]; then
  packages+=(tmx-camera)
  emulator=
  library=/usr/libexec/tmx-camera/lib/libzr_com.so
fi

inside() { env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root DEBIAN_FRONTEND=noninteractive "$@"; }
alone() { inside unshare --net "$@"; }
say() { printf 'packages: %s\n' "$*"; }
fail() {
  say "$@"
  exit 1
}
# expect WORDS COMMAND...: they stand in what the command says.
expect() {
  local said
  said=$("${@:2}" 2>&1) || true
  [[ $said == *"$1"* ]] || fail "${*:2}: \"$said\", without \"$1\""
}

# One root for all tests of a week; an older one may not know the packages that the archive has by now.
make_root() {
  local codename mirror
  # shellcheck disable=SC1091
  codename=$(. /etc/os-release && echo "${VERSION_CODENAME-}")
  # shellcheck disable=SC2016 # the variable is one of apt's format
  mirror=$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' "Codename: $codename" | head -n 1)
  say "making a Debian root"
  mount -t tmpfs root "$root"
  debootstrap --variant=minbase "$codename" "$root" "$mirror" >"$cache/root.log"
  chroot "$root" sh -c 'dpkg --add-architecture armhf && apt-get update -qq && apt-get clean'
  # One of the emulators of one package is used.
  printf 'path-exclude=/usr/bin/qemu-*\npath-include=/usr/bin/qemu-arm\n' >"$root/etc/dpkg/dpkg.cfg.d/emulators"
  tar -C "$root" -cf "$cache/root.tar.new" .
  mv "$cache/root.tar.new" "$cache/root.tar"
  umount "$root"
}

open_root() {
  mkdir -p "$root" "$cache/archives" "$cache/userland"
  [[ $(find "$cache/root.tar" -mtime -7 2>/dev/null) ]] || make_root
  mount -t tmpfs root "$root"
  tar -C "$root" -xf "$cache/root.tar"
  mount -t proc proc "$root/proc"
  mount --bind "$cache/archives" "$root/var/cache/apt/archives"
  mkdir "$root/root/.cache"
  mount --bind "$cache/userland" "$root/root/.cache"
  for package in "${packages[@]}"; do
    cp "$folder/$package"_*"_$architecture.deb" "$root/opt"
  done
  if [[ $emulator ]]; then
    cp "$library" "$root/opt"
    library=/opt/${library##*/}
  fi
  # From here on the machine's own files are out of reach.
  mkdir "$root/machine"
  cd "$root"
  pivot_root . machine
  umount --lazy /machine
  rmdir /machine
}

# Every file with its mode, size and target, but for those that record what happened, and what stood in one before.
files() {
  inside find / -xdev \( -path /proc -o -path /opt -o -path /root -o -path /tmp -o -path /var/cache -o -path /var/log \
    -o -path '/etc/*-' -o -path /run/adduser -o -path /var/lib/apt -o -path '/var/lib/dpkg/status*' \) -prune -o \( -type d -printf '%p %M\n' \) \
    -o -printf '%p %M %s %l\n' | sort
}

# quietly COMMAND...: its words only if it fails.
quietly() { inside "$@" >/tmp/log 2>&1 || fail "$(</tmp/log)"; }

# First what they need, so that what is there before and behind is all but themselves.
install_needed() {
  local needed
  mapfile -t needed < <(inside sh -c 'apt-get install --simulate --no-install-recommends /opt/*.deb' |
    awk '/^Inst / && $2 !~ /^tmx/ {print $2}')
  say "installing ${packages[*]} of $architecture, and before them ${#needed[@]} others"
  quietly apt-get install -qq -y --no-install-recommends "${needed[@]}" ${emulator:+qemu-user}
}

install_packages() {
  quietly sh -c 'dpkg --install /opt/*.deb'
  quietly dpkg --verify "${packages[@]}"
  [[ ! -s /tmp/log ]] || fail "$(</tmp/log)"
}

# A machine that is no camera starts no daemon.
check_silence() {
  inside /etc/init.d/tmxd start
  inside /etc/init.d/tmx-mqtt start
  ! inside pidof tmxd tmx-mqtt $emulator || fail "a daemon runs where there is no camera"
}

check_client() {
  # shellcheck disable=SC2016 # the variable is dpkg's
  expect "tmxctl $(inside dpkg-query -W -f '${Version}' tmxctl)" inside $emulator /usr/bin/tmxctl --version
  expect "1 to 30" inside $emulator /usr/bin/tmxctl show 'encode(1).framerate'
  expect "/mnt/flash/mqtt/agent.conf: " inside $emulator /usr/bin/tmx-mqtt
}

check_camera() {
  expect "The camera answers" inside tmx-camera up
  expect "64-bit x86-64" inside tmx-camera status
  expect "system.model=KT-A10&200 OK" inside tmx-camera ctl system.model
  expect "202 Accepted" inside tmx-camera ctl camera.scene.image.gamma=0.45
  expect "set 0x60 image" inside tmx-camera journal
  expect "ok" inside tmx-camera tell detection down
  expect "HTTP/1.0 200 OK" inside tmx-camera exec bash -c 'htpasswd -bm /etc/lighttpd/.htpasswd admin admin
    exec 3<>/dev/tcp/127.0.0.1/80
    printf "GET /console/ HTTP/1.0\r\nAuthorization: Basic YWRtaW46YWRtaW4=\r\n\r\n" >&3
    head -c 500 <&3 | tr -d "\0"'
  expect "setLogLevel" inside tmx-camera log
  inside tmx-camera down
}

check_purge() {
  quietly dpkg --purge "${packages[@]}"
  files | diff /tmp/before - || fail "the purged packages leave files"
}

# It waits for a broker that is away.
check_agent() {
  mkdir /mnt/flash/mqtt
  echo broker=127.0.0.1:1883 >/mnt/flash/mqtt/agent.conf
  alone /etc/init.d/tmx-mqtt start >/dev/null
  expect "tmx-mqtt is running" inside /etc/init.d/tmx-mqtt status
  expect "mqtt" inside stat -c %U "/proc/$(</var/run/tmx-mqtt.pid)"
  inside /etc/init.d/tmx-mqtt stop
  ! inside pidof tmx-mqtt || fail "the agent has not been stopped"
}

# The device's own way: flash that is filled from the package, the platform's library, and the start script, which knows
# nothing of emulators.
check_device() {
  cp "$library" /usr/lib
  mknod /dev/mtd5 c 1 3
  mkdir -p /mnt/{flash,sysinfo} /etc/lighttpd
  cp -a /usr/share/tmxd/factory/. /mnt/flash
  cp -a /usr/share/tmxd/sysinfo/. /mnt/sysinfo
  if [[ $emulator ]]; then alone $emulator /usr/bin/tmxd; else alone /etc/init.d/tmxd start >/dev/null; fi
  while [[ ! -S /tmp/request ]]; do
    inside pidof tmxd $emulator >/dev/null || fail "the daemon has ended"
    sleep 0.05
  done
  expect "system.model=KT-A10&200 OK" inside $emulator /usr/bin/tmxctl system.model
  [[ -z $emulator ]] || return 0
  check_agent
  expect "tmxd is running" inside /etc/init.d/tmxd status
  inside /etc/init.d/tmxd stop
  [[ ! -e /tmp/request ]] || fail "the daemon has not been stopped"
}

open_root
install_needed
files >/tmp/before
install_packages
check_silence
check_client
[[ $emulator ]] || check_camera
check_purge
install_packages
check_device
say "installed, used and purged: ${packages[*]} of $architecture"
