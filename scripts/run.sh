#!/usr/bin/env bash
# Installs what is missing, builds, and launches the KX Setup Utility with the bundled
# sample data and a simulated instrument (kx-sim) attached: the simulator's port is in
# the port list of "Read from Korvex" and "Write to Korvex". The simulator stops when the
# application exits. usage: scripts/run.sh [--qt 5|6]
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
qt=6
[ "${1:-}" = --qt ] && qt="$2"
"$root/scripts/deps.sh" --qt "$qt"
"$root/scripts/build.sh" --qt "$qt"
build="$root/build/qt$qt"

# The simulated instrument is a KX3 running firmware 3.10 (so that File > Update Firmware
# can move it to 3.20); it keeps its memory (settings and firmware) between runs in kx3-sim-state.hex.
firmware="$build/data/firmware/kx3/3.10.kxhex"
portfile="$(mktemp)"
"$build/bin/kx-sim" --firmware "$firmware" --state "$build/kx3-sim-state.hex" >"$portfile" &
sim=$!
trap 'kill "$sim" 2>/dev/null || true; wait "$sim" 2>/dev/null || true; rm -f "$portfile"' EXIT
for _ in $(seq 50); do
    [ -s "$portfile" ] && break
    sleep 0.1
done
port="$(head -n 1 "$portfile")"
echo "Simulated Korvex (firmware $(basename "$firmware" .kxhex)) on $port"

# The program resolves its data folder against the working directory.
cd "$build"
KX_EXTRA_PORTS="$port" "$build/bin/kxsetup"
