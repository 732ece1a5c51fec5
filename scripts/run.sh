#!/usr/bin/env bash
# Installs what is missing, builds, and launches the KX Setup Utility with the bundled
# sample data, a simulated instrument (kx-sim) and a firmware download server (kx-fwserver)
# attached: the simulator's port is in the port list of "Read from Korvex" and "Write to
# Korvex", and File > Get New Firmware finds one version the demo's data folder lacks.
# The simulator and the server stop when the application exits. usage: scripts/run.sh
# [--qt 5|6]
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
qt=6
[ "${1:-}" = --qt ] && qt="$2"
"$root/scripts/deps.sh" --qt "$qt"
"$root/scripts/build.sh" --qt "$qt"
build="$root/build/qt$qt"

# The demo works in a folder of its own, made once from the sample data without firmware
# 3.12, which the download server offers instead (what it installs and the setups saved
# there stay out of the sample data the tests read).
demo="$build/demo"
if [ ! -d "$demo/data" ]; then
    mkdir -p "$demo/setups/backups"
    cp -r "$build/data" "$demo/data"
    rm -rf "$demo/data/CMakeFiles" "$demo/data/cmake_install.cmake" "$demo/data/temp.hex"
    rm -f "$demo/data/firmware/kx3/3.12.kxhex" "$demo/data/help/3.12_help.html"
fi
served="$build/demo-server"
if [ ! -f "$served/index.json" ]; then
    stage="$build/demo-server-stage"
    rm -rf "$stage" && mkdir -p "$stage/firmware/kx3" "$stage/help" "$served"
    cp "$build/data/firmware/kx3/3.12.kxhex" "$stage/firmware/kx3/"
    cp "$build/data/help/3.12_help.html" "$stage/help/"
    (cd "$stage" && cmake -E tar cf "$served/kx3-3.12.zip" --format=zip firmware help)
    sum="$(sha256sum "$served/kx3-3.12.zip" | cut -d' ' -f1)"
    size="$(stat -c %s "$served/kx3-3.12.zip")"
    printf '{"firmware":[{"version":"3.12","archive":"kx3-3.12.zip","sha256":"%s","size":%s}]}\n' \
        "$sum" "$size" >"$served/index.json"
fi

# The simulated instrument is a KX3 running firmware 3.10 (so that File > Update Firmware
# can move it to 3.20); it keeps its memory (settings and firmware) in kx3-sim-state.hex.
firmware="$demo/data/firmware/kx3/3.10.kxhex"
simport="$(mktemp)"
serverurl="$(mktemp)"
"$build/bin/kx-sim" --firmware "$firmware" --state "$build/kx3-sim-state.hex" >"$simport" &
sim=$!
"$build/bin/kx-fwserver" "$served" >"$serverurl" &
server=$!
trap 'kill "$sim" "$server" 2>/dev/null || true; wait "$sim" "$server" 2>/dev/null || true;
      rm -f "$simport" "$serverurl"' EXIT
for _ in $(seq 50); do
    [ -s "$simport" ] && [ -s "$serverurl" ] && break
    sleep 0.1
done
port="$(head -n 1 "$simport")"
url="$(head -n 1 "$serverurl")"
echo "Simulated Korvex (firmware 3.10) on $port; firmware server at $url"

# The program resolves its data folder against the working directory.
cd "$demo"
KX_EXTRA_PORTS="$port" KX_FIRMWARE_URL="$url" "$build/bin/kxsetup"
