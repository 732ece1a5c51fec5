#!/usr/bin/env bash
# Installs what is missing, builds, and launches the program with the bundled sample
# data. usage: scripts/run.sh [--qt 5|6]
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
qt=6
[ "${1:-}" = --qt ] && qt="$2"
"$root/scripts/deps.sh" --qt "$qt"
"$root/scripts/build.sh" --qt "$qt"
build="$root/build/qt$qt"
# The program resolves its data folder against the working directory.
exec "$build/bin/kxsetup-cli" -C "$build" versions
