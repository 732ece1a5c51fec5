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

# The simulated instrument runs the newest sample firmware and keeps its memory between
# runs in sim-state.hex.
firmware="$(ls "$build"/data/firmware/kx4/*/*.kxhex | sort | tail -n 1)"
portfile="$(mktemp)"
"$build/bin/kx-sim" --firmware "$firmware" --state "$build/sim-state.hex" >"$portfile" &
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
