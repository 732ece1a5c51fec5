#!/usr/bin/env bash
# Times the device commands on the simulated instrument with hyperfine: `device enq` and
# `device read` (search + read) end to end without pacing; then, with the line paced
# (kx-sim --pace: 9600 baud for the enquiry, the device file's rate for the helper), one
# helper read and one helper search (the entry handshake), next to the time the line
# itself needs for the bytes of a read. usage: bench/device_speed.sh [BUILD_DIR]
set -euo pipefail
build="$(cd "${1:-build/qt6}" && pwd)"
cli="$build/bin/kxsetup-cli"
work="$(mktemp -d)"
sim=""
trap '[ -n "$sim" ] && kill "$sim" 2>/dev/null; rm -rf "$work"' EXIT

start_sim() { # sets port
    [ -n "$sim" ] && { kill "$sim"; wait "$sim" 2>/dev/null || true; }
    rm -f "$work/port"
    "$build/bin/kx-sim" --firmware "$build/data/firmware/kx3/3.10.kxhex" "$@" > "$work/port" &
    sim=$!
    for _ in $(seq 50); do [ -s "$work/port" ] && break; sleep 0.05; done
    port=$(head -1 "$work/port")
}
bench() { hyperfine -N -w 2 -r 10 "$@" 2>&1 | grep -E 'Benchmark|Time'; }

start_sim
bench "$cli -C $build device enq --port $port" \
      "$cli -C $build device read --port $port -o $work/read.hex"

start_sim --pace
cd "$build/data" # the helper reads device.txt from its working folder
bench "./serialup.exe -B KX3A -s $port -l 0xF000 0xF100 $work/r.hex" "./serialup.exe -s $port -b"
./serialup.exe -B KX3A -s "$port" -l 0xF000 0xF100 "$work/r.hex" -x "$work/line.log" > /dev/null
bytes=$(grep -o ' [0-9a-f][0-9a-f]' "$work/line.log" | wc -l)
echo "line limit of a read: $bytes bytes at 230400 baud = $(( bytes * 10 * 1000 / 230400 )) ms"
