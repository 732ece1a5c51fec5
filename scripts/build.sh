#!/usr/bin/env bash
# Configures and builds one build tree. usage: scripts/build.sh [--qt 5|6] [-- CMAKE ARGS]
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
qt=6
while [ $# -gt 0 ]; do
    case "$1" in
        --qt) qt="$2"; shift 2 ;;
        --) shift; break ;;
        *) echo "build.sh: unknown option $1" >&2; exit 1 ;;
    esac
done
build="$root/build/qt$qt"
cmake -S "$root" -B "$build" -G Ninja -DKX_QT_MAJOR="$qt" "$@" >/dev/null
cmake --build "$build" -j "$(nproc)"
