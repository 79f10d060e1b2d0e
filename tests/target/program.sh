#!/bin/bash
# program.sh BUDGET STRIP NM READELF PROGRAM: what the program of the target must be on flash: one of 32 bits, within the
# budget of bytes once it is stripped, and with no call of the C library whose time ends in January 2038.
set -euo pipefail
budget=$1 strip=$2 nm=$3 readelf=$4 program=$5

stripped=$(mktemp)
trap 'rm -f "$stripped"' EXIT
"$strip" -o "$stripped" "$program"
size=$(stat -c %s "$stripped")
echo "$size bytes stripped, of $budget"
echo "the largest contributors, in bytes, those of one name together:"
"$nm" -C -S -t d "$program" | awk '
  $2 ~ /^[0-9]+$/ && !seen[$1]++ {
    size = $2
    sub(/^[^ ]+ [^ ]+ . /, "")
    gsub(/[(]anonymous namespace[)]::/, "")
    while (sub(/<[^<>]*>/, "")) {}
    if (!sub(/ for .*/, "")) { sub(/[([].*/, ""); sub(/.*::/, "") }  # "vtable for", else without scope and arguments
    bytes[$0] += size
    count[$0]++
  }
  END { for (name in bytes) print bytes[name], name, "(" count[name] ")" }' | sort -rn | awk 'NR <= 12'

status=0
((size <= budget)) || { echo "too large"; status=1; }
"$readelf" -h "$program" | grep -q 'Class: *ELF32' || { echo "not of 32 bits"; status=1; }
narrow='time|mktime|timegm|(gm|local)time(_r)?|ctime(_r)?|(f|l)?stat(64)?|fstatat(64)?|utimes?|utimensat|futimens|gettimeofday|clock_(get|set)time|clock_nanosleep|nanosleep|select|pselect|ppoll|(fcntl|ioctl)(64)?|pthread_(cond|mutex|rwlock)_(timed|clock).*|(recv|send)m?msg|[gs]etsockopt'
if "$nm" -D -u "$program" | grep -wE " U ($narrow)@GLIBC_[0-9.]+"; then
  echo "these know 32 bits of time"
  status=1
fi
exit $status
