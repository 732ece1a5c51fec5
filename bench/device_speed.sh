#!/usr/bin/env bash
# Times the device commands end to end on the simulated instrument: `device enq` and
# `device read` (search + read) without pacing, then a read with the line paced (9600
# baud for the enquiry, the device file's rate for the helper), next to the time the line
# itself needs for the bytes moved. usage: bench/device_speed.sh [BUILD_DIR]
set -euo pipefail
build="$(cd "${1:-build/qt6}" && pwd)"
cli="$build/bin/kxsetup-cli"
work="$(mktemp -d)"
trap 'kill $(jobs -p) 2>/dev/null || true; rm -rf "$work"' EXIT

ms() { echo $(( $(date +%s%N) / 1000000 )); }
median() { sort -n | awk '{a[NR]=$1} END {print a[int((NR+1)/2)]}'; }

sim=""
start_sim() { # sets port
    rm -f "$work/port"
    "$build/bin/kx-sim" --firmware "$build/data/firmware/kx3/3.10.kxhex" "$@" > "$work/port" &
    sim=$!
    for _ in $(seq 50); do [ -s "$work/port" ] && break; sleep 0.05; done
    port=$(head -1 "$work/port")
}

time_runs() { # command... -> median ms of 5 runs
    for _ in 1 2 3 4 5; do
        local t0; t0=$(ms); "$@" > /dev/null 2>&1; echo $(( $(ms) - t0 ))
    done | median
}

start_sim
enq=$(time_runs "$cli" -C "$build" device enq --port "$port")
read=$(time_runs "$cli" -C "$build" device read --port "$port" -o "$work/read.hex")
kill "$sim"; wait "$sim" 2>/dev/null || true

start_sim --pace
rm -f "$build/data/serialout.log"
paced=$(time_runs "$cli" -C "$build" device read --port "$port" -o "$work/read.hex")
# Bytes on the line in one read: the enquiry exchange at 9600 baud, the helper's
# traffic (search and read, from its log) at the device file's 230400.
helper_bytes=$(( $(grep -o ' [0-9a-f][0-9a-f]' "$build/data/serialout.log" | wc -l) / 5 ))
enq_bytes=7
line_ms=$(( (enq_bytes * 10 * 1000 / 9600) + (helper_bytes * 10 * 1000 / 230400) ))

printf 'device enq, unpaced:               %5d ms (target < 50 ms)\n' "$enq"
printf 'device read (search + read):       %5d ms (target < 1000 ms)\n' "$read"
printf 'device read, paced line:           %5d ms\n' "$paced"
printf '  line limit for %d + %d bytes:   %5d ms\n' "$enq_bytes" "$helper_bytes" "$line_ms"
